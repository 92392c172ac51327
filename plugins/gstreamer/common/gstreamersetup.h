// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Starts GStreamer on first use.

#ifndef GSTREAMERSETUP_H
#define GSTREAMERSETUP_H

#include <QtCore/qstring.h>

namespace GStreamerSetup {

bool initialize(QString *errorText = nullptr);

}

#endif
