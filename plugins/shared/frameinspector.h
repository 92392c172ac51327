// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Looks into the bytes of an encoded frame.

#ifndef FRAMEINSPECTOR_H
#define FRAMEINSPECTOR_H

#include <QtCore/qbytearray.h>

class FrameInspector
{
public:
    enum Kind { Malformed, ParametersOnly, DeltaFrame, KeyFrame };

    FrameInspector() = default;
    virtual ~FrameInspector();

    virtual Kind inspect(QByteArray *data) = 0;

private:
    Q_DISABLE_COPY(FrameInspector)
};

#endif
