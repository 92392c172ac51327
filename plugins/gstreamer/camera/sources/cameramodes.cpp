// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The capture modes of a camera device.

#include "cameramodes.h"

#include "videoformat.h"

#include <algorithm>
#include <tuple>

namespace {

template<typename Visitor> void forEachValue(const GValue *value, Visitor visit)
{
    if (!value)
        return;
    if (!GST_VALUE_HOLDS_LIST(value)) {
        visit(value);
        return;
    }
    for (guint index = 0; index < gst_value_list_get_size(value); ++index)
        visit(gst_value_list_get_value(value, index));
}

QVector<int> lengths(const GstStructure *structure, const char *field)
{
    QVector<int> lengths;
    forEachValue(gst_structure_get_value(structure, field), [&lengths](const GValue *value) {
        if (G_VALUE_HOLDS_INT(value))
            lengths.append(g_value_get_int(value));
        else if (GST_VALUE_HOLDS_INT_RANGE(value))
            lengths.append(gst_value_get_int_range_max(value));
    });
    return lengths;
}

qreal frameRate(const GValue *fraction)
{
    return qreal(gst_value_get_fraction_numerator(fraction))
            / gst_value_get_fraction_denominator(fraction);
}

QVector<QPair<qreal, qreal>> frameRates(const GstStructure *structure)
{
    QVector<QPair<qreal, qreal>> rates;
    forEachValue(gst_structure_get_value(structure, "framerate"), [&rates](const GValue *value) {
        if (GST_VALUE_HOLDS_FRACTION(value))
            rates.append({frameRate(value), frameRate(value)});
        else if (GST_VALUE_HOLDS_FRACTION_RANGE(value))
            rates.append({frameRate(gst_value_get_fraction_range_min(value)),
                          frameRate(gst_value_get_fraction_range_max(value))});
    });
    return rates;
}

QVector<QVideoFrame::PixelFormat> pixelFormats(const GstStructure *structure)
{
    QVector<QVideoFrame::PixelFormat> formats;
    forEachValue(gst_structure_get_value(structure, "format"), [&formats](const GValue *value) {
        if (!G_VALUE_HOLDS_STRING(value))
            return;
        const GstVideoFormat format = gst_video_format_from_string(g_value_get_string(value));
        if (VideoFormat::fromGst(format) != QVideoFrame::Format_Invalid)
            formats.append(VideoFormat::fromGst(format));
    });
    return formats;
}

void append(QVector<CameraMode> *modes, const GstStructure *structure, const CameraMode &kind)
{
    const auto widths = lengths(structure, "width");
    const auto heights = lengths(structure, "height");
    const auto allRates = frameRates(structure);
    for (int width : widths) {
        for (int height : heights) {
            for (const QPair<qreal, qreal> &rates : allRates) {
                CameraMode mode = kind;
                mode.size = QSize(width, height);
                mode.minimumFrameRate = rates.first;
                mode.maximumFrameRate = rates.second;
                modes->append(mode);
            }
        }
    }
}

// What using a mode costs, the worst first: a picture made larger, frames that are missing, pixels
// thrown away, decoding, another format, frames thrown away.
using Cost = std::tuple<int, qreal, int, bool, bool, qreal>;

int area(const QSize &size)
{
    return size.width() * size.height();
}

Cost cost(const CameraMode &mode, const QSize &size, qreal frameRate,
          QVideoFrame::PixelFormat pixelFormat)
{
    const int missingPixels = qMax(0, area(size) - area(mode.size.boundedTo(size)));
    const qreal missingFrames = qMax(0.0, frameRate - mode.maximumFrameRate);
    const int sparePixels = qMax(0, area(mode.size) - area(size));
    const qreal spareFrames = qMax(0.0, mode.minimumFrameRate - frameRate);
    return {missingPixels,
            missingFrames,
            sparePixels,
            mode.isMotionJpeg,
            mode.pixelFormat != pixelFormat,
            spareFrames};
}

} // namespace

/*!
    The modes that \a caps, those of a device, list: raw frames in system memory in the formats that
    Qt knows, and Motion JPEG. Of a range of sizes only the largest is listed.
*/
QVector<CameraMode> CameraModes::fromCaps(const GstCaps *caps)
{
    QVector<CameraMode> modes;
    for (guint index = 0; index < gst_caps_get_size(caps); ++index) {
        const GstStructure *structure = gst_caps_get_structure(caps, index);
        if (!gst_caps_features_is_equal(gst_caps_get_features(caps, index),
                                        GST_CAPS_FEATURES_MEMORY_SYSTEM_MEMORY))
            continue;
        CameraMode kind;
        kind.isMotionJpeg = gst_structure_has_name(structure, "image/jpeg");
        if (kind.isMotionJpeg) {
            append(&modes, structure, kind);
        } else if (gst_structure_has_name(structure, "video/x-raw")) {
            const auto formats = pixelFormats(structure);
            for (QVideoFrame::PixelFormat format : formats) {
                kind.pixelFormat = format;
                append(&modes, structure, kind);
            }
        }
    }
    return modes;
}

/*!
    The one of \a modes, which must not be empty, from which \a size at \a frameRate is made in
    \a pixelFormat with the least loss and then the least work; the first of several equals.
*/
CameraMode CameraModes::best(const QVector<CameraMode> &modes, const QSize &size, qreal frameRate,
                             QVideoFrame::PixelFormat pixelFormat)
{
    return *std::min_element(modes.cbegin(), modes.cend(),
                             [&](const CameraMode &left, const CameraMode &right) {
                                 return cost(left, size, frameRate, pixelFormat)
                                         < cost(right, size, frameRate, pixelFormat);
                             });
}
