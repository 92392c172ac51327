// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The cameras that Video4Linux drives.

#include "video4linuxdevices.h"

#include "gstreamersetup.h"

#include <QtCore/qstring.h>

#include <fcntl.h>
#include <linux/videodev2.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace {

bool canCapture(GstDevice *device)
{
    gchar *deviceClass = gst_device_get_device_class(device);
    const bool isSource = g_strcmp0(deviceClass, "Video/Source") == 0;
    g_free(deviceClass);
    return isSource;
}

bool readControl(const QByteArray &path, quint32 id, int *value)
{
    const int file = open(path.constData(), O_RDWR | O_NONBLOCK | O_CLOEXEC);
    if (file < 0)
        return false;
    v4l2_control control = {};
    control.id = id;
    const bool isRead = ioctl(file, VIDIOC_G_CTRL, &control) == 0;
    close(file);
    *value = control.value;
    return isRead;
}

} // namespace

/*!
    The capture devices present now. Asks only the Video4Linux provider: those of other kinds can
    take long to answer, and Qt FaceLink doesn't use their devices.
*/
std::vector<GstDevicePointer> Video4LinuxDevices::all()
{
    std::vector<GstDevicePointer> devices;
    if (!GStreamerSetup::initialize())
        return devices;
    GstDeviceProvider *provider = gst_device_provider_factory_get_by_name("v4l2deviceprovider");
    if (!provider)
        return devices;

    GList *found = gst_device_provider_get_devices(provider);
    for (GList *item = found; item; item = item->next) {
        GstDevicePointer device(GST_DEVICE(item->data));
        if (canCapture(device.get()) && !path(device.get()).isEmpty())
            devices.push_back(std::move(device));
    }
    g_list_free(found);
    gst_object_unref(provider);
    return devices;
}

/*! The capture device whose file is \a path, null when it isn't there. */
GstDevicePointer Video4LinuxDevices::find(const QByteArray &path)
{
    for (GstDevicePointer &device : all()) {
        if (Video4LinuxDevices::path(device.get()) == path)
            return std::move(device);
    }
    return nullptr;
}

/*! The file of \a device, such as "/dev/video0". */
QByteArray Video4LinuxDevices::path(GstDevice *device)
{
    GstStructure *properties = gst_device_get_properties(device);
    if (!properties)
        return QByteArray();
    const QByteArray path = gst_structure_get_string(properties, "device.path");
    gst_structure_free(properties);
    return path;
}

QString Video4LinuxDevices::description(GstDevice *device)
{
    gchar *name = gst_device_get_display_name(device);
    const QString description = QString::fromUtf8(name);
    g_free(name);
    return description;
}

/*! Where the camera looks, as the driver knows it: from the device tree or the firmware. */
QCamera::Position Video4LinuxDevices::position(const QByteArray &path)
{
    int value = V4L2_CAMERA_ORIENTATION_EXTERNAL;
    if (!readControl(path, V4L2_CID_CAMERA_ORIENTATION, &value))
        return QCamera::UnspecifiedPosition;
    switch (value) {
    case V4L2_CAMERA_ORIENTATION_FRONT:
        return QCamera::FrontFace;
    case V4L2_CAMERA_ORIENTATION_BACK:
        return QCamera::BackFace;
    default:
        return QCamera::UnspecifiedPosition;
    }
}

/*!
    How the sensor is mounted, in degrees clockwise, 0 when the driver doesn't say. The driver gives
    the turn anticlockwise that makes up for it, which is the same number.
*/
int Video4LinuxDevices::orientation(const QByteArray &path)
{
    int degrees = 0;
    return readControl(path, V4L2_CID_CAMERA_SENSOR_ROTATION, &degrees) ? degrees : 0;
}
