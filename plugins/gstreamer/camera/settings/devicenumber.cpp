// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// A quantity that a camera's driver lets one set, in Qt's units.

#include "devicenumber.h"

#include "opendevice.h"

#include <algorithm>
#include <cmath>

/*!
    \class DeviceNumber

    Translates a setting of a device that is a number.
*/

/*! The setting \a id of \a device, which is borrowed, is \a scale times the quantity. */
DeviceNumber::DeviceNumber(OpenDevice *device, quint32 id, int scale)
    : m_device(device), m_id(id), m_scale(scale)
{
}

/*!
    The values of a menu in rising order or, with \a continuous set to true, the smallest and the
    largest value; empty if the device doesn't have the setting.
*/
QList<qreal> DeviceNumber::values(bool *continuous) const
{
    const auto range = m_device->range(m_id);
    *continuous = range && range->menu.isEmpty();
    if (!range)
        return {};
    if (*continuous)
        return {range->minimum / qreal(m_scale), range->maximum / qreal(m_scale)};
    QList<qreal> values;
    for (qint64 entry : range->menu)
        values.append(entry / qreal(m_scale));
    std::sort(values.begin(), values.end());
    return values;
}

/*! Whether \a value is between the smallest and the largest one. */
bool DeviceNumber::contains(qreal value) const
{
    bool continuous = false;
    const QList<qreal> all = values(&continuous);
    return !all.isEmpty() && all.first() <= value && value <= all.last();
}

std::optional<qreal> DeviceNumber::value() const
{
    const auto value = m_device->value(m_id);
    const auto range = m_device->range(m_id);
    if (!value || !range)
        return std::nullopt;
    return range->menu.value(*value, *value) / qreal(m_scale);
}

/*! Sets the possible value that is nearest to \a value; false if that is outside the range. */
bool DeviceNumber::setValue(qreal value) const
{
    const auto range = m_device->range(m_id);
    if (!range || !contains(value))
        return false;
    const QMap<int, qint64> &menu = range->menu;
    if (menu.isEmpty())
        return m_device->setValue(m_id, qRound(value * m_scale));
    const auto distance
            = [this, value](qint64 entry) { return std::abs(entry / qreal(m_scale) - value); };
    const auto nearest
            = std::min_element(menu.cbegin(), menu.cend(), [&distance](qint64 left, qint64 right) {
                  return distance(left) < distance(right);
              });
    return m_device->setValue(m_id, nearest.key());
}

/*! Sets the value that the device has when it is new. */
bool DeviceNumber::reset() const
{
    const auto range = m_device->range(m_id);
    return range && m_device->setValue(m_id, range->initial);
}
