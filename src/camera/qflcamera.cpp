// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-3.0-or-later
// The media object through which an application uses a camera.

#include "qflcamera.h"
#include "qflcamera_p.h"

#include "qflcameraexposure.h"
#include "qflcamerafocus.h"
#include "qflcamerainfo.h"

#include <private/qmediaserviceprovider_p.h>

#include <QtMultimedia/qcamerainfocontrol.h>
#include <QtMultimedia/qcameralockscontrol.h>
#include <QtMultimedia/qcameraviewfindersettingscontrol.h>
#include <QtMultimedia/qmediaservice.h>
#include <QtMultimedia/qvideodeviceselectorcontrol.h>

#include <utility>

namespace {

QMediaService *requestCameraService(const QMediaServiceProviderHint &hint)
{
    QMediaServiceProvider *provider = QMediaServiceProvider::defaultServiceProvider();
    return provider ? provider->requestService(QByteArrayLiteral("facelink.camera"), hint)
                    : nullptr;
}

// A control of the wrong class is treated as missing, and goes back with the service.
template<typename Control> void request(QMediaService *service, Control *&control)
{
    control = qobject_cast<Control *>(service->requestControl(qmediacontrol_iid<Control *>()));
}

int lockPriority(QCamera::LockStatus status)
{
    switch (status) {
    case QCamera::Locked:
        return 1;
    case QCamera::Unlocked:
        return 2;
    case QCamera::Searching:
        return 3;
    }
    return -1;
}

} // namespace

void QFLCameraPrivate::initialize()
{
    Q_Q(QFLCamera);

    provider = QMediaServiceProvider::defaultServiceProvider();
    acquireControls();
    exposureObject = new QFLCameraExposure(q);
    focusObject = new QFLCameraFocus(q);
}

void QFLCameraPrivate::acquireControls()
{
    if (!service) {
        error = QCamera::ServiceMissingError;
        errorString = QFLCamera::tr("The camera service is missing");
        return;
    }

    request(service, cameraControl);
    request(service, locksControl);
    request(service, deviceSelector);
    request(service, infoControl);
    request(service, viewfinderSettingsControl2);
    if (!viewfinderSettingsControl2)
        request(service, viewfinderSettingsControl);

    connectControls();
    error = QCamera::NoError;
}

void QFLCameraPrivate::connectControls()
{
    Q_Q(QFLCamera);

    // The private slots are known by name only.
    if (cameraControl) {
        QObject::connect(cameraControl, SIGNAL(stateChanged(QCamera::State)), q,
                         SLOT(_q_updateState(QCamera::State)));
        QObject::connect(cameraControl, &QCameraControl::statusChanged, q,
                         &QFLCamera::statusChanged);
        QObject::connect(cameraControl, &QCameraControl::captureModeChanged, q,
                         &QFLCamera::captureModeChanged);
        QObject::connect(cameraControl, SIGNAL(error(int, QString)), q,
                         SLOT(_q_error(int, QString)));
    }
    if (locksControl) {
        QObject::connect(locksControl,
                         SIGNAL(lockStatusChanged(QCamera::LockType, QCamera::LockStatus,
                                                  QCamera::LockChangeReason)),
                         q,
                         SLOT(_q_updateLockStatus(QCamera::LockType, QCamera::LockStatus,
                                                  QCamera::LockChangeReason)));
    }
}

void QFLCameraPrivate::tearDown()
{
    delete std::exchange(exposureObject, nullptr);
    delete std::exchange(focusObject, nullptr);
    if (!service)
        return;

    QMediaControl *const controls[] = {cameraControl,
                                       locksControl,
                                       deviceSelector,
                                       infoControl,
                                       viewfinderSettingsControl,
                                       viewfinderSettingsControl2};
    for (QMediaControl *control : controls) {
        if (control)
            service->releaseControl(control);
    }
    provider->releaseService(service);

    service = nullptr;
    cameraControl = nullptr;
    locksControl = nullptr;
    deviceSelector = nullptr;
    infoControl = nullptr;
    viewfinderSettingsControl = nullptr;
    viewfinderSettingsControl2 = nullptr;
}

