// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The focus and zoom settings object of a camera.

#include "qflcamerafocus.h"
#include "qflcamerafocus_p.h"

#include "qcamerafocusfakefocuscontrol_p.h"
#include "qcamerafocusfakezoomcontrol_p.h"
#include "qflcamera.h"
#include "qflserviceaccess_p.h"

QFLCameraFocusPrivate::QFLCameraFocusPrivate(QFLCamera *camera) : camera(camera) { }

void QFLCameraFocusPrivate::initialize()
{
    acquireControls();
    connectControls();
}

void QFLCameraFocusPrivate::acquireControls()
{
    Q_Q(QFLCameraFocus);

    QMediaService *cameraService = camera->service();
    focusControl = QFLServiceAccess::requestControl<QCameraFocusControl>(cameraService);
    zoomControl = QFLServiceAccess::requestControl<QCameraZoomControl>(cameraService);

    available = focusControl;
    if (!focusControl)
        focusControl = new QCameraFocusFakeFocusControl(q);
    if (!zoomControl)
        zoomControl = new QCameraFocusFakeZoomControl(q);
}

void QFLCameraFocusPrivate::connectControls()
{
    Q_Q(QFLCameraFocus);

    QObject::connect(focusControl, &QCameraFocusControl::focusZonesChanged, q,
                     &QFLCameraFocus::focusZonesChanged);
    QObject::connect(zoomControl, &QCameraZoomControl::currentOpticalZoomChanged, q,
                     &QFLCameraFocus::opticalZoomChanged);
    QObject::connect(zoomControl, &QCameraZoomControl::currentDigitalZoomChanged, q,
                     &QFLCameraFocus::digitalZoomChanged);
    QObject::connect(zoomControl, &QCameraZoomControl::maximumOpticalZoomChanged, q,
                     &QFLCameraFocus::maximumOpticalZoomChanged);
    QObject::connect(zoomControl, &QCameraZoomControl::maximumDigitalZoomChanged, q,
                     &QFLCameraFocus::maximumDigitalZoomChanged);
}

/*!
    \class QFLCameraFocus qflcamerafocus.h
    \brief The focus and zoom settings object of a camera.

    A camera makes one as its child and deletes it before it gives its service back. Every value is
    the backend's: the object stores nothing and passes on what it is given as it is, supported or
    not. It is used from the camera's thread, in which its signals are emitted too.

    Where the backend has no focus control, the focus is automatic, no mode is supported and there
    are no zones; where it has no zoom control, all factors are 1. Requests of a change then do
    nothing but write a warning.
*/

/*!
    \property QFLCameraFocus::focusMode
    The way in which the camera finds the focus, QCameraFocus::AutoFocus without a focus control.
*/

/*!
    \property QFLCameraFocus::focusPointMode
    What the camera focuses on, QCameraFocus::FocusPointAuto without a focus control.
*/

/*!
    \property QFLCameraFocus::customFocusPoint
    The point that the camera focuses on in the mode QCameraFocus::FocusPointCustom, relative to the
    frame: (0, 0) is its top left corner and (1, 1) its bottom right one. The middle, (0.5, 0.5),
    without a focus control.
*/

/*!
    \property QFLCameraFocus::focusZones
    The zones that the camera uses or may use to find the focus, none without a focus control.
*/

/*!
    \property QFLCameraFocus::opticalZoom
    The factor of the optical zoom that is in force, 1 without a zoom control.
*/

/*!
    \property QFLCameraFocus::digitalZoom
    The factor of the digital zoom that is in force, 1 without a zoom control.
*/

/*!
    \fn void QFLCameraFocus::opticalZoomChanged(qreal zoom)

    Emitted when the optical \a zoom in force has changed.
*/

/*!
    \fn void QFLCameraFocus::digitalZoomChanged(qreal zoom)

    Emitted when the digital \a zoom in force has changed.
*/

/*!
    \fn void QFLCameraFocus::focusZonesChanged()

    Emitted when the zones, or what the camera uses them for, have changed.
*/

/*!
    \fn void QFLCameraFocus::maximumOpticalZoomChanged(qreal zoom)

    Emitted when the largest optical \a zoom has changed, with another device say.
*/

/*!
    \fn void QFLCameraFocus::maximumDigitalZoomChanged(qreal zoom)

    Emitted when the largest digital \a zoom has changed.
*/

// Qt's record can only be destroyed by the object that it was handed to.
QFLCameraFocus::QFLCameraFocus(QFLCamera *camera)
    : QObject(*new QFLCameraFocusPrivate(camera), camera)
{
    Q_D(QFLCameraFocus);
    d->initialize();
}

