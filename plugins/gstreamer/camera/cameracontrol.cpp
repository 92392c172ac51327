// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Starts and stops the camera.

#include "cameracontrol.h"

#include "camerasession.h"
#include "deviceselectorcontrol.h"

/*!
    \class CameraControl

    \list
    \li UnloadedState: no device is open; the status is UnavailableStatus while the selected device is
        not there.
    \li LoadedState: the selected device is open, and what it supports is known.
    \li ActiveState: frames flow; the status is StartingStatus until the first one is there and
        ActiveStatus from then on.
    \endlist

    A state that is asked for has been reached when setState() returns, or an error has been
    reported. The state is announced after each request and each failure, whether it has changed or
    not: the camera may have ignored an earlier report. After an error the camera is unloaded, or loaded if only the settings were not
    possible; asking again tries again. The error is reported last, when the state is settled.

    Receivers of the signals may ask for another state, or delete the camera: a step that finds that
    the status has been changed meanwhile, by whomever, ends there.

    The read-only properties capturedFrames, presentedFrames and convertedFrames count since the
    last start: the frames handed to the surfaces, the calls with which each surface was shown one,
    and the copies that were made because surfaces lack the captured format.
*/

/*! \a session and \a selector are borrowed and must outlive the control. */
CameraControl::CameraControl(CameraSession *session, DeviceSelectorControl *selector,
                             QObject *parent)
    : QCameraControl(parent), m_session(session), m_selector(selector)
{
    connect(session, &CameraSession::started, this, &CameraControl::handleFirstFrame);
    connect(session, &CameraSession::failed, this, &CameraControl::handleFailure);
    connect(selector, &DeviceSelectorControl::selectionChanged, this, &CameraControl::reload);
    connect(selector, &DeviceSelectorControl::devicesChanged, this, &CameraControl::handleDevices);
    m_status = unloadedStatus();
}

QCamera::State CameraControl::state() const
{
    return m_state;
}

void CameraControl::setState(QCamera::State state)
{
    if (m_isShutDown)
        return;
    if (state == m_state && isSettled()) {
        Q_EMIT stateChanged(state);
        return;
    }
    const std::shared_ptr<const void> alive = m_session->keepAlive();
    switch (state) {
    case QCamera::UnloadedState:
        unload();
        break;
    case QCamera::LoadedState:
        if (m_session->isOpen())
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

int CameraControl::capturedFrames() const
{
    return m_session->surfaces()->counts().captured;
}

int CameraControl::presentedFrames() const
{
    return m_session->surfaces()->counts().presented;
}

int CameraControl::convertedFrames() const
{
    return m_session->surfaces()->counts().converted;
}

/*! The camera is being deleted: whatever goes on ends, and nothing is announced any more. */
void CameraControl::shutDown()
{
    m_isShutDown = true;
    ++m_changes;
}

/*! Whether the camera is unloaded; it isn't when it was asked for another state meanwhile. */
bool CameraControl::unload()
{
    const int change = setStatus(QCamera::UnloadingStatus);
    if (change != m_changes)
        return false;
    m_session->close();
    return change == m_changes && settle(QCamera::UnloadedState, unloadedStatus());
}

bool CameraControl::load()
{
    const int change = setStatus(QCamera::LoadingStatus);
    return change == m_changes && m_session->open(m_selector->selectedName())
            && change == m_changes;
}

void CameraControl::stop()
{
    const int change = setStatus(QCamera::StoppingStatus);
    if (change != m_changes)
        return;
    m_session->stop();
    if (change == m_changes)
        settle(QCamera::LoadedState, QCamera::LoadedStatus);
}

void CameraControl::start()
{
    if (!m_session->isOpen() && !load())
        return;
    const int change = setStatus(QCamera::StartingStatus);
    if (change != m_changes || !m_session->start() || change != m_changes)
        return;
    // It may have been on its way down from the active state.
    settle(QCamera::ActiveState,
           m_session->hasFrame() ? QCamera::ActiveStatus : QCamera::StartingStatus);
}

/*! Another device has been selected; a camera that is loaded goes on with that one. */
void CameraControl::reload()
{
    const std::shared_ptr<const void> alive = m_session->keepAlive();
    const QCamera::State state = m_state;
    if (unload() && state != QCamera::UnloadedState)
        setState(state);
}

/*! The list of devices is another one. */
void CameraControl::handleDevices()
{
    const std::shared_ptr<const void> alive = m_session->keepAlive();
    const bool isThere = m_selector->selectedDevice() >= 0;
    if (m_session->isOpen() && !isThere)
        m_session->reportUnplugged();
    else if (m_state == QCamera::UnloadedState && isSettled())
        settle(QCamera::UnloadedState, unloadedStatus());
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
        settle(QCamera::UnloadedState, unloadedStatus());
    if (!m_isShutDown)
        Q_EMIT error(code, text);
}

QCamera::Status CameraControl::unloadedStatus() const
{
    return m_selector->selectedDevice() < 0 ? QCamera::UnavailableStatus : QCamera::UnloadedStatus;
}

/*! Whether the state is the one that was asked for last, not one on the way there. */
bool CameraControl::isSettled() const
{
    switch (m_status) {
    case QCamera::LoadingStatus:
    case QCamera::UnloadingStatus:
    case QCamera::StoppingStatus:
        return false;
    case QCamera::StartingStatus:
        return m_state == QCamera::ActiveState;
    default:
        return true;
    }
}

/*! The number of this change, which m_changes has until the next one. */
int CameraControl::setStatus(QCamera::Status status)
{
    const int change = ++m_changes;
    if (status != m_status) {
        m_status = status;
        Q_EMIT statusChanged(status);
    }
    return change;
}

/*!
    Both are set before either is announced, the state also when it is the same as before, so that a receiver never sees them contradict. False if
    a receiver has asked for another state.
*/
bool CameraControl::settle(QCamera::State state, QCamera::Status status)
{
    const int change = ++m_changes;
    const bool isStatusNew = status != m_status;
    m_state = state;
    m_status = status;
    Q_EMIT stateChanged(state);
    if (isStatusNew && change == m_changes)
        Q_EMIT statusChanged(status);
    return change == m_changes;
}
