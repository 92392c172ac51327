// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// A camera that is GStreamer's live test picture.

#include "testcamerasource.h"

#include "cameradevices.h"
#include "capturesettings.h"

/*!
    \class TestCameraSource

    Works on every machine, and needs nothing but GStreamer.
*/

CameraFailure TestCameraSource::open()
{
    return {};
}

QString TestCameraSource::displayName() const
{
    return CameraDevices::tr("Test picture");
}

QList<QCameraViewfinderSettings> TestCameraSource::supportedSettings() const
{
    const QSize sizes[] = {{320, 240}, {640, 360}, {640, 480}, {1280, 720}, {1920, 1080}};
    QList<QCameraViewfinderSettings> settings;
    for (const QSize &size : sizes) {
        for (QVideoFrame::PixelFormat format :
             {QVideoFrame::Format_YUV420P, QVideoFrame::Format_NV12})
            settings.append(CaptureSettings::make(size, 1, 30, format));
    }
    return settings;
}

QCameraViewfinderSettings TestCameraSource::defaultSettings() const
{
    return CaptureSettings::make(QSize(640, 480), 30, 30, QVideoFrame::Format_YUV420P);
}

/*! Colour bars that move sideways: no frame is like the last, yet every codec keeps them clear. */
GstElementPointer TestCameraSource::createPipeline(const QCameraViewfinderSettings &settings,
                                                   CameraFailure *failure) const
{
    const QString description
            = QStringLiteral("videotestsrc is-live=true pattern=smpte75 horizontal-speed=2 ! %1,%2 "
                             "! appsink name=frames sync=false enable-last-sample=false");
    return parse(
            description.arg(CaptureSettings::rawCaps(settings.resolution(), settings.pixelFormat()),
                            CaptureSettings::frameRateField(settings.maximumFrameRate())),
            failure);
}
