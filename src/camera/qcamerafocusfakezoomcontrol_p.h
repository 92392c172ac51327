// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The zoom control of a camera whose backend has none.

// This header is not part of the public interface: it may change from one version to the next.

#ifndef QCAMERAFOCUSFAKEZOOMCONTROL_P_H
#define QCAMERAFOCUSFAKEZOOMCONTROL_P_H

#include <QtMultimedia/qcamerazoomcontrol.h>

class QCameraFocusFakeZoomControl : public QCameraZoomControl
{
public:
    explicit QCameraFocusFakeZoomControl(QObject *parent);

    qreal maximumOpticalZoom() const override;
    qreal maximumDigitalZoom() const override;

    qreal requestedOpticalZoom() const override;
    qreal requestedDigitalZoom() const override;
    qreal currentOpticalZoom() const override;
    qreal currentDigitalZoom() const override;

    void zoomTo(qreal optical, qreal digital) override;
};

#endif
