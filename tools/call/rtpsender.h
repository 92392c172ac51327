// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The sink that sends encoded frames to the peer.

#ifndef RTPSENDER_H
#define RTPSENDER_H

#include "rtptransport.h"

#include <qflencodedvideosink.h>

class RtpSender : public QFLEncodedVideoSink
{
public:
    RtpSender(RtpTransport *transport, const QString &codec);
    ~RtpSender() override;

    quint64 framesSent() const;
    quint64 bytesSent() const;

    bool isFormatSupported(const QVideoEncoderSettings &settings) const override;
    bool encodedVideoFrame(const QFLEncodedVideoFrame &frame) override;

private:
    RtpTransport *m_transport;
    QString m_codec;
    quint64 m_framesSent = 0;
    quint64 m_bytesSent = 0;
};

#endif
