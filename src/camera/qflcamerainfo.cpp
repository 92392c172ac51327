// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-3.0-or-later
// The description of one camera device.

#include "qflcamerainfo.h"
#include "qflcamerainfo_p.h"

#include "qflcamera.h"
#include "qflcamera_p.h"

#include <private/qmediaserviceprovider_p.h>

#include <QtCore/qdebug.h>
#include <QtCore/qmetaobject.h>
#include <QtMultimedia/qcamerainfocontrol.h>
#include <QtMultimedia/qvideodeviceselectorcontrol.h>

namespace {

const QByteArray cameraService = QByteArrayLiteral("facelink.camera");

const char *positionKey(QCamera::Position position)
{
    const QMetaObject &metaObject = QCamera::staticMetaObject;
    const QMetaEnum positions = metaObject.enumerator(metaObject.indexOfEnumerator("Position"));
    return positions.valueToKey(position);
}

} // namespace

/*!
    \class QFLCameraInfo
    \brief Describes one camera device of the library's camera service.

    Copies share one record, which never changes: they may be copied and read on any thread. The
    constructors and the listing functions ask the backends on the caller's thread.
*/

/*!
    Describes the device called \a name. The description is null if no backend lists the device.
*/
QFLCameraInfo::QFLCameraInfo(const QByteArray &name) : d(new QFLCameraInfoPrivate)
{
    QMediaServiceProvider *provider = QMediaServiceProvider::defaultServiceProvider();
    if (name.isNull() || !provider || !provider->devices(cameraService).contains(name))
        return;

    d->deviceName = QString::fromLatin1(name);
    d->description = provider->deviceDescription(cameraService, name);
    d->position = provider->cameraPosition(name);
    d->orientation = provider->cameraOrientation(name);
    d->isNull = false;
}

/*!
    Describes the device that \a camera has selected, as its backend reports it, and logs the
    description. It is null if the camera has no service.
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

QFLCameraInfo::QFLCameraInfo(const QFLCameraInfo &other) = default;

QFLCameraInfo &QFLCameraInfo::operator=(const QFLCameraInfo &other) = default;

QFLCameraInfo::~QFLCameraInfo() = default;

/*!
    Returns whether the description describes no device.
*/
bool QFLCameraInfo::isNull() const
{
    return d->isNull;
}

/*!
    Returns the name by which the backends know the device.
*/
QString QFLCameraInfo::deviceName() const
{
    return d->deviceName;
}

/*!
    Returns the name to show to the user.
*/
QString QFLCameraInfo::description() const
{
    return d->description;
}

/*!
    Returns which way the camera faces.
*/
QCamera::Position QFLCameraInfo::position() const
{
    return d->position;
}

/*!
    Returns the orientation of the sensor in degrees clockwise, as the backend reports it.
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
    QMediaServiceProvider *provider = QMediaServiceProvider::defaultServiceProvider();
    return QFLCameraInfo(provider ? provider->defaultDevice(cameraService) : QByteArray());
}

/*!
    Describes all cameras, in the backends' order, or those at \a position.
*/
QList<QFLCameraInfo> QFLCameraInfo::availableCameras(QCamera::Position position)
{
    QList<QFLCameraInfo> cameras;
    QMediaServiceProvider *provider = QMediaServiceProvider::defaultServiceProvider();
    if (!provider)
        return cameras;

    const QList<QByteArray> names = provider->devices(cameraService);
    for (const QByteArray &name : names) {
        if (position == QCamera::UnspecifiedPosition || provider->cameraPosition(name) == position)
            cameras.append(QFLCameraInfo(name));
    }
    return cameras;
}

/*!
    Returns whether both describe the same device in the same way.
*/
bool QFLCameraInfo::operator==(const QFLCameraInfo &other) const
{
    return d == other.d
            || (d->deviceName == other.d->deviceName && d->description == other.d->description
                && d->position == other.d->position && d->orientation == other.d->orientation);
}

bool QFLCameraInfo::operator!=(const QFLCameraInfo &other) const
{
    return !(*this == other);
}

#ifndef QT_NO_DEBUG_STREAM

/*!
    Prints the device name, the position and the orientation of \a camera.
*/
QDebug operator<<(QDebug debug, const QFLCameraInfo &camera)
{
    // One replacement after the other: a device name may contain a place marker itself.
    debug.maybeSpace() << QStringLiteral(
                                  "QFLCameraInfo(deviceName=%1, position=%2, orientation=%3)")
                                  .arg(camera.deviceName())
                                  .arg(QString::fromLatin1(positionKey(camera.position())))
                                  .arg(camera.orientation());
    return debug.space();
}

#endif
