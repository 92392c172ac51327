// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Encodes raw frames with GStreamer.

#include "encodecontrol.h"

#include "logging.h"
#include "videoformat.h"

#include <QtCore/qscopedvaluerollback.h>

namespace {

QFLEncoder::Error encoderError(Pipeline::ErrorKind kind)
{
    switch (kind) {
    case Pipeline::FormatError:
        return QFLEncoder::FormatError;
    case Pipeline::HardwareError:
        return QFLEncoder::HardwareError;
    default:
        return QFLEncoder::ResourceError;
    }
}

} // namespace

/*!
    The status is LoadedStatus while nothing is encoded and StartedStatus in a run, with
    StartingStatus and StoppingStatus on the way; UnavailableStatus when this machine has no encoder
    at all. An error of the pipeline ends the run.

    All signals are emitted in the thread of the control. Only encode() may be called from others.
*/
EncodeControl::EncodeControl(QObject *parent) : QFLEncodeControl(parent), m_pipeline(this)
{
    if (!Codecs::encoders().isEmpty())
        m_status = QFLEncoder::LoadedStatus;
    connect(&m_pipeline, &EncoderPipeline::encodedVideoFrame, this,
            &EncodeControl::encodedVideoFrame);
    connect(&m_pipeline, &EncoderPipeline::errorReported, this,
            &EncodeControl::handlePipelineError);
    connect(&m_pipeline, &EncoderPipeline::drained, this, &EncodeControl::handleDrained);
    connect(&m_pipeline, &EncoderPipeline::pendingFell, this, &EncodeControl::pendingFell);
}

QStringList EncodeControl::supportedCodecs(bool hardwareOnly) const
{
    return Codecs::names(Codecs::encoders(), hardwareOnly);
}

QList<QVideoFrame::PixelFormat> EncodeControl::supportedPixelFormats() const
{
    return VideoFormat::pixelFormats();
}

QFLEncoder::Status EncodeControl::status() const
{
    return m_status;
}

/*! The settings for the next run, as they were set. */
QVideoEncoderSettings EncodeControl::videoSettings() const
{
    return m_settings;
}

/*! In a run a new bit rate applies at once, everything else at the next start. */
void EncodeControl::setVideoSettings(const QVideoEncoderSettings &settings)
{
    const bool changesBitRate
            = settings.bitRate() > 0 && settings.bitRate() != m_settings.bitRate();
    m_settings = settings;
    if (m_status != QFLEncoder::StartedStatus || !changesBitRate)
        return;
    m_streamSettings.setBitRate(settings.bitRate());
    m_pipeline.setBitRate(settings.bitRate());
}

/*! The complete settings of the present run's stream, default-constructed outside a run. */
QVideoEncoderSettings EncodeControl::streamSettings() const
{
    return m_streamSettings;
}

/*!
    Begins a run for frames of \a format, ending the present one first. False, after error(), when
    the format or the settings can't be encoded or an element fails. When a hardware element fails,
    now or later, and the application named the codec only, the codec's next element takes over.
*/
bool EncodeControl::start(const QVideoSurfaceFormat &format)
{
    stop();
    // Each report of a status may lead the application to start or stop.
    if (m_status == QFLEncoder::StartingStatus || m_status == QFLEncoder::StartedStatus)
        return false;
    const int run = ++m_run;
    m_isDraining = false;
    m_configuration.emplace(format, m_settings);
    if (m_configuration->error() != QFLEncoder::NoError) {
        reportError(m_configuration->error(), m_configuration->errorText());
        return false;
    }

    setStatus(QFLEncoder::StartingStatus);
    return run == m_run && startRun(run);
}

/*!
    Emits what has been accepted, then endOfStream(). Until then encode() refuses frames; afterwards
    the run goes on, with a key frame first.
*/
void EncodeControl::drain()
{
    if (m_status != QFLEncoder::StartedStatus)
        return;
    m_isDraining = true;
    m_pipeline.drain();
}

/*! Drops everything on its way; the next encoded frame is a key frame. */
void EncodeControl::flush()
{
    if (m_status == QFLEncoder::StartedStatus)
        m_pipeline.flush();
}

