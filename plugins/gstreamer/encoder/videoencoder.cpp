// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The GStreamer pipeline that encodes raw frames.

#include "videoencoder.h"

#include "codec.h"
#include "videoformat.h"

#include <gst/app/gstappsrc.h>

namespace {

constexpr qint64 millisecondsBetweenKeyFrameRequests = 500;

// Those of earlier runs that may still be on their way down when a run begins. Otherwise an
// application that starts and stops a slow encoder all the time makes them pile up.
constexpr std::size_t mostLetGo = 1;

// Encoded frames that may wait while the thread of this object is busy: about a quarter of a second.
constexpr int largestBacklog = 8;

// Those that were on their way when the request was made come first.
constexpr int framesUntilRestart = 5;

// Only what every receiver can decode: an encoder that is given 4:2:2 or 4:4:4 makes a stream of a
// profile that few have.
bool isAccepted(const EncoderConfiguration &configuration)
{
    GstVideoInfo info = configuration.inputInfo();
    switch (GST_VIDEO_INFO_FORMAT(&info)) {
    case GST_VIDEO_FORMAT_I420:
    case GST_VIDEO_FORMAT_YV12:
    case GST_VIDEO_FORMAT_NV12:
    case GST_VIDEO_FORMAT_NV21:
        break;
    default:
        return false;
    }
    const GstElementFactoryPointer factory(
            gst_element_factory_find(configuration.element().factoryName.constData()));
    const GstCapsPointer caps(gst_video_info_to_caps(&info));
    return factory && gst_element_factory_can_sink_any_caps(factory.get(), caps.get());
}

QByteArray conversion(const EncoderConfiguration &configuration)
{
    const GstVideoInfo &info = configuration.inputInfo();
    const QSize size = configuration.outputSize();
    QByteArray caps = "video/x-raw,format={I420,NV12,YV12}";
    if (size != QSize(info.width, info.height)) {
        caps += ",width=" + QByteArray::number(size.width())
                + ",height=" + QByteArray::number(size.height()) + ",pixel-aspect-ratio=1/1";
    } else if (isAccepted(configuration)) {
        return QByteArray();
    }
    return "videoconvertscale ! " + caps + " ! ";
}

// An encoder whose output has several forms is made to choose the one that travels.
QByteArray tail(const Codec &codec)
{
    return codec.encoderTail ? QByteArray(codec.encoderTail) + codec.streamCaps + " ! "
                             : QByteArray();
}

QByteArray description(const EncoderConfiguration &configuration)
{
    return "appsrc name=source is-live=true format=time max-buffers=0 max-bytes=0 ! "
            + conversion(configuration) + configuration.element().factoryName + " name=encoder ! "
            + tail(*Codec::find(configuration.element().codec))
            + "appsink name=sink sync=false async=false enable-last-sample=false";
}

QFLEncodedVideoFrame encodedFrame(GstBuffer *buffer, quint64 timestamp)
{
    const bool isKeyFrame = !GST_BUFFER_FLAG_IS_SET(buffer, GST_BUFFER_FLAG_DELTA_UNIT);
    QFLEncodedVideoFrame::MetaData meta;
    meta.type = isKeyFrame ? QFLEncodedVideoFrame::Type_Key : QFLEncodedVideoFrame::Type_Intra;
    meta.timestamp = timestamp;
    QByteArray data(int(gst_buffer_get_size(buffer)), Qt::Uninitialized);
    gst_buffer_extract(buffer, 0, data.data(), gsize(data.size()));
    return QFLEncodedVideoFrame(data, meta);
}

GstCapsPointer inputCaps(const EncoderConfiguration &configuration)
{
    GstVideoInfo info = configuration.inputInfo();
    gst_video_guess_framerate(GstClockTime(GST_SECOND / configuration.frameRate()), &info.fps_n,
                              &info.fps_d);
    return GstCapsPointer(gst_video_info_to_caps(&info));
}

} // namespace

/*!
    \class VideoEncoder

    Runs in the thread it lives in, where it also emits its signals; only encode() may be called
    from other threads. Frames are emitted in the order in which they left the encoder.
*/

VideoEncoder::VideoEncoder(QObject *parent)
    : QObject(parent),
      m_input(&m_tally, this),
      m_frames(this, [this](const EncodedFrame &encoded) { deliver(encoded); }),
      m_pipeline(this)
{
    connect(&m_pipeline, &Pipeline::errorReported, this, &VideoEncoder::errorReported);
    connect(&m_pipeline, &Pipeline::endOfStreamReached, this, &VideoEncoder::finishDrain);
    connect(&m_input, &RawFrameQueue::pendingFell, this, &VideoEncoder::pendingFell,
            Qt::QueuedConnection);
}

VideoEncoder::~VideoEncoder()
{
    stop();
    m_pipeline.awaitThoseLetGo(0);
}

/*!
    On failure errorReported() has been emitted by the time this returns false. Takes the time of a
    picture when the run before the last one isn't down yet.
*/
bool VideoEncoder::start(const EncoderConfiguration &configuration)
{
    stop();
    m_pipeline.awaitThoseLetGo(mostLetGo);
    if (!m_pipeline.build(description(configuration)))
        return false;
    setUp(configuration);
    if (play())
        return true;
    stop();
    return false;
}

