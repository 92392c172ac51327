// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Where the frames of a camera come from.

#include "camerasource.h"

#include "cameradevices.h"
#include "filecamerasource.h"
#include "pipeline.h"
#include "testcamerasource.h"
#include "video4linuxcamerasource.h"

/*!
    \class CameraSource

    Knows one camera: what it can deliver and which pipeline delivers it. It is used on the
    control's thread only and runs nothing itself.

    \fn CameraFailure CameraSource::open()

    Finds out what the camera offers; called once, before everything else, while the camera is being
    loaded. May take as long as reading the start of a file. The failure's text names the camera.

    \fn QString CameraSource::displayName() const

    What the user knows the camera by, for the texts of failures; valid once open() was called.

    \fn QCameraViewfinderSettings CameraSource::defaultSettings() const

    What is used where nothing is asked for. An empty resolution leaves the size to the camera.

    \fn GstElementPointer CameraSource::createPipeline(const QCameraViewfinderSettings &settings,
                                                       CameraFailure *failure) const

    A stopped pipeline that ends in an appsink called "frames" and delivers what \a settings, which
    are complete, ask for, at the pace of a camera; null with \a failure when an element is missing.
*/

CameraSource::CameraSource() = default;
CameraSource::~CameraSource() = default;

/*! A source for the camera that CameraDevices lists as \a deviceName; it need not be there. */
std::unique_ptr<CameraSource> CameraSource::create(const QByteArray &deviceName)
{
    const QString filePath = CameraDevices::filePath(deviceName);
    if (!filePath.isEmpty())
        return std::make_unique<FileCameraSource>(filePath);
    if (CameraDevices::isTestSource(deviceName))
        return std::make_unique<TestCameraSource>();
    return std::make_unique<Video4LinuxCameraSource>(CameraDevices::video4LinuxPort(deviceName));
}

/*! The settings of the camera itself, null if there are none. Called once it is open. */
std::unique_ptr<DriverSettings> CameraSource::createDriverSettings() const
{
    return nullptr;
}

/*! Whether the pictures begin again after the last one; else the end of the stream is a failure. */
bool CameraSource::isRepeating() const
{
    return false;
}

/*! What the \a report of a failed pipeline means to the user, who needn't know about elements. */
QString CameraSource::explain(const QString &report) const
{
    return report;
}

/*! See Pipeline::parse(). */
GstElementPointer CameraSource::parse(const QString &description, CameraFailure *failure)
{
    QString errorText;
    GstElementPointer pipeline = Pipeline::parse(description.toUtf8(), &errorText);
    if (!pipeline)
        *failure = {QCamera::ServiceMissingError, errorText};
    return pipeline;
}
