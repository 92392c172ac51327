// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// What all scriptable controls have in common, and the controls with a surface.

#ifndef FAKECONTROL_H
#define FAKECONTROL_H

#include "fakelog.h"

#include <qflencodedvideoframe.h>
#include <qflrawvideosourcecontrol.h>

#include <QtCore/qpointer.h>
#include <QtCore/qthread.h>
#include <QtMultimedia/qabstractvideosurface.h>
#include <QtMultimedia/qvideosurfaceformat.h>

#include <memory>

template<typename Base> class FakeControl : public Base
{
public:
    bool accepts = true;

protected:
    bool log(const QByteArray &call) const
    {
        FakeLog::add(this, call);
        return accepts;
    }
    bool log(const char *call, int argument) const
    {
        return log(call + (' ' + QByteArray::number(argument)));
    }
    static QStringList codecs(bool hardwareOnly)
    {
        return {hardwareOnly ? QStringLiteral("hard") : QStringLiteral("soft")};
    }
};

template<typename Base> class FakeSurfaceControl : public FakeControl<Base>
{
public:
    QAbstractVideoSurface *surface() const override { return current; }
    void setSurface(QAbstractVideoSurface *surface) override
    {
        this->log(surface ? "surface" : "no surface");
        current = surface;
    }

    QPointer<QAbstractVideoSurface> current;
};

using FakeRenderer = FakeSurfaceControl<QVideoRendererControl>;
using FakeRawSource = FakeSurfaceControl<QFLRawVideoSourceControl>;

class FakeSurface : public QAbstractVideoSurface
{
public:
    QList<QVideoFrame::PixelFormat> supportedPixelFormats(
            QAbstractVideoBuffer::HandleType) const override
    {
        return {QVideoFrame::Format_RGB32};
    }
    bool present(const QVideoFrame &) override { return true; }
};

inline QByteArray textOf(int value)
{
    return QByteArray::number(value);
}
inline QByteArray textOf(const QVideoSurfaceFormat &format)
{
    return textOf(format.frameWidth());
}

inline QByteArray textOf(const QFLEncodedVideoFrame &frame)
{
    return frame.data();
}

/*! Enters the signal as its name and its arguments from now on. */
template<typename Object, typename Class, typename... Arguments>
void logSignal(Object *object, void (Class::*signal)(Arguments...), const QByteArray &name)
{
    QObject::connect(object, signal, [name](Arguments... arguments) {
        FakeLog::add((name + ... + (' ' + textOf(arguments))));
    });
}

/*! Returns when \a work has run, so that what it posted is waiting in the caller's event loop. */
template<typename Work> void runInThread(Work work)
{
    const std::unique_ptr<QThread> thread(QThread::create(work));
    thread->start();
    thread->wait();
}

#endif
