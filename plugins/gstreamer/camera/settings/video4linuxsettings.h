// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The settings of a Video4Linux device.

#ifndef VIDEO4LINUXSETTINGS_H
#define VIDEO4LINUXSETTINGS_H

#include "driversettings.h"

#include <QtCore/qbytearray.h>

struct v4l2_queryctrl;

class Video4LinuxSettings : public DriverSettings
{
public:
    explicit Video4LinuxSettings(const QByteArray &path);
    ~Video4LinuxSettings() override;

    std::optional<Range> range(quint32 id) const override;
    std::optional<int> value(quint32 id) const override;
    bool setValue(quint32 id, int value) override;

private:
    QMap<int, qint64> menu(const v4l2_queryctrl &query) const;
    bool request(unsigned long code, void *argument) const;

    int m_file;
};

#endif
