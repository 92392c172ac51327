// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Turns encoded frames into pictures.

#include "minimaldecodecontrol.h"

#include "minimalrenderercontrol.h"

namespace {

// About a second: a burst after a pause of the network fits.
const int maximumWaiting = 30;

} // namespace

/*!
    \class MinimalDecodeControl

    The decoder calls from its own thread, in which the control lives, so nothing here is locked.
    Frames are decoded one event later, since decode() may not wait for that.
*/

MinimalDecodeControl::MinimalDecodeControl(MinimalRendererControl *renderer, QObject *parent)
    : QFLDecodeControl(parent), m_renderer(renderer)
{
}

QStringList MinimalDecodeControl::supportedCodecs(bool hardwareOnly) const
{
    return hardwareOnly ? QStringList() : QStringList(QString::fromLatin1(RunLengthCodec::name));
}

bool MinimalDecodeControl::isFormatSupported(const QVideoEncoderSettings &settings) const
{
    return settings.codec() == QLatin1String(RunLengthCodec::name)
            || settings.codec() == QLatin1String(RunLengthCodec::decoderId);
}

bool MinimalDecodeControl::start(const QVideoEncoderSettings &settings)
{
    stop();
    if (!isFormatSupported(settings)) {
        Q_EMIT error(QFLDecoder::FormatError,
                     tr("The codec \"%1\" is unknown").arg(settings.codec()));
        return false;
    }
    const int run = ++m_run;
    m_settings = settings;
    m_outputFormat = QVideoSurfaceFormat();
    m_isDraining = false;
    awaitKeyFrame();
    setStatus(QFLDecoder::StartedStatus);
    return run == m_run;
}

QVideoEncoderSettings MinimalDecodeControl::videoSettings() const
{
    return m_settings;
}

QVideoSurfaceFormat MinimalDecodeControl::outputFormat() const
{
    return m_outputFormat;
}

//! [decode]
bool MinimalDecodeControl::decode(const QFLEncodedVideoFrame &frame)
{
    const bool isKeyFrame = frame.meta().type == QFLEncodedVideoFrame::Type_Key;
    if (m_status != QFLDecoder::StartedStatus || m_isDraining || !frame.isValid()
        || (m_awaitsKeyFrame && !isKeyFrame))
        return false;
    if (m_queue.size() == maximumWaiting) {
        awaitKeyFrame();
        return false;
    }
    m_awaitsKeyFrame = false;
    m_queue.enqueue(frame);
    const int run = m_run;
    QMetaObject::invokeMethod(
            this, [this, run] { decodeNext(run); }, Qt::QueuedConnection);
    return true;
}
//! [decode]

void MinimalDecodeControl::drain()
{
    if (m_status != QFLDecoder::StartedStatus || m_isDraining)
        return;
    m_isDraining = true;
    const int run = m_run;
    QMetaObject::invokeMethod(
            this, [this, run] { finishDraining(run); }, Qt::QueuedConnection);
}

void MinimalDecodeControl::flush()
{
    if (m_status == QFLDecoder::LoadedStatus)
        return;
    m_isDraining = false;
    awaitKeyFrame();
    setStatus(QFLDecoder::StartedStatus);
}

void MinimalDecodeControl::stop()
{
    if (m_status == QFLDecoder::LoadedStatus)
        return;
    ++m_run;
    m_queue.clear();
    m_settings = QVideoEncoderSettings();
    m_renderer->stop();
    setStatus(QFLDecoder::LoadedStatus);
}

QFLDecoder::Status MinimalDecodeControl::status() const
{
    return m_status;
}

void MinimalDecodeControl::setStatus(QFLDecoder::Status status)
{
    if (m_status == status)
        return;
    m_status = status;
    Q_EMIT statusChanged(status);
}

/*! Without the frames that wait, which are of no use any more. */
void MinimalDecodeControl::awaitKeyFrame()
{
    m_queue.clear();
    m_awaitsKeyFrame = true;
}

//! [decodeNext]
void MinimalDecodeControl::decodeNext(int run)
{
    if (run != m_run || m_queue.isEmpty())
        return;
    const QFLEncodedVideoFrame frame = m_queue.dequeue();
    QVideoFrame picture = m_codec.decode(frame.data());
    if (!picture.isValid()) {
        awaitKeyFrame();
        Q_EMIT error(QFLDecoder::FormatError, tr("A frame is damaged"));
        return;
    }
    picture.setStartTime(qint64(frame.meta().timestamp));
    show(picture);
}

void MinimalDecodeControl::show(const QVideoFrame &picture)
{
    const int run = m_run;
    const QVideoSurfaceFormat format(picture.size(), picture.pixelFormat());
    if (format != m_outputFormat) {
        m_outputFormat = format;
        Q_EMIT outputFormatChanged(format);
    }
    if (run == m_run && !m_renderer->present(picture, format))
        Q_EMIT error(QFLDecoder::FormatError, tr("The surface doesn't take the pictures"));
}
//! [decodeNext]

void MinimalDecodeControl::finishDraining(int run)
{
    if (run != m_run || !m_isDraining)
        return;
    m_isDraining = false;
    setStatus(QFLDecoder::EndOfStreamStatus);
    if (m_status == QFLDecoder::EndOfStreamStatus)
        Q_EMIT endOfStream();
}
