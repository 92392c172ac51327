// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The focus and zoom settings object of a camera.

#ifndef QFLCAMERAFOCUS_H
#define QFLCAMERAFOCUS_H

#include "qcamerafocuszone.h"
#include "qflglobal.h"

#include <QtCore/qobject.h>
#include <QtCore/qpoint.h>

class QFLCamera;
class QFLCameraFocusPrivate;

class Q_FACELINK_EXPORT QFLCameraFocus : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QCameraFocus::FocusModes focusMode READ focusMode WRITE setFocusMode)
    Q_PROPERTY(
            QCameraFocus::FocusPointMode focusPointMode READ focusPointMode WRITE setFocusPointMode)
    Q_PROPERTY(QPointF customFocusPoint READ customFocusPoint WRITE setCustomFocusPoint)
    Q_PROPERTY(QCameraFocusZoneList focusZones READ focusZones NOTIFY focusZonesChanged)
    Q_PROPERTY(qreal opticalZoom READ opticalZoom NOTIFY opticalZoomChanged)
    Q_PROPERTY(qreal digitalZoom READ digitalZoom NOTIFY digitalZoomChanged)

public:
    ~QFLCameraFocus() override;

    bool isAvailable() const;

    QCameraFocus::FocusModes focusMode() const;
    void setFocusMode(QCameraFocus::FocusModes mode);
    bool isFocusModeSupported(QCameraFocus::FocusModes mode) const;

    QCameraFocus::FocusPointMode focusPointMode() const;
    void setFocusPointMode(QCameraFocus::FocusPointMode mode);
    bool isFocusPointModeSupported(QCameraFocus::FocusPointMode mode) const;

    QPointF customFocusPoint() const;
    void setCustomFocusPoint(const QPointF &point);

    QCameraFocusZoneList focusZones() const;

    qreal maximumOpticalZoom() const;
    qreal maximumDigitalZoom() const;
    qreal opticalZoom() const;
    qreal digitalZoom() const;
    void zoomTo(qreal optical, qreal digital);

Q_SIGNALS:
    void opticalZoomChanged(qreal zoom);
    void digitalZoomChanged(qreal zoom);
    void focusZonesChanged();
    void maximumOpticalZoomChanged(qreal zoom);
    void maximumDigitalZoomChanged(qreal zoom);

private:
    Q_DISABLE_COPY(QFLCameraFocus)
    Q_DECLARE_PRIVATE(QFLCameraFocus)
    friend class QFLCameraPrivate;

    explicit QFLCameraFocus(QFLCamera *camera);
};

#endif
