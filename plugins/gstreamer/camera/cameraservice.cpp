// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The camera service.

#include "cameraservice.h"

#include "cameracontrol.h"
#include "camerainfocontrol.h"
#include "camerarenderercontrol.h"
#include "camerasession.h"
#include "deviceselectorcontrol.h"
#include "exposurecontrol.h"
#include "flashcontrol.h"
#include "focuscontrol.h"
#include "rawvideosourcecontrol.h"
#include "viewfindersettingscontrol.h"
#include "zoomcontrol.h"

/*!
    \class CameraService

    There is one control of each kind, which the service owns, except that each request of a
    renderer control makes a new one, so that a viewfinder and an encoder can use the camera side by
    side. The controls that depend on the device are there for every camera, since an application
    requests them before it chooses one; they support nothing while the device has no such setting.
*/

CameraService::CameraService(QObject *parent)
    : QMediaService(parent),
      m_session(std::make_unique<CameraSession>()),
      m_deviceSelector(std::make_unique<DeviceSelectorControl>()),
      m_cameraControl(std::make_unique<CameraControl>(m_session.get(), m_deviceSelector.get())),
      m_infoControl(std::make_unique<CameraInfoControl>()),
      m_settingsControl(std::make_unique<ViewfinderSettingsControl>(m_session.get())),
      m_rawVideoSource(std::make_unique<RawVideoSourceControl>(m_session->surfaces())),
      m_exposureControl(std::make_unique<ExposureControl>(m_session->device())),
      m_flashControl(std::make_unique<FlashControl>(m_session->device())),
      m_focusControl(std::make_unique<FocusControl>(m_session->device())),
      m_zoomControl(std::make_unique<ZoomControl>(m_session.get()))
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
    return requestDeviceControl(name);
}

QMediaControl *CameraService::requestDeviceControl(const char *name) const
{
    if (qstrcmp(name, QCameraExposureControl_iid) == 0)
        return m_exposureControl.get();
    if (qstrcmp(name, QCameraFlashControl_iid) == 0)
        return m_flashControl.get();
    if (qstrcmp(name, QCameraFocusControl_iid) == 0)
        return m_focusControl.get();
    if (qstrcmp(name, QCameraZoomControl_iid) == 0)
        return m_zoomControl.get();
    return nullptr;
}

/*! Takes a renderer control's surface off and deletes the control; the others stay as they are. */
void CameraService::releaseControl(QMediaControl *control)
{
    delete qobject_cast<CameraRendererControl *>(control);
}
