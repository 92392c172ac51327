// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-3.0-or-later
// Checks and completes what an encoder is asked to do.

#include "encoderconfiguration.h"

#include "gstreamersetup.h"
#include "videoformat.h"

#include <QtCore/qdebug.h>

namespace {

constexpr int smallestSide = 16;
constexpr int largestSide = 4096;

// 36864 macroblocks of 16x16 pixels, the most of level 5.2 in Table A-1 of ITU-T H.264.
constexpr int largestArea = 36864 * 16 * 16;
constexpr int smallestBitRate = 150000;
constexpr qreal usualFrameRate = 30;

qreal effectiveFrameRate(qreal available, qreal wanted)
{
    if (available <= 0)
        return wanted > 0 ? wanted : usualFrameRate;
    return wanted > 0 ? qMin(available, wanted) : available;
}

// Bits per pixel that leave a talking head without visible blocks at each quality.
qreal bitsPerPixel(QMultimedia::EncodingQuality quality)
{
    switch (quality) {
    case QMultimedia::VeryLowQuality:
        return 0.02;
    case QMultimedia::LowQuality:
        return 0.04;
    case QMultimedia::HighQuality:
        return 0.11;
    case QMultimedia::VeryHighQuality:
        return 0.16;
    default:
        return 0.07;
    }
}

} // namespace

QSize EncoderConfiguration::smallestSize()
{
    return QSize(smallestSide, smallestSide);
}

QSize EncoderConfiguration::largestSize()
{
    return QSize(largestSide, largestSide);
}

/*!
    Works out how frames of \a format become a stream with \a settings. What the settings leave open
    (codec, size, frame rate, bit rate) follows from the frames. When that can't be done error() is
    not NoError, and the other values mean nothing.
*/
EncoderConfiguration::EncoderConfiguration(const QVideoSurfaceFormat &format,
                                           const QVideoEncoderSettings &settings)
    : m_settings(settings)
{
    gst_video_info_init(&m_inputInfo);
    if (settings.resolution().isEmpty())
        m_settings.setResolution(format.frameSize());
    if (!checkCodec(settings.codec()) || !checkFormat(format) || !checkSize(outputSize()))
        return;

    m_settings.setCodec(m_element.codec);
    const bool isFaster = format.frameRate() <= 0 || format.frameRate() > settings.frameRate();
    m_largestFrameRate = settings.frameRate() > 0 && isFaster ? settings.frameRate() : 0;
    m_settings.setFrameRate(effectiveFrameRate(format.frameRate(), settings.frameRate()));
    if (settings.bitRate() <= 0) {
        const qreal pixelRate = frameRate() * outputSize().width() * outputSize().height();
        m_settings.setBitRate(
                qMax(smallestBitRate, int(pixelRate * bitsPerPixel(settings.quality()))));
    }
}

QFLEncoder::Error EncoderConfiguration::error() const
{
    return m_error;
}

QString EncoderConfiguration::errorText() const
{
    return m_errorText;
}

CodecElement EncoderConfiguration::element() const
{
    return m_element;
}

const GstVideoInfo &EncoderConfiguration::inputInfo() const
{
    return m_inputInfo;
}

QSize EncoderConfiguration::outputSize() const
{
    return m_settings.resolution();
}

qreal EncoderConfiguration::frameRate() const
{
    return m_settings.frameRate();
}

/*! The rate above which frames have to be left out, 0 when none do. */
qreal EncoderConfiguration::largestFrameRate() const
{
    return m_largestFrameRate;
}

/*! In bits per second. */
int EncoderConfiguration::bitRate() const
{
    return m_settings.bitRate();
}

/*!
    The settings of the stream to come, complete, and with the codec's name even if an id was asked
    for.
*/
QVideoEncoderSettings EncoderConfiguration::streamSettings() const
{
    return m_settings;
}

bool EncoderConfiguration::checkCodec(const QString &codec)
{
    QString setupError;
    if (!GStreamerSetup::initialize(&setupError))
        return fail(QFLEncoder::ResourceError, setupError);
    m_element = Codecs::find(Codecs::encoders(), codec);
    if (!m_element.factoryName.isEmpty())
        return true;
    return fail(QFLEncoder::ResourceError,
                codec.isEmpty() ? tr("There is no encoder")
                                : tr("There is no encoder for \"%1\"").arg(codec));
}

bool EncoderConfiguration::checkFormat(const QVideoSurfaceFormat &format)
{
    if (VideoFormat::toGst(format.pixelFormat()) == GST_VIDEO_FORMAT_UNKNOWN) {
        QString name;
        QDebug(&name).nospace() << format.pixelFormat();
        return fail(QFLEncoder::FormatError, tr("%1 frames cannot be encoded").arg(name));
    }
    if (!checkSize(format.frameSize()))
        return false;
    if (!VideoFormat::toGst(format, &m_inputInfo))
        return fail(QFLEncoder::FormatError, tr("The frames' format cannot be encoded"));
    return true;
}

bool EncoderConfiguration::checkSize(const QSize &size)
{
    const QSize bounded = size.boundedTo(largestSize()).expandedTo(smallestSize());
    const bool isEven = size.width() % 2 == 0 && size.height() % 2 == 0;
    if (size == bounded && isEven && size.width() * size.height() <= largestArea)
        return true;
    return fail(QFLEncoder::FormatError,
                tr("Video of %1x%2 pixels cannot be encoded: both must be even and from %3 to %4, "
                   "with %5 pixels at most")
                        .arg(size.width())
                        .arg(size.height())
                        .arg(smallestSide)
                        .arg(largestSide)
                        .arg(largestArea));
}

bool EncoderConfiguration::fail(QFLEncoder::Error error, const QString &text)
{
    m_error = error;
    m_errorText = text;
    return false;
}
