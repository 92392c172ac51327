// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The focus control of a camera whose backend has none.

// This header is not part of the public interface: it may change from one version to the next.

#ifndef QCAMERAFOCUSFAKEFOCUSCONTROL_P_H
#define QCAMERAFOCUSFAKEFOCUSCONTROL_P_H

#include <QtMultimedia/qcamerafocuscontrol.h>

class QCameraFocusFakeFocusControl : public QCameraFocusControl
{
public:
    explicit QCameraFocusFakeFocusControl(QObject *parent);

    QCameraFocus::FocusModes focusMode() const override;
    void setFocusMode(QCameraFocus::FocusModes mode) override;
    bool isFocusModeSupported(QCameraFocus::FocusModes mode) const override;

    QCameraFocus::FocusPointMode focusPointMode() const override;
    void setFocusPointMode(QCameraFocus::FocusPointMode mode) override;
    bool isFocusPointModeSupported(QCameraFocus::FocusPointMode mode) const override;

    QPointF customFocusPoint() const override;
    void setCustomFocusPoint(const QPointF &point) override;

    QCameraFocusZoneList focusZones() const override;
};

#endif
