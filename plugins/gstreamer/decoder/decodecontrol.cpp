// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Decodes a stream of encoded frames with GStreamer.

#include "decodecontrol.h"

#include "codec.h"
#include "gstreamersetup.h"
#include "surfacegroup.h"

namespace {

// About a second of video: a burst after a pause in the network fits, a decoder that is too slow
// doesn't make the picture lag further behind.
const int maximumBacklog = 32;

// How many times in a row decoding may fail between two pictures. As long as there was none, the
// decoder may be unfit for the stream; after that, bad data is the likelier cause for a long time.
const int maximumFailuresAtFirst = 10;
const int maximumFailures = 100;

QFLDecoder::Error errorCode(Pipeline::ErrorKind kind)
{
    switch (kind) {
    case Pipeline::ResourceError:
        return QFLDecoder::ResourceError;
    case Pipeline::FormatError:
        return QFLDecoder::FormatError;
    case Pipeline::HardwareError:
        return QFLDecoder::HardwareError;
    }
    return QFLDecoder::ResourceError;
}

} // namespace

/*!
    \class DecodeControl

    Lives in the thread of the decoder; all calls come from there and all signals are emitted there.
    The pictures go to the surfaces, which are not owned and must outlive this object.

    A run begins with start() and ends with stop() or with an error that cannot be overcome; a
    drained run still has to be stopped, flushed or started again.

    No frame is lost in silence. One that cannot be decoded, because a key frame has to come first
    or because the queue is full, is refused. When a frame that was taken turns out to be damaged,
    decoding begins anew at the next key frame, which may be queued already, and the frames before
    that one are refused. So whoever delivers the frames notices and asks for a key frame. A frame
    that never arrived is known to those who deliver only: they ask for a key frame themselves.
*/

DecodeControl::DecodeControl(SurfaceGroup *surfaces, QObject *parent)
    : QFLDecodeControl(parent), m_surfaces(surfaces)
{
    connect(m_surfaces, &SurfaceGroup::pixelFormatsChanged, this,
            &DecodeControl::updatePixelFormats);
    connect(m_surfaces, &SurfaceGroup::failed, this,
            [this](SurfaceFeed::Outcome failure, const QString &text) {
                const bool hasStopped = failure == SurfaceFeed::StoppedItself;
                Q_EMIT error(hasStopped ? QFLDecoder::ResourceError : QFLDecoder::FormatError,
                             text);
            });
    connect(&m_decoder, &VideoDecoder::pictureDecoded, this, &DecodeControl::present);
    connect(&m_decoder, &VideoDecoder::errorReported, this, &DecodeControl::handleError);
    connect(&m_decoder, &VideoDecoder::endOfStreamReached, this, &DecodeControl::finishDraining);
}

DecodeControl::~DecodeControl()
{
    m_decoder.reset();
    m_surfaces->stop();
}

QStringList DecodeControl::supportedCodecs(bool hardwareOnly) const
{
    return CodecElements::names(CodecElements::decoders(), hardwareOnly);
}

/*! Depends on the codec alone: size and rate are those of the stream, whatever they are. */
bool DecodeControl::isFormatSupported(const QVideoEncoderSettings &settings) const
{
    return !CodecElements::find(CodecElements::decoders(), settings.codec()).factoryName.isEmpty();
}

/*!
    Ends the present run, if any, and begins one. \a settings names the codec or the decoder
    element; without either the first available codec is decoded. On failure error() is emitted
    and the status is UnloadedStatus.
*/
bool DecodeControl::start(const QVideoEncoderSettings &settings)
{
    stop();
    // Each report of a status may lead the application to stop or start again.
    if (m_status != QFLDecoder::UnloadedStatus || !load(settings))
        return false;
    if (!setStatus(QFLDecoder::LoadedStatus) || !setStatus(QFLDecoder::StartingStatus))
        return false;
    return m_decoder.play() && setStatus(QFLDecoder::StartedStatus);
}

QVideoEncoderSettings DecodeControl::videoSettings() const
{
    return m_settings;
}

/*! Of the pictures as the first surface takes them; kept when the run ends. */
QVideoSurfaceFormat DecodeControl::outputFormat() const
{
    return m_outputFormat;
}

