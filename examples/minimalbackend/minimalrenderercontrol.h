// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Shows pictures on the application's surface.

#ifndef MINIMALRENDERERCONTROL_H
#define MINIMALRENDERERCONTROL_H

#include <qfldecoder.h>

#include <QtCore/qpointer.h>
#include <QtMultimedia/qabstractvideosurface.h>
#include <QtMultimedia/qvideorenderercontrol.h>
#include <QtMultimedia/qvideosurfaceformat.h>

#include <functional>

class MinimalRendererControl : public QVideoRendererControl
{
    Q_OBJECT

public:
    explicit MinimalRendererControl(QObject *parent);

    QAbstractVideoSurface *surface() const override;
    void setSurface(QAbstractVideoSurface *surface) override;

    bool start(const QVideoSurfaceFormat &format);
    void present(const QVideoFrame &picture);
    void stop();

Q_SIGNALS:
    void failed(QFLDecoder::Error error, const QString &text);

private:
    std::function<bool()> watch() const;
    void leave(QAbstractVideoSurface *surface);
    void fail(QFLDecoder::Error error, const QString &text);

    QPointer<QAbstractVideoSurface> m_surface;
    QVideoSurfaceFormat m_format;
    int m_run = 0;
    bool m_hasFailed = false;
};

#endif
