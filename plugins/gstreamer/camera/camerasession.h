// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// A camera at work: its source, its pipeline and where the frames go.

#ifndef CAMERASESSION_H
#define CAMERASESSION_H

#include "camerasource.h"
#include "framegrabber.h"
#include "opendevice.h"
#include "pipeline.h"
#include "surfacegroup.h"

class CameraSession : public QObject
{
    Q_OBJECT

public:
    explicit CameraSession(QObject *parent = nullptr);
    ~CameraSession() override;

    void setOwner(const std::weak_ptr<const void> &owner);
    std::shared_ptr<const void> keepAlive() const;

    bool open(const QByteArray &deviceName);
    bool close();
    bool isOpen() const;

    bool start();
    void stop();
    bool hasFrame() const;
    void reportUnplugged();

    QList<QCameraViewfinderSettings> supportedSettings() const;
    QCameraViewfinderSettings settings() const;
    void setSettings(const QCameraViewfinderSettings &settings);

    qreal digitalZoom() const;
    void setDigitalZoom(qreal factor);

    OpenDevice *device();
    SurfaceGroup *surfaces();

Q_SIGNALS:
    void started();
    void failed(int code, const QString &text);

private:
    bool preparePipeline();
    void takeDown(GstState state);
    void takePipelineDown(GstState state);
    bool fail(const CameraFailure &failure);
    void closeAndFail(const QString &reason);
    void handlePipelineError(Pipeline::ErrorKind kind, const QString &text);
    void handleFrame(const CapturedFrame &captured);
    void handleEndOfStream();
    void rewind();

    std::weak_ptr<const void> m_owner;
    std::unique_ptr<CameraSource> m_source;
    QCameraViewfinderSettings m_settings;
    QVideoSurfaceFormat m_format;
    bool m_isPipelineCurrent = false;
    bool m_hasFrame = false;
    Run m_run;

    OpenDevice m_device;
    SurfaceGroup m_surfaces;
    FrameGrabber m_grabber;
    PostedQueue<CapturedFrame> m_frames;
    // Destroyed first: its threads use what comes before.
    Pipeline m_pipeline;
};

#endif
