// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The export macro and the version of the module.

#ifndef QFLGLOBAL_H
#define QFLGLOBAL_H

#include <QtCore/qglobal.h>

#define QTFACELINK_VERSION_STR "0.1.0"

#if defined(QT_BUILD_FACELINK_LIB)
#define Q_FACELINK_EXPORT Q_DECL_EXPORT
#else
#define Q_FACELINK_EXPORT Q_DECL_IMPORT
#endif

#endif
