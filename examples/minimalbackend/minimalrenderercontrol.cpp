// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Shows pictures on the application's surface.

#include "minimalrenderercontrol.h"

/*!
    \class MinimalRendererControl

    Calls the surface from one thread, that of the decoder, so that setSurface() has nothing to wait
    for: once it has returned, the surface before is left alone.
*/

MinimalRendererControl::MinimalRendererControl(QObject *parent) : QVideoRendererControl(parent) { }

QAbstractVideoSurface *MinimalRendererControl::surface() const
{
    return m_surface;
}

//! [renderer]
void MinimalRendererControl::setSurface(QAbstractVideoSurface *surface)
{
    if (surface == m_surface)
        return;
    stop();
    m_surface = surface;
}

/*! False if there is a surface and it doesn't take pictures of the format. */
bool MinimalRendererControl::present(const QVideoFrame &picture, const QVideoSurfaceFormat &format)
{
    if (!m_surface)
        return true;
    if (!m_surface->isActive() || format != m_format) {
        stop();
        if (!m_surface || !m_surface->start(format))
            return false;
        m_format = format;
    }
    // A surface that has been taken away, or has failed, while it was started is let be.
    if (m_surface && m_surface->isActive())
        m_surface->present(picture);
    return true;
}

void MinimalRendererControl::stop()
{
    if (m_surface && m_surface->isActive())
        m_surface->stop();
}
//! [renderer]
