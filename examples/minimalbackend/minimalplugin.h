// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The plugin object: services, codec ids and their descriptions.

#ifndef MINIMALPLUGIN_H
#define MINIMALPLUGIN_H

#include <qflmediaservicecodecinfointerface.h>

#include <QtMultimedia/qmediaserviceproviderplugin.h>

//! [class]
class MinimalPlugin : public QMediaServiceProviderPlugin,
                      public QMediaServiceSupportedDevicesInterface,
                      public QFLMediaServiceCodecInfoInterface
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QMediaServiceProviderFactoryInterface_iid FILE "minimalbackend.json")
    Q_INTERFACES(QMediaServiceSupportedDevicesInterface QFLMediaServiceCodecInfoInterface)

public:
    QMediaService *create(const QString &key) override;
    void release(QMediaService *service) override;

    QList<QByteArray> devices(const QByteArray &service) const override;
    QString deviceDescription(const QByteArray &service, const QByteArray &device) override;

    QString codec(const QByteArray &codecId) override;
    bool isEncoder(const QByteArray &codecId) override;
    bool isHardwareAccelerated(const QByteArray &codecId) override;
    int maxInstances(const QByteArray &codecId) override;
};
//! [class]

#endif
