// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Zooms into the picture of the camera.

#include "zoomcontrol.h"

#include "camerasession.h"

#include <cmath>

#include <linux/v4l2-controls.h>

namespace {

// Beyond this, a picture of a usual size consists of blocks.
const qreal maximumDigital = 4;

} // namespace

/*!
    \class ZoomControl

    Digital zoom works with every camera, at any time, and stays over stops and other devices. Its
    pictures have the size of those that aren't magnified.

    Optical zoom is that of the open Video4Linux device: 1 stands for its shortest focal length. It
    is 1 at most while the camera is unloaded or if the device has no zoom lens. What is asked for
    is kept within the possible at once, so that it is what is requested.
*/

/*! \a session is borrowed and must outlive the control. */
ZoomControl::ZoomControl(CameraSession *session, QObject *parent)
    : QCameraZoomControl(parent), m_session(session), m_device(session->device())
{
    connect(m_device, &OpenDevice::changed, this, &ZoomControl::readDevice);
}

qreal ZoomControl::maximumOpticalZoom() const
{
    return m_maximumOpticalZoom;
}

qreal ZoomControl::maximumDigitalZoom() const
{
    return maximumDigital;
}

qreal ZoomControl::requestedOpticalZoom() const
{
    return m_requestedOpticalZoom;
}

qreal ZoomControl::requestedDigitalZoom() const
{
    return m_session->digitalZoom();
}

/*! What the device says, which may lag behind what was requested while its lens moves. */
qreal ZoomControl::currentOpticalZoom() const
{
    const auto lens = this->lens();
    const auto length = m_device->value(V4L2_CID_ZOOM_ABSOLUTE);
    return lens && length ? *length / qreal(lens->minimum) : 1;
}

/*! What is requested holds from the next frame on. */
qreal ZoomControl::currentDigitalZoom() const
{
    return m_session->digitalZoom();
}

/*! A value that is not a number leaves that zoom as it is. */
void ZoomControl::zoomTo(qreal optical, qreal digital)
{
    if (!std::isnan(optical))
        zoomOptically(qBound(qreal(1), optical, m_maximumOpticalZoom));
    if (!std::isnan(digital))
        zoomDigitally(qBound(qreal(1), digital, maximumDigital));
}

void ZoomControl::zoomOptically(qreal zoom)
{
    const auto lens = this->lens();
    if (lens)
        m_device->setValue(V4L2_CID_ZOOM_ABSOLUTE, qRound(zoom * lens->minimum));
    setRequestedOpticalZoom(zoom);
    announceOpticalZoom();
}

void ZoomControl::zoomDigitally(qreal zoom)
{
    if (zoom == m_session->digitalZoom())
        return;
    m_session->setDigitalZoom(zoom);
    Q_EMIT requestedDigitalZoomChanged(zoom);
    Q_EMIT currentDigitalZoomChanged(zoom);
}

/*! Another device begins with the zoom that it has. */
void ZoomControl::readDevice()
{
    const auto lens = this->lens();
    const qreal maximum = lens ? lens->maximum / qreal(lens->minimum) : 1;
    if (maximum != m_maximumOpticalZoom) {
        m_maximumOpticalZoom = maximum;
        Q_EMIT maximumOpticalZoomChanged(maximum);
    }
    setRequestedOpticalZoom(currentOpticalZoom());
    announceOpticalZoom();
}

/*! The focal lengths in the device's own unit; none if that doesn't count from zero. */
std::optional<DriverSettings::Range> ZoomControl::lens() const
{
    const auto lens = m_device->range(V4L2_CID_ZOOM_ABSOLUTE);
    return lens && lens->minimum > 0 ? lens : std::nullopt;
}

void ZoomControl::setRequestedOpticalZoom(qreal zoom)
{
    if (zoom == m_requestedOpticalZoom)
        return;
    m_requestedOpticalZoom = zoom;
    Q_EMIT requestedOpticalZoomChanged(zoom);
}

void ZoomControl::announceOpticalZoom()
{
    const qreal zoom = currentOpticalZoom();
    if (zoom == m_announcedOpticalZoom)
        return;
    m_announcedOpticalZoom = zoom;
    Q_EMIT currentOpticalZoomChanged(zoom);
}
