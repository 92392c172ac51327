// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The source of the encoded frames that come from the peer.

#include "rtpreceiver.h"

#include <qflencodedvideosink.h>

#include <utility>

namespace {

// A request may be lost as any packet may, so it is made again.
const qint64 keyFrameRequestIntervalMilliseconds = 500;

} // namespace

/*!
    \class RtpReceiver

    Takes one sink. The sink gets its first frame with a key frame, and after a frame that it
    refused it gets nothing before the next key frame, which the receiver requests from the peer.
*/

/*! \a transport is borrowed and has to outlive the receiver; \a codec is what its packets carry. */
RtpReceiver::RtpReceiver(RtpTransport *transport, const QString &codec, QObject *parent)
    : QObject(parent), m_transport(transport)
{
    m_settings.setCodec(codec);
    connect(transport, &RtpTransport::frameReceived, this, &RtpReceiver::deliver);
}

RtpReceiver::~RtpReceiver()
{
    if (m_sink)
        m_sink->unlink(this);
}

quint64 RtpReceiver::framesReceived() const
{
    return m_framesReceived;
}

quint64 RtpReceiver::bytesReceived() const
{
    return m_bytesReceived;
}

/*! Starts the sink. Returns false if there is one already, or if it does not take the stream. */
bool RtpReceiver::addSink(QFLSink *sink)
{
    auto *videoSink = QFLEncodedVideoSink::fromSink(sink);
    if (m_sink || !videoSink || !videoSink->isFormatSupported(m_settings))
        return false;
    // Noted first, as the sink may remove itself while it starts.
    m_sink = videoSink;
    m_waitsForKeyFrame = true;
    if (!videoSink->start(m_settings) && m_sink == videoSink)
        m_sink = nullptr;
    return m_sink == videoSink;
}

/*! Stops the sink. */
bool RtpReceiver::removeSink(QFLSink *sink)
{
    if (!m_sink || m_sink != sink)
        return false;
    std::exchange(m_sink, nullptr)->stop();
    return true;
}

void RtpReceiver::deliver(const QFLEncodedVideoFrame &frame)
{
    ++m_framesReceived;
    m_bytesReceived += quint64(frame.data().size());
    if (!m_sink)
        return;
    const bool isKeyFrame = frame.meta().type == QFLEncodedVideoFrame::Type_Key;
    if (!m_waitsForKeyFrame || isKeyFrame)
        m_waitsForKeyFrame = !m_sink->encodedVideoFrame(frame);
    if (m_waitsForKeyFrame)
        requestKeyFrame();
}

void RtpReceiver::requestKeyFrame()
{
    if (m_sinceKeyFrameRequest.isValid()
        && m_sinceKeyFrameRequest.elapsed() < keyFrameRequestIntervalMilliseconds)
        return;
    m_sinceKeyFrameRequest.start();
    m_transport->requestKeyFrame();
}
