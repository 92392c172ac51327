// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The exposure settings object of a camera.

#include "qflcameraexposure.h"
#include "qflcameraexposure_p.h"

#include "qflcamera.h"
#include "qflserviceaccess_p.h"

#include <QtCore/qdebug.h>
#include <QtMultimedia/qcameraflashcontrol.h>

namespace {

// A value that is there and can't be converted reads as the zero of its type.
template<typename Value> Value valueOr(const QVariant &value, Value fallback)
{
    return value.isValid() ? qvariant_cast<Value>(value) : fallback;
}

template<typename Value, typename Convert>
QList<Value> convertRange(const QVariantList &range, Convert convert, const char *warning)
{
    QList<Value> values;
    for (const QVariant &entry : range) {
        bool isConverted = false;
        const Value value = (entry.*convert)(&isConverted);
        if (isConverted)
            values.append(value);
        else
            qWarning("%s", warning);
    }
    return values;
}

} // namespace

QFLCameraExposurePrivate::QFLCameraExposurePrivate(QFLCameraExposure *exposure, QFLCamera *camera)
    : q_ptr(exposure), camera(camera)
{
}

void QFLCameraExposurePrivate::acquireControls()
{
    QMediaService *service = camera->service();
    exposureControl = QFLServiceAccess::requestControl<QCameraExposureControl>(service);
    flashControl = QFLServiceAccess::requestControl<QCameraFlashControl>(service);
}

// The flash control goes back with the service.
void QFLCameraExposurePrivate::releaseControls()
{
    QFLServiceAccess::releaseControls(camera->service(), exposureControl);
}

void QFLCameraExposurePrivate::connectControls()
{
    if (exposureControl) {
        QObject::connect(exposureControl, &QCameraExposureControl::actualValueChanged, q_ptr,
                         [this](int parameter) { _q_exposureParameterChanged(parameter); });
        QObject::connect(exposureControl, &QCameraExposureControl::parameterRangeChanged, q_ptr,
                         [this](int parameter) { _q_exposureParameterRangeChanged(parameter); });
    }
    if (flashControl) {
        QObject::connect(flashControl, &QCameraFlashControl::flashReady, q_ptr,
                         &QFLCameraExposure::flashReady);
    }
}

QVariant QFLCameraExposurePrivate::actualValue(Parameter parameter) const
{
    return exposureControl ? exposureControl->actualValue(parameter) : QVariant();
}

QVariant QFLCameraExposurePrivate::requestedValue(Parameter parameter) const
{
    return exposureControl ? exposureControl->requestedValue(parameter) : QVariant();
}

void QFLCameraExposurePrivate::setValue(Parameter parameter, const QVariant &value)
{
    if (exposureControl)
        exposureControl->setValue(parameter, value);
}

QVariantList QFLCameraExposurePrivate::supportedRange(Parameter parameter, bool *continuous) const
{
    bool isContinuous = false;
    return exposureControl ? exposureControl->supportedParameterRange(
                   parameter, continuous ? continuous : &isContinuous)
                           : QVariantList();
}

void QFLCameraExposurePrivate::_q_exposureParameterChanged(int parameter)
{
    switch (parameter) {
    case QCameraExposureControl::ISO:
        emit q_ptr->isoSensitivityChanged(q_ptr->isoSensitivity());
        break;
    case QCameraExposureControl::Aperture:
        emit q_ptr->apertureChanged(q_ptr->aperture());
        break;
    case QCameraExposureControl::ShutterSpeed:
        emit q_ptr->shutterSpeedChanged(q_ptr->shutterSpeed());
        break;
    case QCameraExposureControl::ExposureCompensation:
        emit q_ptr->exposureCompensationChanged(q_ptr->exposureCompensation());
        break;
    default:
        break;
    }
}

void QFLCameraExposurePrivate::_q_exposureParameterRangeChanged(int parameter)
{
    if (parameter == QCameraExposureControl::Aperture)
        emit q_ptr->apertureRangeChanged();
    else if (parameter == QCameraExposureControl::ShutterSpeed)
        emit q_ptr->shutterSpeedRangeChanged();
}

