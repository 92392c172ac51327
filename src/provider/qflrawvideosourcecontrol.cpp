// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-3.0-or-later
// The control through which a service delivers its raw frames to a surface.

#include "qflrawvideosourcecontrol.h"

/*!
    \class QFLRawVideoSourceControl
    \brief The control through which a service delivers raw frames to a surface, an encoder's say.

    It is a renderer control under an identifier of its own, so that a service can feed an encoder
    beside a viewfinder. A service that offers both this control and a QVideoRendererControl gets
    the same surface on both and presents each frame to it once.
*/

QFLRawVideoSourceControl::QFLRawVideoSourceControl(QObject *parent) : QVideoRendererControl(parent)
{
}

QFLRawVideoSourceControl::~QFLRawVideoSourceControl() = default;
