// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Sets the flash and the video light of the camera.

#include "flashcontrol.h"

#include "opendevice.h"

#include <linux/v4l2-controls.h>

/*!
    \class FlashControl

    Drives the lamp of the open Video4Linux device; the video light burns until it is switched off
    or the camera is unloaded. The control is there for every camera, because it is requested before
    the device is chosen; it supports no mode without a lamp.
*/

/*! \a device is borrowed and must outlive the control. */
FlashControl::FlashControl(OpenDevice *device, QObject *parent)
    : QCameraFlashControl(parent),
      m_device(device),
      m_mode(device, V4L2_CID_FLASH_LED_MODE,
             {{QCameraExposure::FlashOff, V4L2_FLASH_LED_MODE_NONE},
              {QCameraExposure::FlashOn, V4L2_FLASH_LED_MODE_FLASH},
              {QCameraExposure::FlashVideoLight, V4L2_FLASH_LED_MODE_TORCH}})
{
    connect(device, &OpenDevice::aboutToClose, this, &FlashControl::switchOff);
    connect(device, &OpenDevice::changed, this, &FlashControl::announceReadiness);
}

QCameraExposure::FlashModes FlashControl::flashMode() const
{
    return QCameraExposure::FlashMode(m_mode.value().value_or(QCameraExposure::FlashOff));
}

/*! A mode that isn't supported is ignored. */
void FlashControl::setFlashMode(QCameraExposure::FlashModes mode)
{
    m_mode.setValue(int(mode));
    announceReadiness();
}

/*! Combinations of modes are not supported. */
bool FlashControl::isFlashModeSupported(QCameraExposure::FlashModes mode) const
{
    return m_mode.values().contains(int(mode));
}

/*! A flash that doesn't tell whether it is charged counts as ready. */
bool FlashControl::isFlashReady() const
{
    return isFlashModeSupported(QCameraExposure::FlashOn)
            && m_device->value(V4L2_CID_FLASH_READY).value_or(1) != 0;
}

void FlashControl::switchOff()
{
    m_mode.setValue(QCameraExposure::FlashOff);
}

void FlashControl::announceReadiness()
{
    const bool isReady = isFlashReady();
    if (isReady == m_isAnnouncedReady)
        return;
    m_isAnnouncedReady = isReady;
    Q_EMIT flashReady(isReady);
}
