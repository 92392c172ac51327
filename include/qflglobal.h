// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The export macro and the version of the module.

#ifndef QFLGLOBAL_H
#define QFLGLOBAL_H

#include <QtCore/qglobal.h>

#define QTFACELINK_VERSION_MAJOR 0
#define QTFACELINK_VERSION_MINOR 1
#define QTFACELINK_VERSION_PATCH 0

// To compare with QT_VERSION_CHECK(major, minor, patch).
#define QTFACELINK_VERSION \
    QT_VERSION_CHECK(QTFACELINK_VERSION_MAJOR, QTFACELINK_VERSION_MINOR, QTFACELINK_VERSION_PATCH)
#define QTFACELINK_VERSION_STR             \
    QT_STRINGIFY(QTFACELINK_VERSION_MAJOR) \
    "." QT_STRINGIFY(QTFACELINK_VERSION_MINOR) "." QT_STRINGIFY(QTFACELINK_VERSION_PATCH)

// The keys by which the media objects ask for services, and plugins offer them.
#define QFL_MEDIASERVICE_CAMERA "facelink.camera"
#define QFL_MEDIASERVICE_ENCODER "facelink.encoder"
#define QFL_MEDIASERVICE_DECODER "facelink.decoder"

#if defined(QT_BUILD_FACELINK_LIB)
#define Q_FACELINK_EXPORT Q_DECL_EXPORT
#else
#define Q_FACELINK_EXPORT Q_DECL_IMPORT
#endif

#endif
