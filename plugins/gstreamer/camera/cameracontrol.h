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

private:
    void unload();
    bool load();
    void stop();
    void start();
    void reload();

    void handleFirstFrame();
    void handleFailure(int code, const QString &text);
    void setStatus(QCamera::Status status);
    void settle(QCamera::State state, QCamera::Status status);

    CameraSession *m_session;
    DeviceSelectorControl *m_selector;
    QCamera::State m_state = QCamera::UnloadedState;
    QCamera::Status m_status = QCamera::UnloadedStatus;
    QCamera::CaptureModes m_captureMode = QCamera::CaptureVideo;
};

#endif
