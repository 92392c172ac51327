// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Turns raw frames into encoded ones.

#ifndef MINIMALENCODECONTROL_H
#define MINIMALENCODECONTROL_H

#include "runlengthcodec.h"

#include <qflencodecontrol.h>

#include <QtCore/qmutex.h>
#include <QtCore/qqueue.h>
#include <QtMultimedia/qmediaencodersettings.h>

class MinimalEncodeControl : public QFLEncodeControl
{
    Q_OBJECT

public:
    explicit MinimalEncodeControl(QObject *parent);

    QStringList supportedCodecs(bool hardwareOnly) const override;
    QList<QVideoFrame::PixelFormat> supportedPixelFormats() const override;
    QFLEncoder::Status status() const override;

    QVideoEncoderSettings videoSettings() const;
    void setVideoSettings(const QVideoEncoderSettings &settings);
    QVideoEncoderSettings streamSettings() const;

    bool start(const QVideoSurfaceFormat &format) override;
    void drain() override;
    void flush() override;
    void stop() override;
    bool encode(const QVideoFrame &frame) override;

    void requestKeyFrame();

Q_SIGNALS:
    void streamStarted();
    void streamedFrame(const QFLEncodedVideoFrame &frame);
    void streamDrained();
    void streamStopped();

private:
    QString startError(const QVideoSurfaceFormat &format) const;
    bool isRun(int run) const;
    int endRun();
    void beginStream(int run);
    void endStream(int run);
    void encodeNext(int run);
    void handOut(const QFLEncodedVideoFrame &frame, int run);
    void finishDraining(int run);

    mutable QMutex m_mutex;
    QVideoEncoderSettings m_settings;
    QVideoSurfaceFormat m_format;
    QQueue<QVideoFrame> m_queue;
    int m_run = 0;
    bool m_isStarted = false;
    bool m_isDraining = false;
    bool m_needsKeyFrame = true;

    QVideoEncoderSettings m_streamSettings;
    RunLengthCodec m_codec;
};

#endif
