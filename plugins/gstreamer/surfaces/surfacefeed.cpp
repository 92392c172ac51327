// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Presents pictures on one surface.

#include "surfacefeed.h"

#include <utility>

namespace {

// Starting may be work, for an encoder at the other end or a window, so not every picture tries it.
const std::chrono::seconds betweenRefusedStarts(1);

} // namespace

/*!
    \class SurfaceFeed

    Starts a surface, shows it pictures and stops it, on the thread of its service. The surface is
    borrowed and may be destroyed at any time. From within any call it may stop this feed, or have
    itself taken off; whoever calls this feed keeps it meanwhile.

    A surface may skip a picture. It fails by taking no format that pictures can be converted to, by
    refusing to start, or by stopping itself. That is told once, until it shows a picture again or
    the format of the pictures changes. One that has stopped itself is started again with the next
    picture, one that doesn't start is asked again after a second.
*/

/*! \a conversions are those of all feeds of the service. */
SurfaceFeed::SurfaceFeed(QAbstractVideoSurface *surface, SharedConversions *conversions)
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
    Shows \a frame, which has \a format, having started the surface with it if need be. Presented
    when the surface was shown the picture, whether it took it or not; a failure only if it is new.
*/
SurfaceFeed::Outcome SurfaceFeed::present(const QVideoFrame &frame,
                                          const QVideoSurfaceFormat &format)
{
    const Run::Watch isOn = m_run.watch();
    if (format != m_format)
        setFormat(format);
    const Outcome failure = isOn() && m_surface && !m_isStarted ? start() : Nothing;
    return isOn() && m_surface && m_isStarted ? show(frame) : failure;
}

/*! After a failure: the surface isn't started again until the format of the pictures changes. */
void SurfaceFeed::giveUp()
{
    m_nextStart = QDeadlineTimer(QDeadlineTimer::Forever);
}

/*! The surface stays, and is started again with the next picture. It isn't called any more. */
void SurfaceFeed::stop()
{
    m_run.begin();
    m_format = QVideoSurfaceFormat();
    m_hasFailed = false;
    m_nextStart = QDeadlineTimer();
    stopSurface();
}

/*! Stops the surface unless it sees no difference. */
void SurfaceFeed::setFormat(const QVideoSurfaceFormat &format)
{
    m_format = format;
    if (!m_surface)
        return;
    const QVideoSurfaceFormat surfaceFormat = formatFor(format, &m_convertedFormat);
    if (m_isStarted && surfaceFormat == m_surfaceFormat)
        return;
    m_hasFailed = false;
    m_nextStart = QDeadlineTimer();
    stopSurface();
}

/*!
    What the surface sees of pictures of \a format, which have to be \a converted unless that is
    Format_Invalid. An invalid format if it takes nothing that they can be converted to.
*/
QVideoSurfaceFormat SurfaceFeed::formatFor(const QVideoSurfaceFormat &format,
                                           QVideoFrame::PixelFormat *converted) const
{
    *converted = QVideoFrame::Format_Invalid;
    const QList<QVideoFrame::PixelFormat> formats = m_surface->supportedPixelFormats();
    if (formats.contains(format.pixelFormat()))
        return format;
    for (const QVideoFrame::PixelFormat pixelFormat : formats) {
        const QVideoSurfaceFormat output = m_conversions->prepare(format, pixelFormat);
        *converted = pixelFormat;
        if (output.isValid())
            return output;
    }
    return QVideoSurfaceFormat();
}

void SurfaceFeed::stopSurface()
{
    if (std::exchange(m_isStarted, false) && m_surface && m_surface->isActive())
        m_surface->stop();
}

SurfaceFeed::Outcome SurfaceFeed::start()
{
    if (!m_nextStart.hasExpired())
        return Nothing;
    const QVideoSurfaceFormat format = formatFor(m_format, &m_convertedFormat);
    if (!format.isValid())
        return fail(NoCommonFormat);
    const Run::Watch isOn = m_run.watch();
    m_surfaceFormat = format;
    m_isStarted = true;
    const bool isAccepted = m_surface->start(format);
    // A surface that ended this while it started must not stay active.
    if (!isOn() && isAccepted && m_surface)
        m_surface->stop();
    if (!isOn() || !m_surface)
        return Nothing;
    m_isActive = m_surface->isActive();
    return isAccepted ? Nothing : fail(StartRefused);
}

SurfaceFeed::Outcome SurfaceFeed::show(const QVideoFrame &frame)
{
    if (m_isActive && !m_surface->isActive())
        return fail(StoppedItself);
    const bool isConverted = m_convertedFormat != QVideoFrame::Format_Invalid;
    const QVideoFrame shown
            = isConverted ? m_conversions->convert(frame, m_convertedFormat) : frame;
    if (!shown.isValid())
        return Nothing;
    const Run::Watch isOn = m_run.watch();
    const bool isShown = m_surface->present(shown);
    if (!isOn() || !m_surface)
        return Presented;
    if (!isShown && !m_surface->isActive())
        return fail(StoppedItself);
    m_hasFailed = m_hasFailed && !isShown;
    return Presented;
}

SurfaceFeed::Outcome SurfaceFeed::fail(Outcome failure)
{
    m_isStarted = false;
    if (failure != StoppedItself)
        m_nextStart = QDeadlineTimer(betweenRefusedStarts);
    return std::exchange(m_hasFailed, true) ? Nothing : failure;
}
