// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Decodes a stream of encoded frames with GStreamer.

#ifndef DECODECONTROL_H
#define DECODECONTROL_H

#include "bitstreamgate.h"
#include "videodecoder.h"

#include <qfldecodecontrol.h>

class SurfaceGroup;

class DecodeControl : public QFLDecodeControl
{
    Q_OBJECT

public:
    explicit DecodeControl(SurfaceGroup *surfaces, QObject *parent = nullptr);
    ~DecodeControl() override;

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
    bool setStatus(QFLDecoder::Status status);

    bool examine(const QFLEncodedVideoFrame &frame);
    bool load(const QVideoEncoderSettings &settings);
    bool build();
    bool rebuild();
    bool restart();
    bool makeRoom();
    void abandon(QFLDecoder::Error code, const QString &text);
    void handleError(Pipeline::ErrorKind kind, const QString &text);
    bool overcome(QFLDecoder::Error code, const QString &text);
    bool resume(const QVector<VideoDecoder::Frame> &group);
    void finishDraining();

    void reportUnknownCodec(const QString &codec);
    void reportMalformedFrame();
    void updatePixelFormats();
    void present(const QVideoFrame &picture, const QVideoSurfaceFormat &format);

    SurfaceGroup *m_surfaces;
    VideoDecoder m_decoder;
    BitstreamGate m_gate;
    CodecElement m_element;
    QVideoEncoderSettings m_settings;
    QVideoSurfaceFormat m_outputFormat;
    QFLDecoder::Status m_status = QFLDecoder::UnloadedStatus;
    Run m_run;
    int m_failureCount = 0;
    bool m_hasDecoded = false;
    bool m_isOverrun = false;
    bool m_isDraining = false;
    bool m_malformedFrameReported = false;
};

#endif
