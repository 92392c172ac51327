// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Shows the camera's frames on a surface.

#include "camerarenderercontrol.h"

#include "surfacefeeder.h"

/*!
    One of possibly many on a camera; each has a surface of its own. \a surfaces is borrowed and
    must outlive the control.
*/
CameraRendererControl::CameraRendererControl(SurfaceFeeder *surfaces, QObject *parent)
    : QVideoRendererControl(parent), m_surfaces(surfaces)
{
}

CameraRendererControl::~CameraRendererControl()
{
    m_surfaces->setSurface(this, nullptr);
}

QAbstractVideoSurface *CameraRendererControl::surface() const
{
    return m_surfaces->surface(this);
}

/*! Nothing calls the surface used so far once this has returned. */
void CameraRendererControl::setSurface(QAbstractVideoSurface *surface)
{
    m_surfaces->setSurface(this, surface);
}
