// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// How the media objects acquire and give back their services and controls.

#include "qflserviceaccess_p.h"

/*!
    Returns the provider that is the default now, null late in the process's exit.
*/
QMediaServiceProvider *QFLServiceAccess::provider()
{
    return QMediaServiceProvider::defaultServiceProvider();
}

/*!
    Requests a service of \a type that fits \a hint from the provider that is the default now.
    Returns null if there is none.
*/
QMediaService *QFLServiceAccess::requestService(const QByteArray &type,
                                                const QMediaServiceProviderHint &hint)
{
    QMediaServiceProvider *current = provider();
    return current ? current->requestService(type, hint) : nullptr;
}

/*!
    Gives \a service back to the provider that is the default now.
*/
void QFLServiceAccess::releaseService(QMediaService *service)
{
    if (QMediaServiceProvider *current = provider())
        current->releaseService(service);
}
