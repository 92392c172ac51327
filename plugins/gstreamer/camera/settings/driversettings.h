// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The settings that the driver of a camera offers.

#ifndef DRIVERSETTINGS_H
#define DRIVERSETTINGS_H

#include <QtCore/qglobal.h>
#include <QtCore/qmap.h>

#include <optional>

class DriverSettings
{
public:
    struct Range
    {
        int minimum = 0;
        int maximum = 0;
        int initial = 0;
        QMap<int, qint64> menu;
    };

    virtual ~DriverSettings();

    virtual std::optional<Range> range(quint32 id) const = 0;
    virtual std::optional<int> value(quint32 id) const = 0;
    virtual bool setValue(quint32 id, int value) = 0;

protected:
    DriverSettings();

private:
    Q_DISABLE_COPY(DriverSettings)
};

#endif
