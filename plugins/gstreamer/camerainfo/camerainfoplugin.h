// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Tells Qt where the cameras of the GStreamer backend look.

#ifndef CAMERAINFOPLUGIN_H
#define CAMERAINFOPLUGIN_H

#include <QtMultimedia/qmediaserviceproviderplugin.h>

class CameraInfoPlugin : public QObject,
                         public QMediaServiceSupportedDevicesInterface,
                         public QMediaServiceCameraInfoInterface
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QMediaServiceProviderFactoryInterface_iid FILE "camerainfoplugin.json")
    Q_INTERFACES(QMediaServiceSupportedDevicesInterface QMediaServiceCameraInfoInterface)

public:
    explicit CameraInfoPlugin(QObject *parent = nullptr);

    QList<QByteArray> devices(const QByteArray &service) const override;
    QString deviceDescription(const QByteArray &service, const QByteArray &device) override;

    QCamera::Position cameraPosition(const QByteArray &device) const override;
    int cameraOrientation(const QByteArray &device) const override;
};

#endif
