// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The source of the encoded frames that come from the peer.

#ifndef RTPRECEIVER_H
#define RTPRECEIVER_H

#include "rtptransport.h"

#include <qflsource.h>

#include <QtCore/qelapsedtimer.h>
#include <QtMultimedia/qmediaencodersettings.h>

class QFLEncodedVideoSink;

class RtpReceiver : public QObject, public QFLSource
{
    Q_OBJECT
    Q_INTERFACES(QFLSource)

public:
    RtpReceiver(RtpTransport *transport, const QString &codec, QObject *parent = nullptr);
    ~RtpReceiver() override;

    quint64 framesReceived() const;
    quint64 bytesReceived() const;

    bool addSink(QFLSink *sink) override;
    bool removeSink(QFLSink *sink) override;

private:
    void deliver(const QFLEncodedVideoFrame &frame);
    void requestKeyFrame();

    RtpTransport *m_transport;
    QVideoEncoderSettings m_settings;
    QFLEncodedVideoSink *m_sink = nullptr;
    QElapsedTimer m_sinceKeyFrameRequest;
    quint64 m_framesReceived = 0;
    quint64 m_bytesReceived = 0;
    bool m_waitsForKeyFrame = true;
};

#endif
