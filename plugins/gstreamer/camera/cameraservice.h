// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The camera service.

#ifndef CAMERASERVICE_H
#define CAMERASERVICE_H

#include <QtMultimedia/qmediaservice.h>

#include <memory>

class CameraService : public QMediaService
{
    Q_OBJECT

public:
    explicit CameraService(QObject *parent = nullptr);
    ~CameraService() override;

    QMediaControl *requestControl(const char *name) override;
    void releaseControl(QMediaControl *control) override;

private:
    QMediaControl *requestDeviceControl(const char *name) const;

    struct Parts;
    std::shared_ptr<Parts> m_parts;
};

#endif
