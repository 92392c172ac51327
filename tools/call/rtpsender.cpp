// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The sink that sends encoded frames to the peer.

#include "rtpsender.h"

#include <qflcodecinfo.h>

/*! \a transport is borrowed and has to outlive the sender; \a codec is what its packets carry. */
RtpSender::RtpSender(RtpTransport *transport, const QString &codec)
    : m_transport(transport), m_codec(codec)
{
}

RtpSender::~RtpSender()
{
    unlink();
}

quint64 RtpSender::framesSent() const
{
    return m_framesSent;
}

quint64 RtpSender::bytesSent() const
{
    return m_bytesSent;
}

/*! Whether the stream is of the transport's codec, which may be named by a codec id too. */
bool RtpSender::isFormatSupported(const QVideoEncoderSettings &settings) const
{
    return settings.codec() == m_codec
            || QFLCodecInfo(settings.codec().toLatin1()).codec() == m_codec;
}

/*! Returns false, with the error set, if the transport takes no frames. */
bool RtpSender::encodedVideoFrame(const QFLEncodedVideoFrame &frame)
{
    if (!m_transport->send(frame)) {
        setError(TransportError);
        return false;
    }
    ++m_framesSent;
    m_bytesSent += quint64(frame.data().size());
    return true;
}
