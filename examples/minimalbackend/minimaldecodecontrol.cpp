// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Turns encoded frames into pictures.

#include "minimaldecodecontrol.h"

#include "minimalrenderercontrol.h"

#include <QtCore/qpointer.h>

#include <utility>

namespace {

// About a second: a burst after a pause of the network fits.
const int maximumWaiting = 30;

} // namespace

/*!
    \class MinimalDecodeControl

    The decoder calls from its own thread, in which the control lives, so nothing here is locked.
    Frames are decoded one event later, since decode() may not wait for that. Each signal and each
    call to the surface may lead to any call here, or to the control's end. So each is followed by a
    look at the run's number, which start(), flush() and stop() change: the newest request counts.
*/

MinimalDecodeControl::MinimalDecodeControl(MinimalRendererControl *renderer, QObject *parent)
    : QFLDecodeControl(parent), m_renderer(renderer)
{
    connect(renderer, &MinimalRendererControl::failed, this, &MinimalDecodeControl::error);
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
    if (!endRun())
        return false;
    if (!isFormatSupported(settings)) {
        Q_EMIT error(QFLDecoder::FormatError,
                     tr("The codec \"%1\" is unknown").arg(settings.codec()));
        return false;
    }
    m_settings = settings;
    m_outputFormat = QVideoSurfaceFormat();
    return setStatus(QFLDecoder::StartedStatus);
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
    ++m_run;
    m_isDraining = false;
    awaitKeyFrame();
    setStatus(QFLDecoder::StartedStatus);
}

void MinimalDecodeControl::stop()
{
    endRun();
}

QFLDecoder::Status MinimalDecodeControl::status() const
{
    return m_status;
}

/*! False if something else has been asked for meanwhile, or the control has been deleted. */
bool MinimalDecodeControl::endRun()
{
    const QPointer<MinimalDecodeControl> self(this);
    const int run = ++m_run;
    m_settings = QVideoEncoderSettings();
    m_isDraining = false;
    awaitKeyFrame();
    setStatus(QFLDecoder::LoadedStatus);
    if (self && run == m_run)
        m_renderer->stop();
    return self && run == m_run;
}

/*! False if the status is already another one, or the control has been deleted. */
bool MinimalDecodeControl::setStatus(QFLDecoder::Status status)
{
    const QPointer<MinimalDecodeControl> self(this);
    if (std::exchange(m_status, status) != status)
        Q_EMIT statusChanged(status);
    return self && m_status == status;
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
    const QPointer<MinimalDecodeControl> self(this);
    const int run = m_run;
    const QVideoSurfaceFormat format(picture.size(), picture.pixelFormat());
    if (format != m_outputFormat) {
        m_outputFormat = format;
        Q_EMIT outputFormatChanged(format);
    }
    if (self && run == m_run && m_renderer->start(format) && run == m_run)
        m_renderer->present(picture);
}
//! [decodeNext]

void MinimalDecodeControl::finishDraining(int run)
{
    if (run != m_run || !m_isDraining)
        return;
    m_isDraining = false;
    if (setStatus(QFLDecoder::EndOfStreamStatus))
        Q_EMIT endOfStream();
}
