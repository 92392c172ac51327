// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Looks into the bytes of a VP9 frame.

#ifndef VP9INSPECTOR_H
#define VP9INSPECTOR_H

#include "frameinspector.h"

class Vp9Inspector : public FrameInspector
{
public:
    Kind inspect(QByteArray *data) override;
};

#endif
