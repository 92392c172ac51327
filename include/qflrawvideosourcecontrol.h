// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The control through which a service delivers its raw frames to a surface.

#ifndef QFLRAWVIDEOSOURCECONTROL_H
#define QFLRAWVIDEOSOURCECONTROL_H

#include "qflglobal.h"

#include <QtMultimedia/qvideorenderercontrol.h>

class Q_FACELINK_EXPORT QFLRawVideoSourceControl : public QVideoRendererControl
{
    Q_OBJECT

public:
    ~QFLRawVideoSourceControl() override;

protected:
    explicit QFLRawVideoSourceControl(QObject *parent = nullptr);
};

#define QFLRawVideoSourceControl_iid "facelink.rawvideosourcecontrol/1.0"
Q_MEDIA_DECLARE_CONTROL(QFLRawVideoSourceControl, QFLRawVideoSourceControl_iid)

#endif
