// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The settings of a Video4Linux device.

#include "video4linuxsettings.h"

#include <cerrno>

#include <fcntl.h>
#include <linux/videodev2.h>
#include <sys/ioctl.h>
#include <unistd.h>

/*!
    \class Video4LinuxSettings

    Asks the driver of a Video4Linux device each time, and remembers nothing.
*/

/*!
    Opens the device file \a path for itself: a driver lets others set values while one streams. A
    device that can't be opened has no settings.
*/
Video4LinuxSettings::Video4LinuxSettings(const QByteArray &path)
    : m_file(open(path.constData(), O_RDWR | O_NONBLOCK | O_CLOEXEC))
{
}

Video4LinuxSettings::~Video4LinuxSettings()
{
    if (m_file >= 0)
        close(m_file);
}

std::optional<DriverSettings::Range> Video4LinuxSettings::range(quint32 id) const
{
    v4l2_queryctrl query = {};
    query.id = id;
    if (!request(VIDIOC_QUERYCTRL, &query)
        || query.flags & (V4L2_CTRL_FLAG_DISABLED | V4L2_CTRL_FLAG_READ_ONLY))
        return std::nullopt;
    return Range {query.minimum, query.maximum, query.default_value, menu(query)};
}

std::optional<int> Video4LinuxSettings::value(quint32 id) const
{
    v4l2_control control = {};
    control.id = id;
    if (!request(VIDIOC_G_CTRL, &control))
        return std::nullopt;
    return control.value;
}

bool Video4LinuxSettings::setValue(quint32 id, int value)
{
    v4l2_control control = {};
    control.id = id;
    control.value = value;
    return request(VIDIOC_S_CTRL, &control);
}

/*! A menu may have gaps: the driver refuses the items that the device doesn't have. */
QMap<int, qint64> Video4LinuxSettings::menu(const v4l2_queryctrl &query) const
{
    QMap<int, qint64> menu;
    if (query.type != V4L2_CTRL_TYPE_MENU && query.type != V4L2_CTRL_TYPE_INTEGER_MENU)
        return menu;
    for (int index = query.minimum; index <= query.maximum; ++index) {
        v4l2_querymenu item = {};
        item.id = query.id;
        item.index = quint32(index);
        if (request(VIDIOC_QUERYMENU, &item))
            menu.insert(index, query.type == V4L2_CTRL_TYPE_MENU ? index : item.value);
    }
    return menu;
}

bool Video4LinuxSettings::request(unsigned long code, void *argument) const
{
    int result = -1;
    do {
        result = ioctl(m_file, code, argument);
    } while (result < 0 && errno == EINTR);
    return result == 0;
}
