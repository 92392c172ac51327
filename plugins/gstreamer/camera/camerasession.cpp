// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// A camera at work: its source, its pipeline and where the frames go.

#include "camerasession.h"

#include "cameradevices.h"
#include "capturesettings.h"
#include "gstreamersetup.h"

#include <QtCore/qdir.h>

/*!
    Owns the pipeline of a camera and brings it up and down; everything runs on the thread of this
    object. started() is emitted with the first frame after start().

    A failure is announced once by failed(), with a code of QCamera::Error, after the pipeline has
    been taken down. A source that turns out not to work is closed by then; it stays open when only
    the settings were not possible.
*/
CameraSession::CameraSession(QObject *parent) : QObject(parent)
{
    connect(&m_pipeline, &Pipeline::errorReported, this, &CameraSession::handlePipelineError);
    connect(&m_pipeline, &Pipeline::endOfStreamReached, this, &CameraSession::handleEndOfStream);
    connect(&m_frames, &FrameQueue::frameCaptured, this, &CameraSession::handleFrame);
}

CameraSession::~CameraSession()
{
    close();
}

/*! Opens the device \a deviceName and gets a pipeline for the present settings ready. */
bool CameraSession::open(const QByteArray &deviceName)
{
    close();
    QString reason;
    if (!GStreamerSetup::initialize(&reason))
        return fail({QCamera::ServiceMissingError, reason});
    m_deviceName = deviceName;
    std::unique_ptr<CameraSource> source = CameraSource::create(deviceName);
    const CameraFailure failure = source->open();
    if (failure)
        return fail(failure);
    m_source = std::move(source);
    const bool isReady = preparePipeline();
    // Whoever was told of a failure may have closed the camera.
    if (m_source)
        m_device.open(m_source->createControls());
    return isReady && m_source;
}

void CameraSession::close()
{
    m_device.close();
    stop();
    m_pipeline.reset();
    m_isPipelineCurrent = false;
    m_source.reset();
}

bool CameraSession::isOpen() const
{
    return bool(m_source);
}

/*! Lets the frames flow; the device must be open. */
bool CameraSession::start()
{
    if (!m_isPipelineCurrent && !preparePipeline())
        return false;
    return m_pipeline.setState(GST_STATE_PLAYING);
}

/*! Stops the frames and the surfaces; the device stays open. */
void CameraSession::stop()
{
    if (!m_pipeline.isEmpty())
        m_pipeline.setState(GST_STATE_READY);
    // A decoder that finds its parts by itself links them only once.
    if (m_source && m_source->isRepeating())
        m_isPipelineCurrent = false;
    m_frames.clear();
    m_hasFrame = false;
    m_format = QVideoSurfaceFormat();
    m_surfaces.stop();
}

/*! What the open device offers, empty when none is open. */
QList<QCameraViewfinderSettings> CameraSession::supportedSettings() const
{
    return m_source ? m_source->supportedSettings() : QList<QCameraViewfinderSettings>();
}

/*! The settings in force, complete as soon as the device is open, else those that were set. */
QCameraViewfinderSettings CameraSession::settings() const
{
    if (!m_source)
        return m_settings;
    QCameraViewfinderSettings settings
            = CaptureSettings::complete(m_settings, m_source->defaultSettings());
    if (m_format.isValid()) {
        settings.setResolution(m_format.frameSize());
        settings.setPixelFormat(m_format.pixelFormat());
    }
    return settings;
}

/*! Takes effect at the next start. */
void CameraSession::setSettings(const QCameraViewfinderSettings &settings)
{
    if (settings == m_settings)
        return;
    m_settings = settings;
    m_isPipelineCurrent = false;
}

qreal CameraSession::digitalZoom() const
{
    return m_frames.magnification();
}

/*! Takes effect with the next frame, and stays for the pipelines to come. */
void CameraSession::setDigitalZoom(qreal factor)
{
    m_frames.setMagnification(factor);
}

/*! Has the settings of the device while that is open; never null. */
OpenDevice *CameraSession::device()
{
    return &m_device;
}

/*! Where the controls put the surfaces. */
SurfaceFeeder *CameraSession::surfaces()
{
    return &m_surfaces;
}

bool CameraSession::preparePipeline()
{
    const CameraFailure problem = CaptureSettings::check(m_settings);
    if (problem)
        return fail(problem);
    CameraFailure failure;
    GstElementPointer pipeline = m_source->createPipeline(
            CaptureSettings::complete(m_settings, m_source->defaultSettings()), &failure);
    if (!pipeline)
        return fail(failure);

    m_pipeline.adopt(std::move(pipeline));
    const GstElementPointer sink = m_pipeline.element("frames");
    m_frames.connectTo(GST_APP_SINK(sink.get()));
    m_isPipelineCurrent = m_pipeline.setState(GST_STATE_READY);
    return m_isPipelineCurrent;
}

bool CameraSession::fail(const CameraFailure &failure)
{
    Q_EMIT failed(failure.code, failure.text);
    return false;
}

void CameraSession::handlePipelineError(Pipeline::ErrorKind, const QString &text)
{
    const QString path = CameraDevices::filePath(m_deviceName);
    const QString name
            = path.isEmpty() ? QString::fromLatin1(m_deviceName) : QDir::toNativeSeparators(path);
    close();
    fail({QCamera::CameraError, QStringLiteral("%1: %2").arg(name, text)});
}

void CameraSession::handleFrame(const QVideoFrame &frame, const QVideoSurfaceFormat &format)
{
    m_format = format;
    if (!m_hasFrame) {
        m_hasFrame = true;
        Q_EMIT started();
    }
    // Whoever was told may have stopped the camera again.
    if (m_hasFrame)
        m_surfaces.present(frame, format);
}

void CameraSession::handleEndOfStream()
{
    // Without this a file that has no picture at all would be read over and over at full speed.
    if (m_hasFrame && m_source->isRepeating())
        rewind();
    else
        handlePipelineError(Pipeline::ResourceError, tr("no more pictures come"));
}

/*! Some containers can't seek, so there is a new pipeline for those, which takes longer. */
void CameraSession::rewind()
{
    const GstElementPointer sink = m_pipeline.element("frames");
    if (gst_element_seek_simple(sink.get(), GST_FORMAT_TIME, GST_SEEK_FLAG_FLUSH, 0))
        return;
    m_isPipelineCurrent = false;
    start();
}
