// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The record that the copies of a codec description share.

// This header is not part of the public interface: it may change from one version to the next.

#ifndef QFLCODECINFO_P_H
#define QFLCODECINFO_P_H

#include "qflcodecinfo.h"

class QFLCodecInfoPrivate
{
public:
    bool isNull = true;
    QByteArray codecId;
    QString codec;
    bool isEncoder = false;
    bool isHardwareAccelerated = false;
    int maxInstances = 0;
};

#endif
