// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-3.0-or-later
// The request and the release of the services of encoders and decoders.

#include "qfldefaultservice_p.h"

#include <private/qmediaserviceprovider_p.h>

/*!
    Requests a service of \a type, without further wishes, from the provider that is the default
    now. Returns null if there is none.
*/
QMediaService *QFLDefaultService::request(const QByteArray &type)
{
    // There is no provider any more late in the process's exit.
    QMediaServiceProvider *provider = QMediaServiceProvider::defaultServiceProvider();
    return provider ? provider->requestService(type, QMediaServiceProviderHint()) : nullptr;
}

/*!
    Gives \a service back to the provider that is the default now.
*/
void QFLDefaultService::release(QMediaService *service)
{
    if (QMediaServiceProvider *provider = QMediaServiceProvider::defaultServiceProvider())
        provider->releaseService(service);
}
