// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The device that a camera has open, with its settings.

#ifndef OPENDEVICE_H
#define OPENDEVICE_H

#include "driversettings.h"

#include <QtCore/qobject.h>

#include <memory>

class OpenDevice : public QObject
{
    Q_OBJECT

public:
    explicit OpenDevice(QObject *parent = nullptr);
    ~OpenDevice() override;

    void open(std::unique_ptr<DriverSettings> settings);
    void close();

    std::optional<DriverSettings::Range> range(quint32 id) const;
    std::optional<int> value(quint32 id) const;
    bool setValue(quint32 id, int value);

Q_SIGNALS:
    void aboutToClose();
    void changed();

private:
    std::unique_ptr<DriverSettings> m_settings;
};

#endif
