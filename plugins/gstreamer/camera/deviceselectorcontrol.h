// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Lists the cameras and selects the one to use.

#ifndef DEVICESELECTORCONTROL_H
#define DEVICESELECTORCONTROL_H

#include "cameradevicemonitor.h"
#include "cameradevices.h"
#include "run.h"

#include <QtMultimedia/qvideodeviceselectorcontrol.h>

class DeviceSelectorControl : public QVideoDeviceSelectorControl
{
    Q_OBJECT

public:
    explicit DeviceSelectorControl(QObject *parent = nullptr);

    int deviceCount() const override;
    QString deviceName(int index) const override;
    QString deviceDescription(int index) const override;

    int defaultDevice() const override;
    int selectedDevice() const override;
    QByteArray selectedName() const;

public Q_SLOTS:
    void setSelectedDevice(int index) override;

Q_SIGNALS:
    void selectionChanged();

private:
    void refresh();

    // Watches before the first look, so that nothing is missed in between.
    CameraDeviceMonitor m_monitor;
    CameraDevices m_devices;
    QList<QByteArray> m_names;
    QByteArray m_selectedName;
    Run m_run;
};

#endif
