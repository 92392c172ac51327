// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The camera service.

#include "cameraservice.h"

#include "cameracontrol.h"
#include "camerainfocontrol.h"
#include "camerasession.h"
#include "deviceselectorcontrol.h"
#include "exposurecontrol.h"
#include "flashcontrol.h"
#include "focuscontrol.h"
#include "surfacecontrol.h"
#include "viewfindersettingscontrol.h"
#include "zoomcontrol.h"

#include <qflrawvideosourcecontrol.h>

#include <QtMultimedia/qvideorenderercontrol.h>

/*!
    \class CameraService

    There is one control of each kind, which the service owns, except that each request of a
    renderer control makes a new one, so that a viewfinder and an encoder can use the camera side by
    side. The controls that depend on the device are there for every camera, since an application
    requests them before it chooses one; they support nothing while the device has no such setting.
*/

// In the order in which they need each other: the last is destroyed first.
struct CameraService::Parts
{
    CameraSession session;
    DeviceSelectorControl deviceSelector;
    CameraControl cameraControl {&session, &deviceSelector};
    CameraInfoControl infoControl;
    ViewfinderSettingsControl settingsControl {&session};
    SurfaceControl<QFLRawVideoSourceControl> rawVideoSource {session.surfaces()};
    ExposureControl exposureControl {session.device()};
    FlashControl flashControl {session.device()};
    FocusControl focusControl {session.device()};
    ZoomControl zoomControl {&session};
};

CameraService::CameraService(QObject *parent)
    : QMediaService(parent), m_parts(std::make_shared<Parts>())
{
    m_parts->session.setOwner(m_parts);
    connect(m_parts->session.surfaces(), &SurfaceGroup::failed, &m_parts->cameraControl,
            [control = &m_parts->cameraControl](SurfaceFeed::Outcome, const QString &text) {
                Q_EMIT control->error(QCamera::CameraError, text);
            });
}

/*!
    Stops the camera and takes the surfaces off. When this happens within a signal of the camera, the
    part that emitted it is destroyed as soon as the signal returns.
*/
CameraService::~CameraService()
{
    m_parts->cameraControl.shutDown();
    m_parts->session.close();
    m_parts->rawVideoSource.setSurface(nullptr);
    // They use the session, which would be gone by the time a QObject deletes its children.
    qDeleteAll(findChildren<QMediaControl *>(QString(), Qt::FindDirectChildrenOnly));
}

/*! Null for an interface that the camera doesn't have. */
QMediaControl *CameraService::requestControl(const char *name)
{
    if (qstrcmp(name, QVideoRendererControl_iid) == 0)
        return new SurfaceControl<QVideoRendererControl>(m_parts->session.surfaces(), this);
    if (qstrcmp(name, QCameraControl_iid) == 0)
        return &m_parts->cameraControl;
    if (qstrcmp(name, QVideoDeviceSelectorControl_iid) == 0)
        return &m_parts->deviceSelector;
    if (qstrcmp(name, QCameraInfoControl_iid) == 0)
        return &m_parts->infoControl;
    if (qstrcmp(name, QCameraViewfinderSettingsControl2_iid) == 0)
        return &m_parts->settingsControl;
    if (qstrcmp(name, QFLRawVideoSourceControl_iid) == 0)
        return &m_parts->rawVideoSource;
    return requestDeviceControl(name);
}

QMediaControl *CameraService::requestDeviceControl(const char *name) const
{
    if (qstrcmp(name, QCameraExposureControl_iid) == 0)
        return &m_parts->exposureControl;
    if (qstrcmp(name, QCameraFlashControl_iid) == 0)
        return &m_parts->flashControl;
    if (qstrcmp(name, QCameraFocusControl_iid) == 0)
        return &m_parts->focusControl;
    if (qstrcmp(name, QCameraZoomControl_iid) == 0)
        return &m_parts->zoomControl;
    return nullptr;
}

/*! Takes a renderer control's surface off and deletes the control; the others stay as they are. */
void CameraService::releaseControl(QMediaControl *control)
{
    // Only they are children of the service.
    if (control && control->parent() == this)
        delete control;
}
