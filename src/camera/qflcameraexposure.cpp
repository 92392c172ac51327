// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-3.0-or-later
// The exposure settings object of a camera.

#include "qflcameraexposure.h"

#include "qflcamera.h"

/*!
    \class QFLCameraExposure
    \brief The exposure settings object of a camera.

    A camera makes one as its child and deletes it before it gives its service back.
*/

QFLCameraExposure::QFLCameraExposure(QFLCamera *camera) : QObject(camera) { }

QFLCameraExposure::~QFLCameraExposure() = default;
