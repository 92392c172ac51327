// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The cameras that Video4Linux drives.

#ifndef VIDEO4LINUXDEVICES_H
#define VIDEO4LINUXDEVICES_H

#include "gstpointers.h"

#include <QtCore/qbytearray.h>
#include <QtCore/qstring.h>
#include <QtMultimedia/qcamera.h>

#include <vector>

using GstDevicePointer = std::unique_ptr<GstDevice, GstObjectUnref>;

struct Video4LinuxDevice
{
    GstDevicePointer device;
    QByteArray path;
    QByteArray port;
    QString description;
};

namespace Video4LinuxDevices {

std::vector<Video4LinuxDevice> all();
Video4LinuxDevice find(const QByteArray &port);

QCamera::Position position(const QByteArray &path);
int orientation(const QByteArray &path);

} // namespace Video4LinuxDevices

#endif
