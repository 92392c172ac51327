// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The control through which a service delivers its raw frames to a surface.

#include "qflrawvideosourcecontrol.h"

/*!
    \class QFLRawVideoSourceControl qflrawvideosourcecontrol.h
    \brief The control through which a service delivers raw frames to a surface, an encoder's say.

    It is a renderer control under an identifier of its own, QFLRawVideoSourceControl_iid,
    "facelink.rawvideosourcecontrol/1.0", so that a service can feed an encoder beside a viewfinder.
    A QFLEncoder requests it from the service of a media object when it is bound to it, and releases
    it when it is unbound; the service owns it. A service that offers both this control and a
    QVideoRendererControl gets the same surface on both and presents each frame to it once.

    A backend implements QVideoRendererControl's surface() and setSurface(). The encoder calls
    setSurface() on its own thread, active camera or not, with the encoder's QFLEncoderVideoSurface
    when it is bound and with null when it is unbound. The backend starts, feeds and stops the
    surface on whatever thread it renders from; once setSurface() has returned, the surface before
    has been stopped and is called no more, unless another control of the service still has it.
*/

/*!
    Makes a control as a child of \a parent, mostly the service that offers it.
*/
QFLRawVideoSourceControl::QFLRawVideoSourceControl(QObject *parent) : QVideoRendererControl(parent)
{
}

QFLRawVideoSourceControl::~QFLRawVideoSourceControl() = default;