/*!
    False for a frame that is not decoded and on which later frames therefore cannot build: a key
    frame is needed.
*/
bool DecodeControl::decode(const QFLEncodedVideoFrame &frame)
{
    if (m_status != QFLDecoder::StartedStatus || m_isDraining)
        return false;
    if (m_decoder.isSilent()
        && !overcome(QFLDecoder::ResourceError,
                     tr("%1: no pictures come from the decoder")
                             .arg(QString::fromUtf8(m_element.factoryName))))
        return false;
    // Whoever is told of an error may delete the decoder.
    const Run::Watch isAlive = m_run.watchOwner();
    const bool isTaken = examine(frame);
    if (isAlive() && !isTaken)
        m_gate.close();
    return isTaken;
}

/*! Queues the frame if it can be decoded, and returns false if it can't. */
bool DecodeControl::examine(const QFLEncodedVideoFrame &frame)
{
    QByteArray data = frame.data();
    if (!frame.isValid() || data.isEmpty())
        return false;
    const BitstreamGate::Verdict verdict
            = m_gate.examine(&data, frame.meta().type == QFLEncodedVideoFrame::Type_Key);
    switch (verdict) {
    case BitstreamGate::Malformed:
        reportMalformedFrame();
        return false;
    case BitstreamGate::AwaitingKeyFrame:
        return false;
    case BitstreamGate::Kept:
        return true;
    case BitstreamGate::Admitted:
    case BitstreamGate::AdmittedKeyFrame:
        break;
    }
    return makeRoom()
            && m_decoder.push({data, frame.meta().timestamp},
                              verdict == BitstreamGate::AdmittedKeyFrame);
}

/*!
    Takes no further frames and presents what is queued; then the status is EndOfStreamStatus and
    endOfStream() is emitted. The surface goes on showing the last picture.
*/
void DecodeControl::drain()
{
    if (m_status != QFLDecoder::StartedStatus || m_isDraining)
        return;
    m_isDraining = true;
    m_decoder.endStream();
}

/*!
    Drops the frames that are queued and the pictures not yet presented, and waits for a key frame.
    A run that is being drained, or has been, takes frames again.
*/
void DecodeControl::flush()
{
    if (m_status != QFLDecoder::StartedStatus && m_status != QFLDecoder::EndOfStreamStatus)
        return;
    if (restart())
        setStatus(QFLDecoder::StartedStatus);
}

/*! Ends the run at once. Nothing that is queued is presented any more. */
void DecodeControl::stop()
{
    if (m_status == QFLDecoder::UnloadedStatus)
        return;
    const bool isLoading = m_status == QFLDecoder::LoadingStatus;
    m_decoder.reset();
    m_settings = QVideoEncoderSettings();
    m_isDraining = false;
    if (!isLoading && !setStatus(QFLDecoder::StoppingStatus))
        return;
    const QFLDecoder::Status stopping = m_status;
    const Run::Watch isAlive = m_run.watchOwner();
    m_surfaces->stop();
    // The surface may delete the decoder, or start it again.
    if (!isAlive() || m_status != stopping)
        return;
    if (!isLoading && !setStatus(QFLDecoder::LoadedStatus))
        return;
    if (setStatus(QFLDecoder::UnloadingStatus))
        setStatus(QFLDecoder::UnloadedStatus);
}

QFLDecoder::Status DecodeControl::status() const
{
    return m_status;
}

/*!
    False if the application has changed the status, or deleted the decoder, in answer to the report
    of this one.
*/
bool DecodeControl::setStatus(QFLDecoder::Status status)
{
    const Run::Watch isAlive = m_run.watchOwner();
    if (m_status != status) {
        m_status = status;
        Q_EMIT statusChanged(status);
    }
    return isAlive() && m_status == status;
}

bool DecodeControl::load(const QVideoEncoderSettings &settings)
{
    QString errorText;
    if (!GStreamerSetup::initialize(&errorText)) {
        Q_EMIT error(QFLDecoder::ResourceError, errorText);
        return false;
    }
    m_element = CodecElements::find(CodecElements::decoders(), settings.codec());
    if (m_element.factoryName.isEmpty()) {
        reportUnknownCodec(settings.codec());
        return false;
    }
    m_settings = settings;
    m_outputFormat = QVideoSurfaceFormat();
    m_failureCount = 0;
    m_hasDecoded = false;
    m_malformedFrameReported = false;
    m_gate.reset(Codec::find(m_element.codec)->inspector());
    m_decoder.setDecoder(m_element);
    return setStatus(QFLDecoder::LoadingStatus) && build();
}

