// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Checks and completes what an encoder is asked to do.

#ifndef ENCODERCONFIGURATION_H
#define ENCODERCONFIGURATION_H

#include "codecelements.h"
#include "qflencoder.h"

#include <QtCore/qcoreapplication.h>
#include <QtMultimedia/qmediaencodersettings.h>
#include <QtMultimedia/qvideosurfaceformat.h>

#include <gst/video/video.h>

class EncoderConfiguration
{
    Q_DECLARE_TR_FUNCTIONS(EncoderConfiguration)

public:
    static QSize smallestSize(const CodecElement &element);
    static QSize largestSize(const CodecElement &element);
    static constexpr qreal lowestFrameRate = 1;
    static constexpr qreal highestFrameRate = 120;

    EncoderConfiguration(const QVideoSurfaceFormat &format, const QVideoEncoderSettings &settings);

    QFLEncoder::Error error() const;
    QString errorText() const;

    CodecElement element() const;
    bool fallBack();

    const GstVideoInfo &inputInfo() const;
    QSize outputSize() const;
    qreal frameRate() const;
    qreal largestFrameRate() const;
    int bitRate() const;
    qreal finestQuantizer() const;
    QVideoEncoderSettings streamSettings() const;

private:
    bool checkCodec(const QString &codec);
    bool checkFormat(const QVideoSurfaceFormat &format);
    bool checkSize(const QSize &size);
    bool checkFrameRate(qreal rate);
    void completeFrameRate(qreal available);
    void completeBitRate();
    bool fail(QFLEncoder::Error error, const QString &text);

    QFLEncoder::Error m_error = QFLEncoder::NoError;
    QString m_errorText;
    QVector<CodecElement> m_elements;
    GstVideoInfo m_inputInfo;
    QVideoEncoderSettings m_settings;
    qreal m_largestFrameRate = 0;
    qreal m_finestQuantizer = 0;
};

#endif
