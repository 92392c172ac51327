// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Encodes raw frames with GStreamer.

#include "encodecontrol.h"

#include "logging.h"
#include "videoformat.h"

#include <QtCore/qscopedvaluerollback.h>
#include <QtCore/qthread.h>

namespace {

constexpr qint64 millisecondsBetweenLogs = 1000;

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
    \class EncodeControl

    The status is LoadedStatus while nothing is encoded and StartedStatus in a run, with
    StartingStatus and StoppingStatus on the way; UnavailableStatus when this machine has no encoder
    at all. An error of the pipeline ends the run.

    All signals are emitted in the thread of the control. status(), start(), encode() and stop() may
    be called from others too; runs then begin and end in the thread of the control, soon after. The
    service may be deleted by whoever receives a signal.
*/

EncodeControl::EncodeControl(QObject *parent) : StreamingEncodeControl(parent), m_encoder(this)
{
    if (!CodecElements::encoders().isEmpty())
        m_status = QFLEncoder::LoadedStatus;
    connect(&m_encoder, &VideoEncoder::encodedVideoFrame, this, &EncodeControl::handleFrame);
    connect(&m_encoder, &VideoEncoder::errorReported, this, &EncodeControl::handlePipelineError);
    connect(&m_encoder, &VideoEncoder::drained, this, &EncodeControl::handleDrained);
    connect(&m_encoder, &VideoEncoder::pendingFell, this, &EncodeControl::pendingFell);
}

QStringList EncodeControl::supportedCodecs(bool hardwareOnly) const
{
    return CodecElements::names(CodecElements::encoders(), hardwareOnly);
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
    m_encoder.setBitRate(settings.bitRate());
}

QVideoEncoderSettings EncodeControl::streamSettings() const
{
    return m_streamSettings;
}

/*!
    Begins a run for frames of \a format, ending the present one first. False, after error(), when
    the format or the settings can't be encoded or an element fails. When a hardware element fails,
    now or later, and the application named the codec only, the codec's next element takes over.
    On another thread the result only says whether there are encoders for the format, and frames are
    refused until the run has begun.
*/
bool EncodeControl::start(const QVideoSurfaceFormat &format)
{
    // A thread that presents frames must not wait for this one, which may be waiting for it.
    if (QThread::currentThread() != thread()) {
        QMetaObject::invokeMethod(
                this, [this, format] { start(format); }, Qt::QueuedConnection);
        return m_status != QFLEncoder::UnavailableStatus
                && supportedPixelFormats().contains(format.pixelFormat());
    }
    const Run::Watch isAlive = m_run.watchOwner();
    stop();
    // Each report of a status may lead the application to start, stop or delete the encoder.
    const bool isIdle = isAlive()
            && (m_status == QFLEncoder::LoadedStatus || m_status == QFLEncoder::UnavailableStatus);
    if (!isIdle)
        return false;
    m_run.begin();
    const Run::Watch isOn = m_run.watch();
    m_isDraining = false;
    m_configuration.emplace(format, m_settings);
    if (m_configuration->error() != QFLEncoder::NoError) {
        reportError(m_configuration->error(), m_configuration->errorText());
        return false;
    }

    return setStatus(QFLEncoder::StartingStatus) && isOn() && startRun();
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
    m_encoder.drain();
}

/*! Drops everything on its way; the next encoded frame is a key frame. */
void EncodeControl::flush()
{
    if (m_status == QFLEncoder::StartedStatus)
        m_encoder.flush();
}

/*! Ends the run at once, without emitting the frames that are still on their way. */
void EncodeControl::stop()
{
    if (QThread::currentThread() != thread()) {
        QMetaObject::invokeMethod(this, &EncodeControl::stop, Qt::QueuedConnection);
        return;
    }
    if (m_status != QFLEncoder::StartedStatus)
        return;
    endRun();
}

/*!
    False when the frame isn't accepted: outside a run, while draining, when it would have to wait
    too long for the encoder, when the thread of the control is so busy that encoded frames pile up,
    or when it isn't of the run's size and format. The latter is an error, reported once in a run.
*/
bool EncodeControl::encode(const QVideoFrame &frame)
{
    const Run::Watch isOn = m_run.watch();
    QString errorText;
    const bool isAccepted = m_encoder.encode(frame, &errorText);
    const auto report = [this, isOn, errorText] {
        if (isOn())
            reportError(QFLEncoder::FormatError, errorText);
    };
    if (!errorText.isEmpty())
        QMetaObject::invokeMethod(this, report, Qt::AutoConnection);
    return isAccepted;
}

void EncodeControl::requestKeyFrame()
{
    m_encoder.requestKeyFrame();
}

/*! One raw frame in the encoder and two waiting. */
int EncodeControl::capacity() const
{
    return RawFrameQueue::capacity;
}

int EncodeControl::pending()
{
    return m_encoder.pending();
}

int EncodeControl::undelivered()
{
    return m_encoder.undelivered();
}

/*!
    \property EncodeControl::encodedFrames

    The frames of this control's life that were encoded and emitted. With those that were refused,
    dropped or skipped and those still on their way (none outside a run) they are all that encode()
    was called with. Any thread may ask for these four; the log tells what is lost.
*/
quint64 EncodeControl::encodedFrames() const
{
    return m_encoder.tally().encoded;
}

/*! \property EncodeControl::refusedFrames The frames for which encode() returned false. */
quint64 EncodeControl::refusedFrames() const
{
    return m_encoder.tally().refused;
}

/*!
    \property EncodeControl::droppedFrames

    The frames that were accepted and got lost, by a flush, the end of a run or the encoder's doing.
*/
quint64 EncodeControl::droppedFrames() const
{
    return m_encoder.tally().dropped;
}

/*! \property EncodeControl::skippedFrames The frames that were too many for the set frame rate. */
quint64 EncodeControl::skippedFrames() const
{
    return m_encoder.tally().skipped;
}

/*! Once the configuration is known to be possible. False if the application ends the run at once. */
bool EncodeControl::startRun()
{
    // An error of a sink may be reported, and whoever is told may delete the service.
    const Run::Watch isOn = m_run.watch();
    if (!startPipeline()) {
        const Run::Watch isAlive = m_run.watchOwner();
        const Failure failure = m_failure;
        setStatus(QFLEncoder::LoadedStatus);
        if (isAlive())
            reportError(failure.code, failure.text);
        return false;
    }
    m_streamSettings = m_configuration->streamSettings();
    m_sinceLog.start();
    if (!setStatus(QFLEncoder::StartedStatus) || !isOn())
        return false;
    Q_EMIT streamStarted(m_streamSettings);
    return isOn();
}

bool EncodeControl::startPipeline()
{
    const QScopedValueRollback<bool> guard(m_isStartingPipeline, true);
    while (!m_encoder.start(*m_configuration)) {
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

/*!
    False if the application has changed the status, or deleted the encoder, in answer to the report
    of this one.
*/
bool EncodeControl::setStatus(QFLEncoder::Status status)
{
    const Run::Watch isAlive = m_run.watchOwner();
    if (m_status.exchange(status) != status)
        Q_EMIT statusChanged(status);
    return isAlive() && m_status == status;
}

void EncodeControl::endRun()
{
    m_run.begin();
    const Run::Watch isAlive = m_run.watchOwner();
    if (!setStatus(QFLEncoder::StoppingStatus))
        return;
    m_encoder.stop();
    logLostFrames();
    m_streamSettings = QVideoEncoderSettings();
    Q_EMIT streamStopped();
    if (isAlive())
        setStatus(QFLEncoder::LoadedStatus);
}

void EncodeControl::handlePipelineError(Pipeline::ErrorKind kind, const QString &text)
{
    const QString element = QString::fromLatin1(m_configuration->element().factoryName);
    const QString named = text.contains(element) ? text : tr("%1: %2").arg(element, text);
    m_failure = {encoderError(kind), named};
    if (m_isStartingPipeline)
        return;
    const int lost = m_encoder.pending();
    if (fallBack() && startPipeline()) {
        m_encoder.setBitRate(m_streamSettings.bitRate());
        if (m_isDraining)
            handleDrained();
        if (lost > 0)
            Q_EMIT pendingFell(lost, m_encoder.pending());
        return;
    }
    const Failure failure = m_failure;
    const Run::Watch isAlive = m_run.watchOwner();
    endRun();
    if (isAlive())
        reportError(failure.code, failure.text);
}

void EncodeControl::handleDrained()
{
    m_isDraining = false;
    const Run::Watch isOn = m_run.watch();
    Q_EMIT streamDrained();
    if (isOn())
        Q_EMIT endOfStream();
}

void EncodeControl::handleFrame(const QFLEncodedVideoFrame &frame)
{
    if (m_sinceLog.hasExpired(millisecondsBetweenLogs))
        logLostFrames();
    Q_EMIT encodedVideoFrame(frame);
}

// Frames that are only too many for the frame rate are what the application asked for.
void EncodeControl::logLostFrames()
{
    const quint64 losses = refusedFrames() + droppedFrames();
    if (losses == m_loggedLosses)
        return;
    m_loggedLosses = losses;
    m_sinceLog.start();
    qCInfo(lcFaceLinkGStreamer, "%llu frames encoded, %llu refused, %llu dropped, %llu skipped",
           encodedFrames(), refusedFrames(), droppedFrames(), skippedFrames());
}
