// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The device that a camera has open, with its settings.

#include "opendevice.h"

/*!
    \class OpenDevice

    Lasts as long as the camera service, while devices come and go. Without an open device, or with
    one that has no settings, every range and value is none and every setting is refused.

    aboutToClose() is emitted while the settings can still be changed, changed() when there are
    others, or none.
*/

OpenDevice::OpenDevice(QObject *parent) : QObject(parent) { }

OpenDevice::~OpenDevice() = default;

/*! \a settings are those of the device, null when it has none. */
void OpenDevice::open(std::unique_ptr<DriverSettings> settings)
{
    close();
    if (!settings)
        return;
    m_settings = std::move(settings);
    Q_EMIT changed();
}

void OpenDevice::close()
{
    if (!m_settings)
        return;
    const DriverSettings *const settings = m_settings.get();
    Q_EMIT aboutToClose();
    // Whoever was told may have closed the device already, or opened another.
    if (m_settings.get() != settings)
        return;
    m_settings.reset();
    Q_EMIT changed();
}

std::optional<DriverSettings::Range> OpenDevice::range(quint32 id) const
{
    return m_settings ? m_settings->range(id) : std::nullopt;
}

std::optional<int> OpenDevice::value(quint32 id) const
{
    return m_settings ? m_settings->value(id) : std::nullopt;
}

bool OpenDevice::setValue(quint32 id, int value)
{
    return m_settings && m_settings->setValue(id, value);
}
