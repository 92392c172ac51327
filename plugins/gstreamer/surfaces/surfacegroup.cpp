// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Presents the pictures of a service on all surfaces that its controls were given.

#include "surfacegroup.h"

#include <qflrawvideosourcecontrol.h>

#include <algorithm>

/*!
    \class SurfaceGroup

    Several controls may have the same surface; it is nevertheless started, shown each picture and
    stopped once. Everything happens on the service's thread. From within a call a surface may change
    the surfaces of the service, or delete it.
*/

/*!
    \fn void SurfaceGroup::pixelFormatsChanged()

    Tells that pixelFormats() may be others.
*/

/*!
    \fn void SurfaceGroup::failed(SurfaceFeed::Outcome failure, const QString &text)

    A surface doesn't show the pictures, for the reason in \a text. Others go on, and so does this
    one when it can; see SurfaceFeed for when that is tried, and when told again. Nothing is told of
    a surface that stands on a raw video source control, and it isn't tried again: the encoder behind
    it tells what is wrong.
*/

SurfaceGroup::SurfaceGroup(QObject *parent) : QObject(parent) { }

SurfaceGroup::~SurfaceGroup() = default;

/*! The surface of \a control, null when it has none or the surface is gone. */
QAbstractVideoSurface *SurfaceGroup::surface(const QObject *control) const
{
    return m_surfaces.value(control);
}

/*!
    Gives \a control the surface \a surface in place of the one it had, which is stopped unless
    another control has it too, and isn't called any more when this returns. The new one is started
    with the next picture. Null takes the control's surface off.
*/
void SurfaceGroup::setSurface(const QObject *control, QAbstractVideoSurface *surface)
{
    if (surface)
        m_surfaces.insert(control, surface);
    else
        m_surfaces.remove(control);

    const bool isFed = std::any_of(m_feeds.cbegin(), m_feeds.cend(), [surface](const auto &feed) {
        return feed->surface() == surface;
    });
    if (surface && !isFed)
        add(surface);
    const Run::Watch isAlive = m_run.watchOwner();
    removeUnused();
    if (isAlive())
        Q_EMIT pixelFormatsChanged();
}

/*! What the first surface takes in system memory: pictures in these formats need no conversion. */
QList<QVideoFrame::PixelFormat> SurfaceGroup::pixelFormats() const
{
    for (const FeedPointer &feed : m_feeds) {
        if (feed->surface())
            return feed->surface()->supportedPixelFormats();
    }
    return QList<QVideoFrame::PixelFormat>();
}

/*! Surfaces that take \a format get \a frame itself; what others need is converted once for all. */
void SurfaceGroup::present(const QVideoFrame &frame, const QVideoSurfaceFormat &format)
{
    // A surface may take itself or another one off, or stop all, while it is shown the frame.
    const std::vector<FeedPointer> feeds = m_feeds;
    const Run::Watch isOn = m_run.watch();
    const Run::Watch isAlive = m_run.watchOwner();
    ++m_counts.captured;
    for (const FeedPointer &feed : feeds) {
        if (!isOn() || !feed->surface() || !isInUse(feed->surface()))
            continue;
        const SurfaceFeed::Outcome outcome = feed->present(frame, format);
        if (isAlive())
            handleOutcome(feed, outcome, format.frameSize());
    }
    if (isAlive())
        m_conversions.releaseFrames();
}

/*! Stops all surfaces; they stay with their controls and start again with the next picture. */
void SurfaceGroup::stop()
{
    m_run.begin();
    const std::vector<FeedPointer> feeds = m_feeds;
    for (const FeedPointer &feed : feeds)
        feed->stop();
}

/*!
    Since resetCounts(): the frames that came, the calls with which surfaces were shown one, and the
    frames that were converted, which are the only copies made here.
*/
FrameCounts SurfaceGroup::counts() const
{
    FrameCounts counts = m_counts;
    counts.converted = m_conversions.count();
    return counts;
}

void SurfaceGroup::resetCounts()
{
    m_counts = FrameCounts();
    m_conversions.resetCount();
}

void SurfaceGroup::add(QAbstractVideoSurface *surface)
{
    m_feeds.push_back(std::make_shared<SurfaceFeed>(surface, &m_conversions));
    connect(surface, &QAbstractVideoSurface::supportedFormatsChanged, this,
            &SurfaceGroup::pixelFormatsChanged);
}

bool SurfaceGroup::isInUse(const QAbstractVideoSurface *surface) const
{
    return std::find(m_surfaces.cbegin(), m_surfaces.cend(), surface) != m_surfaces.cend();
}

void SurfaceGroup::removeUnused()
{
    const auto unused
            = std::stable_partition(m_feeds.begin(), m_feeds.end(), [this](const auto &feed) {
                  return feed->surface() && isInUse(feed->surface());
              });
    const std::vector<FeedPointer> removed(unused, m_feeds.end());
    m_feeds.erase(unused, m_feeds.end());
    for (const FeedPointer &feed : removed) {
        if (feed->surface())
            feed->surface()->disconnect(this);
    }
    for (const FeedPointer &feed : removed)
        feed->stop();
}

bool SurfaceGroup::isOfEncoder(QAbstractVideoSurface *surface) const
{
    const QList<const QObject *> controls = m_surfaces.keys(surface);
    return std::any_of(controls.begin(), controls.end(), [](const QObject *control) {
        return qobject_cast<const QFLRawVideoSourceControl *>(control);
    });
}

// An encoder tells by itself why it doesn't start, and would tell it again each time.
void SurfaceGroup::handleOutcome(const FeedPointer &feed, SurfaceFeed::Outcome outcome,
                                 const QSize &size)
{
    if (outcome == SurfaceFeed::Presented)
        ++m_counts.presented;
    else if (outcome != SurfaceFeed::Nothing && isOfEncoder(feed->surface()))
        feed->giveUp();
    else if (outcome != SurfaceFeed::Nothing)
        report(outcome, size);
}

void SurfaceGroup::report(SurfaceFeed::Outcome failure, const QSize &size)
{
    if (failure == SurfaceFeed::NoCommonFormat)
        Q_EMIT failed(failure, tr("The video surface takes none of the available pixel formats"));
    else if (failure == SurfaceFeed::StartRefused)
        Q_EMIT failed(failure,
                      tr("The video surface doesn't start with pictures of %1x%2")
                              .arg(size.width())
                              .arg(size.height()));
    else
        Q_EMIT failed(failure, tr("The video surface has stopped showing pictures"));
}
