// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Hands the camera's frames to an encoder's surface.

#include "rawvideosourcecontrol.h"

#include "surfacegroup.h"

/*! \a surfaces is borrowed and must outlive the control. */
RawVideoSourceControl::RawVideoSourceControl(SurfaceGroup *surfaces, QObject *parent)
    : QFLRawVideoSourceControl(parent), m_surfaces(surfaces)
{
}

RawVideoSourceControl::~RawVideoSourceControl()
{
    m_surfaces->setSurface(this, nullptr);
}

QAbstractVideoSurface *RawVideoSourceControl::surface() const
{
    return m_surfaces->surface(this);
}

/*! Nothing calls the surface used so far once this has returned. */
void RawVideoSourceControl::setSurface(QAbstractVideoSurface *surface)
{
    m_surfaces->setSurface(this, surface);
}
