// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// How the pixel and surface formats of Qt correspond to those of GStreamer.

#include "videoformat.h"

namespace {

struct FormatPair
{
    QVideoFrame::PixelFormat qt;
    GstVideoFormat gst;
};

// Qt names the 32-bit formats as native-endian words, GStreamer as bytes in memory. Where several
// Qt formats share one of GStreamer's, the first one is what a GStreamer format becomes.
const FormatPair formatPairs[] = {
        {QVideoFrame::Format_YUV420P, GST_VIDEO_FORMAT_I420},
        {QVideoFrame::Format_YV12, GST_VIDEO_FORMAT_YV12},
        {QVideoFrame::Format_NV12, GST_VIDEO_FORMAT_NV12},
        {QVideoFrame::Format_NV21, GST_VIDEO_FORMAT_NV21},
        {QVideoFrame::Format_YUYV, GST_VIDEO_FORMAT_YUY2},
        {QVideoFrame::Format_UYVY, GST_VIDEO_FORMAT_UYVY},
        {QVideoFrame::Format_YUV422P, GST_VIDEO_FORMAT_Y42B},
        {QVideoFrame::Format_YUV444, GST_VIDEO_FORMAT_v308},
        {QVideoFrame::Format_AYUV444, GST_VIDEO_FORMAT_AYUV},
        {QVideoFrame::Format_Y8, GST_VIDEO_FORMAT_GRAY8},
        {QVideoFrame::Format_RGB24, GST_VIDEO_FORMAT_RGB},
        {QVideoFrame::Format_BGR24, GST_VIDEO_FORMAT_BGR},
#if Q_BYTE_ORDER == Q_LITTLE_ENDIAN
        {QVideoFrame::Format_RGB32, GST_VIDEO_FORMAT_BGRx},
        {QVideoFrame::Format_ARGB32, GST_VIDEO_FORMAT_BGRA},
        {QVideoFrame::Format_ARGB32_Premultiplied, GST_VIDEO_FORMAT_BGRA},
        {QVideoFrame::Format_BGR32, GST_VIDEO_FORMAT_xRGB},
        {QVideoFrame::Format_BGRA32, GST_VIDEO_FORMAT_ARGB},
        {QVideoFrame::Format_BGRA32_Premultiplied, GST_VIDEO_FORMAT_ARGB},
        {QVideoFrame::Format_ABGR32, GST_VIDEO_FORMAT_RGBA},
        {QVideoFrame::Format_Y16, GST_VIDEO_FORMAT_GRAY16_LE},
#else
        {QVideoFrame::Format_RGB32, GST_VIDEO_FORMAT_xRGB},
        {QVideoFrame::Format_ARGB32, GST_VIDEO_FORMAT_ARGB},
        {QVideoFrame::Format_ARGB32_Premultiplied, GST_VIDEO_FORMAT_ARGB},
        {QVideoFrame::Format_BGR32, GST_VIDEO_FORMAT_BGRx},
        {QVideoFrame::Format_BGRA32, GST_VIDEO_FORMAT_BGRA},
        {QVideoFrame::Format_BGRA32_Premultiplied, GST_VIDEO_FORMAT_BGRA},
        {QVideoFrame::Format_ABGR32, GST_VIDEO_FORMAT_ABGR},
        {QVideoFrame::Format_Y16, GST_VIDEO_FORMAT_GRAY16_BE},
#endif
        {QVideoFrame::Format_RGB565, GST_VIDEO_FORMAT_RGB16},
        {QVideoFrame::Format_RGB555, GST_VIDEO_FORMAT_RGB15},
        {QVideoFrame::Format_BGR565, GST_VIDEO_FORMAT_BGR16},
        {QVideoFrame::Format_BGR555, GST_VIDEO_FORMAT_BGR15},
};

void setFrameRate(GstVideoInfo *info, qreal frameRate)
{
    if (frameRate <= 0)
        return;
    const GstClockTime duration = GstClockTime(GST_SECOND / frameRate);
    if (!gst_video_guess_framerate(duration, &info->fps_n, &info->fps_d))
        gst_util_double_to_fraction(frameRate, &info->fps_n, &info->fps_d);
}

void setColorSpace(GstVideoInfo *info, QVideoSurfaceFormat::YCbCrColorSpace colorSpace)
{
    if (!GST_VIDEO_INFO_IS_YUV(info))
        return;
    switch (colorSpace) {
    case QVideoSurfaceFormat::YCbCr_BT601:
    case QVideoSurfaceFormat::YCbCr_xvYCC601:
        gst_video_colorimetry_from_string(&info->colorimetry, GST_VIDEO_COLORIMETRY_BT601);
        break;
    case QVideoSurfaceFormat::YCbCr_BT709:
    case QVideoSurfaceFormat::YCbCr_xvYCC709:
        gst_video_colorimetry_from_string(&info->colorimetry, GST_VIDEO_COLORIMETRY_BT709);
        break;
    case QVideoSurfaceFormat::YCbCr_JPEG:
        gst_video_colorimetry_from_string(&info->colorimetry, GST_VIDEO_COLORIMETRY_BT601);
        info->colorimetry.range = GST_VIDEO_COLOR_RANGE_0_255;
        break;
    default:
        break;
    }
}

QVideoSurfaceFormat::YCbCrColorSpace colorSpace(const GstVideoInfo &info)
{
    const bool isFullRange = info.colorimetry.range == GST_VIDEO_COLOR_RANGE_0_255;
    if (!GST_VIDEO_INFO_IS_YUV(&info))
        return QVideoSurfaceFormat::YCbCr_Undefined;
    if (info.colorimetry.matrix == GST_VIDEO_COLOR_MATRIX_BT709)
        return QVideoSurfaceFormat::YCbCr_BT709;
    if (info.colorimetry.matrix == GST_VIDEO_COLOR_MATRIX_BT601)
        return isFullRange ? QVideoSurfaceFormat::YCbCr_JPEG : QVideoSurfaceFormat::YCbCr_BT601;
    return QVideoSurfaceFormat::YCbCr_Undefined;
}

} // namespace