/*! Ends the run at once, without emitting the frames that are still on their way. */
void EncodeControl::stop()
{
    if (m_status != QFLEncoder::StartedStatus)
        return;
    setStatus(QFLEncoder::StoppingStatus);
    endRun();
}

/*!
    False when the frame isn't accepted: outside a run, while draining, when it would have to wait
    too long for the encoder, or when it isn't of the run's size and format. The latter is an error,
    reported once in a run.
*/
bool EncodeControl::encode(const QVideoFrame &frame)
{
    const int run = m_run;
    QString errorText;
    const bool isAccepted = m_pipeline.encode(frame, &errorText);
    if (!errorText.isEmpty()) {
        QMetaObject::invokeMethod(
                this, [this, run, errorText] { reportRefusedFrame(run, errorText); },
                Qt::AutoConnection);
    }
    return isAccepted;
}

/*! Asks for a key frame soon, on behalf of a sink; requests are merged and limited in rate. */
void EncodeControl::requestKeyFrame()
{
    m_pipeline.requestKeyFrame();
}

/*! How many raw frames wait for the encoder or are in it; any thread may ask. */
int EncodeControl::pending()
{
    return m_pipeline.pending();
}

void EncodeControl::reportError(QFLEncoder::Error code, const QString &text)
{
    Q_EMIT error(code, text);
}

/*! Once the configuration is known to be possible. False if the application ends the run at once. */
bool EncodeControl::startRun(int run)
{
    if (!startPipeline()) {
        setStatus(QFLEncoder::LoadedStatus);
        reportError(m_failure.code, m_failure.text);
        return false;
    }
    m_streamSettings = m_configuration->streamSettings();
    setStatus(QFLEncoder::StartedStatus);
    if (run != m_run || m_status != QFLEncoder::StartedStatus)
        return false;
    Q_EMIT streamStarted(m_streamSettings);
    return run == m_run && m_status == QFLEncoder::StartedStatus;
}

bool EncodeControl::startPipeline()
{
    const QScopedValueRollback<bool> guard(m_isStartingPipeline, true);
    while (!m_pipeline.start(*m_configuration)) {
        if (!fallBack())
            return false;
    }
    return true;
}

bool EncodeControl::fallBack()
{
    if (!m_configuration->fallBack())
        return false;
    qCWarning(lcFaceLinkGStreamer, "%s; falling back to %s", qPrintable(m_failure.text),
              m_configuration->element().factoryName.constData());
    return true;
}

void EncodeControl::setStatus(QFLEncoder::Status status)
{
    if (m_status == status)
        return;
    m_status = status;
    Q_EMIT statusChanged(status);
}

void EncodeControl::endRun()
{
    m_pipeline.stop();
    m_streamSettings = QVideoEncoderSettings();
    Q_EMIT streamStopped();
    setStatus(QFLEncoder::LoadedStatus);
}

void EncodeControl::handlePipelineError(Pipeline::ErrorKind kind, const QString &text)
{
    const QString element = QString::fromLatin1(m_configuration->element().factoryName);
    const QString named = text.contains(element) ? text : tr("%1: %2").arg(element, text);
    m_failure = {encoderError(kind), named};
    if (m_isStartingPipeline)
        return;
    const int lost = m_pipeline.pending();
    if (fallBack() && startPipeline()) {
        m_pipeline.setBitRate(m_streamSettings.bitRate());
        if (m_isDraining)
            handleDrained();
        if (lost > 0)
            Q_EMIT pendingFell(lost, m_pipeline.pending());
        return;
    }
    endRun();
    reportError(m_failure.code, m_failure.text);
}

void EncodeControl::handleDrained()
{
    m_isDraining = false;
    const int run = m_run;
    Q_EMIT streamDrained();
    if (run == m_run && m_status == QFLEncoder::StartedStatus)
        Q_EMIT endOfStream();
}

void EncodeControl::reportRefusedFrame(int run, const QString &text)
{
    if (run == m_run)
        reportError(QFLEncoder::FormatError, text);
}
