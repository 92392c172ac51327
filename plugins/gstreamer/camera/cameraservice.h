// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The camera service.

#ifndef CAMERASERVICE_H
#define CAMERASERVICE_H

#include <QtMultimedia/qmediaservice.h>

#include <memory>

class CameraControl;
class CameraInfoControl;
class CameraSession;
class DeviceSelectorControl;
class ExposureControl;
class FlashControl;
class FocusControl;
class RawVideoSourceControl;
class ViewfinderSettingsControl;
class ZoomControl;

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

    // In the order in which they need each other: the last is destroyed first.
    std::unique_ptr<CameraSession> m_session;
    std::unique_ptr<DeviceSelectorControl> m_deviceSelector;
    std::unique_ptr<CameraControl> m_cameraControl;
    std::unique_ptr<CameraInfoControl> m_infoControl;
    std::unique_ptr<ViewfinderSettingsControl> m_settingsControl;
    std::unique_ptr<RawVideoSourceControl> m_rawVideoSource;
    std::unique_ptr<ExposureControl> m_exposureControl;
    std::unique_ptr<FlashControl> m_flashControl;
    std::unique_ptr<FocusControl> m_focusControl;
    std::unique_ptr<ZoomControl> m_zoomControl;
};

#endif