bool QFLCameraPrivate::selectDevice(const QString &name)
{
    const int count = deviceSelector ? deviceSelector->deviceCount() : 0;
    for (int i = 0; i < count; ++i) {
        if (deviceSelector->deviceName(i) == name) {
            deviceSelector->setSelectedDevice(i);
            return true;
        }
    }
    return false;
}

bool QFLCameraPrivate::selectDevice(QCamera::Position position)
{
    if (!deviceSelector || !infoControl || position == QCamera::UnspecifiedPosition)
        return false;

    const int count = deviceSelector->deviceCount();
    for (int i = 0; i < count; ++i) {
        if (infoControl->cameraPosition(deviceSelector->deviceName(i)) == position) {
            deviceSelector->setSelectedDevice(i);
            return true;
        }
    }
    return false;
}

void QFLCameraPrivate::selectDefaultDevice()
{
    if (deviceSelector)
        deviceSelector->setSelectedDevice(deviceSelector->defaultDevice());
}

void QFLCameraPrivate::requestState(QCamera::State newState)
{
    error = QCamera::NoError;
    errorString.clear();
    if (!cameraControl) {
        reportMissingService();
        return;
    }

    // A restart that was pending would otherwise undo the request.
    restartPending = false;
    cameraControl->setState(newState);
}

void QFLCameraPrivate::reportMissingService()
{
    _q_error(QCamera::ServiceMissingError, QFLCamera::tr("The camera service is missing"));
}

void QFLCameraPrivate::searchAndLock(QCamera::LockTypes locks)
{
    const QCamera::LockStatus statusBefore = lockStatus;
    lockSignalsSuppressed = true;
    if (locksControl) {
        locks &= locksControl->supportedLocks();
        requestedLocks |= locks;
        locksControl->searchAndLock(locks);
    }
    endLockRequest(statusBefore);
}

void QFLCameraPrivate::unlock(QCamera::LockTypes locks)
{
    const QCamera::LockStatus statusBefore = lockStatus;
    lockSignalsSuppressed = true;
    requestedLocks &= ~locks;
    if (locksControl)
        locksControl->unlock(locks & locksControl->supportedLocks());
    endLockRequest(statusBefore);
}

void QFLCameraPrivate::endLockRequest(QCamera::LockStatus statusBefore)
{
    // What the control reported during the request counts as one change.
    lockStatus = statusBefore;
    lockSignalsSuppressed = false;
    recomputeLockStatus();
}

void QFLCameraPrivate::recomputeLockStatus()
{
    Q_Q(QFLCamera);

    const QCamera::LockStatus oldStatus = std::exchange(lockStatus, aggregateLockStatus());
    if (lockSignalsSuppressed || lockStatus == oldStatus)
        return;

    emit q->lockStatusChanged(lockStatus, lockChangeReason);
    if (lockStatus == QCamera::Locked)
        emit q->locked();
    else if (lockStatus == QCamera::Unlocked && lockChangeReason == QCamera::LockFailed)
        emit q->lockFailed();
}

QCamera::LockStatus QFLCameraPrivate::aggregateLockStatus() const
{
    Q_Q(const QFLCamera);

    if (!requestedLocks)
        return QCamera::Unlocked;

    QCamera::LockStatus aggregate = QCamera::Locked;
    int bestPriority = 0;
    for (QCamera::LockType lock :
         {QCamera::LockFocus, QCamera::LockExposure, QCamera::LockWhiteBalance}) {
        if (!requestedLocks.testFlag(lock))
            continue;
        const QCamera::LockStatus status = q->lockStatus(lock);
        if (lockPriority(status) > bestPriority) {
            aggregate = status;
            bestPriority = lockPriority(status);
        }
    }
    return aggregate;
}

