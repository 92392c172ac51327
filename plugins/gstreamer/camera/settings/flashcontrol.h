// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Sets the flash and the video light of the camera.

#ifndef FLASHCONTROL_H
#define FLASHCONTROL_H

#include "devicemenu.h"

#include <QtMultimedia/qcameraflashcontrol.h>

class FlashControl : public QCameraFlashControl
{
    Q_OBJECT

public:
    explicit FlashControl(OpenDevice *device, QObject *parent = nullptr);

    QCameraExposure::FlashModes flashMode() const override;
    void setFlashMode(QCameraExposure::FlashModes mode) override;
    bool isFlashModeSupported(QCameraExposure::FlashModes mode) const override;

    bool isFlashReady() const override;

private:
    void switchOff();
    void announceReadiness();

    OpenDevice *m_device;
    DeviceMenu m_mode;
    bool m_isAnnouncedReady = false;
};

#endif
