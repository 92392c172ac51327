// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The cameras that the backend offers.

#include "cameradevices.h"

#include "video4linuxdevices.h"

#include <QtCore/qfileinfo.h>
#include <QtCore/qurl.h>
#include <QtCore/qvariant.h>

namespace {

const char camerasProperty[] = "facelink.gstreamer.cameras";
const char testSourceName[] = "videotestsrc";
const char video4LinuxPrefix[] = "v4l2:";
const char filePrefix[] = "file:";

QUrl fileUrl(const QString &urlOrPath)
{
    if (urlOrPath.startsWith(QLatin1String(filePrefix)))
        return QUrl(urlOrPath);
    return QUrl::fromLocalFile(QFileInfo(urlOrPath).absoluteFilePath());
}

} // namespace

/*!
    \class CameraDevices

    A list of the cameras there are now, which doesn't change afterwards: those that the application
    announced in the property "facelink.gstreamer.cameras" of its QCoreApplication (a string list of
    video files, as URLs or paths, and "videotestsrc" for GStreamer's live test source), and the
    Video4Linux devices. The test source comes last when nothing has been announced, so that the
    list is empty only where the application wants it to be.
*/

CameraDevices::CameraDevices()
{
    const QCoreApplication *application = QCoreApplication::instance();
    const QVariant cameras = application ? application->property(camerasProperty) : QVariant();
    addAnnounced(cameras.toStringList());
    addVideo4Linux();
    if (!cameras.isValid())
        addTestSource();
}

QList<QByteArray> CameraDevices::names() const
{
    QList<QByteArray> names;
    for (const Device &device : m_devices)
        names.append(device.name);
    return names;
}

/*! The first Video4Linux device, else the first of the list; empty if there is no camera. */
QByteArray CameraDevices::defaultName() const
{
    for (const Device &device : m_devices) {
        if (!device.path.isEmpty())
            return device.name;
    }
    return m_devices.isEmpty() ? QByteArray() : m_devices.first().name;
}

/*! What the user sees as the camera's name; empty for a camera that isn't listed. */
QString CameraDevices::description(const QByteArray &name) const
{
    for (const Device &device : m_devices) {
        if (device.name == name)
            return device.description;
    }
    return QString();
}

/*! Unspecified for video files, for the test source and for a camera that isn't listed. */
QCamera::Position CameraDevices::position(const QByteArray &name) const
{
    const QByteArray path = this->path(name);
    return path.isEmpty() ? QCamera::UnspecifiedPosition : Video4LinuxDevices::position(path);
}

/*! In degrees clockwise; 0 for video files, whose pictures are turned upright, and the others. */
int CameraDevices::orientation(const QByteArray &name) const
{
    const QByteArray path = this->path(name);
    return path.isEmpty() ? 0 : Video4LinuxDevices::orientation(path);
}

bool CameraDevices::isTestSource(const QByteArray &name)
{
    return name == testSourceName;
}

/*! The path of the video file that the camera \a name plays, empty for other cameras. */
QString CameraDevices::filePath(const QByteArray &name)
{
    return name.startsWith(filePrefix) ? QUrl::fromEncoded(name).toLocalFile() : QString();
}

/*! Where the Video4Linux camera \a name is plugged in, empty for other cameras. */
QByteArray CameraDevices::video4LinuxPort(const QByteArray &name)
{
    return name.startsWith(video4LinuxPrefix) ? name.mid(int(qstrlen(video4LinuxPrefix)))
                                              : QByteArray();
}

void CameraDevices::addAnnounced(const QStringList &cameras)
{
    for (const QString &camera : cameras) {
        if (isTestSource(camera.toLatin1())) {
            addTestSource();
            continue;
        }
        const QUrl url = fileUrl(camera);
        const QByteArray name = url.toEncoded();
        if (!names().contains(name))
            m_devices.append({name, tr("Video file %1").arg(url.fileName()), QByteArray()});
    }
}

void CameraDevices::addVideo4Linux()
{
    const std::vector<Video4LinuxDevice> devices = Video4LinuxDevices::all();
    for (const Video4LinuxDevice &device : devices)
        m_devices.append({video4LinuxPrefix + device.port, device.description, device.path});
}

void CameraDevices::addTestSource()
{
    if (!names().contains(testSourceName))
        m_devices.append({testSourceName, tr("Test picture"), QByteArray()});
}

/*! The device file of the Video4Linux camera \a name, empty for other cameras. */
QByteArray CameraDevices::path(const QByteArray &name) const
{
    for (const Device &device : m_devices) {
        if (device.name == name)
            return device.path;
    }
    return QByteArray();
}
