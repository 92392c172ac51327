// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Presents a camera's frames on all surfaces that its controls were given.

#include "surfacefeeder.h"

#include <algorithm>

/*!
    Several controls may have the same surface; it is nevertheless started, shown each frame and
    stopped once. Everything happens on the camera's thread, and a surface may change the surfaces
    of the camera from within a call.
*/
SurfaceFeeder::SurfaceFeeder(QObject *parent) : QObject(parent) { }

/*! The surface of \a control, null when it has none or the surface is gone. */
QAbstractVideoSurface *SurfaceFeeder::surface(const QObject *control) const
{
    return m_surfaces.value(control);
}

/*!
    Gives \a control the surface \a surface in place of the one it had, which is stopped unless
    another control has it too, and isn't called any more when this returns. The new one is started
    with the next frame. Null takes the control's surface off.
*/
void SurfaceFeeder::setSurface(const QObject *control, QAbstractVideoSurface *surface)
{
    if (surface)
        m_surfaces.insert(control, surface);
    else
        m_surfaces.remove(control);

    const bool isFed = std::any_of(m_feeds.cbegin(), m_feeds.cend(), [surface](const auto &feed) {
        return feed->surface() == surface;
    });
    if (surface && !isFed)
        m_feeds.push_back(std::make_shared<SurfaceFeed>(surface, &m_conversions));
    removeUnused();
}

/*! Surfaces that take \a format get \a frame itself; what others need is converted once for all. */
void SurfaceFeeder::present(const QVideoFrame &frame, const QVideoSurfaceFormat &format)
{
    // A surface may take itself or another one off, or stop all, while it is shown the frame.
    const std::vector<FeedPointer> feeds = m_feeds;
    const int run = m_run;
    ++m_counts.captured;
    for (const FeedPointer &feed : feeds) {
        if (run == m_run && feed->surface() && isInUse(feed->surface())
            && feed->present(frame, format))
            ++m_counts.presented;
    }
    m_conversions.releaseFrames();
}

/*! Stops all surfaces; they stay with their controls and start again with the next frame. */
void SurfaceFeeder::stop()
{
    ++m_run;
    const std::vector<FeedPointer> feeds = m_feeds;
    for (const FeedPointer &feed : feeds)
        feed->stop();
}

/*!
    Since resetCounts(): the frames that came, the calls with which surfaces were shown one, and the
    frames that were converted, which are the only copies made here.
*/
FrameCounts SurfaceFeeder::counts() const
{
    FrameCounts counts = m_counts;
    counts.converted = m_conversions.count();
    return counts;
}

void SurfaceFeeder::resetCounts()
{
    m_counts = FrameCounts();
    m_conversions.resetCount();
}

bool SurfaceFeeder::isInUse(const QAbstractVideoSurface *surface) const
{
    return std::find(m_surfaces.cbegin(), m_surfaces.cend(), surface) != m_surfaces.cend();
}

void SurfaceFeeder::removeUnused()
{
    const auto unused
            = std::stable_partition(m_feeds.begin(), m_feeds.end(), [this](const auto &feed) {
                  return feed->surface() && isInUse(feed->surface());
              });
    const std::vector<FeedPointer> removed(unused, m_feeds.end());
    m_feeds.erase(unused, m_feeds.end());
    for (const FeedPointer &feed : removed)
        feed->stop();
}
