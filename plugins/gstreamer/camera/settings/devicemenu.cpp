// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// A choice that a camera's driver offers, in Qt's terms.

#include "devicemenu.h"

#include "opendevice.h"

/*!
    \class DeviceMenu

    Translates a menu setting of a device. Where several choices have the same value or the same
    device value, the first one that the device has counts.
*/

/*! The setting \a id of \a device, which is borrowed, with its \a choices. */
DeviceMenu::DeviceMenu(OpenDevice *device, quint32 id, const QVector<Choice> &choices)
    : m_device(device), m_id(id), m_choices(choices)
{
}

bool DeviceMenu::isPresent() const
{
    return m_device->range(m_id).has_value();
}

/*! What the device can be set to, without repetition. */
QList<int> DeviceMenu::values() const
{
    QList<int> values;
    const auto range = m_device->range(m_id);
    for (const Choice &choice : m_choices) {
        if (range && range->menu.contains(choice.deviceValue) && !values.contains(choice.value))
            values.append(choice.value);
    }
    return values;
}

/*! None if the device doesn't have the setting, or a value that Qt has no word for. */
std::optional<int> DeviceMenu::value() const
{
    const auto deviceValue = m_device->value(m_id);
    for (const Choice &choice : m_choices) {
        if (deviceValue == choice.deviceValue)
            return choice.value;
    }
    return std::nullopt;
}

/*! False if the device has no such choice or refuses it. What is set already is left alone. */
bool DeviceMenu::setValue(int value) const
{
    const auto range = m_device->range(m_id);
    if (range && this->value() == value)
        return true;
    for (const Choice &choice : m_choices) {
        if (choice.value == value && range && range->menu.contains(choice.deviceValue))
            return m_device->setValue(m_id, choice.deviceValue);
    }
    return false;
}

/*! Sets the value that the device has when it is new. */
bool DeviceMenu::reset() const
{
    const auto range = m_device->range(m_id);
    return range && m_device->setValue(m_id, range->initial);
}
