// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Tells where the cameras of the service look.

#include "camerainfocontrol.h"

#include "cameradevices.h"

/*!
    \class CameraInfoControl

    Says how cameras are mounted, also those that are not selected.
*/

CameraInfoControl::CameraInfoControl(QObject *parent) : QCameraInfoControl(parent) { }

QCamera::Position CameraInfoControl::cameraPosition(const QString &deviceName) const
{
    return CameraDevices().position(deviceName.toLatin1());
}

/*! In degrees clockwise. */
int CameraInfoControl::cameraOrientation(const QString &deviceName) const
{
    return CameraDevices().orientation(deviceName.toLatin1());
}
