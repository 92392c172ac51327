// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Checks and completes what an encoder is asked to do.

#include "encoderconfiguration.h"

#include "encodertraits.h"
#include "gstpointers.h"
#include "gstreamersetup.h"
#include "videoformat.h"

#include <QtCore/qdebug.h>

namespace {

constexpr int largestSide = 4096;

// 36864 macroblocks of 16x16 pixels, the most of level 5.2 in Table A-1 of ITU-T H.264.
constexpr int largestArea = 36864 * 16 * 16;
constexpr int smallestBitRate = 150000;
constexpr qreal usualFrameRate = 30;
constexpr qreal plausibleFrameRate = 1000;
constexpr qreal ceilingOfConstantQuality = 2;

// Cameras may not know their rate or make one up.
bool isKnownRate(qreal rate)
{
    return rate >= EncoderConfiguration::lowestFrameRate && rate <= plausibleFrameRate;
}

using RangeEnd = gint (*)(const GValue *);

int sideOf(const GstStructure *caps, const char *side, RangeEnd end, int usual)
{
    const GValue *range = gst_structure_get_value(caps, side);
    const bool isRange = range && GST_VALUE_HOLDS_INT_RANGE(range);
    return isRange ? qMin(end(range), largestSide) : usual;
}

// What the element's kind takes by its own account, within what has been tried out.
QSize limitOf(const CodecElement &element, RangeEnd end, int usual)
{
    QSize result(usual, usual);
    const GstElementFactoryPointer factory(
            gst_element_factory_find(element.factoryName.constData()));
    const GList *node
            = factory ? gst_element_factory_get_static_pad_templates(factory.get()) : nullptr;
    for (; node; node = node->next) {
        auto *padTemplate = static_cast<GstStaticPadTemplate *>(node->data);
        const GstCapsPointer caps(gst_static_pad_template_get_caps(padTemplate));
        if (padTemplate->direction != GST_PAD_SINK || gst_caps_get_size(caps.get()) == 0)
            continue;
        const GstStructure *structure = gst_caps_get_structure(caps.get(), 0);
        result = QSize(sideOf(structure, "width", end, usual),
                       sideOf(structure, "height", end, usual));
    }
    return result;
}

// How fine the quantizer may get for each quality, as a share of the coarsest: no difference can be
// seen at the best, and blocks can be at the worst.
qreal quantizerShare(QMultimedia::EncodingQuality quality)
{
    switch (quality) {
    case QMultimedia::VeryLowQuality:
        return 0.7;
    case QMultimedia::LowQuality:
        return 0.6;
    case QMultimedia::HighQuality:
        return 0.44;
    case QMultimedia::VeryHighQuality:
        return 0.36;
    default:
        return 0.52;
    }
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

/*! The smallest width and the smallest height that \a element takes. */
QSize EncoderConfiguration::smallestSize(const CodecElement &element)
{
    const int smallestSide = EncoderTraits::of(element.factoryName).smallestSide;
    return limitOf(element, gst_value_get_int_range_min, smallestSide)
            .expandedTo(QSize(smallestSide, smallestSide));
}

/*! The largest width and the largest height, which it may not take together. */
QSize EncoderConfiguration::largestSize(const CodecElement &element)
{
    return limitOf(element, gst_value_get_int_range_max, largestSide);
}

/*!
    \class EncoderConfiguration

    An encoder's task: which element makes what of which frames. It doesn't change, but for the
    element when that fails.
*/

/*!
    Works out how frames of \a format become a stream with \a settings. What the settings leave open
    (codec, size, frame rate, bit rate) follows from the frames; a rate of the frames that can't be
    true counts as unknown. When that can't be done error() is not NoError, and the other values
    mean nothing.

    A bit rate in the settings rules, whatever the encoding mode. Without one, constant quality
    limits the quantizer, under a generous bit rate as the ceiling, and the other modes aim at the
    bit rate that the quality usually takes.
*/
EncoderConfiguration::EncoderConfiguration(const QVideoSurfaceFormat &format,
                                           const QVideoEncoderSettings &settings)
    : m_settings(settings)
{
    gst_video_info_init(&m_inputInfo);
    if (settings.resolution().isEmpty())
        m_settings.setResolution(format.frameSize());
    if (!checkCodec(settings.codec()) || !checkFormat(format) || !checkSize(outputSize())
        || !checkFrameRate(settings.frameRate()))
        return;

    m_settings.setCodec(element().codec);
    completeFrameRate(format.frameRate());
    if (settings.bitRate() <= 0)
        completeBitRate();
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
    return m_elements.value(0);
}

/*!
    Turns to the next element, after one in hardware has failed. False if there is no other, or the
    application named the element and not the codec.
*/
bool EncoderConfiguration::fallBack()
{
    if (!element().isHardwareAccelerated || m_elements.size() < 2)
        return false;
    m_elements.removeFirst();
    return true;
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
    The finest quantizer to use for constant quality, as a share of the coarsest that the codec has;
    0 when the bit rate alone decides.
*/
qreal EncoderConfiguration::finestQuantizer() const
{
    return m_finestQuantizer;
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
    m_elements = CodecElements::findAll(CodecElements::encoders(), codec);
    if (!m_elements.isEmpty())
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
    QVideoSurfaceFormat plausible = format;
    plausible.setFrameRate(isKnownRate(format.frameRate()) ? format.frameRate() : 0);
    if (!VideoFormat::toGst(plausible, &m_inputInfo))
        return fail(QFLEncoder::FormatError, tr("The frames' format cannot be encoded"));
    return true;
}

bool EncoderConfiguration::checkSize(const QSize &size)
{
    const QSize smallest = smallestSize(element());
    const QSize largest = largestSize(element());
    const QSize bounded = size.boundedTo(largest).expandedTo(smallest);
    const bool isEven = size.width() % 2 == 0 && size.height() % 2 == 0;
    if (size == bounded && isEven && size.width() * size.height() <= largestArea)
        return true;
    return fail(QFLEncoder::FormatError,
                tr("Video of %1x%2 pixels cannot be encoded: both must be even and from %3x%4 to "
                   "%5x%6, with %7 pixels at most")
                        .arg(size.width())
                        .arg(size.height())
                        .arg(smallest.width())
                        .arg(smallest.height())
                        .arg(largest.width())
                        .arg(largest.height())
                        .arg(largestArea));
}

/*! 0 leaves the rate to the frames. */
bool EncoderConfiguration::checkFrameRate(qreal rate)
{
    if (rate == 0 || (rate >= lowestFrameRate && rate <= highestFrameRate))
        return true;
    return fail(QFLEncoder::FormatError,
                tr("Video of %1 frames a second cannot be encoded: the rate must be from %2 to %3")
                        .arg(rate)
                        .arg(lowestFrameRate)
                        .arg(highestFrameRate));
}

void EncoderConfiguration::completeFrameRate(qreal available)
{
    const qreal wanted = m_settings.frameRate();
    if (wanted > 0 && !(isKnownRate(available) && available <= wanted))
        m_largestFrameRate = wanted;
    const qreal usual = wanted > 0 ? wanted : usualFrameRate;
    const qreal rate = isKnownRate(available) ? available : usual;
    m_settings.setFrameRate(
            qBound(lowestFrameRate, wanted > 0 ? qMin(rate, wanted) : rate, highestFrameRate));
}

void EncoderConfiguration::completeBitRate()
{
    const QMultimedia::EncodingQuality quality = m_settings.quality();
    const qreal pixelRate = frameRate() * outputSize().width() * outputSize().height();
    qreal bitRate = pixelRate * bitsPerPixel(quality);
    if (m_settings.encodingMode() == QMultimedia::ConstantQualityEncoding) {
        m_finestQuantizer = quantizerShare(quality);
        bitRate *= ceilingOfConstantQuality;
    }
    m_settings.setBitRate(qMax(smallestBitRate, int(bitRate)));
}

bool EncoderConfiguration::fail(QFLEncoder::Error error, const QString &text)
{
    m_error = error;
    m_errorText = text;
    return false;
}
