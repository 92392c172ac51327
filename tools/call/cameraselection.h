// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Finds the camera that the command line asks for, and the size of its picture.

#ifndef CAMERASELECTION_H
#define CAMERASELECTION_H

#include "callerror.h"

#include <QtMultimedia/qcameraviewfindersettings.h>

class CallSettings;
class QFLCamera;
class QFLCameraInfo;

namespace CameraSelection {

CallError announceFile(const CallSettings &settings);
QFLCameraInfo find(const CallSettings &settings, CallError *error);
QCameraViewfinderSettings viewfinderSettings(const QFLCamera &camera, const CallSettings &settings);

} // namespace CameraSelection

#endif
