// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// A camera that Video4Linux drives.

#include "video4linuxcamerasource.h"

#include "capturesettings.h"
#include "video4linuxsettings.h"

#include <cerrno>

namespace {

const QSize usualSize(1280, 720);
const qreal usualFrameRate = 30;

QString modeCaps(const CameraMode &mode, qreal frameRate)
{
    const qreal rate = qBound(mode.minimumFrameRate, frameRate, mode.maximumFrameRate);
    const QString kind = mode.isMotionJpeg ? QStringLiteral("image/jpeg")
                                           : CaptureSettings::rawCaps(QSize(), mode.pixelFormat);
    return QStringLiteral("%1,width=%2,height=%3,%4")
            .arg(kind)
            .arg(mode.size.width())
            .arg(mode.size.height())
            .arg(CaptureSettings::frameRateField(rate));
}

/*! Everything behind the device; each step is there only where \a mode isn't what is asked for. */
QString description(const CameraMode &mode, const QCameraViewfinderSettings &settings)
{
    QString steps = QStringLiteral("capsfilter caps=\"%1\" ! ")
                            .arg(modeCaps(mode, settings.maximumFrameRate()));
    if (mode.isMotionJpeg)
        steps += QStringLiteral("jpegdec ! ");
    if (mode.minimumFrameRate > settings.maximumFrameRate()) {
        steps += QStringLiteral("videorate drop-only=true ! video/x-raw,%1 ! ")
                         .arg(CaptureSettings::frameRateField(settings.maximumFrameRate()));
    }
    steps += QStringLiteral("videoconvertscale ! %1 ! ")
                     .arg(CaptureSettings::rawCaps(settings.resolution(), settings.pixelFormat()));
    return steps + QStringLiteral("appsink name=frames sync=false enable-last-sample=false");
}

} // namespace

/*!
    \class Video4LinuxCameraSource

    Knows a device by where it is plugged in, and chooses the mode of it that fits what is asked
    for.
*/

/*! \a port is where the device is plugged in, as Video4LinuxDevices names it. */
Video4LinuxCameraSource::Video4LinuxCameraSource(const QByteArray &port) : m_port(port) { }

CameraFailure Video4LinuxCameraSource::open()
{
    m_device = Video4LinuxDevices::find(m_port);
    if (!m_device.device)
        return {QCamera::CameraError, tr("%1: there is no such camera").arg(displayName())};
    const GstCapsPointer caps(gst_device_get_caps(m_device.device.get()));
    if (caps)
        m_modes = CameraModes::fromCaps(caps.get());
    if (m_modes.isEmpty())
        return {QCamera::CameraError, tr("%1: the camera has no usable format").arg(displayName())};
    return {};
}

/*! The port while no device is there. */
QString Video4LinuxCameraSource::displayName() const
{
    return m_device.device ? m_device.description : QString::fromLocal8Bit(m_port);
}

/*! Motion JPEG counts as the format that it is decoded to; what two modes share is listed once. */
QList<QCameraViewfinderSettings> Video4LinuxCameraSource::supportedSettings() const
{
    QList<QCameraViewfinderSettings> settings;
    for (const CameraMode &mode : m_modes) {
        const QVideoFrame::PixelFormat format
                = mode.isMotionJpeg ? QVideoFrame::Format_YUV420P : mode.pixelFormat;
        const QCameraViewfinderSettings offered = CaptureSettings::make(
                mode.size, mode.minimumFrameRate, mode.maximumFrameRate, format);
        if (!settings.contains(offered))
            settings.append(offered);
    }
    return settings;
}

/*! The size and rate nearest to 1280x720 at 30 frames per second. */
QCameraViewfinderSettings Video4LinuxCameraSource::defaultSettings() const
{
    const CameraMode mode
            = CameraModes::best(m_modes, usualSize, usualFrameRate, QVideoFrame::Format_Invalid);
    const qreal rate = qMin(mode.maximumFrameRate, usualFrameRate);
    return CaptureSettings::make(mode.size, rate, rate, QVideoFrame::Format_Invalid);
}

std::unique_ptr<DriverSettings> Video4LinuxCameraSource::createDriverSettings() const
{
    return std::make_unique<Video4LinuxSettings>(m_device.path);
}

GstElementPointer Video4LinuxCameraSource::createPipeline(const QCameraViewfinderSettings &settings,
                                                          CameraFailure *failure) const
{
    const CameraMode mode = CameraModes::best(m_modes, settings.resolution(),
                                              settings.maximumFrameRate(), settings.pixelFormat());
    GError *error = nullptr;
    GstElement *rest = gst_parse_bin_from_description(
            description(mode, settings).toUtf8().constData(), true, &error);
    GstElement *camera = gst_device_create_element(m_device.device.get(), "camera");
    if (error || !camera) {
        const QString reason = error ? QString::fromUtf8(error->message) : tr("no source element");
        *failure = {QCamera::ServiceMissingError,
                    QStringLiteral("%1: %2").arg(displayName(), reason)};
        g_clear_error(&error);
        return nullptr;
    }
    GstElementPointer pipeline(GST_ELEMENT(gst_object_ref_sink(gst_pipeline_new(nullptr))));
    gst_bin_add_many(GST_BIN(pipeline.get()), camera, rest, nullptr);
    gst_element_link(camera, rest);
    return pipeline;
}

/*! The system's own words tell which of the many ways to fail it was; they are in its language. */
QString Video4LinuxCameraSource::explain(const QString &report) const
{
    if (report.contains(QString::fromUtf8(g_strerror(EBUSY))))
        return tr("another program may be using the camera (%1)").arg(report);
    if (report.contains(QString::fromUtf8(g_strerror(ENODEV))))
        return tr("the camera has been unplugged (%1)").arg(report);
    return report;
}
