// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The logging category of the GStreamer backend.

#include "logging.h"

// What is only informative has to be asked for with QT_LOGGING_RULES="facelink.gstreamer=true".
Q_LOGGING_CATEGORY(lcFaceLinkGStreamer, "facelink.gstreamer", QtWarningMsg)
