// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Tells Qt where the cameras of the GStreamer backend look.

#ifndef CAMERAINFOPLUGIN_H
#define CAMERAINFOPLUGIN_H

#include <QtMultimedia/qmediaserviceproviderplugin.h>

class CameraInfoPlugin : public QObject, public QMediaServiceCameraInfoInterface
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QMediaServiceProviderFactoryInterface_iid FILE "camerainfoplugin.json")
    Q_INTERFACES(QMediaServiceCameraInfoInterface)

public:
    explicit CameraInfoPlugin(QObject *parent = nullptr);

    QCamera::Position cameraPosition(const QByteArray &device) const override;
    int cameraOrientation(const QByteArray &device) const override;

private:
    QMediaServiceCameraInfoInterface *otherPlugin(const QByteArray &device) const;
};

#endif
