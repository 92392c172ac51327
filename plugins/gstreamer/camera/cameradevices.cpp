// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The cameras that the backend offers.

#include "cameradevices.h"

#include "video4linuxdevices.h"

#include <QtCore/qfileinfo.h>
#include <QtCore/qurl.h>
#include <QtCore/qvariant.h>

#include <algorithm>

namespace {

const char cameraFilesProperty[] = "facelink.gstreamer.cameraFiles";
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
    A list of the cameras there are now, which doesn't change afterwards: the video files that the
    application announced in the property "facelink.gstreamer.cameraFiles" of its
    QCoreApplication (a string list of file URLs or paths), the Video4Linux devices, and last
    GStreamer's live test source, so that the list is never empty.
*/
CameraDevices::CameraDevices()
{
    addFiles();
    addVideo4Linux();
    m_devices.append({testSourceName(), tr("Test picture")});
}

QList<QByteArray> CameraDevices::names() const
{
    QList<QByteArray> names;
    for (const Device &device : m_devices)
        names.append(device.name);
    return names;
}

/*! The first Video4Linux device, else the test source. Video files are only used when asked for. */
QByteArray CameraDevices::defaultName() const
{
    for (const Device &device : m_devices) {
        if (!video4LinuxPath(device.name).isEmpty())
            return device.name;
    }
    return testSourceName();
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
    const QByteArray path = video4LinuxPath(name);
    if (path.isEmpty() || !contains(name))
        return QCamera::UnspecifiedPosition;
    return Video4LinuxDevices::position(path);
}

/*! In degrees clockwise; 0 for video files, whose pictures are turned upright, and the others. */
int CameraDevices::orientation(const QByteArray &name) const
{
    const QByteArray path = video4LinuxPath(name);
    return path.isEmpty() || !contains(name) ? 0 : Video4LinuxDevices::orientation(path);
}

QByteArray CameraDevices::testSourceName()
{
    return QByteArrayLiteral("videotestsrc");
}

/*! The path of the video file that the camera \a name plays, empty for other cameras. */
QString CameraDevices::filePath(const QByteArray &name)
{
    return name.startsWith(filePrefix) ? QUrl::fromEncoded(name).toLocalFile() : QString();
}

/*! The device file of the Video4Linux camera \a name, empty for other cameras. */
QByteArray CameraDevices::video4LinuxPath(const QByteArray &name)
{
    return name.startsWith(video4LinuxPrefix) ? name.mid(int(qstrlen(video4LinuxPrefix)))
                                              : QByteArray();
}

void CameraDevices::addFiles()
{
    const QCoreApplication *application = QCoreApplication::instance();
    if (!application)
        return;
    const QStringList files = application->property(cameraFilesProperty).toStringList();
    for (const QString &file : files) {
        const QUrl url = fileUrl(file);
        const QByteArray name = url.toEncoded();
        if (!contains(name))
            m_devices.append({name, tr("Video file %1").arg(url.fileName())});
    }
}

void CameraDevices::addVideo4Linux()
{
    const std::vector<GstDevicePointer> devices = Video4LinuxDevices::all();
    for (const GstDevicePointer &device : devices) {
        m_devices.append({video4LinuxPrefix + Video4LinuxDevices::path(device.get()),
                          Video4LinuxDevices::description(device.get())});
    }
}

bool CameraDevices::contains(const QByteArray &name) const
{
    return std::any_of(m_devices.cbegin(), m_devices.cend(),
                       [&name](const Device &device) { return device.name == name; });
}