void QFLCameraPrivate::_q_preparePropertyChange(int changeType)
{
    Q_Q(QFLCamera);

    if (!cameraControl)
        return;

    const QCamera::Status status = cameraControl->status();
    if (cameraControl->state() != QCamera::ActiveState
        || cameraControl->canChangeProperty(QCameraControl::PropertyChangeType(changeType),
                                            status)) {
        return;
    }

    restartPending = true;
    cameraControl->setState(QCamera::LoadedState);
    QMetaObject::invokeMethod(q, "_q_restartCamera", Qt::QueuedConnection);
}

void QFLCameraPrivate::_q_restartCamera()
{
    if (!restartPending)
        return;

    restartPending = false;
    cameraControl->setState(QCamera::ActiveState);
}

void QFLCameraPrivate::_q_error(int code, const QString &description)
{
    Q_Q(QFLCamera);

    error = QCamera::Error(code);
    errorString = description;
    emit q->error(error);
}

void QFLCameraPrivate::_q_updateLockStatus(QCamera::LockType lock, QCamera::LockStatus status,
                                           QCamera::LockChangeReason reason)
{
    Q_Q(QFLCamera);

    lockChangeReason = reason;
    recomputeLockStatus();
    emit q->lockStatusChanged(lock, status, reason);
}

void QFLCameraPrivate::_q_updateState(QCamera::State newState)
{
    Q_Q(QFLCamera);

    // The application sees the camera as active throughout a restart.
    if (restartPending || newState == state)
        return;

    state = newState;
    emit q->stateChanged(newState);
}

/*!
    \class QFLCamera
    \brief The media object through which an application uses a camera.

    The camera drives the controls of a "facelink.camera" service, which it holds from its
    construction to its destruction. Its pictures go to the surface set with setViewfinder() and to
    every QFLEncoder that is bound to it with QMediaObject::bind().

    \code
        Unloaded --load()--> Loaded --start()--> Active
            ^                 |  ^                  |
            +----unload()-----+  +------stop()------+
    \endcode

    Unloaded: the backend holds no resources. Loaded: the device is open, and no pictures are taken.
    Active: pictures are taken. state() is the state that the backend reported last; status() is the
    backend's own, more detailed view of it, read at every call.

    A property that the backend can't change in the active state is changed by way of a restart,
    which needs a running event loop and which stateChanged() does not show.

    The camera is used from the thread that it lives in, in which its signals are emitted too.
*/

/*!
    \fn void QFLCamera::stateChanged(QCamera::State state)

    Emitted when the backend has reported a new \a state.
*/

/*!
    \fn void QFLCamera::captureModeChanged(QCamera::CaptureModes mode)

    Emitted when the backend has changed the capture \a mode.
*/

/*!
    \fn void QFLCamera::statusChanged(QCamera::Status status)

    Emitted when the backend's \a status has changed.
*/

/*!
    \fn void QFLCamera::locked()

    Emitted when all requested locks have been reached.
*/

/*!
    \fn void QFLCamera::lockFailed()

    Emitted when the requested locks taken together have become unlocked and the reason that the
    backend gave last, be it for an earlier change, is QCamera::LockFailed.
*/

/*!
    \fn void QFLCamera::lockStatusChanged(QCamera::LockStatus status, QCamera::LockChangeReason
    reason)

    Emitted when the \a status of the requested locks taken together has changed, for the \a reason
    that the backend gave last.
*/

/*!
    \fn void QFLCamera::lockStatusChanged(QCamera::LockType lock, QCamera::LockStatus status,
                                          QCamera::LockChangeReason reason)

    Emitted at each report of the backend about one \a lock.
*/

/*!
    \fn void QFLCamera::error(QCamera::Error error)

    Emitted at each failure that the backend reports, and when a state is requested without a camera
    control.
*/

/*!
    Makes a camera on the default device.
*/
QFLCamera::QFLCamera(QObject *parent)
    : QMediaObject(*new QFLCameraPrivate, parent, requestCameraService(QMediaServiceProviderHint()))
{
    Q_D(QFLCamera);
    d->initialize();
    d->selectDefaultDevice();
}