/*!
    Releases nothing: the camera gives its whole service back right after.
*/
QFLCameraFocus::~QFLCameraFocus() = default;

/*!
    Returns whether the backend has a focus control, whatever it has for the zoom.
*/
bool QFLCameraFocus::isAvailable() const
{
    Q_D(const QFLCameraFocus);
    return d->available;
}

/*!
    Returns the mode that the backend focuses in, QCameraFocus::AutoFocus without a focus control.
*/
QCameraFocus::FocusModes QFLCameraFocus::focusMode() const
{
    Q_D(const QFLCameraFocus);
    return d->focusControl->focusMode();
}

/*!
    Has the backend focus in \a mode. Nothing tells whether it does but focusMode().
*/
void QFLCameraFocus::setFocusMode(QCameraFocus::FocusModes mode)
{
    Q_D(QFLCameraFocus);
    d->focusControl->setFocusMode(mode);
}

/*!
    Returns whether the backend can focus in \a mode.
*/
bool QFLCameraFocus::isFocusModeSupported(QCameraFocus::FocusModes mode) const
{
    Q_D(const QFLCameraFocus);
    return d->focusControl->isFocusModeSupported(mode);
}

/*!
    Returns how the backend chooses what it focuses on, QCameraFocus::FocusPointAuto without a focus
    control.
*/
QCameraFocus::FocusPointMode QFLCameraFocus::focusPointMode() const
{
    Q_D(const QFLCameraFocus);
    return d->focusControl->focusPointMode();
}

/*!
    Has the backend choose what it focuses on by \a mode. Nothing tells whether it does but
    focusPointMode().
*/
void QFLCameraFocus::setFocusPointMode(QCameraFocus::FocusPointMode mode)
{
    Q_D(QFLCameraFocus);
    d->focusControl->setFocusPointMode(mode);
}

/*!
    Returns whether the backend can choose what it focuses on by \a mode.
*/
bool QFLCameraFocus::isFocusPointModeSupported(QCameraFocus::FocusPointMode mode) const
{
    Q_D(const QFLCameraFocus);
    return d->focusControl->isFocusPointModeSupported(mode);
}

/*!
    Returns the point to focus on in the mode QCameraFocus::FocusPointCustom, relative to the frame;
    its middle, (0.5, 0.5), without a focus control.
*/
QPointF QFLCameraFocus::customFocusPoint() const
{
    Q_D(const QFLCameraFocus);
    return d->focusControl->customFocusPoint();
}

/*!
    Has the backend focus on \a point, which is relative to the frame and not checked here.
*/
void QFLCameraFocus::setCustomFocusPoint(const QPointF &point)
{
    Q_D(QFLCameraFocus);
    d->focusControl->setCustomFocusPoint(point);
}

/*!
    Returns the zones in the backend's order, none without a focus control; focusZonesChanged()
    tells of changes.
*/
QCameraFocusZoneList QFLCameraFocus::focusZones() const
{
    Q_D(const QFLCameraFocus);
    return d->focusControl->focusZones();
}

/*!
    Returns the largest factor of the optical zoom, 1 without a zoom control.
*/
qreal QFLCameraFocus::maximumOpticalZoom() const
{
    Q_D(const QFLCameraFocus);
    return d->zoomControl->maximumOpticalZoom();
}

/*!
    Returns the largest factor of the digital zoom, 1 without a zoom control.
*/
qreal QFLCameraFocus::maximumDigitalZoom() const
{
    Q_D(const QFLCameraFocus);
    return d->zoomControl->maximumDigitalZoom();
}

/*!
    Returns the factor that is in force now, which may be on its way to the one asked for; 1 without
    a zoom control.
*/
qreal QFLCameraFocus::opticalZoom() const
{
    Q_D(const QFLCameraFocus);
    return d->zoomControl->currentOpticalZoom();
}

/*!
    Returns the factor that is in force now, which may be on its way to the one asked for; 1 without
    a zoom control.
*/
qreal QFLCameraFocus::digitalZoom() const
{
    Q_D(const QFLCameraFocus);
    return d->zoomControl->currentDigitalZoom();
}

/*!
    Has the backend zoom by the factors \a optical and \a digital, which are not checked here;
    opticalZoomChanged() and digitalZoomChanged() tell how far it has come.
*/
void QFLCameraFocus::zoomTo(qreal optical, qreal digital)
{
    Q_D(QFLCameraFocus);
    d->zoomControl->zoomTo(optical, digital);
}
