// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Presents a camera's frames on one surface.

#ifndef SURFACEFEED_H
#define SURFACEFEED_H

#include "frameconversions.h"

#include <QtCore/qpointer.h>
#include <QtMultimedia/qabstractvideosurface.h>

class SurfaceFeed
{
public:
    SurfaceFeed(QAbstractVideoSurface *surface, FrameConversions *conversions);
    ~SurfaceFeed();

    QAbstractVideoSurface *surface() const;
    bool present(const QVideoFrame &frame, const QVideoSurfaceFormat &format);
    void stop();

private:
    Q_DISABLE_COPY(SurfaceFeed)

    void start(const QVideoSurfaceFormat &format);
    QVideoSurfaceFormat prepareFormat(const QVideoSurfaceFormat &format);

    QPointer<QAbstractVideoSurface> m_surface;
    FrameConversions *m_conversions;
    QVideoSurfaceFormat m_format;
    QVideoFrame::PixelFormat m_convertedFormat = QVideoFrame::Format_Invalid;
    bool m_isStarted = false;
};

#endif
