// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The control through which a service hands out encoded frames to sinks.

#ifndef QFLENCODEDVIDEOSOURCECONTROL_H
#define QFLENCODEDVIDEOSOURCECONTROL_H

#include "qflsource.h"

#include <QtMultimedia/qmediacontrol.h>

class Q_FACELINK_EXPORT QFLEncodedVideoSourceControl : public QMediaControl, public QFLSource
{
    Q_OBJECT
    Q_INTERFACES(QFLSource)

public:
    ~QFLEncodedVideoSourceControl() override;

protected:
    explicit QFLEncodedVideoSourceControl(QObject *parent = nullptr);
};

#define QFLEncodedVideoSourceControl_iid "facelink.encodedvideosourcecontrol/1.0"
Q_MEDIA_DECLARE_CONTROL(QFLEncodedVideoSourceControl, QFLEncodedVideoSourceControl_iid)

#endif
