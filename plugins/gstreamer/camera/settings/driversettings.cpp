// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The settings that the driver of a camera offers.

#include "driversettings.h"

/*!
    \class DriverSettings

    Settings are numbered as Video4Linux numbers its controls (V4L2_CID_...), and have its units. An
    object of this kind stands for a device that is open, and is used on the camera's thread.

    \fn std::optional<DriverSettings::Range> DriverSettings::range(quint32 id) const

    The values that \a id can be given; none if the device doesn't have that setting or it can't be
    written. A menu has an entry for each value that is possible: the number that an integer menu
    gives it, else the value itself. Other settings have an empty menu.

    \fn std::optional<int> DriverSettings::value(quint32 id) const

    None if the device doesn't have \a id or it can't be read.

    \fn bool DriverSettings::setValue(quint32 id, int value)

    Returns false if the device refuses \a value.
*/

DriverSettings::DriverSettings() = default;
DriverSettings::~DriverSettings() = default;
