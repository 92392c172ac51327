// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Presents decoded pictures on the application's video surface.

#include "videorenderercontrol.h"

#include <utility>

/*!
    \class VideoRendererControl

    Lives in the thread of the decoder and calls the surface there only, so \c {setSurface(nullptr)}
    is a barrier: nothing calls the surface once it has returned. The surface is borrowed and may be
    destroyed at any time.
*/

VideoRendererControl::VideoRendererControl(QObject *parent) : QVideoRendererControl(parent) { }

VideoRendererControl::~VideoRendererControl()
{
    stopSurface();
}

QAbstractVideoSurface *VideoRendererControl::surface() const
{
    return m_surface;
}

/*!
    Stops the surface used so far. Within a run the new one is started with the current format at
    once if it takes that format, else with the first picture that has been converted for it.
*/
void VideoRendererControl::setSurface(QAbstractVideoSurface *surface)
{
    if (surface == m_surface)
        return;
    stopSurface();
    if (m_surface)
        m_surface->disconnect(this);
    m_surface = surface;
    m_hasFailed = false;
    m_refusedFormat = QVideoSurfaceFormat();
    if (surface)
        connect(surface, &QAbstractVideoSurface::supportedFormatsChanged, this,
                &VideoRendererControl::pixelFormatsChanged);
    Q_EMIT pixelFormatsChanged();
    if (m_streamFormat.isValid())
        startSurface();
}

/*! The formats that the surface takes in system memory; empty without a surface. */
QList<QVideoFrame::PixelFormat> VideoRendererControl::pixelFormats() const
{
    return m_surface ? m_surface->supportedPixelFormats() : QList<QVideoFrame::PixelFormat>();
}

/*!
    Shows \a picture, which has \a format, restarting the surface when the format is another than
    before. Without a surface, or with one that doesn't take the format, the picture is dropped.
    When the surface fails, surfaceFailed() says so once until it shows a picture again.
*/
void VideoRendererControl::present(const QVideoFrame &picture, const QVideoSurfaceFormat &format)
{
    m_streamFormat = format;
    if (!startSurface())
        return;
    // The surface may delete the decoder, stop it or have itself taken off.
    const QPointer<VideoRendererControl> self(this);
    const QPointer<QAbstractVideoSurface> surface = m_surface;
    const bool isShown = surface->present(picture);
    if (!self || !surface || surface != m_surface || !m_surfaceFormat.isValid())
        return;
    // A surface may skip a picture. One that fails stops, and the next picture starts it again.
    if (isShown || surface->isActive()) {
        m_hasFailed = m_hasFailed && !isShown;
        return;
    }
    m_surfaceFormat = QVideoSurfaceFormat();
    if (!std::exchange(m_hasFailed, true))
        Q_EMIT surfaceFailed();
}

/*! Ends the run: stops the surface, which stays set. */
void VideoRendererControl::stop()
{
    m_streamFormat = QVideoSurfaceFormat();
    m_refusedFormat = QVideoSurfaceFormat();
    m_hasFailed = false;
    stopSurface();
}

/*!
    Makes the surface run with the stream's format. A refusal is announced once by formatRefused()
    and not tried again until the format or the surface changes.
*/
bool VideoRendererControl::startSurface()
{
    if (!m_surface)
        return false;
    if (m_surfaceFormat == m_streamFormat)
        return true;
    // Pictures decoded before a converter was put in still have the old format.
    if (m_refusedFormat == m_streamFormat || !pixelFormats().contains(m_streamFormat.pixelFormat()))
        return false;
    const QPointer<VideoRendererControl> self(this);
    const QVideoSurfaceFormat format = m_streamFormat;
    const QPointer<QAbstractVideoSurface> surface = m_surface;
    stopSurface();
    if (!self || !surface || surface != m_surface || format != m_streamFormat)
        return false;
    const bool isStarted = surface->start(format);
    const bool isWanted = self && surface == m_surface && format == m_streamFormat;
    // A surface may end the run or have itself taken off while it starts; it must not stay active.
    if (surface && isStarted && !isWanted)
        surface->stop();
    if (!surface || !isWanted)
        return false;
    if (isStarted) {
        m_surfaceFormat = format;
        return true;
    }
    m_refusedFormat = format;
    Q_EMIT formatRefused(format);
    return false;
}

void VideoRendererControl::stopSurface()
{
    if (!m_surfaceFormat.isValid())
        return;
    m_surfaceFormat = QVideoSurfaceFormat();
    if (m_surface)
        m_surface->stop();
}
