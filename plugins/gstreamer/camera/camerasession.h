// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// A camera at work: its source, its pipeline and where the frames go.

#ifndef CAMERASESSION_H
#define CAMERASESSION_H

#include "camerasource.h"
#include "framequeue.h"
#include "opendevice.h"
#include "pipeline.h"
#include "surfacefeeder.h"

class CameraSession : public QObject
{
    Q_OBJECT

public:
    explicit CameraSession(QObject *parent = nullptr);
    ~CameraSession() override;

    bool open(const QByteArray &deviceName);
    void close();
    bool isOpen() const;

    bool start();
    void stop();

    QList<QCameraViewfinderSettings> supportedSettings() const;
    QCameraViewfinderSettings settings() const;
    void setSettings(const QCameraViewfinderSettings &settings);

    qreal digitalZoom() const;
    void setDigitalZoom(qreal factor);

    OpenDevice *device();
    SurfaceFeeder *surfaces();

Q_SIGNALS:
    void started();
    void failed(int code, const QString &text);

private:
    bool preparePipeline();
    bool fail(const CameraFailure &failure);
    void handlePipelineError(Pipeline::ErrorKind kind, const QString &text);
    void handleFrame(const QVideoFrame &frame, const QVideoSurfaceFormat &format);
    void handleEndOfStream();
    void rewind();

    QByteArray m_deviceName;
    std::unique_ptr<CameraSource> m_source;
    QCameraViewfinderSettings m_settings;
    QVideoSurfaceFormat m_format;
    bool m_isPipelineCurrent = false;
    bool m_hasFrame = false;

    OpenDevice m_device;
    SurfaceFeeder m_surfaces;
    FrameQueue m_frames;
    // Destroyed first: its threads use the queue.
    Pipeline m_pipeline;
};

#endif