/*!
    Makes a camera on the device called \a deviceName. If there is none, the camera stays on the
    device that the service has selected itself.
*/
QFLCamera::QFLCamera(const QByteArray &deviceName, QObject *parent)
    : QMediaObject(*new QFLCameraPrivate, parent,
                   requestCameraService(QMediaServiceProviderHint(deviceName)))
{
    Q_D(QFLCamera);
    d->initialize();
    d->selectDevice(QString::fromLatin1(deviceName));
}

/*!
    Makes a camera on the device that \a cameraInfo describes. If there is none, the camera stays on
    the device that the service has selected itself.
*/
QFLCamera::QFLCamera(const QFLCameraInfo &cameraInfo, QObject *parent)
    : QMediaObject(
            *new QFLCameraPrivate, parent,
            requestCameraService(QMediaServiceProviderHint(cameraInfo.deviceName().toLatin1())))
{
    Q_D(QFLCamera);
    d->initialize();
    d->selectDevice(cameraInfo.deviceName());
}

/*!
    Makes a camera on the first device at \a position, on the default device if there is none.
*/
QFLCamera::QFLCamera(QCamera::Position position, QObject *parent)
    : QMediaObject(*new QFLCameraPrivate, parent,
                   requestCameraService(QMediaServiceProviderHint(position)))
{
    Q_D(QFLCamera);
    d->initialize();
    if (!d->selectDevice(position))
        d->selectDefaultDevice();
}

/*!
    Deletes the exposure and focus objects and gives the service back.
*/
QFLCamera::~QFLCamera()
{
    Q_D(QFLCamera);
    d->tearDown();
}

/*!
    Returns QMultimedia::ServiceMissing without a camera control, QMultimedia::ResourceError if the
    backend lists no device or after an error.
*/
QMultimedia::AvailabilityStatus QFLCamera::availability() const
{
    Q_D(const QFLCamera);

    if (!d->cameraControl)
        return QMultimedia::ServiceMissing;
    if (d->deviceSelector && d->deviceSelector->deviceCount() == 0)
        return QMultimedia::ResourceError;
    if (d->error != QCamera::NoError)
        return QMultimedia::ResourceError;
    return QMediaObject::availability();
}

/*!
    Returns the state that the backend reported last.
*/
QCamera::State QFLCamera::state() const
{
    Q_D(const QFLCamera);
    return d->state;
}

/*!
    Returns the backend's status, QCamera::UnavailableStatus without a camera control.
*/
QCamera::Status QFLCamera::status() const
{
    Q_D(const QFLCamera);
    return d->cameraControl ? d->cameraControl->status() : QCamera::UnavailableStatus;
}

/*!
    Returns the last error since the last request of a state, QCamera::ServiceMissingError from the
    start if there is no service.
*/
QCamera::Error QFLCamera::error() const
{
    Q_D(const QFLCamera);
    return d->error;
}

/*!
    Returns the description of error(), empty if there was none.
*/
QString QFLCamera::errorString() const
{
    Q_D(const QFLCamera);
    return d->errorString;
}

/*!
    Returns the backend's capture mode, QCamera::CaptureStillImage without a camera control.
*/
QCamera::CaptureModes QFLCamera::captureMode() const
{
    Q_D(const QFLCamera);
    return d->cameraControl ? d->cameraControl->captureMode() : QCamera::CaptureStillImage;
}

/*!
    Returns whether the backend can capture in \a mode.
*/
bool QFLCamera::isCaptureModeSupported(QCamera::CaptureModes mode) const
{
    Q_D(const QFLCamera);
    return d->cameraControl && d->cameraControl->isCaptureModeSupported(mode);
}

