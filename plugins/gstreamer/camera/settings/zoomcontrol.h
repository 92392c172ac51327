// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Zooms into the picture of the camera.

#ifndef ZOOMCONTROL_H
#define ZOOMCONTROL_H

#include "driversettings.h"

#include <QtMultimedia/qcamerazoomcontrol.h>

class CameraSession;
class OpenDevice;

class ZoomControl : public QCameraZoomControl
{
    Q_OBJECT

public:
    explicit ZoomControl(CameraSession *session, QObject *parent = nullptr);

    qreal maximumOpticalZoom() const override;
    qreal maximumDigitalZoom() const override;

    qreal requestedOpticalZoom() const override;
    qreal requestedDigitalZoom() const override;
    qreal currentOpticalZoom() const override;
    qreal currentDigitalZoom() const override;

    void zoomTo(qreal optical, qreal digital) override;

private:
    void zoomOptically(qreal zoom);
    void zoomDigitally(qreal zoom);
    void readDevice();

    std::optional<DriverSettings::Range> lens() const;
    void setRequestedOpticalZoom(qreal zoom);
    void announceOpticalZoom();

    CameraSession *m_session;
    OpenDevice *m_device;
    qreal m_maximumOpticalZoom = 1;
    qreal m_requestedOpticalZoom = 1;
    qreal m_announcedOpticalZoom = 1;
};

#endif
