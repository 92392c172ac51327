// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Shows pictures on the application's surface.

#ifndef MINIMALRENDERERCONTROL_H
#define MINIMALRENDERERCONTROL_H

#include <QtCore/qpointer.h>
#include <QtMultimedia/qabstractvideosurface.h>
#include <QtMultimedia/qvideorenderercontrol.h>
#include <QtMultimedia/qvideosurfaceformat.h>

class MinimalRendererControl : public QVideoRendererControl
{
    Q_OBJECT

public:
    explicit MinimalRendererControl(QObject *parent);

    QAbstractVideoSurface *surface() const override;
    void setSurface(QAbstractVideoSurface *surface) override;

    bool present(const QVideoFrame &picture, const QVideoSurfaceFormat &format);
    void stop();

private:
    QPointer<QAbstractVideoSurface> m_surface;
    QVideoSurfaceFormat m_format;
};

#endif
