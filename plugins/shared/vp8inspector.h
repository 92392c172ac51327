// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Looks into the bytes of a VP8 frame.

#ifndef VP8INSPECTOR_H
#define VP8INSPECTOR_H

#include "frameinspector.h"

#include <QtCore/qsize.h>

class Vp8Inspector : public FrameInspector
{
public:
    static QSize keyFrameSize(const QByteArray &frame);

    Kind inspect(QByteArray *data) override;
};

#endif
