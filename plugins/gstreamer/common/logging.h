// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The logging category of the GStreamer backend.

#ifndef LOGGING_H
#define LOGGING_H

#include <QtCore/qloggingcategory.h>

Q_DECLARE_LOGGING_CATEGORY(lcFaceLinkGStreamer)

#endif
