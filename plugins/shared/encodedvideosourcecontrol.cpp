// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Hands the encoder's frames to sinks.

#include "encodedvideosourcecontrol.h"

#include "qflencodedvideosink.h"
#include "streamingencodecontrol.h"

#include <QtCore/qelapsedtimer.h>
#include <QtCore/qloggingcategory.h>

#include <algorithm>

Q_LOGGING_CATEGORY(lcFaceLinkSinks, "facelink.sinks", QtWarningMsg)

/*!
    \class EncodedVideoSourceControl

    Follows the runs of an encode control, which must outlive this control: its sinks are started,
    drained and stopped with it, and get its frames in order. Everything happens in the thread of
    the encode control. From within any call, a sink may link or remove itself or others, start or
    stop the encoder, and delete the service. A sink that is destroyed is dropped.

    Each sink's stream begins with a key frame, and goes on with one after a frame that it refused.
    All get a frame before anyone gets the next, those last that took longer for their latest one
    than a frame lasts. When others have to wait for such a sink, and frames pile up, it misses the
    frames up to the next regular key frame; so the others are late by one of its calls at most. A
    sink that is slow on its own gets all frames, and encode() refuses as many as it can't take.
*/

/*! \a encodeControl is borrowed. */
EncodedVideoSourceControl::EncodedVideoSourceControl(StreamingEncodeControl *encodeControl,
                                                     QObject *parent)
    : QFLEncodedVideoSourceControl(parent), m_encodeControl(encodeControl)
{
    connect(encodeControl, &StreamingEncodeControl::streamStarted, this,
            &EncodedVideoSourceControl::startSinks);
    connect(encodeControl, &StreamingEncodeControl::streamDrained, this,
            &EncodedVideoSourceControl::drainSinks);
    connect(encodeControl, &StreamingEncodeControl::streamStopped, this,
            &EncodedVideoSourceControl::stopSinks);
    connect(encodeControl, &StreamingEncodeControl::encodedVideoFrame, this,
            &EncodedVideoSourceControl::deliver);
}

/*! Stops those sinks that are left when the service is deleted from within another one's stop(). */
EncodedVideoSourceControl::~EncodedVideoSourceControl()
{
    while (!m_sinks.isEmpty())
        removeSink(m_sinks.first().sink);
}

/*!
    Accepts a QFLEncodedVideoSink that is not linked yet. In a run it must also take the stream; it
    is started at once, and a key frame is requested for it.
*/
bool EncodedVideoSourceControl::addSink(QFLSink *sink)
{
    auto *videoSink = QFLEncodedVideoSink::fromSink(sink);
    dropDestroyedSinks();
    if (!videoSink || find(videoSink))
        return false;
    m_sinks.append({videoSink, sink});
    if (m_encodeControl->status() != QFLEncoder::StartedStatus)
        return true;
    const Run::Watch isHere = m_run.watchOwner();
    const bool isTaken = startSink(videoSink, m_encodeControl->streamSettings());
    if (!isHere() || !find(videoSink))
        return false;
    if (!isTaken) {
        removeSink(sink);
        return false;
    }
    m_encodeControl->requestKeyFrame();
    return true;
}

/*! Stops \a sink if it is started. Nothing is called in it once this has returned. */
bool EncodedVideoSourceControl::removeSink(QFLSink *sink)
{
    const auto position
            = std::find_if(m_sinks.begin(), m_sinks.end(),
                           [sink](const LinkedSink &linked) { return linked.sink == sink; });
    if (position == m_sinks.end())
        return false;
    const LinkedSink removed = *position;
    m_sinks.erase(position);
    if (removed.state != Stopped && removed.pointer)
        removed.sink->stop();
    return true;
}

EncodedVideoSourceControl::LinkedSink *EncodedVideoSourceControl::find(
        const QFLEncodedVideoSink *sink)
{
    const auto position
            = std::find_if(m_sinks.begin(), m_sinks.end(), [sink](const LinkedSink &linked) {
                  return linked.sink == sink && linked.pointer;
              });
    return position == m_sinks.end() ? nullptr : &*position;
}

void EncodedVideoSourceControl::dropDestroyedSinks()
{
    const auto end = std::remove_if(m_sinks.begin(), m_sinks.end(),
                                    [](const LinkedSink &linked) { return !linked.pointer; });
    if (end == m_sinks.end())
        return;
    m_sinks.erase(end, m_sinks.end());
    qCWarning(lcFaceLinkSinks, "A sink was destroyed that had not been unlinked");
}

QVector<QFLEncodedVideoSink *> EncodedVideoSourceControl::receivers()
{
    dropDestroyedSinks();
    QVector<QFLEncodedVideoSink *> result;
    for (bool isSlow : {false, true}) {
        for (const LinkedSink &linked : qAsConst(m_sinks)) {
            if (linked.state != Stopped && linked.isSlow == isSlow)
                result.append(linked.sink);
        }
    }
    return result;
}

