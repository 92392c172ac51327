// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// What a program loads late, and the library with it.

#include <qflcamera.h>

extern "C" Q_DECL_EXPORT QMediaObject *makeFaceLinkCamera()
{
    return new QFLCamera;
}
