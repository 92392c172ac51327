// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Holds the size, the rate and the format of a camera's frames.

#include "viewfindersettingscontrol.h"

#include "camerasession.h"

/*!
    \class ViewfinderSettingsControl

    Hands the settings on to the session, which applies them.
*/

/*! \a session is borrowed and must outlive the control. */
ViewfinderSettingsControl::ViewfinderSettingsControl(CameraSession *session, QObject *parent)
    : QCameraViewfinderSettingsControl2(parent), m_session(session)
{
}

/*! Empty until the camera is loaded. Other sizes and lower rates are possible, too. */
QList<QCameraViewfinderSettings> ViewfinderSettingsControl::supportedViewfinderSettings() const
{
    return m_session->supportedSettings();
}

QCameraViewfinderSettings ViewfinderSettingsControl::viewfinderSettings() const
{
    return m_session->settings();
}

/*!
    Takes effect when the camera is started the next time. What \a settings leave open is up to the
    camera; settings that are not possible make that start fail.
*/
void ViewfinderSettingsControl::setViewfinderSettings(const QCameraViewfinderSettings &settings)
{
    m_session->setSettings(settings);
}
