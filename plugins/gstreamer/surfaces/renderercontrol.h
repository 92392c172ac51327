// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Shows the pictures of a service on a surface.

#ifndef RENDERERCONTROL_H
#define RENDERERCONTROL_H

#include <QtMultimedia/qvideorenderercontrol.h>

class SurfaceGroup;

class RendererControl : public QVideoRendererControl
{
    Q_OBJECT

public:
    explicit RendererControl(SurfaceGroup *surfaces, QObject *parent = nullptr);
    ~RendererControl() override;

    QAbstractVideoSurface *surface() const override;
    void setSurface(QAbstractVideoSurface *surface) override;

private:
    SurfaceGroup *m_surfaces;
};

#endif