/*!
    \class QFLCameraExposure qflcameraexposure.h
    \brief The exposure settings object of a camera.

    A camera makes one as its child and deletes it before it gives its service back. Every value is
    the backend's: the object stores nothing and passes on what it is given as it is, supported or
    not. It is used from the camera's thread, in which its signals are emitted too.

    Without an exposure control every value is the neutral one that is named with it, and setting a
    value does nothing. The flash has a control of its own, with which isAvailable() has nothing to
    do.
*/

/*!
    \property QFLCameraExposure::aperture
    The lens aperture in force as an F number, -1 if it isn't known.
*/

/*!
    \property QFLCameraExposure::shutterSpeed
    The exposure time in force in seconds, -1 if it isn't known.
*/

/*!
    \property QFLCameraExposure::isoSensitivity
    The sensitivity in force by ISO 12232, -1 if it isn't known.
*/

/*!
    \property QFLCameraExposure::exposureCompensation
    The correction of the automatic exposure in exposure values, 0 if it isn't known.
*/

/*!
    \property QFLCameraExposure::flashReady
    Whether the flash is charged, false without a flash control.
*/

/*!
    \property QFLCameraExposure::flashMode
    The flash mode, QCameraExposure::FlashOff without a flash control.
*/

/*!
    \property QFLCameraExposure::exposureMode
    The exposure mode, QCameraExposure::ExposureAuto if it isn't known.
*/

/*!
    \property QFLCameraExposure::meteringMode
    The metering mode, QCameraExposure::MeteringMatrix if it isn't known.
*/

/*!
    \fn void QFLCameraExposure::flashReady(bool ready)

    Emitted when the flash has become \a ready, or no longer is.
*/

/*!
    \fn void QFLCameraExposure::apertureChanged(qreal aperture)

    Emitted when the \a aperture in force has changed.
*/

/*!
    \fn void QFLCameraExposure::apertureRangeChanged()

    Emitted when supportedApertures() has changed.
*/

/*!
    \fn void QFLCameraExposure::shutterSpeedChanged(qreal seconds)

    Emitted when the exposure time in force has changed to \a seconds.
*/

/*!
    \fn void QFLCameraExposure::shutterSpeedRangeChanged()

    Emitted when supportedShutterSpeeds() has changed.
*/

/*!
    \fn void QFLCameraExposure::isoSensitivityChanged(int iso)

    Emitted when the sensitivity in force has changed to \a iso.
*/

/*!
    \fn void QFLCameraExposure::exposureCompensationChanged(qreal ev)

    Emitted when the exposure compensation has changed to \a ev.
*/

QFLCameraExposure::QFLCameraExposure(QFLCamera *camera)
    : QObject(camera), d(new QFLCameraExposurePrivate(this, camera))
{
    d->acquireControls();
    d->connectControls();
}

/*!
    Releases the exposure control; the flash control goes back with the camera's service.
*/
QFLCameraExposure::~QFLCameraExposure()
{
    d->releaseControls();
}

/*!
    Returns whether the backend has an exposure control, whatever it has for the flash.
*/
bool QFLCameraExposure::isAvailable() const
{
    return d->exposureControl;
}

/*!
    Returns the mode that the backend uses the flash in, QCameraExposure::FlashOff without a flash
    control.
*/
QCameraExposure::FlashModes QFLCameraExposure::flashMode() const
{
    return d->flashControl ? d->flashControl->flashMode() : QCameraExposure::FlashOff;
}

/*!
    Returns whether the backend can use the flash in \a mode, false without a flash control.
*/
bool QFLCameraExposure::isFlashModeSupported(QCameraExposure::FlashModes mode) const
{
    return d->flashControl && d->flashControl->isFlashModeSupported(mode);
}

