// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// A camera that Video4Linux drives.

#ifndef VIDEO4LINUXCAMERASOURCE_H
#define VIDEO4LINUXCAMERASOURCE_H

#include "cameramodes.h"
#include "camerasource.h"
#include "video4linuxdevices.h"

#include <QtCore/qcoreapplication.h>

class Video4LinuxCameraSource : public CameraSource
{
    Q_DECLARE_TR_FUNCTIONS(Video4LinuxCameraSource)

public:
    explicit Video4LinuxCameraSource(const QByteArray &port);

    CameraFailure open() override;
    QString displayName() const override;
    QList<QCameraViewfinderSettings> supportedSettings() const override;
    QCameraViewfinderSettings defaultSettings() const override;

    std::unique_ptr<DriverSettings> createDriverSettings() const override;
    GstElementPointer createPipeline(const QCameraViewfinderSettings &settings,
                                     CameraFailure *failure) const override;
    QString explain(const QString &report) const override;

private:
    QByteArray m_port;
    Video4LinuxDevice m_device;
    QVector<CameraMode> m_modes;
};

#endif
