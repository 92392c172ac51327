// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Tells where the cameras of the service look.

#ifndef CAMERAINFOCONTROL_H
#define CAMERAINFOCONTROL_H

#include <QtMultimedia/qcamerainfocontrol.h>

class CameraInfoControl : public QCameraInfoControl
{
    Q_OBJECT

public:
    explicit CameraInfoControl(QObject *parent = nullptr);

    QCamera::Position cameraPosition(const QString &deviceName) const override;
    int cameraOrientation(const QString &deviceName) const override;
};

#endif
