// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Starts and stops the camera.

#ifndef CAMERACONTROL_H
#define CAMERACONTROL_H

#include <QtMultimedia/qcameracontrol.h>

class CameraSession;
class DeviceSelectorControl;

class CameraControl : public QCameraControl
{
    Q_OBJECT
    Q_PROPERTY(int capturedFrames READ capturedFrames)
    Q_PROPERTY(int presentedFrames READ presentedFrames)
    Q_PROPERTY(int convertedFrames READ convertedFrames)

public:
    CameraControl(CameraSession *session, DeviceSelectorControl *selector,
                  QObject *parent = nullptr);

    QCamera::State state() const override;
    void setState(QCamera::State state) override;
    QCamera::Status status() const override;

    QCamera::CaptureModes captureMode() const override;
    void setCaptureMode(QCamera::CaptureModes mode) override;
    bool isCaptureModeSupported(QCamera::CaptureModes mode) const override;

    bool canChangeProperty(PropertyChangeType changeType, QCamera::Status status) const override;

    int capturedFrames() const;
    int presentedFrames() const;
    int convertedFrames() const;

    void shutDown();

private:
    bool unload();
    bool load();
    void stop();
    void start();
    void reload();

    void handleDevices();
    void handleFirstFrame();
    void handleFailure(int code, const QString &text);

    QCamera::Status unloadedStatus() const;
    bool isSettled() const;
    int setStatus(QCamera::Status status);
    bool settle(QCamera::State state, QCamera::Status status);

    CameraSession *m_session;
    DeviceSelectorControl *m_selector;
    QCamera::State m_state = QCamera::UnloadedState;
    QCamera::Status m_status = QCamera::UnloadedStatus;
    QCamera::CaptureModes m_captureMode = QCamera::CaptureVideo;
    int m_changes = 0;
    bool m_isShutDown = false;
};

#endif
