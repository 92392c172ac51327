// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The cameras that Video4Linux drives.

#include "video4linuxdevices.h"

#include "gstreamersetup.h"

#include <QtCore/qset.h>

#include <fcntl.h>
#include <linux/videodev2.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <tuple>

namespace {

bool canCapture(GstDevice *device)
{
    gchar *deviceClass = gst_device_get_device_class(device);
    const bool isSource = g_strcmp0(deviceClass, "Video/Source") == 0;
    g_free(deviceClass);
    return isSource;
}

/*!
    The bus and the place on it say where the camera is plugged in, and stay when it comes back under
    another path.
*/
Video4LinuxDevice describe(GstDevicePointer device)
{
    Video4LinuxDevice result;
    GstStructure *properties = gst_device_get_properties(device.get());
    if (properties) {
        result.path = gst_structure_get_string(properties, "device.path");
        result.port = gst_structure_get_string(properties, "v4l2.device.bus_info");
        gst_structure_free(properties);
    }
    if (result.port.isEmpty())
        result.port = result.path;
    gchar *name = gst_device_get_display_name(device.get());
    result.description = QString::fromUtf8(name);
    g_free(name);
    result.device = std::move(device);
    return result;
}

/*! In the order of their numbers, each with a port of its own even if they share a plug. */
void tellApart(std::vector<Video4LinuxDevice> *devices)
{
    std::sort(devices->begin(), devices->end(),
              [](const Video4LinuxDevice &left, const Video4LinuxDevice &right) {
                  return std::make_tuple(left.path.size(), left.path)
                          < std::make_tuple(right.path.size(), right.path);
              });
    QSet<QByteArray> ports;
    for (Video4LinuxDevice &device : *devices) {
        const QByteArray plug = device.port;
        for (int number = 2; ports.contains(device.port); ++number)
            device.port = plug + '#' + QByteArray::number(number);
        ports.insert(device.port);
    }
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
std::vector<Video4LinuxDevice> Video4LinuxDevices::all()
{
    std::vector<Video4LinuxDevice> devices;
    if (!GStreamerSetup::initialize())
        return devices;
    GstDeviceProvider *provider = gst_device_provider_factory_get_by_name("v4l2deviceprovider");
    if (!provider)
        return devices;

    GList *found = gst_device_provider_get_devices(provider);
    for (GList *item = found; item; item = item->next) {
        GstDevicePointer device(GST_DEVICE(item->data));
        if (!canCapture(device.get()))
            continue;
        devices.push_back(describe(std::move(device)));
        if (devices.back().path.isEmpty())
            devices.pop_back();
    }
    g_list_free(found);
    gst_object_unref(provider);
    tellApart(&devices);
    return devices;
}

/*! The capture device at \a port; all is empty when nothing is plugged in there. */
Video4LinuxDevice Video4LinuxDevices::find(const QByteArray &port)
{
    for (Video4LinuxDevice &device : all()) {
        if (device.port == port)
            return std::move(device);
    }
    return Video4LinuxDevice();
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
