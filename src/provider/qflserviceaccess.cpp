// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// How the media objects acquire and give back their services and controls.

#include "qflserviceaccess_p.h"

/*!
    Requests a service of \a type that fits \a hint from the provider that is the default now.
    Returns null if there is none.
*/
QMediaService *QFLServiceAccess::requestService(const QByteArray &type,
                                                const QMediaServiceProviderHint &hint)
{
    // There is no provider any more late in the process's exit.
    QMediaServiceProvider *provider = QMediaServiceProvider::defaultServiceProvider();
    return provider ? provider->requestService(type, hint) : nullptr;
}

/*!
    Gives \a service back to the provider that is the default now.
*/
void QFLServiceAccess::releaseService(QMediaService *service)
{
    if (QMediaServiceProvider *provider = QMediaServiceProvider::defaultServiceProvider())
        provider->releaseService(service);
}
