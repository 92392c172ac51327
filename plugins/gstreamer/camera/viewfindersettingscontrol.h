// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Holds the size, the rate and the format of a camera's frames.

#ifndef VIEWFINDERSETTINGSCONTROL_H
#define VIEWFINDERSETTINGSCONTROL_H

#include <QtMultimedia/qcameraviewfindersettingscontrol.h>

class CameraSession;

class ViewfinderSettingsControl : public QCameraViewfinderSettingsControl2
{
    Q_OBJECT

public:
    explicit ViewfinderSettingsControl(CameraSession *session, QObject *parent = nullptr);

    QList<QCameraViewfinderSettings> supportedViewfinderSettings() const override;

    QCameraViewfinderSettings viewfinderSettings() const override;
    void setViewfinderSettings(const QCameraViewfinderSettings &settings) override;

private:
    CameraSession *m_session;
};

#endif
