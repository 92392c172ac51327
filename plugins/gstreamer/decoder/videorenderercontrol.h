// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Presents decoded pictures on the application's video surface.

#ifndef VIDEORENDERERCONTROL_H
#define VIDEORENDERERCONTROL_H

#include <QtCore/qpointer.h>
#include <QtMultimedia/qabstractvideosurface.h>
#include <QtMultimedia/qvideorenderercontrol.h>
#include <QtMultimedia/qvideosurfaceformat.h>

class VideoRendererControl : public QVideoRendererControl
{
    Q_OBJECT

public:
    explicit VideoRendererControl(QObject *parent = nullptr);
    ~VideoRendererControl() override;

    QAbstractVideoSurface *surface() const override;
    void setSurface(QAbstractVideoSurface *surface) override;

    QList<QVideoFrame::PixelFormat> pixelFormats() const;

    void present(const QVideoFrame &picture, const QVideoSurfaceFormat &format);
    void stop();

Q_SIGNALS:
    void pixelFormatsChanged();
    void formatRefused(const QVideoSurfaceFormat &format);
    void surfaceFailed();

private:
    bool startSurface();
    void stopSurface();

    QPointer<QAbstractVideoSurface> m_surface;
    QVideoSurfaceFormat m_streamFormat;
    QVideoSurfaceFormat m_surfaceFormat;
    QVideoSurfaceFormat m_refusedFormat;
    bool m_hasFailed = false;
};

#endif
