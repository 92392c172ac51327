// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The record that the copies of a camera description share.

// This header is not part of the public interface: it may change from one version to the next.

#ifndef QFLCAMERAINFO_P_H
#define QFLCAMERAINFO_P_H

#include "qflcamerainfo.h"

class QFLCameraInfoPrivate
{
public:
    bool isNull = true;
    QString deviceName;
    QString description;
    QCamera::Position position = QCamera::UnspecifiedPosition;
    int orientation = 0;
};

#endif
