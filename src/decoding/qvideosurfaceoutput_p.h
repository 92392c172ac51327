// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The routing of an application surface to the renderer control of a media object.

// This header is not part of the public interface: it may change from one version to the next.

#ifndef QVIDEOSURFACEOUTPUT_P_H
#define QVIDEOSURFACEOUTPUT_P_H

#include <QtCore/qobject.h>
#include <QtCore/qpointer.h>
#include <QtMultimedia/qabstractvideosurface.h>
#include <QtMultimedia/qmediabindableinterface.h>
#include <QtMultimedia/qmediaobject.h>
#include <QtMultimedia/qmediaservice.h>
#include <QtMultimedia/qvideorenderercontrol.h>

class QVideoSurfaceOutput : public QObject, public QMediaBindableInterface
{
    Q_OBJECT
    Q_INTERFACES(QMediaBindableInterface)

public:
    explicit QVideoSurfaceOutput(QObject *parent = nullptr);
    ~QVideoSurfaceOutput() override;

    void setVideoSurface(QAbstractVideoSurface *surface);
    void routeTo(QMediaObject *owner, QObject *&boundOutput, QAbstractVideoSurface *surface);

    QMediaObject *mediaObject() const override;
    bool setMediaObject(QMediaObject *object) override;

private:
    void dropBinding();

    QPointer<QAbstractVideoSurface> m_surface;
    QPointer<QVideoRendererControl> m_control;
    QPointer<QMediaService> m_service;
    QPointer<QMediaObject> m_object;
    int m_routing = 0;
};

#endif
