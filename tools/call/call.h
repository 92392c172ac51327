// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// One call: the camera's pictures to the peer, and the peer's onto a surface.

#ifndef CALL_H
#define CALL_H

#include "callnetwork.h"
#include "callstatistics.h"
#include "framesurface.h"

#include <qflcamera.h>
#include <qfldecoder.h>
#include <qflencoder.h>

#include <memory>

class QFLCameraInfo;
class QFLCodecInfo;

class Call : public QObject
{
    Q_OBJECT

public:
    explicit Call(const CallSettings &settings, QObject *parent = nullptr);
    ~Call() override;

    FrameSurface *localSurface();
    FrameSurface *remoteSurface();

    CallError start();
    void finish();

    CallError error() const;
    const CallStatistics &updatedStatistics();

Q_SIGNALS:
    void finished();

private:
    CallError startReceiving();
    CallError startSending(const QFLCameraInfo &camera, const QFLCodecInfo &encoder);
    void connectMedia();

    void measureLatency(qint64 startTime);
    void fail(CallError::Code code, const QString &text);
    CallCounts counts() const;

    CallSettings m_settings;
    CallStatistics m_statistics;
    CallError m_error;
    quint64 m_framesEncoded = 0;
    QTimer m_drainTimer;
    bool m_finishing = false;

    // Whatever uses another of these stands below it, so that it goes first.
    FrameSurface m_localSurface;
    FrameSurface m_remoteSurface;
    std::unique_ptr<QFLDecoder> m_decoder;
    std::unique_ptr<QFLEncoder> m_encoder;
    std::unique_ptr<QFLCamera> m_camera;
    CallNetwork m_network;
};

#endif
