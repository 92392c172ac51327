// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-3.0-or-later
// The focus and zoom settings object of a camera.

#ifndef QFLCAMERAFOCUS_H
#define QFLCAMERAFOCUS_H

#include "qflglobal.h"

#include <QtCore/qobject.h>

class QFLCamera;

class Q_FACELINK_EXPORT QFLCameraFocus : public QObject
{
    Q_OBJECT

public:
    ~QFLCameraFocus() override;

private:
    Q_DISABLE_COPY(QFLCameraFocus)
    friend class QFLCameraPrivate;

    explicit QFLCameraFocus(QFLCamera *camera);
};

#endif
