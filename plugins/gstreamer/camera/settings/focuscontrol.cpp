// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Sets how the camera focuses.

#include "focuscontrol.h"

#include "opendevice.h"

#include <linux/v4l2-controls.h>

/*!
    \class FocusControl

    Continuous focus is what a Video4Linux device calls automatic; automatic focus is the single run
    that some devices can be told to make. Manual focus keeps the lens where it is.

    The control is there for every camera, because it is requested before the device is chosen. One
    that supports no mode, as it is while the camera is unloaded, has a fixed focus, which Qt counts
    as manual. The device chooses the point by itself.
*/

/*! \a device is borrowed and must outlive the control. */
FocusControl::FocusControl(OpenDevice *device, QObject *parent)
    : QCameraFocusControl(parent), m_device(device)
{
    connect(device, &OpenDevice::changed, this, &FocusControl::handleDevice);
}

QCameraFocus::FocusModes FocusControl::focusMode() const
{
    if (m_device->value(V4L2_CID_FOCUS_AUTO).value_or(0) != 0)
        return QCameraFocus::ContinuousFocus;
    return m_restingMode;
}

/*! A mode that isn't supported is ignored. */
void FocusControl::setFocusMode(QCameraFocus::FocusModes mode)
{
    if (!isFocusModeSupported(mode) || !applyFocusMode(mode))
        return;
    if (mode != QCameraFocus::ContinuousFocus)
        m_restingMode = mode;
    announceFocusMode();
}

/*! Combinations of modes are not supported. */
bool FocusControl::isFocusModeSupported(QCameraFocus::FocusModes mode) const
{
    switch (int(mode)) {
    case QCameraFocus::ContinuousFocus:
        return m_device->range(V4L2_CID_FOCUS_AUTO).has_value();
    case QCameraFocus::AutoFocus:
        return m_device->range(V4L2_CID_AUTO_FOCUS_START).has_value();
    case QCameraFocus::ManualFocus:
        return m_device->range(V4L2_CID_FOCUS_AUTO) || m_device->range(V4L2_CID_FOCUS_ABSOLUTE);
    case QCameraFocus::InfinityFocus:
        return m_device->range(V4L2_CID_FOCUS_ABSOLUTE).has_value();
    default:
        return false;
    }
}

QCameraFocus::FocusPointMode FocusControl::focusPointMode() const
{
    return QCameraFocus::FocusPointAuto;
}

/*! Ignored: there is only the automatic mode. */
void FocusControl::setFocusPointMode(QCameraFocus::FocusPointMode) { }

bool FocusControl::isFocusPointModeSupported(QCameraFocus::FocusPointMode mode) const
{
    return mode == QCameraFocus::FocusPointAuto
            && (isFocusModeSupported(QCameraFocus::ContinuousFocus)
                || isFocusModeSupported(QCameraFocus::AutoFocus));
}

/*! Always the middle of the picture. */
QPointF FocusControl::customFocusPoint() const
{
    return QPointF(0.5, 0.5);
}

/*! Ignored: the device chooses the point. */
void FocusControl::setCustomFocusPoint(const QPointF &) { }

/*! Always empty: the device doesn't tell. */
QCameraFocusZoneList FocusControl::focusZones() const
{
    return {};
}

/*! Positions of the lens rise as the subject comes nearer. */
bool FocusControl::applyFocusMode(QCameraFocus::FocusModes mode)
{
    const bool isContinuous = mode == QCameraFocus::ContinuousFocus;
    if (m_device->range(V4L2_CID_FOCUS_AUTO)
        && !m_device->setValue(V4L2_CID_FOCUS_AUTO, isContinuous))
        return false;
    if (mode == QCameraFocus::AutoFocus)
        return m_device->setValue(V4L2_CID_AUTO_FOCUS_START, 1);
    const auto positions = m_device->range(V4L2_CID_FOCUS_ABSOLUTE);
    if (mode == QCameraFocus::InfinityFocus && positions)
        return m_device->setValue(V4L2_CID_FOCUS_ABSOLUTE, positions->minimum);
    return true;
}

void FocusControl::handleDevice()
{
    m_restingMode = QCameraFocus::ManualFocus;
    announceFocusMode();
}

void FocusControl::announceFocusMode()
{
    const QCameraFocus::FocusModes mode = focusMode();
    if (mode == m_announcedMode)
        return;
    m_announcedMode = mode;
    Q_EMIT focusModeChanged(mode);
}
