// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Looks into the bytes of an AV1 temporal unit.

#ifndef AV1INSPECTOR_H
#define AV1INSPECTOR_H

#include "frameinspector.h"

class Av1Inspector : public FrameInspector
{
public:
    Kind inspect(QByteArray *data) override;
};

#endif
