// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Scriptable controls of exposure, flash, focus and zoom.

#ifndef FAKEOPTICSCONTROLS_H
#define FAKEOPTICSCONTROLS_H

#include "fakecontrol.h"

#include <QtMultimedia/qcameraexposurecontrol.h>
#include <QtMultimedia/qcameraflashcontrol.h>
#include <QtMultimedia/qcamerafocuscontrol.h>
#include <QtMultimedia/qcamerazoomcontrol.h>

class FakeExposure : public FakeControl<QCameraExposureControl>
{
public:
    bool isParameterSupported(ExposureParameter) const override { return false; }
    QVariantList supportedParameterRange(ExposureParameter parameter,
                                         bool *continuous) const override
    {
        *continuous = true;
        return ranges.value(parameter);
    }
    QVariant requestedValue(ExposureParameter parameter) const override
    {
        return requested.value(parameter);
    }
    QVariant actualValue(ExposureParameter parameter) const override
    {
        return actual.value(parameter);
    }
    bool setValue(ExposureParameter parameter, const QVariant &value) override
    {
        requested[parameter] = value;
        return log(QByteArray::number(parameter) + ' ' + value.typeName());
    }

    QMap<int, QVariant> actual, requested;
    QMap<int, QVariantList> ranges;
};

class FakeFlash : public FakeControl<QCameraFlashControl>
{
public:
    QCameraExposure::FlashModes flashMode() const override { return QCameraExposure::FlashFill; }
    void setFlashMode(QCameraExposure::FlashModes mode) override { log("mode", mode); }
    bool isFlashModeSupported(QCameraExposure::FlashModes mode) const override { return mode == 1; }
    bool isFlashReady() const override { return accepts; }
};

class FakeFocus : public FakeControl<QCameraFocusControl>
{
public:
    QCameraFocus::FocusModes focusMode() const override { return QCameraFocus::MacroFocus; }
    void setFocusMode(QCameraFocus::FocusModes mode) override { log("mode", mode); }
    bool isFocusModeSupported(QCameraFocus::FocusModes mode) const override { return mode == 1; }
    QCameraFocus::FocusPointMode focusPointMode() const override
    {
        return QCameraFocus::FocusPointCustom;
    }
    void setFocusPointMode(QCameraFocus::FocusPointMode mode) override { log("points", mode); }
    bool isFocusPointModeSupported(QCameraFocus::FocusPointMode mode) const override
    {
        return mode == 1;
    }
    QPointF customFocusPoint() const override { return {0.25, 2}; }
    void setCustomFocusPoint(const QPointF &point) override { log("point", int(point.x())); }
    QCameraFocusZoneList focusZones() const override { return {QCameraFocusZone(QRectF())}; }
};

class FakeZoom : public FakeControl<QCameraZoomControl>
{
public:
    qreal maximumOpticalZoom() const override { return 9; }
    qreal maximumDigitalZoom() const override { return 8; }
    qreal requestedOpticalZoom() const override { return 7; }
    qreal requestedDigitalZoom() const override { return 6; }
    qreal currentOpticalZoom() const override { return 5; }
    qreal currentDigitalZoom() const override { return 4; }
    void zoomTo(qreal optical, qreal digital) override { log("to", int(10 * optical + digital)); }
};

#endif
