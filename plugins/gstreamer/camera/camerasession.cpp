// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// A camera at work: its source, its pipeline and where the frames go.

#include "camerasession.h"

#include "capturesettings.h"
#include "gstreamersetup.h"
#include "logging.h"

namespace {

// Of frames that wait for a busy thread the oldest is dropped, so that what is shown stays fresh.
const int mostWaitingFrames = 2;

} // namespace

/*!
    \class CameraSession

    Owns the pipeline of a camera and brings it up and down; everything runs on the thread of this
    object. started() is emitted with the first frame after start().

    A failure is announced once by failed(), with a code of QCamera::Error, after the pipeline has
    been taken down. A source that turns out not to work is closed by then; it stays open when only
    the settings were not possible.

    Whoever receives a signal of the camera, and a surface that is called, may open, start, stop,
    close or delete it. The latest request counts, and what was going on before ends there.
*/

CameraSession::CameraSession(QObject *parent)
    : QObject(parent),
      m_frames(
              this, [this](const CapturedFrame &captured) { handleFrame(captured); },
              mostWaitingFrames)
{
    connect(&m_pipeline, &Pipeline::errorReported, this, &CameraSession::handlePipelineError);
    connect(&m_pipeline, &Pipeline::endOfStreamReached, this, &CameraSession::handleEndOfStream);
}

CameraSession::~CameraSession()
{
    close();
}

/*! What keepAlive() keeps: the whole of which this object is a part. */
void CameraSession::setOwner(const std::weak_ptr<const void> &owner)
{
    m_owner = owner;
}

/*!
    Held by functions of the camera's parts that go on after a signal or after the call of a
    surface, within which the camera may be deleted.
*/
std::shared_ptr<const void> CameraSession::keepAlive() const
{
    return m_owner.lock();
}

/*! Opens the device \a deviceName and gets a pipeline for the present settings ready. */
bool CameraSession::open(const QByteArray &deviceName)
{
    close();
    const Run::Watch isOn = m_run.watch();
    QString reason;
    if (!GStreamerSetup::initialize(&reason))
        return fail({QCamera::ServiceMissingError, reason});
    if (deviceName.isEmpty())
        return fail({QCamera::CameraError, tr("There is no camera")});
    std::unique_ptr<CameraSource> source = CameraSource::create(deviceName);
    const CameraFailure failure = source->open();
    if (failure)
        return fail(failure);
    m_source = std::move(source);
    const bool isReady = preparePipeline();
    if (isOn())
        m_device.open(m_source->createDriverSettings());
    return isReady && isOn();
}

/*! False if somebody who was told has opened or closed a device meanwhile. */
bool CameraSession::close()
{
    m_run.begin();
    const Run::Watch isOn = m_run.watch();
    m_source.reset();
    takeDown(GST_STATE_NULL);
    if (isOn())
        m_device.close();
    return isOn();
}

bool CameraSession::isOpen() const
{
    return bool(m_source);
}

/*! Lets the frames flow; the device must be open. */
bool CameraSession::start()
{
    m_surfaces.resetCounts();
    return (m_isPipelineCurrent || preparePipeline()) && m_pipeline.setState(GST_STATE_PLAYING);
}

/*! Stops the frames and the surfaces; the device stays open. */
void CameraSession::stop()
{
    takeDown(GST_STATE_READY);
}

/*! Whether a frame has come since the start. */
bool CameraSession::hasFrame() const
{
    return m_hasFrame;
}

/*! Called when the open device is not in the list of devices any more. */
void CameraSession::reportUnplugged()
{
    closeAndFail(tr("the camera has been unplugged"));
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
    return m_grabber.magnification();
}

/*! Takes effect with the next frame, and stays for the pipelines to come. */
void CameraSession::setDigitalZoom(qreal factor)
{
    m_grabber.setMagnification(factor);
}

/*! Has the settings of the device while that is open; never null. */
OpenDevice *CameraSession::device()
{
    return &m_device;
}

/*! Where the controls put the surfaces. */
SurfaceGroup *CameraSession::surfaces()
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

    takePipelineDown(GST_STATE_NULL);
    const Run::Watch isOn = m_run.watch();
    m_pipeline.adopt(std::move(pipeline));
    m_pipeline.onSample("frames", [this](GstSample *sample) {
        const CapturedFrame captured = m_grabber.grab(sample);
        if (captured.frame.isValid())
            m_frames.append(captured);
        return captured.frame.isValid();
    });
    const bool isReady = m_pipeline.setState(GST_STATE_READY);
    if (!isOn())
        return false;
    m_isPipelineCurrent = isReady;
    return isReady;
}

void CameraSession::takeDown(GstState state)
{
    takePipelineDown(state);
    m_hasFrame = false;
    m_format = QVideoSurfaceFormat();
    m_surfaces.stop();
}

/*! A pipeline that doesn't come down in time is given up, so that the next start makes another. */
void CameraSession::takePipelineDown(GstState state)
{
    if (!m_pipeline.takeDown(state))
        qCWarning(lcFaceLinkGStreamer, "A camera hangs and can't be stopped; it is left to itself");
    m_frames.clear();
    // A decoder that finds its parts by itself links them only once.
    if (m_pipeline.isEmpty() || (m_source && m_source->isRepeating()))
        m_isPipelineCurrent = false;
}

bool CameraSession::fail(const CameraFailure &failure)
{
    Q_EMIT failed(failure.code, failure.text);
    return false;
}

void CameraSession::closeAndFail(const QString &reason)
{
    const std::shared_ptr<const void> alive = keepAlive();
    const QString text = QStringLiteral("%1: %2").arg(m_source->displayName(), reason);
    if (close())
        fail({QCamera::CameraError, text});
}

void CameraSession::handlePipelineError(Pipeline::ErrorKind, const QString &text)
{
    if (m_source)
        closeAndFail(m_source->explain(text));
}

void CameraSession::handleFrame(const CapturedFrame &captured)
{
    const std::shared_ptr<const void> alive = keepAlive();
    m_format = captured.format;
    if (!m_hasFrame) {
        m_hasFrame = true;
        Q_EMIT started();
    }
    // Whoever was told may have stopped the camera again.
    if (m_hasFrame)
        m_surfaces.present(captured.frame, captured.format);
}

void CameraSession::handleEndOfStream()
{
    // Without this a file that has no picture at all would be read over and over at full speed.
    if (m_hasFrame && m_source->isRepeating())
        rewind();
    else
        closeAndFail(tr("no more pictures come"));
}

/*! Some containers can't seek, so there is a new pipeline for those, which takes longer. */
void CameraSession::rewind()
{
    const GstElementPointer sink = m_pipeline.element("frames");
    if (gst_element_seek_simple(sink.get(), GST_FORMAT_TIME, GST_SEEK_FLAG_FLUSH, 0))
        return;
    const std::shared_ptr<const void> alive = keepAlive();
    if (preparePipeline())
        m_pipeline.setState(GST_STATE_PLAYING);
}
