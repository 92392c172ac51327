// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Presents a camera's frames on one surface.

#ifndef SURFACEFEED_H
#define SURFACEFEED_H

#include "frameconverter.h"

#include <QtCore/qpointer.h>
#include <QtMultimedia/qabstractvideosurface.h>

class SurfaceFeed
{
public:
    explicit SurfaceFeed(QAbstractVideoSurface *surface);
    ~SurfaceFeed();

    QAbstractVideoSurface *surface() const;
    void present(const QVideoFrame &frame, const QVideoSurfaceFormat &format);
    void stop();

private:
    Q_DISABLE_COPY(SurfaceFeed)

    void start(const QVideoSurfaceFormat &format);
    QVideoSurfaceFormat prepareFormat(const QVideoSurfaceFormat &format);

    QPointer<QAbstractVideoSurface> m_surface;
    QVideoSurfaceFormat m_format;
    std::unique_ptr<FrameConverter> m_converter;
    bool m_isStarted = false;
};

#endif
