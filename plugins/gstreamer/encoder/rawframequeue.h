// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The raw frames on their way into an encoder's pipeline.

#ifndef RAWFRAMEQUEUE_H
#define RAWFRAMEQUEUE_H

#include "gstpointers.h"

#include <QtCore/qelapsedtimer.h>
#include <QtCore/qmap.h>
#include <QtCore/qmutex.h>
#include <QtCore/qobject.h>
#include <QtMultimedia/qvideoframe.h>

#include <gst/app/gstappsrc.h>
#include <gst/video/video.h>

#include <deque>

class EncoderConfiguration;
struct FrameTally;

class RawFrameQueue : public QObject
{
    Q_OBJECT

public:
    static constexpr int capacity = 3;

    explicit RawFrameQueue(FrameTally *tally, QObject *parent = nullptr);
    ~RawFrameQueue() override;

    void open(GstElementPointer source, const EncoderConfiguration &configuration);
    void reopen();
    void close();

    bool append(const QVideoFrame &frame, QString *errorText);
    GstClockTime clear();
    void finish();

    void feed();
    int pending();
    int unanswered();
    quint64 takeTimestamp(GstClockTime runningTime);

Q_SIGNALS:
    void pendingFell(int from, int to);

private:
    GstBufferPointer stamped(GstBufferPointer buffer, qint64 time);
    void reportFall(int before, QMutexLocker *locker);
    int held() const;
    bool hasRoom();
    void finishEncoding();
    void dropUnanswered();
    void pushNext();
    bool isTooEarly(qint64 time);
    GstClockTime nextPresentationTime(qint64 time);

    FrameTally *const m_tally;
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
    bool m_isEncoding = false;
    bool m_isBehind = false;
    qint64 m_inputInterval = 0;
    std::deque<qint64> m_encodingTimes;
    QElapsedTimer m_encodingSince;
    bool m_isFinishing = false;
    bool m_errorReported = false;
};

#endif
