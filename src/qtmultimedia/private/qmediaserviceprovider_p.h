// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Our declaration of the service provider of Qt Multimedia 5.15, for Qt installations without its
// private headers.

#ifndef QMEDIASERVICEPROVIDER_H
#define QMEDIASERVICEPROVIDER_H

#include <QtMultimedia/qmediaserviceproviderplugin.h>
#include <QtMultimedia/qmultimedia.h>

#include <QtCore/qobject.h>

QT_BEGIN_NAMESPACE

class QMediaService;

// Qt's own media objects call these operations by their place in the table of virtual functions,
// so neither their order may change nor a destructor be declared.
class Q_MULTIMEDIA_EXPORT QMediaServiceProvider : public QObject
{
    Q_OBJECT

public:
    virtual QMediaService *requestService(const QByteArray &type,
                                          const QMediaServiceProviderHint &hint
                                          = QMediaServiceProviderHint())
            = 0;
    virtual void releaseService(QMediaService *service) = 0;

    virtual QMediaServiceProviderHint::Features supportedFeatures(
            const QMediaService *service) const;
    virtual QMultimedia::SupportEstimate hasSupport(const QByteArray &serviceType,
                                                    const QString &mimeType,
                                                    const QStringList &codecs, int flags = 0) const;
    virtual QStringList supportedMimeTypes(const QByteArray &serviceType, int flags = 0) const;

    virtual QByteArray defaultDevice(const QByteArray &serviceType) const;
    virtual QList<QByteArray> devices(const QByteArray &serviceType) const;
    virtual QString deviceDescription(const QByteArray &serviceType, const QByteArray &device);

    virtual QCamera::Position cameraPosition(const QByteArray &device) const;
    virtual int cameraOrientation(const QByteArray &device) const;

    static QMediaServiceProvider *defaultServiceProvider();
    static void setDefaultServiceProvider(QMediaServiceProvider *provider);
};

QT_END_NAMESPACE

#endif
