// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The description of one camera device.

#include "qflcamerainfo.h"
#include "qflcamerainfo_p.h"

#include "qflcamera.h"
#include "qflcamera_p.h"
#include "qflserviceaccess_p.h"

#include <QtCore/qdebug.h>
#include <QtCore/qmetaobject.h>
#include <QtMultimedia/qcamerainfocontrol.h>
#include <QtMultimedia/qvideodeviceselectorcontrol.h>

namespace {

const char *positionKey(QCamera::Position position)
{
    const QMetaObject &metaObject = QCamera::staticMetaObject;
    const QMetaEnum positions = metaObject.enumerator(metaObject.indexOfEnumerator("Position"));
    return positions.valueToKey(position);
}

} // namespace

/*!
    \class QFLCameraInfo qflcamerainfo.h
    \brief Describes one camera device of the library's camera service.

    availableCameras() and defaultCamera() find out which there are; QFLCamera opens the device that
    a description names. The description is of the time when it was made: it does not follow a
    device that is unplugged.

    Copies share one record, which never changes: they may be copied and read on any thread. The
    constructors and the listing functions ask the backends on the caller's thread, on which
    services are requested too. Nothing reports a failure: what is not known has a neutral value.
*/

/*!
    Describes the device called \a name. The description is null if no backend lists the device, or
    if the name is.
*/
QFLCameraInfo::QFLCameraInfo(const QByteArray &name) : d(new QFLCameraInfoPrivate)
{
    QMediaServiceProvider *provider = QFLServiceAccess::provider();
    if (name.isNull() || !provider || !provider->devices(QFL_MEDIASERVICE_CAMERA).contains(name))
        return;

    d->deviceName = QString::fromLatin1(name);
    d->description = provider->deviceDescription(QFL_MEDIASERVICE_CAMERA, name);
    d->position = provider->cameraPosition(name);
    d->orientation = provider->cameraOrientation(name);
    d->isNull = false;
}

/*!
    Describes the device that \a camera has selected, as its backend reports it, and logs the
    description in one line of information. It is null if the camera has no service; if it has one
    without devices, the name is empty. Belongs to the camera's thread.
*/
QFLCameraInfo::QFLCameraInfo(const QFLCamera &camera) : d(new QFLCameraInfoPrivate)
{
    const QFLCameraPrivate *cameraData = camera.d_func();

    const QVideoDeviceSelectorControl *selector = cameraData->deviceSelector;
    if (selector && selector->deviceCount() > 0) {
        const int index = selector->selectedDevice();
        d->deviceName = selector->deviceName(index);
        d->description = selector->deviceDescription(index);
        d->isNull = false;
    }

    if (const QCameraInfoControl *information = cameraData->infoControl) {
        d->position = information->cameraPosition(d->deviceName);
        d->orientation = information->cameraOrientation(d->deviceName);
        d->isNull = false;
    }

    const QByteArray position = QByteArrayLiteral("QCamera::") + positionKey(d->position);
    qInfo() << "info from camera" << d->deviceName << d->description << d->isNull
            << position.constData() << d->orientation;
}

/*!
    Makes a description that shares the record of \a other.
*/
QFLCameraInfo::QFLCameraInfo(const QFLCameraInfo &other) = default;

/*!
    Shares the record of \a other.
*/
QFLCameraInfo &QFLCameraInfo::operator=(const QFLCameraInfo &other) = default;

/*!
    Gives up the record, which goes with its last description.
*/
QFLCameraInfo::~QFLCameraInfo() = default;

/*!
    Returns whether the description describes no device.
*/
bool QFLCameraInfo::isNull() const
{
    return d->isNull;
}

/*!
    Returns the name by which the backends know the device, empty in a null description.
*/
QString QFLCameraInfo::deviceName() const
{
    return d->deviceName;
}

/*!
    Returns the name to show to the user, empty if no backend describes the device.
*/
QString QFLCameraInfo::description() const
{
    return d->description;
}

/*!
    Returns which way the camera faces, QCamera::UnspecifiedPosition if no backend knows.
*/
QCamera::Position QFLCameraInfo::position() const
{
    return d->position;
}

/*!
    Returns by how many degrees, clockwise and in steps of 90, the sensor's top is turned against the
    top of the display in its natural orientation, as the backend reports it; pictures are upright
    there when they are rotated as far anticlockwise. 0 if no backend knows.
*/
int QFLCameraInfo::orientation() const
{
    return d->orientation;
}

/*!
    Describes the backends' default camera; null if there is none.
*/
QFLCameraInfo QFLCameraInfo::defaultCamera()
{
    QMediaServiceProvider *provider = QFLServiceAccess::provider();
    return QFLCameraInfo(provider ? provider->defaultDevice(QFL_MEDIASERVICE_CAMERA)
                                  : QByteArray());
}

/*!
    Describes all cameras, in the backends' order, for QCamera::UnspecifiedPosition, and those at \a
    position for another. Empty without a backend.
*/
QList<QFLCameraInfo> QFLCameraInfo::availableCameras(QCamera::Position position)
{
    QList<QFLCameraInfo> cameras;
    QMediaServiceProvider *provider = QFLServiceAccess::provider();
    if (!provider)
        return cameras;

    const QList<QByteArray> names = provider->devices(QFL_MEDIASERVICE_CAMERA);
    for (const QByteArray &name : names) {
        if (position == QCamera::UnspecifiedPosition || provider->cameraPosition(name) == position)
            cameras.append(QFLCameraInfo(name));
    }
    return cameras;
}

/*!
    Returns whether this description and \a other have the same name, description, position and
    orientation.
*/
bool QFLCameraInfo::operator==(const QFLCameraInfo &other) const
{
    return d == other.d
            || (d->deviceName == other.d->deviceName && d->description == other.d->description
                && d->position == other.d->position && d->orientation == other.d->orientation);
}

/*!
    Returns whether this description and \a other differ in name, description, position or
    orientation.
*/
bool QFLCameraInfo::operator!=(const QFLCameraInfo &other) const
{
    return !(*this == other);
}

#ifndef QT_NO_DEBUG_STREAM

/*!
    \relates QFLCameraInfo

    Prints the device name, the position and the orientation of \a camera to \a debug as a string,
    as in `"QFLCameraInfo(deviceName=front, position=FrontFace, orientation=270)"`, and leaves the
    stream with spaces between its items.
*/
QDebug operator<<(QDebug debug, const QFLCameraInfo &camera)
{
    // One replacement after the other: a device name may contain a place marker itself.
    debug.maybeSpace() << QStringLiteral(
                                  "QFLCameraInfo(deviceName=%1, position=%2, orientation=%3)")
                                  .arg(camera.deviceName()) // clazy:exclude=qstring-arg
                                  .arg(QString::fromLatin1(positionKey(camera.position())))
                                  .arg(camera.orientation());
    return debug.space();
}

#endif
