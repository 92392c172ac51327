// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The logging category of the GStreamer backend.

#include "logging.h"

Q_LOGGING_CATEGORY(lcFaceLinkGStreamer, "facelink.gstreamer")
