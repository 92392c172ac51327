// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Presents a camera's frames on one surface.

#include "surfacefeed.h"

/*! \a surface is borrowed and may be destroyed at any time. */
SurfaceFeed::SurfaceFeed(QAbstractVideoSurface *surface) : m_surface(surface) { }

SurfaceFeed::~SurfaceFeed()
{
    stop();
}

QAbstractVideoSurface *SurfaceFeed::surface() const
{
    return m_surface;
}

/*!
    Shows \a frame, which has \a format; the first frame, and the first one of another format,
    starts the surface. A surface that refuses to start, or stops by itself, gets nothing until the
    format changes or stop() has been called.
*/
void SurfaceFeed::present(const QVideoFrame &frame, const QVideoSurfaceFormat &format)
{
    if (format != m_format)
        start(format);
    if (!m_isStarted || !m_surface || !m_surface->isActive())
        return;
    const QVideoFrame shown = m_converter ? m_converter->convert(frame) : frame;
    if (shown.isValid())
        m_surface->present(shown);
}

void SurfaceFeed::stop()
{
    m_format = QVideoSurfaceFormat();
    if (!m_isStarted)
        return;
    m_isStarted = false;
    if (m_surface && m_surface->isActive())
        m_surface->stop();
}

void SurfaceFeed::start(const QVideoSurfaceFormat &format)
{
    stop();
    m_format = format;
    if (!m_surface)
        return;
    const QVideoSurfaceFormat surfaceFormat = prepareFormat(format);
    m_isStarted = true;
    const bool isAccepted = m_surface->start(surfaceFormat);
    // A surface may have itself taken off while it starts; then it must not stay active.
    if (!m_isStarted && isAccepted && m_surface)
        m_surface->stop();
    m_isStarted = m_isStarted && isAccepted;
}

/*!
    Makes a converter if the surface needs one and returns the format the surface will see. If
    nothing can be converted for it, that is \a format itself, for the surface to refuse in its own
    way.
*/
QVideoSurfaceFormat SurfaceFeed::prepareFormat(const QVideoSurfaceFormat &format)
{
    m_converter.reset();
    const QList<QVideoFrame::PixelFormat> formats = m_surface->supportedPixelFormats();
    if (formats.contains(format.pixelFormat()))
        return format;
    for (QVideoFrame::PixelFormat pixelFormat : formats) {
        m_converter = FrameConverter::create(format, pixelFormat);
        if (m_converter)
            return m_converter->outputFormat();
    }
    return format;
}
