// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// What the installed backends offer.

#ifndef INVENTORY_H
#define INVENTORY_H

#include <QtCore/qjsonobject.h>

class Inventory
{
public:
    static bool hasBackend();
    static QJsonObject collect(bool withViewfinderSettings);
};

#endif
