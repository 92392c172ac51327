// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Tells Qt where the cameras of the GStreamer backend look.

#include "camerainfoplugin.h"

#include "cameradevices.h"

#include <private/qmediapluginloader_p.h>

/*!
    \class CameraInfoPlugin

    The provider asks for positions and orientations only plugins that stand under Qt's camera key.
    This one stands there and answers for the cameras of the GStreamer backend. It doesn't make
    services, and it lists no devices, as these would turn up among the cameras of QCamera.

    A plugin that lists none is asked about every camera, so it hands on what is asked about those
    of others.
*/

CameraInfoPlugin::CameraInfoPlugin(QObject *parent) : QObject(parent) { }

QCamera::Position CameraInfoPlugin::cameraPosition(const QByteArray &device) const
{
    const CameraDevices devices;
    if (devices.names().contains(device))
        return devices.position(device);
    const QMediaServiceCameraInfoInterface *plugin = otherPlugin(device);
    return plugin ? plugin->cameraPosition(device) : QCamera::UnspecifiedPosition;
}

/*! In degrees clockwise. */
int CameraInfoPlugin::cameraOrientation(const QByteArray &device) const
{
    const CameraDevices devices;
    if (devices.names().contains(device))
        return devices.orientation(device);
    const QMediaServiceCameraInfoInterface *plugin = otherPlugin(device);
    return plugin ? plugin->cameraOrientation(device) : 0;
}

/*! The plugin that Qt would ask about \a device if this one weren't there; null if there is none. */
QMediaServiceCameraInfoInterface *CameraInfoPlugin::otherPlugin(const QByteArray &device) const
{
    const QByteArray service(Q_MEDIASERVICE_CAMERA);
    QMediaPluginLoader loader(QMediaServiceProviderFactoryInterface_iid,
                              QStringLiteral("mediaservice"), Qt::CaseInsensitive);
    const QList<QObject *> plugins = loader.instances(QString::fromLatin1(service));
    for (QObject *plugin : plugins) {
        auto *cameras = qobject_cast<QMediaServiceCameraInfoInterface *>(plugin);
        if (!cameras || plugin == this)
            continue;
        const auto *lister = qobject_cast<QMediaServiceSupportedDevicesInterface *>(plugin);
        if (!lister || lister->devices(service).contains(device))
            return cameras;
    }
    return nullptr;
}
