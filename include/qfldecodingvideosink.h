// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The sink that feeds a decoder.

#ifndef QFLDECODINGVIDEOSINK_H
#define QFLDECODINGVIDEOSINK_H

#include "qfldecoder.h"
#include "qflencodedvideosink.h"

class QFLDecodingVideoSinkPrivate;

class Q_FACELINK_EXPORT QFLDecodingVideoSink : public QObject, public QFLEncodedVideoSink
{
    Q_OBJECT
    Q_INTERFACES(QFLEncodedVideoSink : QFLSink)

public:
    explicit QFLDecodingVideoSink(QFLDecoder *decoder);
    ~QFLDecodingVideoSink() override;

    bool isFormatSupported(const QVideoEncoderSettings &settings) const override;
    bool start(const QVideoEncoderSettings &settings) override;
    bool encodedVideoFrame(const QFLEncodedVideoFrame &frame) override;
    void drain() override;
    void stop() override;

private:
    Q_DISABLE_COPY(QFLDecodingVideoSink)
    Q_PRIVATE_SLOT(d, void _q_error(QFLDecoder::Error))
    Q_PRIVATE_SLOT(d, void _q_statusChanged(QFLDecoder::Status))

    QScopedPointer<QFLDecodingVideoSinkPrivate> d;
};

#endif