/*!
    Has the backend capture in \a mode, with a restart of the camera if it can't change the mode
    while it is active; captureModeChanged() tells that it does.
*/
void QFLCamera::setCaptureMode(QCamera::CaptureModes mode)
{
    Q_D(QFLCamera);

    if (mode == captureMode() || !d->cameraControl)
        return;

    d->_q_preparePropertyChange(QCameraControl::CaptureMode);
    d->cameraControl->setCaptureMode(mode);
}

/*!
    Returns the exposure settings object, which the camera owns.
*/
QFLCameraExposure *QFLCamera::exposure() const
{
    Q_D(const QFLCamera);
    return d->exposureObject;
}

/*!
    Returns the focus and zoom settings object, which the camera owns.
*/
QFLCameraFocus *QFLCamera::focus() const
{
    Q_D(const QFLCamera);
    return d->focusObject;
}

/*!
    Returns null: there are no image processing settings.
*/
QCameraImageProcessing *QFLCamera::imageProcessing() const
{
    Q_D(const QFLCamera);
    return d->imageProcessingObject;
}

/*!
    Shows the camera's pictures on \a surface, which is not owned; null shows them nowhere.
*/
void QFLCamera::setViewfinder(QAbstractVideoSurface *surface)
{
    Q_D(QFLCamera);
    d->surfaceOutput.routeTo(this, d->boundViewfinder, surface);
}

/*!
    Has the backend open the device; stateChanged() tells that it has, error() that it failed.
*/
void QFLCamera::load()
{
    Q_D(QFLCamera);
    d->requestState(QCamera::LoadedState);
}

/*!
    Has the backend close the device.
*/
void QFLCamera::unload()
{
    Q_D(QFLCamera);
    d->requestState(QCamera::UnloadedState);
}

/*!
    Has the backend take pictures; stateChanged() tells that it does, error() that it failed.
*/
void QFLCamera::start()
{
    Q_D(QFLCamera);
    d->requestState(QCamera::ActiveState);
}

/*!
    Has the backend take no more pictures and keep the device open.
*/
void QFLCamera::stop()
{
    Q_D(QFLCamera);
    d->requestState(QCamera::LoadedState);
}

/*!
    Returns the locks that the backend has, none without a locks control.
*/
QCamera::LockTypes QFLCamera::supportedLocks() const
{
    Q_D(const QFLCamera);
    return d->locksControl ? d->locksControl->supportedLocks() : QCamera::LockTypes();
}

/*!
    Returns the locks that have been requested and not been given up.
*/
QCamera::LockTypes QFLCamera::requestedLocks() const
{
    Q_D(const QFLCamera);
    return d->requestedLocks;
}

/*!
    Returns the status of the requested locks taken together: searching if one of them is, else
    unlocked if one of them is, else locked. Unlocked if none is requested.
*/
QCamera::LockStatus QFLCamera::lockStatus() const
{
    Q_D(const QFLCamera);
    return d->lockStatus;
}

/*!
    Returns the status of one \a lock, unlocked if it isn't requested.
*/
QCamera::LockStatus QFLCamera::lockStatus(QCamera::LockType lock) const
{
    Q_D(const QFLCamera);

    if (!(d->requestedLocks & lock))
        return QCamera::Unlocked;
    return d->locksControl ? d->locksControl->lockStatus(lock) : QCamera::Locked;
}

/*!
    Requests all locks.
*/
void QFLCamera::searchAndLock()
{
    searchAndLock(QCamera::LockExposure | QCamera::LockWhiteBalance | QCamera::LockFocus);
}

/*!
    Gives up the requested locks.
*/
void QFLCamera::unlock()
{
    unlock(requestedLocks());
}

/*!
    Requests those of \a locks that the backend has.
*/
void QFLCamera::searchAndLock(QCamera::LockTypes locks)
{
    Q_D(QFLCamera);
    d->searchAndLock(locks);
}

/*!
    Gives up \a locks.
*/
void QFLCamera::unlock(QCamera::LockTypes locks)
{
    Q_D(QFLCamera);
    d->unlock(locks);
}

#include "moc_qflcamera.cpp"
