// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Shows the pictures of a service on a surface of its own.

#ifndef SURFACECONTROL_H
#define SURFACECONTROL_H

#include "surfacegroup.h"

/*!
    \class SurfaceControl

    A renderer control, or one with the same operations. One of possibly many of a service; nothing
    calls the surface used so far once setSurface() has returned.
*/
template<typename Interface> class SurfaceControl : public Interface
{
public:
    /*! \a surfaces is borrowed and must outlive the control. */
    explicit SurfaceControl(SurfaceGroup *surfaces, QObject *parent = nullptr)
        : Interface(parent), m_surfaces(surfaces)
    {
    }
    ~SurfaceControl() override { m_surfaces->setSurface(this, nullptr); }

    QAbstractVideoSurface *surface() const override { return m_surfaces->surface(this); }
    void setSurface(QAbstractVideoSurface *surface) override
    {
        m_surfaces->setSurface(this, surface);
    }

private:
    SurfaceGroup *m_surfaces;
};

#endif
