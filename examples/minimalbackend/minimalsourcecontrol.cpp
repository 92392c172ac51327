// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Hands the encoder's frames to sinks, each from a key frame on.

#include "minimalsourcecontrol.h"

#include "minimalencodecontrol.h"

#include <qflencodedvideosink.h>

#include <QtCore/qpointer.h>

/*!
    \class MinimalSourceControl

    Lives in the thread of \a encodeControl, whose stream signals are emitted there. From within any
    call to a sink, sinks may be removed, and the encoder be stopped, started anew or deleted. What
    follows on a call asks watch() first, and looks the sink's state up anew. A sink that has been
    destroyed isn't linked any more.
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
    connect(encodeControl, &MinimalEncodeControl::streamedFrame, this,
            &MinimalSourceControl::deliver);
}
//! [connect]

//! [sinks]
bool MinimalSourceControl::addSink(QFLSink *sink)
{
    auto *videoSink = QFLEncodedVideoSink::fromSink(sink);
    if (!videoSink || isLinked(videoSink))
        return false;
    m_sinks.insert(videoSink, sink);
    m_states.insert(videoSink, Idle);
    const bool isStreaming = !m_encodeControl->streamSettings().isNull();
    if (!isStreaming)
        return true;
    const QPointer<MinimalSourceControl> self(this);
    if (!startSink(videoSink))
        m_sinks.remove(videoSink);
    if (!self || !isLinked(videoSink))
        return false;
    m_encodeControl->requestKeyFrame();
    return true;
}

bool MinimalSourceControl::removeSink(QFLSink *sink)
{
    auto *videoSink = QFLEncodedVideoSink::fromSink(sink);
    const bool wasStarted = isStarted(videoSink);
    if (m_sinks.remove(videoSink) == 0)
        return false;
    if (wasStarted)
        videoSink->stop();
    return true;
}
//! [sinks]

bool MinimalSourceControl::isLinked(QFLEncodedVideoSink *sink) const
{
    return !m_sinks.value(sink).isNull();
}

bool MinimalSourceControl::isStarted(QFLEncodedVideoSink *sink) const
{
    return isLinked(sink) && m_states.value(sink, Idle) != Idle;
}

void MinimalSourceControl::forEachSink(const std::function<void(QFLEncodedVideoSink *)> &call)
{
    const QPointer<MinimalSourceControl> self(this);
    const int stream = m_stream;
    const QList<QFLEncodedVideoSink *> sinks = m_sinks.keys();
    for (QFLEncodedVideoSink *sink : sinks) {
        if (self && stream == m_stream && isLinked(sink))
            call(sink);
    }
}

//! [startSink]
/*! False if the sink doesn't take the stream, unless that has ended or the sink has gone. */
bool MinimalSourceControl::startSink(QFLEncodedVideoSink *sink)
{
    const auto isLinked = watch(sink);
    const QVideoEncoderSettings settings = m_encodeControl->streamSettings();
    // Noted first, so that the sink is stopped if it ends the stream while it starts.
    m_states.insert(sink, AwaitsKeyFrame);
    const bool isTaken = sink->isFormatSupported(settings) && isLinked() && sink->start(settings);
    if (isTaken || !isLinked())
        return true;
    m_states.insert(sink, Idle);
    return false;
}

/*! What tells after a call whether the stream goes on and \a sink is still linked. */
std::function<bool()> MinimalSourceControl::watch(QFLEncodedVideoSink *sink) const
{
    const QPointer<const MinimalSourceControl> self(this);
    return [self, stream = m_stream, sink] {
        return self && self->m_stream == stream && self->isLinked(sink);
    };
}
//! [startSink]

void MinimalSourceControl::startOrReport(QFLEncodedVideoSink *sink)
{
    if (!isStarted(sink) && !startSink(sink))
        Q_EMIT m_encodeControl->error(QFLEncoder::ConsumerError,
                                      tr("A sink doesn't take the stream"));
}

void MinimalSourceControl::startSinks()
{
    forEachSink([this](QFLEncodedVideoSink *sink) { startOrReport(sink); });
}

void MinimalSourceControl::drainSinks()
{
    forEachSink([this](QFLEncodedVideoSink *sink) {
        if (!isStarted(sink))
            return;
        m_states.insert(sink, Drained);
        sink->drain();
    });
}

void MinimalSourceControl::stopSinks()
{
    ++m_stream;
    forEachSink([this](QFLEncodedVideoSink *sink) {
        if (!isStarted(sink))
            return;
        m_states.insert(sink, Idle);
        sink->stop();
    });
}

void MinimalSourceControl::deliver(const QFLEncodedVideoFrame &frame)
{
    forEachSink([this, &frame](QFLEncodedVideoSink *sink) { deliverTo(sink, frame); });
}

//! [gate]
void MinimalSourceControl::deliverTo(QFLEncodedVideoSink *sink, const QFLEncodedVideoFrame &frame)
{
    const auto isLinked = watch(sink);
    const bool isKeyFrame = frame.meta().type == QFLEncodedVideoFrame::Type_Key;
    // What follows on a drained stream is another stream.
    if (isKeyFrame && m_states.value(sink) == Drained) {
        m_states.insert(sink, Idle);
        sink->stop();
        if (isLinked())
            startOrReport(sink);
    }
    if (!isLinked())
        return;
    if (isKeyFrame && m_states.value(sink) == AwaitsKeyFrame)
        m_states.insert(sink, Receives);
    if (m_states.value(sink) != Receives || sink->encodedVideoFrame(frame) || !isLinked())
        return;

    m_states.insert(sink, AwaitsKeyFrame);
    m_encodeControl->requestKeyFrame();
}
//! [gate]
