// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Presents a camera's frames on one surface.

#include "surfacefeed.h"

/*!
    \a surface is borrowed and may be destroyed at any time. \a conversions are those of all feeds of
    the camera.
*/
SurfaceFeed::SurfaceFeed(QAbstractVideoSurface *surface, FrameConversions *conversions)
    : m_surface(surface), m_conversions(conversions)
{
}

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
    format changes or stop() has been called. Returns whether the surface was shown a frame.
*/
bool SurfaceFeed::present(const QVideoFrame &frame, const QVideoSurfaceFormat &format)
{
    if (format != m_format)
        start(format);
    if (!m_isStarted || !m_surface || !m_surface->isActive())
        return false;
    const bool isConverted = m_convertedFormat != QVideoFrame::Format_Invalid;
    const QVideoFrame shown
            = isConverted ? m_conversions->convert(frame, m_convertedFormat) : frame;
    if (!shown.isValid())
        return false;
    m_surface->present(shown);
    return true;
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
    Prepares a conversion if the surface needs one and returns the format it will see. If
    nothing can be converted for it, that is \a format itself, for the surface to refuse in its own
    way.
*/
QVideoSurfaceFormat SurfaceFeed::prepareFormat(const QVideoSurfaceFormat &format)
{
    m_convertedFormat = QVideoFrame::Format_Invalid;
    const QList<QVideoFrame::PixelFormat> formats = m_surface->supportedPixelFormats();
    if (formats.contains(format.pixelFormat()))
        return format;
    for (QVideoFrame::PixelFormat pixelFormat : formats) {
        const QVideoSurfaceFormat converted = m_conversions->prepare(format, pixelFormat);
        if (converted.isValid()) {
            m_convertedFormat = pixelFormat;
            return converted;
        }
    }
    return format;
}
