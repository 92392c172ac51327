// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Carries captured frames from the streaming thread to the thread of the camera.

#ifndef FRAMEQUEUE_H
#define FRAMEQUEUE_H

#include "framemagnifier.h"
#include "gstpointers.h"

#include <QtCore/qlist.h>
#include <QtCore/qmutex.h>
#include <QtCore/qobject.h>
#include <QtMultimedia/qvideoframe.h>
#include <QtMultimedia/qvideosurfaceformat.h>

#include <gst/app/gstappsink.h>
#include <gst/video/video.h>

class FrameQueue : public QObject
{
    Q_OBJECT

public:
    explicit FrameQueue(QObject *parent = nullptr);

    void connectTo(GstAppSink *sink);
    void clear();

    qreal magnification() const;
    void setMagnification(qreal factor);

Q_SIGNALS:
    void frameCaptured(const QVideoFrame &frame, const QVideoSurfaceFormat &format);

private:
    struct Entry
    {
        QVideoFrame frame;
        QVideoSurfaceFormat format;
    };

    static GstFlowReturn takeSample(GstAppSink *sink, gpointer self);
    void readCaps(GstCaps *caps);
    void append(const Entry &entry);
    void deliver(int run);

    // Used on the streaming thread only, while one runs.
    GstCapsPointer m_caps;
    GstVideoInfo m_info;
    QVideoSurfaceFormat m_format;
    FrameMagnifier m_magnifier;

    QMutex m_mutex;
    QList<Entry> m_entries;
    int m_run = 0;
    bool m_isPosted = false;
};

#endif
