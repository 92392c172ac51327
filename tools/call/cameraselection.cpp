// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Finds the camera that the command line asks for, and the size of its picture.

#include "cameraselection.h"

#include "callsettings.h"

#include <qflcamera.h>
#include <qflcamerainfo.h>

#include <QtCore/qfileinfo.h>
#include <QtCore/qurl.h>

namespace {

const QSize largestDefaultSize(1280, 720);

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(CameraSelection)
};

QString fileDeviceName(const QString &fileName)
{
    const QString path = QFileInfo(fileName).absoluteFilePath();
    return QString::fromLatin1(QUrl::fromLocalFile(path).toEncoded());
}

QSize evenSize(const QSize &size)
{
    return {size.width() & ~1, size.height() & ~1};
}

// The largest of the sizes that is not too large; a smaller copy of the smallest if all are.
QSize defaultSize(const QList<QSize> &sizesByArea)
{
    const int largestArea = largestDefaultSize.width() * largestDefaultSize.height();
    for (auto it = sizesByArea.crbegin(); it != sizesByArea.crend(); ++it) {
        if (it->width() * it->height() <= largestArea)
            return *it;
    }
    if (sizesByArea.isEmpty())
        return QSize();
    return evenSize(sizesByArea.constFirst().scaled(largestDefaultSize, Qt::KeepAspectRatio));
}

} // namespace

/*! Lets the backend list the video file, if one is to be the camera, among the cameras. */
CallError CameraSelection::announceFile(const CallSettings &settings)
{
    if (settings.cameraFile.isEmpty())
        return CallError();
    const QFileInfo file(settings.cameraFile);
    if (!file.isFile() || !file.isReadable()) {
        return {CallError::NoCamera,
                Texts::tr("cannot read the camera file '%1'").arg(settings.cameraFile)};
    }
    QCoreApplication::instance()->setProperty("facelink.gstreamer.cameras",
                                              QStringList(fileDeviceName(settings.cameraFile)));
    return CallError();
}

/*! The camera; \a error is set if there is none. */
QFLCameraInfo CameraSelection::find(const CallSettings &settings, CallError *error)
{
    const QString wanted
            = settings.cameraFile.isEmpty() ? settings.camera : fileDeviceName(settings.cameraFile);
    const QFLCameraInfo defaultCamera = QFLCameraInfo::defaultCamera();
    if (wanted.isEmpty() && !defaultCamera.isNull())
        return defaultCamera;
    const QList<QFLCameraInfo> cameras = QFLCameraInfo::availableCameras();
    for (const QFLCameraInfo &camera : cameras) {
        if (camera.deviceName() == wanted || camera.description() == wanted)
            return camera;
    }
    *error = {CallError::NoCamera,
              cameras.isEmpty() ? Texts::tr("there is no camera, or no camera backend")
                                : Texts::tr("there is no camera '%1'").arg(wanted)};
    return QFLCameraInfo();
}

/*!
    The viewfinder settings for the size and the frame rate asked for. Without a size asked for it
    is the camera's largest up to 1280x720. The camera has to be loaded.
*/
QCameraViewfinderSettings CameraSelection::viewfinderSettings(const QFLCamera &camera,
                                                              const CallSettings &settings)
{
    QCameraViewfinderSettings viewfinder;
    viewfinder.setResolution(settings.size.isEmpty()
                                     ? defaultSize(camera.supportedViewfinderResolutions())
                                     : settings.size);
    viewfinder.setMinimumFrameRate(settings.frameRate);
    viewfinder.setMaximumFrameRate(settings.frameRate);
    return viewfinder;
}
