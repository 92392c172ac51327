// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// What the viewfinder settings ask of a source.

#include "capturesettings.h"

#include "videoformat.h"

#include <QtCore/qcoreapplication.h>

namespace {

const int largestEdge = 8192;
const qreal highestFrameRate = 1000;

// Those that every encoder and most surfaces take, so that a frame is converted once at most.
const char usualFormats[] = "{ I420, NV12, YV12, NV21 }";

QString text(const char *sourceText)
{
    return QCoreApplication::translate("CaptureSettings", sourceText);
}

bool isPossible(const QSize &resolution)
{
    return resolution.width() <= largestEdge && resolution.height() <= largestEdge;
}

bool isPossible(qreal minimumFrameRate, qreal maximumFrameRate)
{
    return minimumFrameRate >= 0 && maximumFrameRate >= 0 && minimumFrameRate <= highestFrameRate
            && maximumFrameRate <= highestFrameRate
            && (maximumFrameRate == 0 || minimumFrameRate <= maximumFrameRate);
}

} // namespace

/*! Settings with square pixels; the rates are in frames per second. */
QCameraViewfinderSettings CaptureSettings::make(const QSize &resolution, qreal minimumFrameRate,
                                                qreal maximumFrameRate,
                                                QVideoFrame::PixelFormat pixelFormat)
{
    QCameraViewfinderSettings settings;
    settings.setResolution(resolution);
    settings.setMinimumFrameRate(minimumFrameRate);
    settings.setMaximumFrameRate(maximumFrameRate);
    settings.setPixelAspectRatio(1, 1);
    settings.setPixelFormat(pixelFormat);
    return settings;
}

/*!
    What \a requested asks for, with \a defaults where it leaves a field open. The maximum frame
    rate is the rate at which a source then runs.
*/
QCameraViewfinderSettings CaptureSettings::complete(const QCameraViewfinderSettings &requested,
                                                    const QCameraViewfinderSettings &defaults)
{
    const QSize resolution = requested.resolution();
    const qreal minimum = requested.minimumFrameRate();
    const qreal maximum = requested.maximumFrameRate();
    const QVideoFrame::PixelFormat pixelFormat = requested.pixelFormat();
    const qreal rate = maximum > 0 ? maximum : qMax(minimum, defaults.maximumFrameRate());
    return make(resolution.isEmpty() ? defaults.resolution() : resolution,
                minimum > 0 ? minimum : rate, rate,
                pixelFormat == QVideoFrame::Format_Invalid ? defaults.pixelFormat() : pixelFormat);
}

/*! The first value of \a requested that no source can give, named in the text; or no failure. */
CameraFailure CaptureSettings::check(const QCameraViewfinderSettings &requested)
{
    const QSize resolution = requested.resolution();
    if (!isPossible(resolution)) {
        return {QCamera::InvalidRequestError,
                text("The resolution %1x%2 is not possible")
                        .arg(resolution.width())
                        .arg(resolution.height())};
    }
    if (!isPossible(requested.minimumFrameRate(), requested.maximumFrameRate())) {
        return {QCamera::InvalidRequestError,
                text("The frame rate %1 to %2 is not possible")
                        .arg(requested.minimumFrameRate())
                        .arg(requested.maximumFrameRate())};
    }
    const QVideoFrame::PixelFormat format = requested.pixelFormat();
    if (format != QVideoFrame::Format_Invalid
        && VideoFormat::toGst(format) == GST_VIDEO_FORMAT_UNKNOWN) {
        return {QCamera::NotSupportedFeatureError,
                text("The pixel format %1 is not supported").arg(int(format))};
    }
    return {};
}

/*!
    Caps in GStreamer's text form for frames of \a resolution, of any size when that is empty, in
    \a pixelFormat or, when that is invalid, in a format that needs no conversion later on.
*/
QString CaptureSettings::rawCaps(const QSize &resolution, QVideoFrame::PixelFormat pixelFormat)
{
    const GstVideoFormat format = VideoFormat::toGst(pixelFormat);
    QString caps = QStringLiteral("video/x-raw,format=%1")
                           .arg(QLatin1String(format == GST_VIDEO_FORMAT_UNKNOWN
                                                      ? usualFormats
                                                      : gst_video_format_to_string(format)));
    if (!resolution.isEmpty()) {
        caps += QStringLiteral(",width=%1,height=%2,pixel-aspect-ratio=1/1")
                        .arg(resolution.width())
                        .arg(resolution.height());
    }
    return caps;
}

/*! The field of such caps that stands for \a frameRate, in frames per second. */
QString CaptureSettings::frameRateField(qreal frameRate)
{
    int numerator = 0;
    int denominator = 1;
    if (!gst_video_guess_framerate(GstClockTime(GST_SECOND / frameRate), &numerator, &denominator))
        gst_util_double_to_fraction(frameRate, &numerator, &denominator);
    return QStringLiteral("framerate=%1/%2").arg(numerator).arg(denominator);
}