// False if the sink doesn't take the stream. True doesn't mean that it is still linked, or that the
// run still goes on.
bool EncodedVideoSourceControl::startSink(QFLEncodedVideoSink *sink,
                                          const QVideoEncoderSettings &settings)
{
    const Run::Watch isHere = m_run.watchOwner();
    const bool isSupported = sink->isFormatSupported(settings);
    LinkedSink *linked = isHere() ? find(sink) : nullptr;
    if (!isSupported || !linked)
        return isSupported;
    linked->state = Starting;
    linked->awaitsKeyFrame = true;
    linked->isSlow = false;
    const bool isStarted = sink->start(settings);
    linked = isHere() ? find(sink) : nullptr;
    if (!linked || linked->state != Starting)
        return true;
    linked->state = isStarted ? Started : Stopped;
    return isStarted;
}

void EncodedVideoSourceControl::startSinks(const QVideoEncoderSettings &settings)
{
    m_run.begin();
    const Run::Watch isOn = m_run.watch();
    const Run::Watch isHere = m_run.watchOwner();
    const QVector<LinkedSink> sinks = m_sinks;
    for (const LinkedSink &linked : sinks) {
        // Those that joined when the status changed have been started.
        const LinkedSink *present = isOn() ? find(linked.sink) : nullptr;
        if (present && present->state == Stopped && !startSink(linked.sink, settings) && isHere())
            reportRefusal(settings);
    }
}

void EncodedVideoSourceControl::reportRefusal(const QVideoEncoderSettings &settings)
{
    m_encodeControl->reportError(QFLEncoder::ConsumerError,
                                 tr("A sink does not take %1 video of %2x%3 pixels")
                                         .arg(settings.codec())
                                         .arg(settings.resolution().width())
                                         .arg(settings.resolution().height()));
}

void EncodedVideoSourceControl::drainSinks()
{
    const Run::Watch isOn = m_run.watch();
    const QVector<QFLEncodedVideoSink *> sinks = receivers();
    for (QFLEncodedVideoSink *sink : sinks) {
        LinkedSink *linked = isOn() ? find(sink) : nullptr;
        if (!linked || linked->state != Started)
            continue;
        linked->state = Drained;
        linked->awaitsKeyFrame = true;
        sink->drain();
    }
}

void EncodedVideoSourceControl::stopSinks()
{
    m_run.begin();
    const Run::Watch isHere = m_run.watchOwner();
    const QVector<QFLEncodedVideoSink *> sinks = receivers();
    for (QFLEncodedVideoSink *sink : sinks) {
        LinkedSink *linked = isHere() ? find(sink) : nullptr;
        if (!linked || linked->state == Stopped)
            continue;
        linked->state = Stopped;
        sink->stop();
    }
}

void EncodedVideoSourceControl::deliver(const QFLEncodedVideoFrame &frame)
{
    const Run::Watch isOn = m_run.watch();
    const QVector<QFLEncodedVideoSink *> sinks = receivers();
    for (QFLEncodedVideoSink *sink : sinks) {
        if (isOn())
            deliverTo(sink, frame);
    }
}

void EncodedVideoSourceControl::deliverTo(QFLEncodedVideoSink *sink,
                                          const QFLEncodedVideoFrame &frame)
{
    const Run::Watch isHere = m_run.watchOwner();
    if (!prepare(sink, frame.meta().type == QFLEncodedVideoFrame::Type_Key))
        return;
    QElapsedTimer timer;
    timer.start();
    const bool isTaken = sink->encodedVideoFrame(frame);
    if (isHere())
        handleDelivery(sink, isTaken, timer.nsecsElapsed());
}

void EncodedVideoSourceControl::restartSink(QFLEncodedVideoSink *sink)
{
    const Run::Watch isHere = m_run.watchOwner();
    const QVideoEncoderSettings settings = m_encodeControl->streamSettings();
    const LinkedSink *linked = find(sink);
    if (linked && linked->state == Stopped && !startSink(sink, settings) && isHere())
        reportRefusal(settings);
}

// True if the frame is for the sink. To a drained sink, frames that follow are a stream of their
// own.
bool EncodedVideoSourceControl::prepare(QFLEncodedVideoSink *sink, bool isKeyFrame)
{
    const Run::Watch isOn = m_run.watch();
    LinkedSink *linked = find(sink);
    if (linked && linked->state == Drained && isKeyFrame) {
        linked->state = Stopped;
        sink->stop();
        if (isOn())
            restartSink(sink);
        linked = isOn() ? find(sink) : nullptr;
    }
    if (!linked || linked->state != Started || (linked->awaitsKeyFrame && !isKeyFrame))
        return false;
    linked->awaitsKeyFrame = false;
    return true;
}

void EncodedVideoSourceControl::handleDelivery(QFLEncodedVideoSink *sink, bool isTaken,
                                               qint64 nanoseconds)
{
    LinkedSink *linked = find(sink);
    if (!linked || linked->state != Started)
        return;
    const qreal frameRate = m_encodeControl->streamSettings().frameRate();
    linked->isSlow = nanoseconds * frameRate > 1e9;
    if (!isTaken) {
        linked->awaitsKeyFrame = true;
        m_encodeControl->requestKeyFrame();
    } else if (linked->isSlow && m_sinks.size() > 1 && m_encodeControl->undelivered() > 1) {
        linked->awaitsKeyFrame = true;
        qCInfo(lcFaceLinkSinks, "A slow sink misses frames until the next key frame");
    }
}
