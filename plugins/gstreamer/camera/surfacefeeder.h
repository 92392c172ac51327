// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Presents a camera's frames on all surfaces that its controls were given.

#ifndef SURFACEFEEDER_H
#define SURFACEFEEDER_H

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

class SurfaceFeeder : public QObject
{
    Q_OBJECT

public:
    explicit SurfaceFeeder(QObject *parent = nullptr);

    QAbstractVideoSurface *surface(const QObject *control) const;
    void setSurface(const QObject *control, QAbstractVideoSurface *surface);

    void present(const QVideoFrame &frame, const QVideoSurfaceFormat &format);
    void stop();

    FrameCounts counts() const;
    void resetCounts();

private:
    using FeedPointer = std::shared_ptr<SurfaceFeed>;

    bool isInUse(const QAbstractVideoSurface *surface) const;
    void removeUnused();

    QMap<const QObject *, QPointer<QAbstractVideoSurface>> m_surfaces;
    FrameConversions m_conversions;
    std::vector<FeedPointer> m_feeds;
    FrameCounts m_counts;
    int m_run = 0;
};

#endif
