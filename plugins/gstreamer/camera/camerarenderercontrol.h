// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Shows the camera's frames on a surface.

#ifndef CAMERARENDERERCONTROL_H
#define CAMERARENDERERCONTROL_H

#include <QtMultimedia/qvideorenderercontrol.h>

class SurfaceFeeder;

class CameraRendererControl : public QVideoRendererControl
{
    Q_OBJECT

public:
    explicit CameraRendererControl(SurfaceFeeder *surfaces, QObject *parent = nullptr);
    ~CameraRendererControl() override;

    QAbstractVideoSurface *surface() const override;
    void setSurface(QAbstractVideoSurface *surface) override;

private:
    SurfaceFeeder *m_surfaces;
};

#endif
