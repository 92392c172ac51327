// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Hands the encoder's frames to sinks, each from a key frame on.

#include "minimalsourcecontrol.h"

#include "minimalencodecontrol.h"

#include <qflencodedvideosink.h>

/*!
    \class MinimalSourceControl

    Lives in the thread of \a encodeControl, whose stream signals are emitted there. A sink may be
    removed from within any call to a sink, so its state is looked up anew after each.
*/

//! [connect]
MinimalSourceControl::MinimalSourceControl(MinimalEncodeControl *encodeControl, QObject *parent)
    : QFLEncodedVideoSourceControl(parent), m_encodeControl(encodeControl)
{
    connect(encodeControl, &MinimalEncodeControl::streamStarted, this,
            &MinimalSourceControl::startSinks);
    connect(encodeControl, &MinimalEncodeControl::streamDrained, this,
            &MinimalSourceControl::drainSinks);
    connect(encodeControl, &MinimalEncodeControl::streamStopped, this,
            &MinimalSourceControl::stopSinks);
    connect(encodeControl, &MinimalEncodeControl::encodedVideoFrame, this,
            &MinimalSourceControl::deliver);
}
//! [connect]

//! [sinks]
bool MinimalSourceControl::addSink(QFLSink *sink)
{
    auto *videoSink = dynamic_cast<QFLEncodedVideoSink *>(sink);
    if (!videoSink || m_states.contains(videoSink))
        return false;
    m_states.insert(videoSink, Idle);
    const bool isStreaming = !m_encodeControl->streamSettings().isNull();
    if (!isStreaming)
        return true;
    if (!startSink(videoSink)) {
        m_states.remove(videoSink);
        return false;
    }
    m_encodeControl->requestKeyFrame();
    return true;
}

bool MinimalSourceControl::removeSink(QFLSink *sink)
{
    auto *videoSink = dynamic_cast<QFLEncodedVideoSink *>(sink);
    const bool wasStarted = isStarted(videoSink);
    if (m_states.remove(videoSink) == 0)
        return false;
    if (wasStarted)
        videoSink->stop();
    return true;
}
//! [sinks]

bool MinimalSourceControl::isStarted(QFLEncodedVideoSink *sink) const
{
    return m_states.value(sink, Idle) != Idle;
}

//! [startSink]
bool MinimalSourceControl::startSink(QFLEncodedVideoSink *sink)
{
    const QVideoEncoderSettings settings = m_encodeControl->streamSettings();
    if (!sink->isFormatSupported(settings) || !sink->start(settings) || !m_states.contains(sink))
        return false;
    m_states.insert(sink, AwaitsKeyFrame);
    return true;
}
//! [startSink]

void MinimalSourceControl::startSinks()
{
    const QList<QFLEncodedVideoSink *> sinks = m_states.keys();
    for (QFLEncodedVideoSink *sink : sinks) {
        if (m_states.contains(sink) && !startSink(sink))
            Q_EMIT m_encodeControl->error(QFLEncoder::ConsumerError,
                                          tr("A sink doesn't take the stream"));
    }
}

void MinimalSourceControl::drainSinks()
{
    const QList<QFLEncodedVideoSink *> sinks = m_states.keys();
    for (QFLEncodedVideoSink *sink : sinks) {
        if (!isStarted(sink))
            continue;
        m_states.insert(sink, Drained);
        sink->drain();
    }
}

void MinimalSourceControl::stopSinks()
{
    const QList<QFLEncodedVideoSink *> sinks = m_states.keys();
    for (QFLEncodedVideoSink *sink : sinks) {
        if (!isStarted(sink))
            continue;
        m_states.insert(sink, Idle);
        sink->stop();
    }
}

void MinimalSourceControl::deliver(const QFLEncodedVideoFrame &frame)
{
    const QList<QFLEncodedVideoSink *> sinks = m_states.keys();
    for (QFLEncodedVideoSink *sink : sinks)
        deliverTo(sink, frame);
}

//! [gate]
void MinimalSourceControl::deliverTo(QFLEncodedVideoSink *sink, const QFLEncodedVideoFrame &frame)
{
    const bool isKeyFrame = frame.meta().type == QFLEncodedVideoFrame::Type_Key;
    // What follows on a drained stream is another stream.
    if (isKeyFrame && m_states.value(sink, Idle) == Drained) {
        m_states.insert(sink, Idle);
        sink->stop();
        if (m_states.contains(sink))
            startSink(sink);
    }
    if (isKeyFrame && m_states.value(sink, Idle) == AwaitsKeyFrame)
        m_states.insert(sink, Receives);
    if (m_states.value(sink, Idle) != Receives || sink->encodedVideoFrame(frame))
        return;

    if (m_states.value(sink, Idle) == Receives)
        m_states.insert(sink, AwaitsKeyFrame);
    m_encodeControl->requestKeyFrame();
}
//! [gate]
