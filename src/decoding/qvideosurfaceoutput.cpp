// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The routing of an application surface to the renderer control of a media object.

#include "qvideosurfaceoutput_p.h"

#include "qflserviceaccess_p.h"

/*!
    \class QVideoSurfaceOutput
    \brief Hands an application's surface to the renderer control of the media object it is bound
    to.

    The output owns nothing: surface, control, service and media object may all die first. It is
    bound, with control, service and media object set, or unbound, with all three null; the surface
    is independent of that.
*/

QVideoSurfaceOutput::QVideoSurfaceOutput(QObject *parent) : QObject(parent) { }

/*!
    Takes the surface off the control and releases the control.
*/
QVideoSurfaceOutput::~QVideoSurfaceOutput()
{
    releaseControl();
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
    // A control that is bound already switches over at once.
    setVideoSurface(surface);

    if (boundOutput == this && surface)
        return;

    if (boundOutput)
        owner->unbind(boundOutput);
    boundOutput = nullptr;

    if (surface && owner->bind(this))
        boundOutput = this;
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
    releaseControl();
    m_control.clear();
    m_service.clear();
    m_object.clear();

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

void QVideoSurfaceOutput::releaseControl()
{
    if (!m_control)
        return;

    m_control->setSurface(nullptr);
    QFLServiceAccess::releaseControls(m_service, m_control);
}
