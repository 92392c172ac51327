// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The plugin interface that describes codec implementations.

#ifndef QFLMEDIASERVICECODECINFOINTERFACE_H
#define QFLMEDIASERVICECODECINFOINTERFACE_H

#include "qflglobal.h"

#include <QtCore/qobject.h>

class Q_FACELINK_EXPORT QFLMediaServiceCodecInfoInterface
{
public:
    virtual ~QFLMediaServiceCodecInfoInterface() { }

    virtual QString codec(const QByteArray &codecId) = 0;
    virtual bool isEncoder(const QByteArray &codecId) = 0;
    virtual bool isHardwareAccelerated(const QByteArray &codecId) = 0;
    virtual int maxInstances(const QByteArray &codecId) = 0;
};

#define QFLMediaServiceCodecInfoInterface_iid "facelink.mediaservicecodecinfo/1.0"
Q_DECLARE_INTERFACE(QFLMediaServiceCodecInfoInterface, QFLMediaServiceCodecInfoInterface_iid)

#endif
