// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-3.0-or-later
// The raw frames on their way into an encoder's pipeline.

#ifndef RAWFRAMEQUEUE_H
#define RAWFRAMEQUEUE_H

#include "gstpointers.h"

#include <QtCore/qmap.h>
#include <QtCore/qmutex.h>
#include <QtMultimedia/qvideoframe.h>

#include <gst/app/gstappsrc.h>
#include <gst/video/video.h>

#include <deque>

class RawFrameQueue
{
public:
    RawFrameQueue() = default;
    ~RawFrameQueue();

    void open(GstElementPointer source, const GstVideoInfo &info, qreal largestFrameRate);
    void reopen();
    void close();

    bool append(const QVideoFrame &frame, QString *errorText);
    void clear();
    void finish();

    quint64 takeTimestamp(GstClockTime runningTime);

private:
    Q_DISABLE_COPY(RawFrameQueue)

    static void needData(GstAppSrc *source, guint length, gpointer self);
    GstBufferPointer stamped(GstBufferPointer buffer, qint64 time);
    void pushNext();
    bool isTooEarly(qint64 time);
    GstClockTime nextPresentationTime(qint64 time);

    QMutex m_mutex;
    GstElementPointer m_source;
    GstVideoInfo m_info;
    std::deque<GstBufferPointer> m_buffers;
    QMap<GstClockTime, quint64> m_timestamps;
    qint64 m_period = 0;
    qint64 m_nextDue = 0;
    qint64 m_lastTime = 0;
    GstClockTime m_lastPresentationTime = GST_CLOCK_TIME_NONE;
    bool m_sourceIsHungry = false;
    bool m_isFinishing = false;
    bool m_errorReported = false;
};

#endif
