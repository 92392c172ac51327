// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// A quantity that a camera's driver lets one set, in Qt's units.

#ifndef DEVICENUMBER_H
#define DEVICENUMBER_H

#include "driversettings.h"

#include <QtCore/qlist.h>

class OpenDevice;

class DeviceNumber
{
public:
    DeviceNumber(OpenDevice *device, quint32 id, int scale);

    QList<qreal> values(bool *continuous) const;
    bool contains(qreal value) const;

    std::optional<qreal> value() const;
    bool setValue(qreal value) const;
    bool reset() const;

private:
    OpenDevice *m_device;
    quint32 m_id;
    int m_scale;
};

#endif