bool DecodeControl::build()
{
    m_isOverrun = false;
    return m_decoder.build();
}

/*! Begins anew at the next key frame, with nothing left of what the decoder held. */
bool DecodeControl::restart()
{
    m_gate.close();
    m_isDraining = false;
    return rebuild();
}

bool DecodeControl::rebuild()
{
    return build() && m_decoder.play();
}

/*! Ends the run for the reason given. The error comes last: the application may start again. */
void DecodeControl::abandon(QFLDecoder::Error code, const QString &text)
{
    const Run::Watch isAlive = m_run.watchOwner();
    stop();
    if (isAlive())
        Q_EMIT error(code, text);
}

/*!
    False when the queue is full, and the frame has to be refused. The key frame that comes after it
    takes the place of all that is still queued then.
*/
bool DecodeControl::makeRoom()
{
    if (m_isOverrun)
        return rebuild();
    m_isOverrun = m_decoder.backlog() >= maximumBacklog;
    return !m_isOverrun;
}

void DecodeControl::handleError(Pipeline::ErrorKind kind, const QString &text)
{
    if (m_decoder.isUnused()) {
        abandon(errorCode(kind), text);
    } else if (m_isDraining && m_decoder.unansweredGroup().isEmpty()) {
        // No key frame will come to begin again at, so this is as far as the stream gets.
        const Run::Watch isAlive = m_run.watchOwner();
        Q_EMIT error(errorCode(kind), text);
        if (isAlive())
            finishDraining();
    } else {
        const bool isHardware = kind == Pipeline::HardwareError;
        overcome(isHardware ? QFLDecoder::HardwareError : QFLDecoder::ResourceError, text);
    }
}

/*!
    Begins anew after a failure, which damaged data explains, with a key frame that is queued
    already or with the next one. False when there were too many failures: the run has then ended
    with the error given.
*/
bool DecodeControl::overcome(QFLDecoder::Error code, const QString &text)
{
    const QVector<VideoDecoder::Frame> group = m_decoder.unansweredGroup();
    if (!group.isEmpty())
        return resume(group);
    if (++m_failureCount < (m_hasDecoded ? maximumFailures : maximumFailuresAtFirst))
        return restart();
    abandon(code, text);
    return false;
}

/*! Decodes frames again that were queued behind a damaged one. The first is a key frame. */
bool DecodeControl::resume(const QVector<VideoDecoder::Frame> &group)
{
    bool isTaken = rebuild();
    for (const VideoDecoder::Frame &frame : group)
        isTaken = isTaken && m_decoder.push(frame, false);
    if (isTaken && m_isDraining)
        m_decoder.endStream();
    return isTaken;
}

void DecodeControl::finishDraining()
{
    if (!m_isDraining)
        return;
    m_isDraining = false;
    if (setStatus(QFLDecoder::EndOfStreamStatus))
        Q_EMIT endOfStream();
}

void DecodeControl::reportUnknownCodec(const QString &codec)
{
    if (codec.isEmpty())
        Q_EMIT error(QFLDecoder::ResourceError, tr("No decoder is installed"));
    else if (Codec::find(codec))
        Q_EMIT error(QFLDecoder::ResourceError, tr("No decoder for %1 is installed").arg(codec));
    else
        Q_EMIT error(QFLDecoder::FormatError, tr("The codec \"%1\" is unknown").arg(codec));
}

/*! Once in a run: where one frame is no frame, the others mostly aren't either. */
void DecodeControl::reportMalformedFrame()
{
    if (m_malformedFrameReported)
        return;
    m_malformedFrameReported = true;
    Q_EMIT error(QFLDecoder::FormatError, tr("The data is no %1 frame").arg(m_element.codec));
}

void DecodeControl::updatePixelFormats()
{
    m_decoder.setPixelFormats(m_surfaces->pixelFormats());
}

void DecodeControl::present(const QVideoFrame &picture, const QVideoSurfaceFormat &format)
{
    const Run::Watch isAlive = m_run.watchOwner();
    m_hasDecoded = true;
    m_failureCount = 0;
    if (format != m_outputFormat) {
        m_outputFormat = format;
        Q_EMIT outputFormatChanged(format);
    }
    if (isAlive() && m_status == QFLDecoder::StartedStatus)
        m_surfaces->present(picture, format);
}