/*!
    Returns whether the flash is charged, false without a flash control; flashReady() tells of
    changes.
*/
bool QFLCameraExposure::isFlashReady() const
{
    return d->flashControl && d->flashControl->isFlashReady();
}

/*!
    Returns the mode that the backend exposes in, QCameraExposure::ExposureAuto if it isn't known.
*/
QCameraExposure::ExposureMode QFLCameraExposure::exposureMode() const
{
    return valueOr(d->actualValue(QCameraExposureControl::ExposureMode),
                   QCameraExposure::ExposureAuto);
}

/*!
    Returns whether the backend lists \a mode, false without an exposure control.
*/
bool QFLCameraExposure::isExposureModeSupported(QCameraExposure::ExposureMode mode) const
{
    return d->supportedRange(QCameraExposureControl::ExposureMode)
            .contains(QVariant::fromValue(mode));
}

/*!
    Returns by how many exposure values the automatic exposure is corrected, 0 if it isn't known.
*/
qreal QFLCameraExposure::exposureCompensation() const
{
    return valueOr(d->actualValue(QCameraExposureControl::ExposureCompensation), 0.0);
}

/*!
    Returns the mode that the backend meters in, QCameraExposure::MeteringMatrix if it isn't known.
*/
QCameraExposure::MeteringMode QFLCameraExposure::meteringMode() const
{
    return valueOr(d->actualValue(QCameraExposureControl::MeteringMode),
                   QCameraExposure::MeteringMatrix);
}

/*!
    Returns whether the backend lists \a mode, false without an exposure control.
*/
bool QFLCameraExposure::isMeteringModeSupported(QCameraExposure::MeteringMode mode) const
{
    return d->supportedRange(QCameraExposureControl::MeteringMode).contains(int(mode));
}

/*!
    Returns the point that is metered in the mode QCameraExposure::MeteringSpot, relative to the
    frame: (0, 0), which it is without an exposure control too, is its top left corner and (1, 1)
    its bottom right one.
*/
QPointF QFLCameraExposure::spotMeteringPoint() const
{
    return d->actualValue(QCameraExposureControl::SpotMeteringPoint).toPointF();
}

/*!
    Has the backend meter at \a point, which is relative to the frame and not checked here.
*/
void QFLCameraExposure::setSpotMeteringPoint(const QPointF &point)
{
    d->setValue(QCameraExposureControl::SpotMeteringPoint, point);
}

/*!
    Returns the sensitivity in force, be it asked for or chosen by the backend; -1 if it isn't
    known.
*/
int QFLCameraExposure::isoSensitivity() const
{
    return valueOr(d->actualValue(QCameraExposureControl::ISO), -1);
}

/*!
    Returns the sensitivity that was asked for, -1 if the backend chooses it itself.
*/
int QFLCameraExposure::requestedIsoSensitivity() const
{
    return valueOr(d->requestedValue(QCameraExposureControl::ISO), -1);
}

/*!
    Returns the sensitivities that the backend lists, in its order. \a continuous, which may be
    null, tells whether all values between them are possible, too; without an exposure control the
    list is empty and \a continuous stays as it is. An entry that is no number is left out with a
    warning.
*/
QList<int> QFLCameraExposure::supportedIsoSensitivities(bool *continuous) const
{
    return convertRange<int>(d->supportedRange(QCameraExposureControl::ISO, continuous),
                             &QVariant::toInt, "Incompatible ISO value type, int is expected");
}

/*!
    Returns the F number in force, be it asked for or chosen by the backend; -1 if it isn't known.
*/
qreal QFLCameraExposure::aperture() const
{
    return valueOr(d->actualValue(QCameraExposureControl::Aperture), -1.0);
}

/*!
    Returns the F number that was asked for, -1 if the backend chooses it itself.
*/
qreal QFLCameraExposure::requestedAperture() const
{
    return valueOr(d->requestedValue(QCameraExposureControl::Aperture), -1.0);
}

