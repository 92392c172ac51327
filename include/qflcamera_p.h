// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The state of a camera.

// This header is not part of the public interface: it may change from one version to the next.

#ifndef QFLCAMERA_P_H
#define QFLCAMERA_P_H

#include "qflcamera.h"

#include <private/qmediaobject_p.h>
#include <private/qmediaserviceprovider_p.h>

#include <QtCore/qpointer.h>
#include <QtMultimedia/qcameracontrol.h>

#include <functional>

QT_BEGIN_NAMESPACE
class QCameraInfoControl;
class QCameraLocksControl;
class QCameraViewfinderSettingsControl;
class QCameraViewfinderSettingsControl2;
class QVideoDeviceSelectorControl;
QT_END_NAMESPACE

class QVideoSurfaceOutput;

class QFLCameraPrivate : public QMediaObjectPrivate
{
    Q_DECLARE_PUBLIC(QFLCamera)

public:
    QFLCameraPrivate();
    ~QFLCameraPrivate() override;

    void initialize();
    void acquireControls();
    void connectControls();
    void tearDown();

    bool selectDevice(const QString &name);
    bool selectDevice(QCamera::Position position);
    bool selectFirst(const std::function<bool(const QString &)> &matches);
    void selectDefaultDevice();

    void requestState(QCamera::State newState);
    void reportMissingService();

    void searchAndLock(QCamera::LockTypes locks);
    void unlock(QCamera::LockTypes locks);
    void endLockRequest(QCamera::LockStatus statusBefore);
    void recomputeLockStatus();
    QCamera::LockStatus aggregateLockStatus() const;

    void _q_preparePropertyChange(int changeType);
    void _q_restartCamera();
    void _q_error(int code, const QString &description);
    void _q_updateLockStatus(QCamera::LockType lock, QCamera::LockStatus status,
                             QCamera::LockChangeReason reason);
    void _q_updateState(QCamera::State newState);

    QPointer<QMediaServiceProvider> provider;
    QCameraControl *cameraControl = nullptr;
    QVideoDeviceSelectorControl *deviceSelector = nullptr;
    QCameraLocksControl *locksControl = nullptr;
    QCameraInfoControl *infoControl = nullptr;
    QCameraViewfinderSettingsControl *viewfinderSettingsControl = nullptr;
    QCameraViewfinderSettingsControl2 *viewfinderSettingsControl2 = nullptr;
    QFLCameraExposure *exposureObject = nullptr;
    QFLCameraFocus *focusObject = nullptr;
    QCameraImageProcessing *imageProcessingObject = nullptr;
    QObject *boundViewfinder = nullptr;
    QCamera::State state = QCamera::UnloadedState;
    QCamera::Error error = QCamera::NoError;
    QString errorString;
    QCamera::LockTypes requestedLocks = QCamera::NoLock;
    QCamera::LockStatus lockStatus = QCamera::Unlocked;
    QCamera::LockChangeReason lockChangeReason = QCamera::UserRequest;
    bool lockSignalsSuppressed = false;
    bool restartPending = false;
    QScopedPointer<QVideoSurfaceOutput> surfaceOutput;
};

#endif
