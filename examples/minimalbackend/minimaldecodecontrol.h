// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Turns encoded frames into pictures.

#ifndef MINIMALDECODECONTROL_H
#define MINIMALDECODECONTROL_H

#include "runlengthcodec.h"

#include <qfldecodecontrol.h>
#include <qflencodedvideoframe.h>

#include <QtCore/qqueue.h>

class MinimalRendererControl;

class MinimalDecodeControl : public QFLDecodeControl
{
    Q_OBJECT

public:
    MinimalDecodeControl(MinimalRendererControl *renderer, QObject *parent);

    QStringList supportedCodecs(bool hardwareOnly) const override;
    bool isFormatSupported(const QVideoEncoderSettings &settings) const override;

    bool start(const QVideoEncoderSettings &settings) override;
    QVideoEncoderSettings videoSettings() const override;
    QVideoSurfaceFormat outputFormat() const override;
    bool decode(const QFLEncodedVideoFrame &frame) override;
    void drain() override;
    void flush() override;
    void stop() override;

    QFLDecoder::Status status() const override;

private:
    bool endRun();
    bool setStatus(QFLDecoder::Status status);
    void awaitKeyFrame();
    void decodeNext(int run);
    void show(const QVideoFrame &picture);
    void finishDraining(int run);

    MinimalRendererControl *m_renderer;
    RunLengthCodec m_codec;
    QVideoEncoderSettings m_settings;
    QVideoSurfaceFormat m_outputFormat;
    QQueue<QFLEncodedVideoFrame> m_queue;
    QFLDecoder::Status m_status = QFLDecoder::LoadedStatus;
    int m_run = 0;
    bool m_isDraining = false;
    bool m_awaitsKeyFrame = true;
};

#endif
