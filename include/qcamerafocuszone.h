// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// One zone that a camera focuses on, as Qt Multimedia declares it.

#ifndef QCAMERAFOCUSZONE_H
#define QCAMERAFOCUSZONE_H

#include <QtMultimedia/qcamerafocus.h>

#endif