/*! All formats that both know, those first that video codecs work on. */
QList<QVideoFrame::PixelFormat> VideoFormat::pixelFormats()
{
    QList<QVideoFrame::PixelFormat> result;
    for (const FormatPair &pair : formatPairs)
        result.append(pair.qt);
    return result;
}

/*! GST_VIDEO_FORMAT_UNKNOWN when GStreamer has no such format. */
GstVideoFormat VideoFormat::toGst(QVideoFrame::PixelFormat format)
{
    for (const FormatPair &pair : formatPairs) {
        if (pair.qt == format)
            return pair.gst;
    }
    return GST_VIDEO_FORMAT_UNKNOWN;
}

/*! QVideoFrame::Format_Invalid when Qt has no such format. */
QVideoFrame::PixelFormat VideoFormat::fromGst(GstVideoFormat format)
{
    for (const FormatPair &pair : formatPairs) {
        if (pair.gst == format)
            return pair.qt;
    }
    return QVideoFrame::Format_Invalid;
}

/*! Whether GStreamer has \a format and its counterpart leads back to it. */
bool VideoFormat::isExact(QVideoFrame::PixelFormat format)
{
    return format != QVideoFrame::Format_Invalid && fromGst(toGst(format)) == format;
}

/*!
    Describes frames of \a format in \a info; false, with \a info undefined, when the size is empty
    or GStreamer has no such pixel format. A frame rate of 0 becomes GStreamer's 0/1, "variable".
*/
bool VideoFormat::toGst(const QVideoSurfaceFormat &format, GstVideoInfo *info)
{
    const GstVideoFormat pixelFormat = toGst(format.pixelFormat());
    const QSize size = format.frameSize();
    if (pixelFormat == GST_VIDEO_FORMAT_UNKNOWN || size.isEmpty())
        return false;
    if (!gst_video_info_set_format(info, pixelFormat, guint(size.width()), guint(size.height())))
        return false;

    setFrameRate(info, format.frameRate());
    setColorSpace(info, format.yCbCrColorSpace());
    if (!format.pixelAspectRatio().isEmpty()) {
        info->par_n = format.pixelAspectRatio().width();
        info->par_d = format.pixelAspectRatio().height();
    }
    return true;
}

/*! An invalid surface format when Qt doesn't have the pixel format of \a info. */
QVideoSurfaceFormat VideoFormat::fromGst(const GstVideoInfo &info)
{
    const QVideoFrame::PixelFormat pixelFormat = fromGst(GST_VIDEO_INFO_FORMAT(&info));
    if (pixelFormat == QVideoFrame::Format_Invalid)
        return QVideoSurfaceFormat();

    QVideoSurfaceFormat format(QSize(info.width, info.height), pixelFormat);
    if (info.fps_n > 0 && info.fps_d > 0)
        format.setFrameRate(qreal(info.fps_n) / info.fps_d);
    if (info.par_n > 0 && info.par_d > 0)
        format.setPixelAspectRatio(info.par_n, info.par_d);
    format.setYCbCrColorSpace(colorSpace(info));
    return format;
}