/*!
    No frame is emitted any more once this has been called, not even one that is already encoded.
    Returns at once even in the middle of a picture, for which only the destructor waits.
*/
void VideoEncoder::stop()
{
    m_run.begin();
    // First, so that no frame comes out that the input has counted as dropped.
    m_pipeline.closeGates();
    m_input.close();
    m_pipeline.takeDown(GST_STATE_NULL, std::exchange(m_element, nullptr));
    dropFrames();
    m_keyFrameWanted = false;
    m_keyFrameRequested = false;
    m_dropsUntilKeyFrame = false;
    m_flushedUntil = GST_CLOCK_TIME_NONE;
    m_lastKeyFrameRequest.invalidate();
}

/*! See RawFrameQueue::append(). False also while too many encoded frames wait to be emitted. */
bool VideoEncoder::encode(const QVideoFrame &frame, QString *errorText)
{
    const bool isAccepted = undelivered() < largestBacklog && m_input.append(frame, errorText);
    if (!isAccepted)
        ++m_tally.refused;
    return isAccepted;
}

/*! Refuses frames until all that were accepted have been emitted; then drained() is emitted. */
void VideoEncoder::drain()
{
    m_input.finish();
}

/*! Drops everything on its way, encoded or not. The next frame that is emitted is a key frame. */
void VideoEncoder::flush()
{
    if (!m_element)
        return;
    m_flushedUntil = m_input.clear();
    dropFrames();
    m_dropsUntilKeyFrame = true;
    sendKeyFrameRequest(m_flushedUntil);
}

/*!
    Asks for a key frame soon. Requests that come before it are one, and the encoder gets at most
    two a second, so that receivers in trouble can't turn the stream into key frames.
*/
void VideoEncoder::requestKeyFrame()
{
    if (!m_element)
        return;
    m_keyFrameWanted = true;
    const bool isTooSoon = m_lastKeyFrameRequest.isValid()
            && !m_lastKeyFrameRequest.hasExpired(millisecondsBetweenKeyFrameRequests);
    if (!m_keyFrameRequested && !isTooSoon)
        sendKeyFrameRequest();
}

/*! In bits per second, from now on. */
void VideoEncoder::setBitRate(int bitRate)
{
    if (m_element)
        m_element->setBitRate(bitRate);
}

/*! How many raw frames are held; any thread may ask. */
int VideoEncoder::pending()
{
    return m_input.pending();
}

/*! How many encoded frames wait to be emitted; any thread may ask. */
int VideoEncoder::undelivered() const
{
    return m_frames.size();
}

/*! What became of all frames so far; any thread may ask. */
const FrameTally &VideoEncoder::tally() const
{
    return m_tally;
}

void VideoEncoder::setUp(const EncoderConfiguration &configuration)
{
    m_element = std::make_shared<EncoderElement>(m_pipeline.element("encoder"), configuration);

    GstElementPointer source = m_pipeline.element("source");
    gst_app_src_set_caps(GST_APP_SRC(source.get()), inputCaps(configuration).get());
    m_input.open(std::move(source), configuration);
    m_pipeline.onNeedData("source", [this] { m_input.feed(); });
    m_pipeline.onSample("sink", [this](GstSample *sample) {
        takeSample(sample);
        return true;
    });
}

bool VideoEncoder::play()
{
    return m_pipeline.setState(GST_STATE_READY) && m_pipeline.setState(GST_STATE_PLAYING);
}

/*! Runs on the streaming thread. */
void VideoEncoder::takeSample(GstSample *sample)
{
    GstBuffer *buffer = gst_sample_get_buffer(sample);
    // Encoders may shift times and say so in the segment.
    const GstClockTime runningTime = gst_segment_to_running_time(
            gst_sample_get_segment(sample), GST_FORMAT_TIME, GST_BUFFER_PTS(buffer));
    m_frames.append({encodedFrame(buffer, m_input.takeTimestamp(runningTime)), runningTime});
}

void VideoEncoder::dropFrames()
{
    m_tally.dropped += quint64(m_frames.clear());
}

void VideoEncoder::deliver(const EncodedFrame &encoded)
{
    const bool isKeyFrame = encoded.frame.meta().type == QFLEncodedVideoFrame::Type_Key;
    if (isKeyFrame && !isFlushed(encoded)) {
        m_keyFrameWanted = false;
        m_keyFrameRequested = false;
        m_dropsUntilKeyFrame = false;
    } else if (m_keyFrameWanted) {
        handleMissingKeyFrame();
    }
    if (m_dropsUntilKeyFrame) {
        ++m_tally.dropped;
        return;
    }
    ++m_tally.encoded;
    Q_EMIT encodedVideoFrame(encoded.frame);
}

// Whether the frame was in the encoder, out of reach, when the others were dropped.
bool VideoEncoder::isFlushed(const EncodedFrame &encoded) const
{
    return m_flushedUntil != GST_CLOCK_TIME_NONE && encoded.time <= m_flushedUntil;
}

void VideoEncoder::handleMissingKeyFrame()
{
    if (!m_keyFrameRequested) {
        requestKeyFrame();
    } else if (++m_framesSinceRequest >= framesUntilRestart) {
        m_framesSinceRequest = 0;
        m_element->restart();
    }
}

void VideoEncoder::sendKeyFrameRequest(GstClockTime after)
{
    m_keyFrameWanted = true;
    m_keyFrameRequested = true;
    m_framesSinceRequest = -m_input.unanswered();
    m_lastKeyFrameRequest.start();
    m_element->requestKeyFrame(after);
}

// A source that has sent the end of the stream comes back to life only by way of READY.
void VideoEncoder::finishDrain()
{
    const Run::Watch isOn = m_run.watch();
    m_frames.deliver();
    if (!isOn() || !m_pipeline.setState(GST_STATE_READY))
        return;
    m_input.reopen();
    if (m_pipeline.setState(GST_STATE_PLAYING))
        Q_EMIT drained();
}
