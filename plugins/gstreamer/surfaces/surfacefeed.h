// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Presents pictures on one surface.

#ifndef SURFACEFEED_H
#define SURFACEFEED_H

#include "run.h"
#include "sharedconversions.h"

#include <QtCore/qdeadlinetimer.h>
#include <QtCore/qpointer.h>
#include <QtMultimedia/qabstractvideosurface.h>

class SurfaceFeed
{
public:
    enum Outcome { Nothing, Presented, NoCommonFormat, StartRefused, StoppedItself };

    SurfaceFeed(QAbstractVideoSurface *surface, SharedConversions *conversions);
    ~SurfaceFeed();

    QAbstractVideoSurface *surface() const;
    Outcome present(const QVideoFrame &frame, const QVideoSurfaceFormat &format);
    void giveUp();
    void stop();

private:
    Q_DISABLE_COPY(SurfaceFeed)

    void setFormat(const QVideoSurfaceFormat &format);
    QVideoSurfaceFormat formatFor(const QVideoSurfaceFormat &format,
                                  QVideoFrame::PixelFormat *converted) const;
    void stopSurface();
    Outcome start();
    Outcome show(const QVideoFrame &frame);
    Outcome fail(Outcome failure);

    QPointer<QAbstractVideoSurface> m_surface;
    SharedConversions *m_conversions;
    QVideoSurfaceFormat m_format;
    QVideoSurfaceFormat m_surfaceFormat;
    QVideoFrame::PixelFormat m_convertedFormat = QVideoFrame::Format_Invalid;
    Run m_run;
    bool m_isStarted = false;
    bool m_isActive = false;
    bool m_hasFailed = false;
    QDeadlineTimer m_nextStart;
};

#endif
