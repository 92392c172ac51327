// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-3.0-or-later
// The focus and zoom settings object of a camera.

#include "qflcamerafocus.h"

#include "qflcamera.h"

/*!
    \class QFLCameraFocus
    \brief The focus and zoom settings object of a camera.

    A camera makes one as its child and deletes it before it gives its service back.
*/

QFLCameraFocus::QFLCameraFocus(QFLCamera *camera) : QObject(camera) { }

QFLCameraFocus::~QFLCameraFocus() = default;
