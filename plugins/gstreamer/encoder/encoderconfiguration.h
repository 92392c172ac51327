// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-3.0-or-later
// Checks and completes what an encoder is asked to do.

#ifndef ENCODERCONFIGURATION_H
#define ENCODERCONFIGURATION_H

#include "codecs.h"
#include "qflencoder.h"

#include <QtCore/qcoreapplication.h>
#include <QtMultimedia/qmediaencodersettings.h>
#include <QtMultimedia/qvideosurfaceformat.h>

#include <gst/video/video.h>

class EncoderConfiguration
{
    Q_DECLARE_TR_FUNCTIONS(EncoderConfiguration)

public:
    static QSize smallestSize();
    static QSize largestSize();

    EncoderConfiguration(const QVideoSurfaceFormat &format, const QVideoEncoderSettings &settings);

    QFLEncoder::Error error() const;
    QString errorText() const;

    CodecElement element() const;
    const GstVideoInfo &inputInfo() const;
    QSize outputSize() const;
    qreal frameRate() const;
    qreal largestFrameRate() const;
    int bitRate() const;
    QVideoEncoderSettings streamSettings() const;

private:
    bool checkCodec(const QString &codec);
    bool checkFormat(const QVideoSurfaceFormat &format);
    bool checkSize(const QSize &size);
    bool fail(QFLEncoder::Error error, const QString &text);

    QFLEncoder::Error m_error = QFLEncoder::NoError;
    QString m_errorText;
    CodecElement m_element;
    GstVideoInfo m_inputInfo;
    QVideoEncoderSettings m_settings;
    qreal m_largestFrameRate = 0;
};

#endif
