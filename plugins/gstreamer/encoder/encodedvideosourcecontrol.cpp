// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Hands the encoder's frames to sinks.

#include "encodedvideosourcecontrol.h"

#include "encodecontrol.h"
#include "qflencodedvideosink.h"

#include <algorithm>

/*!
    Follows the runs of \a encodeControl, which must outlive this control: its sinks are started,
    drained and stopped with it, and get its frames in order. Everything happens in the thread of
    the encode control; a sink may be removed from within any call to a sink.

    Each sink's stream begins with a key frame, and goes on with one after a frame that it refused.
*/
EncodedVideoSourceControl::EncodedVideoSourceControl(EncodeControl *encodeControl, QObject *parent)
    : QFLEncodedVideoSourceControl(parent), m_encodeControl(encodeControl)
{
    connect(encodeControl, &EncodeControl::streamStarted, this,
            &EncodedVideoSourceControl::startSinks);
    connect(encodeControl, &EncodeControl::streamDrained, this,
            &EncodedVideoSourceControl::drainSinks);
    connect(encodeControl, &EncodeControl::streamStopped, this,
            &EncodedVideoSourceControl::stopSinks);
    connect(encodeControl, &EncodeControl::encodedVideoFrame, this,
            &EncodedVideoSourceControl::deliver);
}

/*!
    Accepts a QFLEncodedVideoSink that is not linked yet. In a run it must also take the stream; it
    is started at once, and a key frame is requested for it.
*/
bool EncodedVideoSourceControl::addSink(QFLSink *sink)
{
    auto *videoSink = dynamic_cast<QFLEncodedVideoSink *>(sink);
    if (!videoSink || find(videoSink))
        return false;
    m_sinks.append({videoSink});
    if (m_encodeControl->status() != QFLEncoder::StartedStatus)
        return true;
    if (!startSink(videoSink, m_encodeControl->streamSettings())) {
        removeSink(sink);
        return false;
    }
    m_encodeControl->requestKeyFrame();
    return true;
}

/*! Stops \a sink if it is started. Nothing is called in it once this has returned. */
bool EncodedVideoSourceControl::removeSink(QFLSink *sink)
{
    const auto position
            = std::find_if(m_sinks.begin(), m_sinks.end(),
                           [sink](const LinkedSink &linked) { return linked.sink == sink; });
    if (position == m_sinks.end())
        return false;
    const LinkedSink removed = *position;
    m_sinks.erase(position);
    if (removed.isStarted)
        removed.sink->stop();
    return true;
}

EncodedVideoSourceControl::LinkedSink *EncodedVideoSourceControl::find(
        const QFLEncodedVideoSink *sink)
{
    const auto position
            = std::find_if(m_sinks.begin(), m_sinks.end(),
                           [sink](const LinkedSink &linked) { return linked.sink == sink; });
    return position == m_sinks.end() ? nullptr : &*position;
}

QVector<QFLEncodedVideoSink *> EncodedVideoSourceControl::startedSinks() const
{
    QVector<QFLEncodedVideoSink *> result;
    for (const LinkedSink &linked : m_sinks) {
        if (linked.isStarted)
            result.append(linked.sink);
    }
    return result;
}

bool EncodedVideoSourceControl::startSink(QFLEncodedVideoSink *sink,
                                          const QVideoEncoderSettings &settings)
{
    if (!sink->isFormatSupported(settings) || !sink->start(settings))
        return false;
    // The sink may have removed itself.
    LinkedSink *linked = find(sink);
    if (!linked)
        return false;
    linked->isStarted = true;
    linked->isDrained = false;
    linked->awaitsKeyFrame = true;
    return true;
}

void EncodedVideoSourceControl::startSinks(const QVideoEncoderSettings &settings)
{
    const QVector<LinkedSink> sinks = m_sinks;
    for (const LinkedSink &linked : sinks) {
        if (find(linked.sink) && !startSink(linked.sink, settings)) {
            m_encodeControl->reportError(QFLEncoder::ConsumerError,
                                         tr("A sink does not take %1 video of %2x%3 pixels")
                                                 .arg(settings.codec())
                                                 .arg(settings.resolution().width())
                                                 .arg(settings.resolution().height()));
        }
    }
}

void EncodedVideoSourceControl::drainSinks()
{
    const QVector<QFLEncodedVideoSink *> sinks = startedSinks();
    for (QFLEncodedVideoSink *sink : sinks) {
        LinkedSink *linked = find(sink);
        if (!linked)
            continue;
        linked->isDrained = true;
        linked->awaitsKeyFrame = true;
        sink->drain();
    }
}

void EncodedVideoSourceControl::stopSinks()
{
    const QVector<QFLEncodedVideoSink *> sinks = startedSinks();
    for (QFLEncodedVideoSink *sink : sinks) {
        LinkedSink *linked = find(sink);
        if (!linked || !linked->isStarted)
            continue;
        linked->isStarted = false;
        sink->stop();
    }
}

void EncodedVideoSourceControl::deliver(const QFLEncodedVideoFrame &frame)
{
    const QVector<QFLEncodedVideoSink *> sinks = startedSinks();
    for (QFLEncodedVideoSink *sink : sinks)
        deliverTo(sink, frame);
}

bool EncodedVideoSourceControl::restartSink(QFLEncodedVideoSink *sink)
{
    find(sink)->isStarted = false;
    sink->stop();
    return find(sink) && startSink(sink, m_encodeControl->streamSettings());
}

void EncodedVideoSourceControl::deliverTo(QFLEncodedVideoSink *sink,
                                          const QFLEncodedVideoFrame &frame)
{
    const bool isKeyFrame = frame.meta().type == QFLEncodedVideoFrame::Type_Key;
    LinkedSink *linked = find(sink);
    if (!linked || !linked->isStarted || (linked->awaitsKeyFrame && !isKeyFrame))
        return;
    // To a drained sink, frames that follow are a stream of their own.
    if (linked->isDrained && !restartSink(sink))
        return;
    find(sink)->awaitsKeyFrame = false;
    if (sink->encodedVideoFrame(frame))
        return;
    linked = find(sink);
    if (!linked)
        return;
    linked->awaitsKeyFrame = true;
    m_encodeControl->requestKeyFrame();
}
