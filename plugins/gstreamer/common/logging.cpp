// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-3.0-or-later
// The logging category of the GStreamer backend.

#include "logging.h"

Q_LOGGING_CATEGORY(lcFaceLinkGStreamer, "facelink.gstreamer")
