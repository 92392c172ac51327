// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The controls of a focus and zoom settings object.

// This header is not part of the public interface: it may change from one version to the next.

#ifndef QFLCAMERAFOCUS_P_H
#define QFLCAMERAFOCUS_P_H

#include "qflcamerafocus.h"

#include <private/qmediaobject_p.h>

QT_BEGIN_NAMESPACE
class QCameraFocusControl;
class QCameraZoomControl;
QT_END_NAMESPACE

class QFLCameraFocusPrivate : public QMediaObjectPrivate
{
    Q_DECLARE_PUBLIC(QFLCameraFocus)

public:
    explicit QFLCameraFocusPrivate(QFLCamera *camera);

    void initialize();
    void acquireControls();
    void connectControls();

    QFLCamera *camera;
    QCameraFocusControl *focusControl = nullptr;
    QCameraZoomControl *zoomControl = nullptr;
    bool available = false;
};

#endif
