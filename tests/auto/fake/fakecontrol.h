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

/*!
    An entry in the log may lead to anything, the end of the control too, so nothing is touched after
    it unseen. A live control does what a backend does: it changes its status, and starts and stops
    the sinks and surfaces that it is given.
*/
template<typename Base> class FakeControl : public Base
{
public:
    bool accepts = true;
    bool isLive = false;

protected:
    bool log(const QByteArray &call) const
    {
        const bool answer = accepts;
        FakeLog::add(this, call);
        return answer;
    }
    bool ask(const QByteArray &question) const
    {
        FakeLog::addQuestion(this->objectName().toLatin1() + question);
        return accepts;
    }
    bool log(const char *call, int argument) const
    {
        return log(call + (' ' + QByteArray::number(argument)));
    }
    /*! Enters the call, and changes the status if the control is live and still there. */
    template<typename Status>
    bool changeStatus(Status &current, Status status, const QByteArray &call)
    {
        const QPointer<FakeControl> self(this);
        const bool answer = log(call);
        if (answer && self && isLive) {
            current = status;
            emit this->statusChanged(status);
        }
        return answer;
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
        const QPointer<FakeSurfaceControl> self(this);
        const QPointer<QAbstractVideoSurface> old = current, next = surface;
        current = surface;
        this->log(surface ? "surface" : "no surface");
        if (self && this->isLive && old && old != next)
            old->stop();
        if (self && this->isLive && next && next == current)
            next->start(QVideoSurfaceFormat(QSize(4, 2), QVideoFrame::Format_RGB32));
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
    bool start(const QVideoSurfaceFormat &) override { return FakeLog::add("started"), true; }
    bool present(const QVideoFrame &) override { return true; }
    void stop() override { FakeLog::add("stopped"); }
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
