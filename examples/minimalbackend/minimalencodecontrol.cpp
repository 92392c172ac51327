// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Turns raw frames into encoded ones.

#include "minimalencodecontrol.h"

#include <QtCore/qpointer.h>

#include <utility>

namespace {

// Frames that wait make the picture late.
const int maximumWaiting = 2;

// Of surfaces that don't say: sinks are promised one.
const qreal usualFrameRate = 30;

} // namespace

/*!
    \class MinimalEncodeControl

    Any thread may call, the one on which a camera renders above all. What callers and the control's
    own thread share is behind the mutex, which is never held while anybody else is called. The work
    is done, and the sinks are called, in the control's thread, by events that carry the number of
    the run that they belong to: one of a run that has ended finds another number and does nothing.

    Each signal may lead to any call here, or to the control's end. Whatever follows on one looks at
    the number as well, so that the newest request counts.
*/

MinimalEncodeControl::MinimalEncodeControl(QObject *parent) : QFLEncodeControl(parent) { }

QStringList MinimalEncodeControl::supportedCodecs(bool hardwareOnly) const
{
    return hardwareOnly ? QStringList() : QStringList(QString::fromLatin1(RunLengthCodec::name));
}

QList<QVideoFrame::PixelFormat> MinimalEncodeControl::supportedPixelFormats() const
{
    return {QVideoFrame::Format_RGB32};
}

QFLEncoder::Status MinimalEncodeControl::status() const
{
    const QMutexLocker locker(&m_mutex);
    return m_isStarted ? QFLEncoder::StartedStatus : QFLEncoder::LoadedStatus;
}

QVideoEncoderSettings MinimalEncodeControl::videoSettings() const
{
    const QMutexLocker locker(&m_mutex);
    return m_settings;
}

/*! They apply at the next start. */
void MinimalEncodeControl::setVideoSettings(const QVideoEncoderSettings &settings)
{
    const QMutexLocker locker(&m_mutex);
    m_settings = settings;
}

/*! What the sinks are started with; default-constructed outside a run. */
QVideoEncoderSettings MinimalEncodeControl::streamSettings() const
{
    return m_streamSettings;
}

//! [start]
bool MinimalEncodeControl::start(const QVideoSurfaceFormat &format)
{
    const QPointer<MinimalEncodeControl> self(this);
    const int run = endRun();
    if (!self)
        return false;
    const QString errorText = startError(format);
    if (!errorText.isEmpty()) {
        Q_EMIT error(QFLEncoder::FormatError, errorText);
        return false;
    }
    {
        const QMutexLocker locker(&m_mutex);
        if (run != m_run)
            return false;
        m_format = format;
        m_isStarted = true;
        m_isDraining = false;
        m_needsKeyFrame = true;
    }
    Q_EMIT statusChanged(QFLEncoder::StartedStatus);
    if (self)
        QMetaObject::invokeMethod(this, [this, run] { beginStream(run); });
    return self && isRun(run);
}
//! [start]

//! [stop]
void MinimalEncodeControl::stop()
{
    endRun();
}

/*! The number of the run that may begin now. */
int MinimalEncodeControl::endRun()
{
    const QPointer<MinimalEncodeControl> self(this);
    int run = 0;
    bool wasStarted = false;
    {
        const QMutexLocker locker(&m_mutex);
        run = ++m_run;
        wasStarted = std::exchange(m_isStarted, false);
        m_queue.clear();
    }
    if (wasStarted)
        Q_EMIT statusChanged(QFLEncoder::LoadedStatus);
    if (self)
        QMetaObject::invokeMethod(this, [this, run] { endStream(run); });
    return run;
}
//! [stop]

//! [encode]
bool MinimalEncodeControl::encode(const QVideoFrame &frame)
{
    QMutexLocker locker(&m_mutex);
    if (!m_isStarted || m_isDraining || m_queue.size() == maximumWaiting)
        return false;
    if (frame.size() != m_format.frameSize() || frame.pixelFormat() != m_format.pixelFormat()) {
        locker.unlock();
        Q_EMIT error(QFLEncoder::FormatError, tr("A frame isn't of the stream's format"));
        return false;
    }
    m_queue.enqueue(frame);
    const int run = m_run;
    QMetaObject::invokeMethod(
            this, [this, run] { encodeNext(run); }, Qt::QueuedConnection);
    return true;
}
//! [encode]

