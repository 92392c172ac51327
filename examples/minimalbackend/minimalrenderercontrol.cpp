// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Shows pictures on the application's surface.

#include "minimalrenderercontrol.h"

#include <utility>

/*!
    \class MinimalRendererControl

    Calls the surface from one thread, that of the decoder, so that setSurface() has nothing to wait
    for: once it has returned, the surface before is left alone. From within any call the surface
    may be taken away, end the run or delete the decoder.
*/

MinimalRendererControl::MinimalRendererControl(QObject *parent) : QVideoRendererControl(parent) { }

QAbstractVideoSurface *MinimalRendererControl::surface() const
{
    return m_surface;
}

//! [renderer]
void MinimalRendererControl::setSurface(QAbstractVideoSurface *surface)
{
    if (surface != m_surface)
        leave(std::exchange(m_surface, surface));
}

/*! False if there is no surface that takes \a format, or it isn't wanted any more. */
bool MinimalRendererControl::start(const QVideoSurfaceFormat &format)
{
    const QPointer<QAbstractVideoSurface> surface = m_surface;
    if (!surface || (surface->isActive() && format == m_format))
        return !surface.isNull();
    const auto isCurrent = watch();
    m_format = QVideoSurfaceFormat();
    if (surface->isActive())
        surface->stop();
    if (!isCurrent())
        return false;
    const bool isStarted = surface->isFormatSupported(format) && surface->start(format);
    if (!isCurrent()) {
        if (surface && isStarted)
            surface->stop();
        return false;
    }
    if (isStarted)
        m_format = format;
    else
        fail(QFLDecoder::FormatError, tr("The surface doesn't take the pictures"));
    return isStarted;
}

/*! A surface may skip a picture. One that has stopped as well has failed. */
void MinimalRendererControl::present(const QVideoFrame &picture)
{
    const auto isCurrent = watch();
    const bool isShown = m_surface->present(picture);
    if (!isCurrent())
        return;
    if (isShown)
        m_hasFailed = false;
    else if (!m_surface->isActive())
        fail(QFLDecoder::ResourceError, tr("The surface has stopped showing pictures"));
}

void MinimalRendererControl::stop()
{
    leave(m_surface);
}

/*! Notes everything before the call, in which the surface may start the next run. */
void MinimalRendererControl::leave(QAbstractVideoSurface *surface)
{
    ++m_run;
    m_hasFailed = false;
    const bool wasStarted = std::exchange(m_format, QVideoSurfaceFormat()).isValid();
    if (surface && wasStarted)
        surface->stop();
}

/*! What tells after a call whether control, surface and run are still there. */
std::function<bool()> MinimalRendererControl::watch() const
{
    const QPointer<const MinimalRendererControl> self(this);
    return [self, run = m_run] { return self && self->m_run == run && self->m_surface; };
}
//! [renderer]

/*! Tells it once, until a picture is shown again. The surface is one that isn't started. */
void MinimalRendererControl::fail(QFLDecoder::Error error, const QString &text)
{
    m_format = QVideoSurfaceFormat();
    if (!std::exchange(m_hasFailed, true))
        Q_EMIT failed(error, text);
}
