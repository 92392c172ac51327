// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The media object through which an application uses a camera.

#ifndef QFLCAMERA_H
#define QFLCAMERA_H

#include "qflglobal.h"

#include <QtMultimedia/qcamera.h>
#include <QtMultimedia/qcameraviewfindersettings.h>
#include <QtMultimedia/qmediaobject.h>

QT_BEGIN_NAMESPACE
class QAbstractVideoSurface;
class QCameraImageProcessing;
QT_END_NAMESPACE

class QFLCameraExposure;
class QFLCameraFocus;
class QFLCameraInfo;
class QFLCameraPrivate;

class Q_FACELINK_EXPORT QFLCamera : public QMediaObject
{
    Q_OBJECT
    Q_PROPERTY(QCamera::State state READ state NOTIFY stateChanged)
    Q_PROPERTY(QCamera::Status status READ status NOTIFY statusChanged)
    Q_PROPERTY(QCamera::CaptureModes captureMode READ captureMode WRITE setCaptureMode NOTIFY
                       captureModeChanged)
    Q_PROPERTY(QCamera::LockStatus lockStatus READ lockStatus NOTIFY lockStatusChanged)

public:
    explicit QFLCamera(QObject *parent = nullptr);
    explicit QFLCamera(const QByteArray &deviceName, QObject *parent = nullptr);
    explicit QFLCamera(const QFLCameraInfo &cameraInfo, QObject *parent = nullptr);
    explicit QFLCamera(QCamera::Position position, QObject *parent = nullptr);
    ~QFLCamera() override;

    QMultimedia::AvailabilityStatus availability() const override;

    QCamera::State state() const;
    QCamera::Status status() const;
    QCamera::Error error() const;
    QString errorString() const;

    QCamera::CaptureModes captureMode() const;
    bool isCaptureModeSupported(QCamera::CaptureModes mode) const;

    QFLCameraExposure *exposure() const;
    QFLCameraFocus *focus() const;
    QCameraImageProcessing *imageProcessing() const;

    void setViewfinder(QAbstractVideoSurface *surface);

    QCameraViewfinderSettings viewfinderSettings() const;
    void setViewfinderSettings(const QCameraViewfinderSettings &settings);

    QList<QCameraViewfinderSettings> supportedViewfinderSettings(
            const QCameraViewfinderSettings &settings = QCameraViewfinderSettings()) const;
    QList<QSize> supportedViewfinderResolutions(const QCameraViewfinderSettings &settings
                                                = QCameraViewfinderSettings()) const;
    QList<QCamera::FrameRateRange> supportedViewfinderFrameRateRanges(
            const QCameraViewfinderSettings &settings = QCameraViewfinderSettings()) const;
    QList<QVideoFrame::PixelFormat> supportedViewfinderPixelFormats(
            const QCameraViewfinderSettings &settings = QCameraViewfinderSettings()) const;

    QCamera::LockTypes supportedLocks() const;
    QCamera::LockTypes requestedLocks() const;
    QCamera::LockStatus lockStatus() const;
    QCamera::LockStatus lockStatus(QCamera::LockType lock) const;

public Q_SLOTS:
    void setCaptureMode(QCamera::CaptureModes mode);

    void load();
    void unload();
    void start();
    void stop();

    void searchAndLock();
    void unlock();
    void searchAndLock(QCamera::LockTypes locks);
    void unlock(QCamera::LockTypes locks);

Q_SIGNALS:
    void stateChanged(QCamera::State state);
    void captureModeChanged(QCamera::CaptureModes mode);
    void statusChanged(QCamera::Status status);

    void locked();
    void lockFailed();
    void lockStatusChanged(QCamera::LockStatus status, QCamera::LockChangeReason reason);
    void lockStatusChanged(QCamera::LockType lock, QCamera::LockStatus status,
                           QCamera::LockChangeReason reason);

    void error(QCamera::Error error);

private:
    Q_DISABLE_COPY(QFLCamera)
    Q_DECLARE_PRIVATE(QFLCamera)
    friend class QFLCameraInfo;

    Q_PRIVATE_SLOT(d_func(), void _q_preparePropertyChange(int))
    Q_PRIVATE_SLOT(d_func(), void _q_restartCamera())
    Q_PRIVATE_SLOT(d_func(), void _q_error(int, const QString &))
    Q_PRIVATE_SLOT(d_func(),
                   void _q_updateLockStatus(QCamera::LockType, QCamera::LockStatus,
                                            QCamera::LockChangeReason))
    Q_PRIVATE_SLOT(d_func(), void _q_updateState(QCamera::State))
};

#endif
