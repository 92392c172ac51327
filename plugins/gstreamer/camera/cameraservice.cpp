// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-3.0-or-later
// The camera service.

#include "cameraservice.h"

#include "cameracontrol.h"
#include "camerainfocontrol.h"
#include "camerarenderercontrol.h"
#include "camerasession.h"
#include "deviceselectorcontrol.h"
#include "rawvideosourcecontrol.h"
#include "viewfindersettingscontrol.h"

/*!
    \class CameraService

    There is one control of each kind, which the service owns, except that each request of a
    renderer control makes a new one, so that a viewfinder and an encoder can use the camera side by
    side.
*/

CameraService::CameraService(QObject *parent)
    : QMediaService(parent),
      m_session(std::make_unique<CameraSession>()),
      m_deviceSelector(std::make_unique<DeviceSelectorControl>()),
      m_cameraControl(std::make_unique<CameraControl>(m_session.get(), m_deviceSelector.get())),
      m_infoControl(std::make_unique<CameraInfoControl>()),
      m_settingsControl(std::make_unique<ViewfinderSettingsControl>(m_session.get())),
      m_rawVideoSource(std::make_unique<RawVideoSourceControl>(m_session->surfaces()))
{
}

CameraService::~CameraService()
{
    m_session->close();
    // They use the session, which would be gone by the time a QObject deletes its children.
    qDeleteAll(findChildren<CameraRendererControl *>(QString(), Qt::FindDirectChildrenOnly));
}

/*! Null for an interface that the camera doesn't have. */
QMediaControl *CameraService::requestControl(const char *name)
{
    if (qstrcmp(name, QVideoRendererControl_iid) == 0)
        return new CameraRendererControl(m_session->surfaces(), this);
    if (qstrcmp(name, QCameraControl_iid) == 0)
        return m_cameraControl.get();
    if (qstrcmp(name, QVideoDeviceSelectorControl_iid) == 0)
        return m_deviceSelector.get();
    if (qstrcmp(name, QCameraInfoControl_iid) == 0)
        return m_infoControl.get();
    if (qstrcmp(name, QCameraViewfinderSettingsControl2_iid) == 0)
        return m_settingsControl.get();
    if (qstrcmp(name, QFLRawVideoSourceControl_iid) == 0)
        return m_rawVideoSource.get();
    return nullptr;
}

/*! Takes a renderer control's surface off and deletes the control; the others stay as they are. */
void CameraService::releaseControl(QMediaControl *control)
{
    delete qobject_cast<CameraRendererControl *>(control);
}
