// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// What the viewfinder settings ask of a source.

#ifndef CAPTURESETTINGS_H
#define CAPTURESETTINGS_H

#include "camerafailure.h"

#include <QtMultimedia/qcameraviewfindersettings.h>

namespace CaptureSettings {

QCameraViewfinderSettings make(const QSize &resolution, qreal minimumFrameRate,
                               qreal maximumFrameRate, QVideoFrame::PixelFormat pixelFormat);
QCameraViewfinderSettings complete(const QCameraViewfinderSettings &requested,
                                   const QCameraViewfinderSettings &defaults);
CameraFailure check(const QCameraViewfinderSettings &requested);

QString rawCaps(const QSize &resolution, QVideoFrame::PixelFormat pixelFormat);
QString frameRateField(qreal frameRate);

} // namespace CaptureSettings

#endif
