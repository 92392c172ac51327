// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// How the media objects acquire and give back their services and controls.

// This header is not part of the public interface: it may change from one version to the next.

#ifndef QFLSERVICEACCESS_P_H
#define QFLSERVICEACCESS_P_H

#include <private/qmediaserviceprovider_p.h>

#include <QtMultimedia/qmediacontrol.h>
#include <QtMultimedia/qmediaservice.h>

namespace QFLServiceAccess {

/*! What happens to a control that is not of the class that its identifier promises. */
enum class WrongClass { Keep, Release };

QMediaServiceProvider *provider();
QMediaService *requestService(const QByteArray &type,
                              const QMediaServiceProviderHint &hint = QMediaServiceProviderHint());
void releaseService(QMediaService *service);

/*!
    Returns the control of \a service, null if there is no service or it has no such control. A
    control of another class counts as missing: it is released at once, or kept, to go back with the
    service.
*/
template<typename Control>
Control *requestControl(QMediaService *service, WrongClass wrongClass = WrongClass::Keep)
{
    QMediaControl *control
            = service ? service->requestControl(qmediacontrol_iid<Control *>()) : nullptr;
    auto *wanted = qobject_cast<Control *>(control);
    if (control && !wanted && wrongClass == WrongClass::Release)
        service->releaseControl(control);
    return wanted;
}

/*!
    Releases the \a controls that are there to \a service, if it is there, in this order, and clears
    the pointers.
*/
template<typename... Pointers> void releaseControls(QMediaService *service, Pointers &...controls)
{
    const auto release = [service](auto &control) {
        if (service && control)
            service->releaseControl(control);
        control = nullptr;
    };
    (release(controls), ...);
}

} // namespace QFLServiceAccess

#endif
