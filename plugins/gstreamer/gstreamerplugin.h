// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The plugin that offers the services of the GStreamer backend.

#ifndef GSTREAMERPLUGIN_H
#define GSTREAMERPLUGIN_H

#include "qflmediaservicecodecinfointerface.h"

#include <QtMultimedia/qmediaserviceproviderplugin.h>

class GStreamerPlugin : public QMediaServiceProviderPlugin,
                        public QMediaServiceSupportedDevicesInterface,
                        public QMediaServiceDefaultDeviceInterface,
                        public QFLMediaServiceCodecInfoInterface
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QMediaServiceProviderFactoryInterface_iid FILE "gstreamerplugin.json")
    Q_INTERFACES(QMediaServiceSupportedDevicesInterface QMediaServiceDefaultDeviceInterface
                         QFLMediaServiceCodecInfoInterface)

public:
    QMediaService *create(const QString &key) override;
    void release(QMediaService *service) override;

    QList<QByteArray> devices(const QByteArray &service) const override;
    QString deviceDescription(const QByteArray &service, const QByteArray &device) override;
    QByteArray defaultDevice(const QByteArray &service) const override;

    QString codec(const QByteArray &codecId) override;
    bool isEncoder(const QByteArray &codecId) override;
    bool isHardwareAccelerated(const QByteArray &codecId) override;
    int maxInstances(const QByteArray &codecId) override;
};

#endif
