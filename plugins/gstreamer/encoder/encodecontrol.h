// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Encodes raw frames with GStreamer.

#ifndef ENCODECONTROL_H
#define ENCODECONTROL_H

#include "streamingencodecontrol.h"
#include "videoencoder.h"

#include <atomic>
#include <optional>

class EncodeControl : public StreamingEncodeControl
{
    Q_OBJECT
    Q_PROPERTY(quint64 encodedFrames READ encodedFrames)
    Q_PROPERTY(quint64 refusedFrames READ refusedFrames)
    Q_PROPERTY(quint64 droppedFrames READ droppedFrames)
    Q_PROPERTY(quint64 skippedFrames READ skippedFrames)

public:
    explicit EncodeControl(QObject *parent = nullptr);

    QStringList supportedCodecs(bool hardwareOnly) const override;
    QList<QVideoFrame::PixelFormat> supportedPixelFormats() const override;
    QFLEncoder::Status status() const override;

    QVideoEncoderSettings videoSettings() const;
    void setVideoSettings(const QVideoEncoderSettings &settings);
    QVideoEncoderSettings streamSettings() const override;

    bool start(const QVideoSurfaceFormat &format) override;
    void drain() override;
    void flush() override;
    void stop() override;
    bool encode(const QVideoFrame &frame) override;

    void requestKeyFrame() override;
    int capacity() const override;
    int pending() override;
    int undelivered() override;

    quint64 encodedFrames() const;
    quint64 refusedFrames() const;
    quint64 droppedFrames() const;
    quint64 skippedFrames() const;

private:
    bool startRun();
    bool startPipeline();
    bool fallBack();
    bool setStatus(QFLEncoder::Status status);
    void endRun();
    void handlePipelineError(Pipeline::ErrorKind kind, const QString &text);
    void handleDrained();
    void handleFrame(const QFLEncodedVideoFrame &frame);
    void logLostFrames();

    struct Failure
    {
        QFLEncoder::Error code = QFLEncoder::NoError;
        QString text;
    };

    VideoEncoder m_encoder;
    std::optional<EncoderConfiguration> m_configuration;
    Failure m_failure;
    QVideoEncoderSettings m_settings;
    QVideoEncoderSettings m_streamSettings;
    bool m_isStartingPipeline = false;
    bool m_isDraining = false;
    QElapsedTimer m_sinceLog;
    quint64 m_loggedLosses = 0;
    std::atomic<QFLEncoder::Status> m_status = QFLEncoder::UnavailableStatus;
    Run m_run;
};

#endif
