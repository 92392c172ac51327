// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Sets how the camera focuses.

#ifndef FOCUSCONTROL_H
#define FOCUSCONTROL_H

#include <QtMultimedia/qcamerafocuscontrol.h>

class OpenDevice;

class FocusControl : public QCameraFocusControl
{
    Q_OBJECT

public:
    explicit FocusControl(OpenDevice *device, QObject *parent = nullptr);

    QCameraFocus::FocusModes focusMode() const override;
    void setFocusMode(QCameraFocus::FocusModes mode) override;
    bool isFocusModeSupported(QCameraFocus::FocusModes mode) const override;

    QCameraFocus::FocusPointMode focusPointMode() const override;
    void setFocusPointMode(QCameraFocus::FocusPointMode mode) override;
    bool isFocusPointModeSupported(QCameraFocus::FocusPointMode mode) const override;
    QPointF customFocusPoint() const override;
    void setCustomFocusPoint(const QPointF &point) override;

    QCameraFocusZoneList focusZones() const override;

private:
    bool applyFocusMode(QCameraFocus::FocusModes mode);
    void handleDevice();
    void announceFocusMode();

    OpenDevice *m_device;
    // What the device was told last when its focus doesn't follow the picture.
    QCameraFocus::FocusModes m_restingMode = QCameraFocus::ManualFocus;
    QCameraFocus::FocusModes m_announcedMode = QCameraFocus::ManualFocus;
};

#endif
