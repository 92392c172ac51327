// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// A camera that is GStreamer's live test picture.

#ifndef TESTCAMERASOURCE_H
#define TESTCAMERASOURCE_H

#include "camerasource.h"

class TestCameraSource : public CameraSource
{
public:
    CameraFailure open() override;
    QString displayName() const override;
    QList<QCameraViewfinderSettings> supportedSettings() const override;
    QCameraViewfinderSettings defaultSettings() const override;

    GstElementPointer createPipeline(const QCameraViewfinderSettings &settings,
                                     CameraFailure *failure) const override;
};

#endif
