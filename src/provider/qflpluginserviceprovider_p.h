// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The service provider that the library installs in Qt Multimedia.

// This header is not part of the public interface: it may change from one version to the next.

#ifndef QFLPLUGINSERVICEPROVIDER_P_H
#define QFLPLUGINSERVICEPROVIDER_P_H

#include "qflmediaserviceprovider.h"

#include <QtCore/qmap.h>

class QFLPluginServiceProvider : public QFLMediaServiceProvider
{
public:
    QFLPluginServiceProvider();
    ~QFLPluginServiceProvider() override;

    QMediaService *requestService(const QByteArray &type,
                                  const QMediaServiceProviderHint &hint) override;
    void releaseService(QMediaService *service) override;

    QMediaServiceProviderHint::Features supportedFeatures(
            const QMediaService *service) const override;
    QMultimedia::SupportEstimate hasSupport(const QByteArray &serviceType, const QString &mimeType,
                                            const QStringList &codecs, int flags) const override;
    QStringList supportedMimeTypes(const QByteArray &serviceType, int flags) const override;

    QByteArray defaultDevice(const QByteArray &serviceType) const override;
    QList<QByteArray> devices(const QByteArray &serviceType) const override;
    QString deviceDescription(const QByteArray &serviceType, const QByteArray &device) override;
    QCamera::Position cameraPosition(const QByteArray &device) const override;
    int cameraOrientation(const QByteArray &device) const override;

    QString codec(const QByteArray &codecId) override;
    bool isEncoder(const QByteArray &codecId) override;
    bool isHardwareAccelerated(const QByteArray &codecId) override;
    int maxInstances(const QByteArray &codecId) override;

private:
    struct ServiceEntry
    {
        QByteArray type;
        QMediaServiceProviderPlugin *plugin = nullptr;
    };

    QMap<const QMediaService *, ServiceEntry> serviceEntries;
};

#endif
