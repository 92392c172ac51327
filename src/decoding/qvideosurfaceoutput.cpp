// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The routing of an application surface to the renderer control of a media object.

#include "qvideosurfaceoutput_p.h"

#include "qflserviceaccess_p.h"

#include <utility>

/*!
    \class QVideoSurfaceOutput
    \brief Hands an application's surface to the renderer control of the media object it is bound
    to.

    The output owns nothing: surface, control, service and media object may all die first. It is
    bound, with control, service and media object set, or unbound, with all three null; the surface
    is independent of that.

    The control starts and stops surfaces, which may set another surface or delete the output's
    owner, and with it the output.
*/

QVideoSurfaceOutput::QVideoSurfaceOutput(QObject *parent) : QObject(parent) { }

/*!
    Takes the surface off the control and releases the control.
*/
QVideoSurfaceOutput::~QVideoSurfaceOutput()
{
    dropBinding();
}

/*!
    Stores \a surface, which may be null, and hands it to the control of a bound output.
*/
void QVideoSurfaceOutput::setVideoSurface(QAbstractVideoSurface *surface)
{
    m_surface = surface;
    if (m_control)
        m_control->setSurface(surface);
}

/*!
    Shows \a owner's pictures on \a surface, or nowhere if it is null. \a boundOutput is the owner's
    record of the output that is bound to it. The output stays unbound, to be tried again at the
    next call, if the owner has no renderer control.
*/
void QVideoSurfaceOutput::routeTo(QMediaObject *owner, QObject *&boundOutput,
                                  QAbstractVideoSurface *surface)
{
    const QPointer<QVideoSurfaceOutput> self(this);
    const int routing = ++m_routing;
    // A control that is bound already switches over at once.
    setVideoSurface(surface);

    if (!self || routing != m_routing || (boundOutput == this && surface))
        return;

    // Off the record before it is unbound and on it before it is bound, for calls on the way.
    if (QObject *output = std::exchange(boundOutput, nullptr))
        owner->unbind(output);
    if (!surface)
        return;

    boundOutput = this;
    const bool isBound = owner->bind(this);
    if (!isBound && self)
        boundOutput = nullptr;
}

QMediaObject *QVideoSurfaceOutput::mediaObject() const
{
    return m_object;
}

/*!
    Binds the output to \a object, releasing the control of the object bound before. Returns false,
    and leaves the output unbound, if \a object is null or its service has no renderer control.
*/
bool QVideoSurfaceOutput::setMediaObject(QMediaObject *object)
{
    const QPointer<QVideoSurfaceOutput> self(this);
    dropBinding();
    if (!self)
        return false;

    QMediaService *service = object ? object->service() : nullptr;
    QVideoRendererControl *control = QFLServiceAccess::requestControl<QVideoRendererControl>(
            service, QFLServiceAccess::WrongClass::Release);
    if (!control)
        return false;

    m_control = control;
    m_service = service;
    m_object = object;
    control->setSurface(m_surface);
    return true;
}

void QVideoSurfaceOutput::dropBinding()
{
    QPointer<QVideoRendererControl> control;
    QPointer<QMediaService> service;
    control.swap(m_control);
    service.swap(m_service);
    m_object.clear();
    if (!control)
        return;

    control->setSurface(nullptr);
    QFLServiceAccess::releaseControls(service, control);
}
