// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// A service provider that also describes codecs.

#ifndef QFLMEDIASERVICEPROVIDER_H
#define QFLMEDIASERVICEPROVIDER_H

#include "qflmediaservicecodecinfointerface.h"

#include <private/qmediaserviceprovider_p.h>

class Q_FACELINK_EXPORT QFLMediaServiceProvider : public QMediaServiceProvider,
                                                  public QFLMediaServiceCodecInfoInterface
{
    Q_OBJECT
    Q_INTERFACES(QFLMediaServiceCodecInfoInterface)

public:
    QFLMediaServiceProvider();
    ~QFLMediaServiceProvider() override;
};

#endif
