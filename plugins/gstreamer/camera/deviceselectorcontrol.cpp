// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Lists the cameras and selects the one to use.

#include "deviceselectorcontrol.h"

/*!
    \class DeviceSelectorControl

    The list is the one at construction until a device comes or goes; devicesChanged() then says
    that it is a new one. The default device is selected at first, or when there is a first one.
*/

DeviceSelectorControl::DeviceSelectorControl(QObject *parent)
    : QVideoDeviceSelectorControl(parent),
      m_names(m_devices.names()),
      m_selectedName(m_devices.defaultName())
{
    connect(&m_monitor, &CameraDeviceMonitor::devicesChanged, this,
            &DeviceSelectorControl::refresh);
}

int DeviceSelectorControl::deviceCount() const
{
    return m_names.size();
}

/*! Empty for an index outside the list. */
QString DeviceSelectorControl::deviceName(int index) const
{
    return QString::fromLatin1(m_names.value(index));
}

/*! Empty for an index outside the list. */
QString DeviceSelectorControl::deviceDescription(int index) const
{
    return m_devices.description(m_names.value(index));
}

int DeviceSelectorControl::defaultDevice() const
{
    return m_names.indexOf(m_devices.defaultName());
}

/*! -1 when the selected device has been taken away; it stays selected. */
int DeviceSelectorControl::selectedDevice() const
{
    return m_names.indexOf(m_selectedName);
}

/*! What the selected device is called, even if it isn't there any more; empty if none ever was. */
QByteArray DeviceSelectorControl::selectedName() const
{
    return m_selectedName;
}

/*! An index outside the list is ignored. */
void DeviceSelectorControl::setSelectedDevice(int index)
{
    if (index < 0 || index >= m_names.size() || m_names.at(index) == m_selectedName)
        return;
    m_selectedName = m_names.at(index);
    const QString name = deviceName(index);
    // Whoever is told may delete the camera.
    const Run::Watch isAlive = m_run.watchOwner();
    Q_EMIT selectionChanged();
    if (isAlive())
        Q_EMIT selectedDeviceChanged(index);
    if (isAlive())
        Q_EMIT selectedDeviceChanged(name);
}

void DeviceSelectorControl::refresh()
{
    m_devices = CameraDevices();
    const QList<QByteArray> names = m_devices.names();
    if (names == m_names)
        return;
    m_names = names;
    if (m_selectedName.isEmpty())
        m_selectedName = m_devices.defaultName();
    Q_EMIT devicesChanged();
}
