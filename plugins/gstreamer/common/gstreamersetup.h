// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-3.0-or-later
// Starts GStreamer on first use.

#ifndef GSTREAMERSETUP_H
#define GSTREAMERSETUP_H

#include <QtCore/qstring.h>

namespace GStreamerSetup {

bool initialize(QString *errorText = nullptr);

}

#endif
