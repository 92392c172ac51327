// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Starts and stops the camera.

#include "cameracontrol.h"

#include "camerasession.h"
#include "deviceselectorcontrol.h"

/*!
    \class CameraControl

    \list
    \li UnloadedState: no device is open.
    \li LoadedState: the selected device is open, and what it supports is known.
    \li ActiveState: frames flow; the status is StartingStatus until the first one is there and
        ActiveStatus from then on.
    \endlist

    A state that is asked for has been reached when setState() returns, or an error has been
    reported. After an error the camera is unloaded, or loaded if only the settings were not
    possible; asking again tries again. The error is reported last, when the state is settled.
*/

/*! \a session and \a selector are borrowed and must outlive the control. */
CameraControl::CameraControl(CameraSession *session, DeviceSelectorControl *selector,
                             QObject *parent)
    : QCameraControl(parent), m_session(session), m_selector(selector)
{
    connect(session, &CameraSession::started, this, &CameraControl::handleFirstFrame);
    connect(session, &CameraSession::failed, this, &CameraControl::handleFailure);
    connect(selector, &DeviceSelectorControl::selectionChanged, this, &CameraControl::reload);
}

QCamera::State CameraControl::state() const
{
    return m_state;
}

void CameraControl::setState(QCamera::State state)
{
    if (state == m_state)
        return;
    switch (state) {
    case QCamera::UnloadedState:
        unload();
        break;
    case QCamera::LoadedState:
        if (m_state == QCamera::ActiveState)
            stop();
        else if (load())
            settle(QCamera::LoadedState, QCamera::LoadedStatus);
        break;
    case QCamera::ActiveState:
        start();
        break;
    }
}

QCamera::Status CameraControl::status() const
{
    return m_status;
}

QCamera::CaptureModes CameraControl::captureMode() const
{
    return m_captureMode;
}

/*! The modes don't differ in what the camera does, so this is possible at any time. */
void CameraControl::setCaptureMode(QCamera::CaptureModes mode)
{
    if (mode == m_captureMode)
        return;
    if (!isCaptureModeSupported(mode)) {
        Q_EMIT error(QCamera::NotSupportedFeatureError,
                     tr("The capture mode %1 is not supported").arg(int(mode)));
        return;
    }
    m_captureMode = mode;
    Q_EMIT captureModeChanged(mode);
}

/*! Viewfinder and video, but no still images. */
bool CameraControl::isCaptureModeSupported(QCamera::CaptureModes mode) const
{
    return !(mode & ~QCamera::CaptureModes(QCamera::CaptureVideo));
}

/*! The viewfinder settings are fixed while the camera is active: they need another pipeline. */
bool CameraControl::canChangeProperty(PropertyChangeType changeType, QCamera::Status) const
{
    return changeType != ViewfinderSettings || m_state != QCamera::ActiveState;
}

void CameraControl::unload()
{
    setStatus(QCamera::UnloadingStatus);
    m_session->close();
    settle(QCamera::UnloadedState, QCamera::UnloadedStatus);
}

bool CameraControl::load()
{
    setStatus(QCamera::LoadingStatus);
    return m_session->open(m_selector->selectedName());
}

void CameraControl::stop()
{
    setStatus(QCamera::StoppingStatus);
    m_session->stop();
    settle(QCamera::LoadedState, QCamera::LoadedStatus);
}

void CameraControl::start()
{
    if (m_state == QCamera::UnloadedState && !load())
        return;
    setStatus(QCamera::StartingStatus);
    // Whoever was told may have unloaded the camera.
    if (m_status != QCamera::StartingStatus || !m_session->isOpen())
        return;
    if (m_session->start())
        settle(QCamera::ActiveState, QCamera::StartingStatus);
}

/*! Another device has been selected; a camera that is loaded goes on with that one. */
void CameraControl::reload()
{
    const QCamera::State state = m_state;
    setState(QCamera::UnloadedState);
    setState(state);
}

void CameraControl::handleFirstFrame()
{
    setStatus(QCamera::ActiveStatus);
}

void CameraControl::handleFailure(int code, const QString &text)
{
    if (m_session->isOpen())
        settle(QCamera::LoadedState, QCamera::LoadedStatus);
    else
        settle(QCamera::UnloadedState, QCamera::UnloadedStatus);
    Q_EMIT error(code, text);
}

void CameraControl::setStatus(QCamera::Status status)
{
    if (status == m_status)
        return;
    m_status = status;
    Q_EMIT statusChanged(status);
}

/*! Both are set before either is announced, so that a receiver never sees them contradict. */
void CameraControl::settle(QCamera::State state, QCamera::Status status)
{
    const bool isStateNew = state != m_state;
    const bool isStatusNew = status != m_status;
    m_state = state;
    m_status = status;
    if (isStateNew)
        Q_EMIT stateChanged(state);
    if (isStatusNew)
        Q_EMIT statusChanged(status);
}