/*!
    Returns the F numbers that the backend lists, as supportedIsoSensitivities() does the
    sensitivities, \a continuous included.
*/
QList<qreal> QFLCameraExposure::supportedApertures(bool *continuous) const
{
    return convertRange<qreal>(d->supportedRange(QCameraExposureControl::Aperture, continuous),
                               &QVariant::toReal,
                               "Incompatible aperture value type, qreal is expected");
}

/*!
    Returns the exposure time in force in seconds, be it asked for or chosen by the backend; -1 if
    it isn't known.
*/
qreal QFLCameraExposure::shutterSpeed() const
{
    return valueOr(d->actualValue(QCameraExposureControl::ShutterSpeed), -1.0);
}

/*!
    Returns the exposure time in seconds that was asked for, -1 if the backend chooses it itself.
*/
qreal QFLCameraExposure::requestedShutterSpeed() const
{
    return valueOr(d->requestedValue(QCameraExposureControl::ShutterSpeed), -1.0);
}

/*!
    Returns the exposure times in seconds that the backend lists, as supportedIsoSensitivities()
    does the sensitivities, \a continuous included.
*/
QList<qreal> QFLCameraExposure::supportedShutterSpeeds(bool *continuous) const
{
    return convertRange<qreal>(d->supportedRange(QCameraExposureControl::ShutterSpeed, continuous),
                               &QVariant::toReal,
                               "Incompatible shutter speed value type, qreal is expected");
}

/*!
    Has the backend use the flash in \a mode. Nothing tells whether it does but flashMode().
*/
void QFLCameraExposure::setFlashMode(QCameraExposure::FlashModes mode)
{
    if (d->flashControl)
        d->flashControl->setFlashMode(mode);
}

/*!
    Has the backend expose in \a mode. Nothing tells whether it does but exposureMode().
*/
void QFLCameraExposure::setExposureMode(QCameraExposure::ExposureMode mode)
{
    d->setValue(QCameraExposureControl::ExposureMode, QVariant::fromValue(mode));
}

/*!
    Has the backend meter in \a mode. Nothing tells whether it does but meteringMode().
*/
void QFLCameraExposure::setMeteringMode(QCameraExposure::MeteringMode mode)
{
    d->setValue(QCameraExposureControl::MeteringMode, QVariant::fromValue(mode));
}

/*!
    Has the backend correct the automatic exposure by \a ev exposure values;
    exposureCompensationChanged() tells that it does.
*/
void QFLCameraExposure::setExposureCompensation(qreal ev)
{
    d->setValue(QCameraExposureControl::ExposureCompensation, ev);
}

/*!
    Has the backend use the sensitivity \a iso; isoSensitivityChanged() tells that it does.
*/
void QFLCameraExposure::setManualIsoSensitivity(int iso)
{
    d->setValue(QCameraExposureControl::ISO, iso);
}

/*!
    Has the backend choose the sensitivity itself.
*/
void QFLCameraExposure::setAutoIsoSensitivity()
{
    d->setValue(QCameraExposureControl::ISO, QVariant());
}

/*!
    Has the backend use the F number \a aperture; apertureChanged() tells that it does.
*/
void QFLCameraExposure::setManualAperture(qreal aperture)
{
    d->setValue(QCameraExposureControl::Aperture, aperture);
}

/*!
    Has the backend choose the aperture itself.
*/
void QFLCameraExposure::setAutoAperture()
{
    d->setValue(QCameraExposureControl::Aperture, QVariant());
}

/*!
    Has the backend expose for \a seconds; shutterSpeedChanged() tells that it does.
*/
void QFLCameraExposure::setManualShutterSpeed(qreal seconds)
{
    d->setValue(QCameraExposureControl::ShutterSpeed, seconds);
}

/*!
    Has the backend choose the exposure time itself.
*/
void QFLCameraExposure::setAutoShutterSpeed()
{
    d->setValue(QCameraExposureControl::ShutterSpeed, QVariant());
}

#include "moc_qflcameraexposure.cpp"
