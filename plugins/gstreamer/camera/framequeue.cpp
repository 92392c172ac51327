// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Carries captured frames from the streaming thread to the thread of the camera.

#include "framequeue.h"

#include "videoformat.h"
#include "videoframe.h"

#include <QtCore/qpointer.h>

namespace {

const int capacity = 2;

} // namespace

/*!
    Emits frameCaptured() in its own thread for each frame that an appsink receives. At most two
    frames wait: when that thread is busy the oldest is dropped, so that what is shown stays fresh.

    A frame's start time is the moment at which it arrived here, in microseconds of the monotonic
    clock, whatever time the source gave it.
*/
FrameQueue::FrameQueue(QObject *parent) : QObject(parent) { }

/*! \a sink must have been stopped by the time this object is destroyed or connected anew. */
void FrameQueue::connectTo(GstAppSink *sink)
{
    GstAppSinkCallbacks callbacks = {};
    callbacks.new_sample = takeSample;
    gst_app_sink_set_callbacks(sink, &callbacks, this, nullptr);
}

/*! Forgets the frames that wait. Once the sink has been stopped, none arrives after this. */
void FrameQueue::clear()
{
    const QMutexLocker locker(&m_mutex);
    m_entries.clear();
    m_isPosted = false;
    ++m_run;
}

qreal FrameQueue::magnification() const
{
    return m_magnifier.factor();
}

/*! Shows the middle of the frames that arrive from now on \a factor times as large, at least 1. */
void FrameQueue::setMagnification(qreal factor)
{
    m_magnifier.setFactor(factor);
}

/*! Runs on the streaming thread. */
GstFlowReturn FrameQueue::takeSample(GstAppSink *sink, gpointer self)
{
    const qint64 captureTime = g_get_monotonic_time();
    const GstSamplePointer sample(gst_app_sink_pull_sample(sink));
    if (!sample)
        return GST_FLOW_EOS;

    auto *queue = static_cast<FrameQueue *>(self);
    queue->readCaps(gst_sample_get_caps(sample.get()));
    const GstBufferPointer buffer
            = queue->m_magnifier.magnify(gst_sample_get_buffer(sample.get()), queue->m_info);
    const QVideoFrame frame = VideoFrame::fromGst(buffer.get(), queue->m_info, captureTime);
    if (!frame.isValid())
        return GST_FLOW_NOT_NEGOTIATED;
    queue->append({frame, queue->m_format});
    return GST_FLOW_OK;
}

void FrameQueue::readCaps(GstCaps *caps)
{
    if (caps == m_caps.get())
        return;
    m_caps.reset(gst_caps_ref(caps));
    gst_video_info_from_caps(&m_info, caps);
    m_format = VideoFormat::fromGst(m_info);
}

void FrameQueue::append(const Entry &entry)
{
    const QMutexLocker locker(&m_mutex);
    if (m_entries.size() == capacity)
        m_entries.removeFirst();
    m_entries.append(entry);
    if (m_isPosted)
        return;
    m_isPosted = true;
    const int run = m_run;
    QMetaObject::invokeMethod(
            this, [this, run] { deliver(run); }, Qt::QueuedConnection);
}

/*!
    Hands out what waits now; frames that arrive meanwhile come with an event of their own, so that
    a slow receiver doesn't keep the thread from its other events.
*/
void FrameQueue::deliver(int run)
{
    QList<Entry> entries;
    {
        const QMutexLocker locker(&m_mutex);
        if (run != m_run)
            return;
        entries.swap(m_entries);
        m_isPosted = false;
    }
    const QPointer<FrameQueue> self(this);
    for (const Entry &entry : qAsConst(entries)) {
        // The receiver of the frame before may have stopped the camera; only this thread does that.
        if (!self || run != m_run)
            return;
        Q_EMIT frameCaptured(entry.frame, entry.format);
    }
}
