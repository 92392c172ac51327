// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The media object through which an application uses a camera.

#include "qflcamera.h"
#include "qflcamera_p.h"

#include "qflcameraexposure.h"
#include "qflcamerafocus.h"
#include "qflcamerainfo.h"
#include "qflserviceaccess_p.h"
#include "qvideosurfaceoutput_p.h"

#include <QtMultimedia/qcamerainfocontrol.h>
#include <QtMultimedia/qcameralockscontrol.h>
#include <QtMultimedia/qcameraviewfindersettingscontrol.h>
#include <QtMultimedia/qvideodeviceselectorcontrol.h>

#include <utility>

namespace {

QMediaService *requestCameraService(const QMediaServiceProviderHint &hint
                                    = QMediaServiceProviderHint())
{
    return QFLServiceAccess::requestService(QFL_MEDIASERVICE_CAMERA, hint);
}

QString missingServiceText()
{
    return QFLCamera::tr("The camera service is missing");
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

QFLCameraPrivate::QFLCameraPrivate() : surfaceOutput(new QVideoSurfaceOutput) { }

QFLCameraPrivate::~QFLCameraPrivate() = default;

void QFLCameraPrivate::initialize()
{
    Q_Q(QFLCamera);

    provider = QFLServiceAccess::provider();
    acquireControls();
    exposureObject = new QFLCameraExposure(q);
    focusObject = new QFLCameraFocus(q);
}

void QFLCameraPrivate::acquireControls()
{
    if (!service) {
        error = QCamera::ServiceMissingError;
        errorString = missingServiceText();
        return;
    }

    cameraControl = QFLServiceAccess::requestControl<QCameraControl>(service);
    locksControl = QFLServiceAccess::requestControl<QCameraLocksControl>(service);
    deviceSelector = QFLServiceAccess::requestControl<QVideoDeviceSelectorControl>(service);
    infoControl = QFLServiceAccess::requestControl<QCameraInfoControl>(service);
    viewfinderSettingsControl2
            = QFLServiceAccess::requestControl<QCameraViewfinderSettingsControl2>(service);
    if (!viewfinderSettingsControl2)
        viewfinderSettingsControl
                = QFLServiceAccess::requestControl<QCameraViewfinderSettingsControl>(service);

    connectControls();
    error = QCamera::NoError;
}

void QFLCameraPrivate::connectControls()
{
    Q_Q(QFLCamera);

    if (cameraControl) {
        QObjectPrivate::connect(cameraControl, &QCameraControl::stateChanged, this,
                                &QFLCameraPrivate::_q_updateState);
        QObject::connect(cameraControl, &QCameraControl::statusChanged, q,
                         &QFLCamera::statusChanged);
        QObject::connect(cameraControl, &QCameraControl::captureModeChanged, q,
                         &QFLCamera::captureModeChanged);
        QObjectPrivate::connect(cameraControl, &QCameraControl::error, this,
                                &QFLCameraPrivate::_q_error);
    }
    if (locksControl) {
        QObjectPrivate::connect(locksControl, &QCameraLocksControl::lockStatusChanged, this,
                                &QFLCameraPrivate::_q_updateLockStatus);
    }
}

void QFLCameraPrivate::tearDown()
{
    delete std::exchange(exposureObject, nullptr);
    delete std::exchange(focusObject, nullptr);
    if (!service)
        return;

    QFLServiceAccess::releaseControls(service, cameraControl, locksControl, deviceSelector,
                                      infoControl, viewfinderSettingsControl,
                                      viewfinderSettingsControl2);
    if (provider)
        provider->releaseService(service);
    service = nullptr;
}

bool QFLCameraPrivate::selectDevice(const QString &name)
{
    return selectFirst([&](const QString &device) { return device == name; });
}

bool QFLCameraPrivate::selectDevice(QCamera::Position position)
{
    if (!infoControl || position == QCamera::UnspecifiedPosition)
        return false;
    return selectFirst(
            [=](const QString &device) { return infoControl->cameraPosition(device) == position; });
}

bool QFLCameraPrivate::selectFirst(const std::function<bool(const QString &)> &matches)
{
    const int count = deviceSelector ? deviceSelector->deviceCount() : 0;
    for (int i = 0; i < count; ++i) {
        if (matches(deviceSelector->deviceName(i))) {
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
    _q_error(QCamera::ServiceMissingError, missingServiceText());
}

void QFLCameraPrivate::searchAndLock(QCamera::LockTypes locks)
{
    Q_Q(QFLCamera);

    const QPointer<QFLCamera> self(q);
    const QCamera::LockStatus statusBefore = lockStatus;
    lockSignalsSuppressed = true;
    if (locksControl) {
        locks &= locksControl->supportedLocks();
        requestedLocks |= locks;
        locksControl->searchAndLock(locks);
    }
    if (self)
        endLockRequest(statusBefore);
}

void QFLCameraPrivate::unlock(QCamera::LockTypes locks)
{
    Q_Q(QFLCamera);

    const QPointer<QFLCamera> self(q);
    const QCamera::LockStatus statusBefore = lockStatus;
    lockSignalsSuppressed = true;
    requestedLocks &= ~locks;
    if (locksControl)
        locksControl->unlock(locks & locksControl->supportedLocks());
    if (self)
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

    // A receiver may delete the camera, or lock and unlock, which announces itself.
    const QPointer<QFLCamera> self(q);
    const QCamera::LockStatus status = lockStatus;
    const bool hasFailed = status == QCamera::Unlocked && lockChangeReason == QCamera::LockFailed;
    emit q->lockStatusChanged(status, lockChangeReason);
    if (!self || lockStatus != status)
        return;
    if (status == QCamera::Locked)
        emit q->locked();
    else if (hasFailed)
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
    const QPointer<QFLCamera> self(q);
    cameraControl->setState(QCamera::LoadedState);
    if (self)
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
    const QPointer<QFLCamera> self(q);
    recomputeLockStatus();
    if (self)
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
    \class QFLCamera qflcamera.h
    \brief The media object through which an application uses a camera.

    The camera drives the controls of a "facelink.camera" service, which it holds from its
    construction to its destruction. Its pictures go to the surface set with setViewfinder() and to
    every QFLEncoder that is bound to it with QMediaObject::bind(). The application owns the camera,
    the surface and the encoders; the camera owns its exposure() and focus() objects.

    The camera is used from the thread that it lives in, in which its signals are emitted too; this
    needs a running event loop if the backend works in threads of its own. Failures arrive by
    error(), never as exceptions. Without a service the camera can be used all the same: every
    operation then does nothing or returns the neutral value that is named with it, and a request of
    a state reports QCamera::ServiceMissingError.

    The application requests a state; the backend reports, by stateChanged(), when it has come
    about:

    \verbatim
    +---------------------------- start() ----------------------------+
    |                                                                 v
    Unloaded --- load(), stop() ---> Loaded ------- start() ------> Active
     ^    ^                           |  ^                           |  |
     |    +--------- unload() --------+  +------ load(), stop() -----+  |
     +---------------------------- unload() ----------------------------+
    \endverbatim

    \b QCamera::UnloadedState: the backend holds no resources. Every camera begins here. Settings
    can be made; what the device supports may not be known yet.

    \b QCamera::LoadedState: the device is open, and no pictures are taken.

    \b QCamera::ActiveState: pictures are taken, and go to the viewfinder and the encoders.

    state() is the state that the backend reported last; status() is its more detailed view, read at
    every call, with the steps on the way (QCamera::LoadingStatus, QCamera::StartingStatus and so
    on). A failure makes the backend fall back to the unloaded or the loaded state and report it by
    error(); the next request of a state clears the error and tries again.

    A property that the backend can't change in the active state is changed by way of a restart,
    which needs a running event loop. The camera stays in the active state for the application: of
    the way through the loaded state only statusChanged() tells, and the surfaces, which are stopped
    and started. A request of a state calls a restart off that has not taken place.

    \par In slots, sinks and surfaces
    Requests of a state, a mode, settings or locks, and setViewfinder(), lead to slots, to the
    surfaces' start() and stop(), and by way of bound encoders to sinks. All of these may do
    anything: request another state, lock and unlock, set another surface, bind and unbind, and
    delete the camera, a surface or an encoder. The call that led there then leaves everything alone
    and returns; of calls within each other the last one counts. While the camera is being deleted
    itself, that can't be done a second time; QObject::deleteLater() does no harm.
*/

/*!
    \property QFLCamera::state

    The state that the backend reported last, QCamera::UnloadedState at first.
*/

/*!
    \property QFLCamera::status

    The backend's status, QCamera::UnavailableStatus without a camera control.
*/

/*!
    \property QFLCamera::captureMode

    The backend's capture mode, QCamera::CaptureStillImage without a camera control.
*/

/*!
    \property QFLCamera::lockStatus

    The status of the requested locks taken together, QCamera::Unlocked without any.
*/

/*!
    \fn void QFLCamera::stateChanged(QCamera::State state)

    Emitted when the backend has reported a new \a state, which state() then returns. It isn't
    during a restart for the change of a property.
*/

/*!
    \fn void QFLCamera::captureModeChanged(QCamera::CaptureModes mode)

    Emitted when the backend has changed the capture \a mode.
*/

/*!
    \fn void QFLCamera::statusChanged(QCamera::Status status)

    Emitted when the backend's \a status has changed, during a restart too.
*/

/*!
    \fn void QFLCamera::locked()

    Emitted when all requested locks have been reached, after lockStatusChanged().
*/

/*!
    \fn void QFLCamera::lockFailed()

    Emitted when the requested locks taken together have become unlocked and the reason that the
    backend gave last, be it for an earlier change, is QCamera::LockFailed.
*/

/*!
    \fn void QFLCamera::lockStatusChanged(QCamera::LockStatus status,
                                          QCamera::LockChangeReason reason)

    Emitted when the \a status of the requested locks taken together has changed, for the \a reason
    that the backend gave last.
*/

/*!
    \fn void QFLCamera::lockStatusChanged(QCamera::LockType lock, QCamera::LockStatus status,
                                          QCamera::LockChangeReason reason)

    Emitted at each report of the backend about one \a lock: its \a status and the \a reason of the
    change. The signals about the locks taken together come first.
*/

/*!
    \fn void QFLCamera::error(QCamera::Error error)

    Emitted at each failure that the backend reports, and, with QCamera::ServiceMissingError, each
    time a state is requested without a camera control. \a error is the code; errorString() has the
    text by then.
*/

/*!
    Makes a camera on the default device, as a child of \a parent.
*/
QFLCamera::QFLCamera(QObject *parent)
    : QMediaObject(*new QFLCameraPrivate, parent, requestCameraService())
{
    Q_D(QFLCamera);
    d->initialize();
    d->selectDefaultDevice();
}

/*!
    Makes a camera on the device called \a deviceName, in Latin-1, as a child of \a parent. If there
    is none, the camera stays on the device that the service has selected itself, which is no error.
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
    Makes a camera on the device that \a cameraInfo describes, as a child of \a parent. If there is
    none, the camera stays on the device that the service has selected itself, which is no error.
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
    Makes a camera on the first device at \a position, as a child of \a parent. It is on the default
    device if there is none, or for QCamera::UnspecifiedPosition.
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
    Deletes the exposure and focus objects and gives the service back, which ends the taking of
    pictures and the use of the surface. Encoders that are bound forget the camera.
*/
QFLCamera::~QFLCamera()
{
    Q_D(QFLCamera);
    d->tearDown();
}

/*!
    Returns QMultimedia::ServiceMissing without a camera control, QMultimedia::ResourceError if the
    backend lists no device or after an error, and what QMediaObject says otherwise. No signal
    announces a change.
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
    Returns the state that the backend reported last, QCamera::UnloadedState at first.
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
    Returns the description of error(), for the user; empty if there was none.
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
    Returns whether the backend can capture in \a mode, false without a camera control.
*/
bool QFLCamera::isCaptureModeSupported(QCamera::CaptureModes mode) const
{
    Q_D(const QFLCamera);
    return d->cameraControl && d->cameraControl->isCaptureModeSupported(mode);
}

/*!
    Has the backend capture in \a mode, with a restart of the camera if it can't change the mode
    while it is active; captureModeChanged() tells that it does, error() that it can't. Does nothing
    if that is the mode already, or without a camera control.
*/
void QFLCamera::setCaptureMode(QCamera::CaptureModes mode)
{
    Q_D(QFLCamera);

    if (mode == captureMode() || !d->cameraControl)
        return;

    const QPointer<QFLCamera> self(this);
    d->_q_preparePropertyChange(QCameraControl::CaptureMode);
    if (self)
        d->cameraControl->setCaptureMode(mode);
}

/*!
    Returns the exposure settings object, which the camera owns and which lives as long; never null.
*/
QFLCameraExposure *QFLCamera::exposure() const
{
    Q_D(const QFLCamera);
    return d->exposureObject;
}

/*!
    Returns the focus and zoom settings object, which the camera owns and which lives as long; never
    null.
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
    Shows the camera's pictures on \a surface, which is not owned and may be destroyed first; null
    shows them nowhere. The surface lives in the camera's thread; a backend may call its start(),
    present() and stop() on a thread of its own, which the GStreamer backend doesn't. It may be changed in every state, also from within the surface's own start()
    and stop(). A camera without a renderer control keeps
    the surface and shows nothing, which no signal reports.
*/
void QFLCamera::setViewfinder(QAbstractVideoSurface *surface)
{
    Q_D(QFLCamera);
    d->surfaceOutput->routeTo(this, d->boundViewfinder, surface);
}

/*!
    Requests QCamera::LoadedState, as stop() does: has the backend open the device, or take no more
    pictures of an open one. stateChanged() tells that it has, if state() was another one before,
    and error() that it failed.
*/
void QFLCamera::load()
{
    Q_D(QFLCamera);
    d->requestState(QCamera::LoadedState);
}

/*!
    Requests QCamera::UnloadedState: has the backend close the device. stateChanged() tells that it
    has, if state() was another one before.
*/
void QFLCamera::unload()
{
    Q_D(QFLCamera);
    d->requestState(QCamera::UnloadedState);
}

/*!
    Requests QCamera::ActiveState: has the backend take pictures, with the device opened before if
    need be. stateChanged() tells that it does, if state() was another one before, and error() that
    it failed.
*/
void QFLCamera::start()
{
    Q_D(QFLCamera);
    d->requestState(QCamera::ActiveState);
}

/*!
    Requests QCamera::LoadedState, as load() does: has the backend take no more pictures and keep
    the device open. stateChanged() tells that it does, if state() was another one before.
*/
void QFLCamera::stop()
{
    Q_D(QFLCamera);
    d->requestState(QCamera::LoadedState);
}

/*!
    Returns the locks (exposure, white balance, focus) that the backend has, QCamera::NoLock without
    a locks control.
*/
QCamera::LockTypes QFLCamera::supportedLocks() const
{
    Q_D(const QFLCamera);
    return d->locksControl ? d->locksControl->supportedLocks() : QCamera::LockTypes();
}

/*!
    Returns the locks that have been requested and not been given up, reached or not;
    QCamera::NoLock at first.
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
    Returns the status of one \a lock, unlocked if it isn't requested. It is asked of the backend at
    each call.
*/
QCamera::LockStatus QFLCamera::lockStatus(QCamera::LockType lock) const
{
    Q_D(const QFLCamera);

    if (!(d->requestedLocks & lock))
        return QCamera::Unlocked;
    return d->locksControl ? d->locksControl->lockStatus(lock) : QCamera::Locked;
}

/*!
    Requests all locks that the backend has.
*/
void QFLCamera::searchAndLock()
{
    searchAndLock(QCamera::LockExposure | QCamera::LockWhiteBalance | QCamera::LockFocus);
}

/*!
    Gives up all requested locks.
*/
void QFLCamera::unlock()
{
    unlock(requestedLocks());
}

/*!
    Requests those of \a locks that the backend has. locked() or lockFailed() tells how it ends,
    lockStatusChanged() of the way there. Does nothing without a locks control.
*/
void QFLCamera::searchAndLock(QCamera::LockTypes locks)
{
    Q_D(QFLCamera);
    d->searchAndLock(locks);
}

/*!
    Gives up \a locks, requested or not; lockStatusChanged() tells of the change.
*/
void QFLCamera::unlock(QCamera::LockTypes locks)
{
    Q_D(QFLCamera);
    d->unlock(locks);
}

#include "moc_qflcamera.cpp"
