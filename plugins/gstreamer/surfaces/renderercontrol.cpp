// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Shows the pictures of a service on a surface.

#include "renderercontrol.h"

#include "surfacegroup.h"

/*!
    \class RendererControl

    One of possibly many of a service; each has a surface of its own.
*/

/*! \a surfaces is borrowed and must outlive the control. */
RendererControl::RendererControl(SurfaceGroup *surfaces, QObject *parent)
    : QVideoRendererControl(parent), m_surfaces(surfaces)
{
}

RendererControl::~RendererControl()
{
    m_surfaces->setSurface(this, nullptr);
}

QAbstractVideoSurface *RendererControl::surface() const
{
    return m_surfaces->surface(this);
}

/*! Nothing calls the surface used so far once this has returned. */
void RendererControl::setSurface(QAbstractVideoSurface *surface)
{
    m_surfaces->setSurface(this, surface);
}