//! [encodeNext]
void MinimalEncodeControl::encodeNext(int run)
{
    QVideoFrame frame;
    bool asKeyFrame = false;
    {
        const QMutexLocker locker(&m_mutex);
        if (run != m_run || m_queue.isEmpty())
            return;
        frame = m_queue.dequeue();
        asKeyFrame = m_needsKeyFrame;
        m_needsKeyFrame = false;
    }
    QByteArray data = m_codec.encode(frame, asKeyFrame);
    if (!isRun(run))
        return;
    if (data.isEmpty()) {
        requestKeyFrame();
        Q_EMIT error(QFLEncoder::ResourceError, tr("A frame can't be read"));
        return;
    }

    QFLEncodedVideoFrame::MetaData meta;
    meta.type = asKeyFrame ? QFLEncodedVideoFrame::Type_Key : QFLEncodedVideoFrame::Type_Intra;
    meta.timestamp = quint64(qMax<qint64>(0, frame.startTime()));
    handOut(QFLEncodedVideoFrame(data, meta), run);
}

void MinimalEncodeControl::handOut(const QFLEncodedVideoFrame &frame, int run)
{
    const QPointer<MinimalEncodeControl> self(this);
    Q_EMIT streamedFrame(frame);
    if (self && isRun(run))
        Q_EMIT encodedVideoFrame(frame);
}
//! [encodeNext]

//! [drain]
void MinimalEncodeControl::drain()
{
    const QMutexLocker locker(&m_mutex);
    if (!m_isStarted || m_isDraining)
        return;
    m_isDraining = true;
    const int run = m_run;
    // Behind the events of all frames that have been taken.
    QMetaObject::invokeMethod(
            this, [this, run] { finishDraining(run); }, Qt::QueuedConnection);
}

void MinimalEncodeControl::finishDraining(int run)
{
    {
        const QMutexLocker locker(&m_mutex);
        if (run != m_run)
            return;
        m_isDraining = false;
        m_needsKeyFrame = true;
    }
    const QPointer<MinimalEncodeControl> self(this);
    Q_EMIT streamDrained();
    if (self && isRun(run))
        Q_EMIT endOfStream();
}
//! [drain]

//! [flush]
void MinimalEncodeControl::flush()
{
    const QMutexLocker locker(&m_mutex);
    m_queue.clear();
    m_needsKeyFrame = true;
}
//! [flush]

/*! For a sink that can't go on without one; unlike flush() it loses no frame. */
void MinimalEncodeControl::requestKeyFrame()
{
    const QMutexLocker locker(&m_mutex);
    m_needsKeyFrame = true;
}

/*! Why frames of \a format can't be encoded with the present settings; empty if they can. */
QString MinimalEncodeControl::startError(const QVideoSurfaceFormat &format) const
{
    const QString codec = videoSettings().codec();
    if (!codec.isEmpty() && codec != QLatin1String(RunLengthCodec::name)
        && codec != QLatin1String(RunLengthCodec::encoderId))
        return tr("The codec \"%1\" is unknown").arg(codec);
    const QSize size = format.frameSize();
    const bool isPossible = format.pixelFormat() == QVideoFrame::Format_RGB32 && !size.isEmpty()
            && qMax(size.width(), size.height()) <= RunLengthCodec::longestSide;
    return isPossible ? QString() : tr("Only RGB32 pictures can be encoded");
}

bool MinimalEncodeControl::isRun(int run) const
{
    const QMutexLocker locker(&m_mutex);
    return run == m_run;
}

void MinimalEncodeControl::beginStream(int run)
{
    {
        const QMutexLocker locker(&m_mutex);
        if (run != m_run)
            return;
        m_streamSettings = m_settings;
        m_streamSettings.setCodec(QString::fromLatin1(RunLengthCodec::name));
        m_streamSettings.setResolution(m_format.frameSize());
        const qreal frameRate = m_format.frameRate();
        m_streamSettings.setFrameRate(frameRate > 0 ? frameRate : usualFrameRate);
    }
    Q_EMIT streamStarted();
}

void MinimalEncodeControl::endStream(int run)
{
    if (!isRun(run))
        return;
    m_streamSettings = QVideoEncoderSettings();
    Q_EMIT streamStopped();
}
