// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// A camera that plays a video file over and over.

#ifndef FILECAMERASOURCE_H
#define FILECAMERASOURCE_H

#include "camerasource.h"
#include "videofileprobe.h"

class FileCameraSource : public CameraSource
{
public:
    explicit FileCameraSource(const QString &path);

    CameraFailure open() override;
    QString displayName() const override;
    QList<QCameraViewfinderSettings> supportedSettings() const override;
    QCameraViewfinderSettings defaultSettings() const override;

    GstElementPointer createPipeline(const QCameraViewfinderSettings &settings,
                                     CameraFailure *failure) const override;
    bool isRepeating() const override;

private:
    QSize uprightSize() const;
    QString description(const QCameraViewfinderSettings &settings) const;

    QString m_path;
    VideoFileProbe m_probe;
};

#endif
