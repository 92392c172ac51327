// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-3.0-or-later
// The exposure settings object of a camera.

#ifndef QFLCAMERAEXPOSURE_H
#define QFLCAMERAEXPOSURE_H

#include "qflglobal.h"

#include <QtCore/qobject.h>

class QFLCamera;

class Q_FACELINK_EXPORT QFLCameraExposure : public QObject
{
    Q_OBJECT

public:
    ~QFLCameraExposure() override;

private:
    Q_DISABLE_COPY(QFLCameraExposure)
    friend class QFLCameraPrivate;

    explicit QFLCameraExposure(QFLCamera *camera);
};

#endif
