// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Why a camera request failed.

#ifndef CAMERAFAILURE_H
#define CAMERAFAILURE_H

#include <QtCore/qstring.h>
#include <QtMultimedia/qcamera.h>

struct CameraFailure
{
    QCamera::Error code = QCamera::NoError;
    QString text;

    explicit operator bool() const { return code != QCamera::NoError; }
};

#endif
