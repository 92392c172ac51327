// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Presents the pictures of a service on all surfaces that its controls were given.

#ifndef SURFACEGROUP_H
#define SURFACEGROUP_H

#include "surfacefeed.h"

#include <QtCore/qmap.h>
#include <QtCore/qobject.h>

#include <memory>
#include <vector>

struct FrameCounts
{
    int captured = 0;
    int presented = 0;
    int converted = 0;
};

class SurfaceGroup : public QObject
{
    Q_OBJECT

public:
    explicit SurfaceGroup(QObject *parent = nullptr);
    ~SurfaceGroup() override;

    QAbstractVideoSurface *surface(const QObject *control) const;
    void setSurface(const QObject *control, QAbstractVideoSurface *surface);
    QList<QVideoFrame::PixelFormat> pixelFormats() const;

    void present(const QVideoFrame &frame, const QVideoSurfaceFormat &format);
    void stop();

    FrameCounts counts() const;
    void resetCounts();

Q_SIGNALS:
    void pixelFormatsChanged();
    void failed(SurfaceFeed::Outcome failure, const QString &text);

private:
    using FeedPointer = std::shared_ptr<SurfaceFeed>;

    void add(QAbstractVideoSurface *surface);
    bool isInUse(const QAbstractVideoSurface *surface) const;
    void removeUnused();
    bool isOfEncoder(QAbstractVideoSurface *surface) const;
    void handleOutcome(const FeedPointer &feed, SurfaceFeed::Outcome outcome, const QSize &size);
    void report(SurfaceFeed::Outcome failure, const QSize &size);

    QMap<const QObject *, QPointer<QAbstractVideoSurface>> m_surfaces;
    SharedConversions m_conversions;
    std::vector<FeedPointer> m_feeds;
    FrameCounts m_counts;
    Run m_run;
};

#endif
