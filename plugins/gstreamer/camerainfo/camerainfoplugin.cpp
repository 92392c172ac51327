// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Tells Qt where the cameras of the GStreamer backend look.

#include "camerainfoplugin.h"

#include "cameradevices.h"

/*!
    The provider asks for positions and orientations only plugins that stand under Qt's camera key.
    This one stands there and answers for the cameras of the GStreamer backend. It doesn't make
    services, and its cameras have names that no other plugin uses, so Qt's own cameras go on
    working as they do without it.
*/
CameraInfoPlugin::CameraInfoPlugin(QObject *parent) : QObject(parent) { }

/*! The names under which the provider may ask; empty for a service other than the camera. */
QList<QByteArray> CameraInfoPlugin::devices(const QByteArray &service) const
{
    return service == Q_MEDIASERVICE_CAMERA ? CameraDevices().names() : QList<QByteArray>();
}

QString CameraInfoPlugin::deviceDescription(const QByteArray &, const QByteArray &device)
{
    return CameraDevices().description(device);
}

QCamera::Position CameraInfoPlugin::cameraPosition(const QByteArray &device) const
{
    return CameraDevices().position(device);
}

/*! In degrees clockwise. */
int CameraInfoPlugin::cameraOrientation(const QByteArray &device) const
{
    return CameraDevices().orientation(device);
}
