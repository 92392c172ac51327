// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The settings of a Video4Linux device.

#ifndef VIDEO4LINUXCONTROLS_H
#define VIDEO4LINUXCONTROLS_H

#include "devicecontrols.h"

#include <QtCore/qbytearray.h>

struct v4l2_queryctrl;

class Video4LinuxControls : public DeviceControls
{
public:
    explicit Video4LinuxControls(const QByteArray &path);
    ~Video4LinuxControls() override;

    std::optional<Range> range(quint32 id) const override;
    std::optional<int> value(quint32 id) const override;
    bool setValue(quint32 id, int value) override;

private:
    QMap<int, qint64> menu(const v4l2_queryctrl &query) const;
    bool request(unsigned long code, void *argument) const;

    int m_file;
};

#endif
