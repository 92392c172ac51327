// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The GStreamer pipeline that turns encoded frames into pictures.

#include "videodecoder.h"

#include "codec.h"
#include "videoformat.h"
#include "videoframe.h"

#include <gst/app/gstappsink.h>
#include <gst/app/gstappsrc.h>

#include <algorithm>
#include <iterator>

namespace {

// A picture that waited longer isn't worth showing any more when there is a newer one.
const std::chrono::milliseconds maximumDelay(100);

// How many frames a decoder may take without a word beyond those that it holds back for the order
// of the pictures: some frames have no picture, and some decoders are a little behind.
const int maximumSilence = 4;

// Hardware works on in the background, so that it may have taken many frames before the first of
// their pictures is there.
const std::chrono::milliseconds hardwarePatience(500);

// Decoders expect rising times and the application's may be anything, so frames are numbered and
// the buffers get times that no decoder finds unusual.
const GstClockTime frameInterval = GST_SECOND / 50;

/*! What the number is attached as: decoders change times, but leave this with its picture. */
GstCaps *sequenceReference()
{
    static const GstCapsPointer reference(gst_caps_new_empty_simple("timestamp/x-frame-sequence"));
    return reference.get();
}

quint64 sequenceOf(GstBuffer *buffer)
{
    const auto *meta = gst_buffer_get_reference_timestamp_meta(buffer, sequenceReference());
    return meta ? meta->timestamp : GST_BUFFER_PTS(buffer) / frameInterval;
}

QByteArray description(const Codec &codec, const QByteArray &decoder)
{
    const QByteArray parser = codec.parser ? QByteArray(codec.parser) + " ! " : QByteArray();
    // The source's queue is bounded by its user, in frames. The converter passes pictures on
    // untouched for as long as the surface takes them as they are.
    return "appsrc name=source format=time is-live=true max-bytes=0 emit-signals=false ! " + parser
            + decoder
            + " name=decoder ! videoconvert ! appsink name=sink sync=false async=false qos=false "
              "enable-last-sample=false";
}

void setIfKnown(GstElement *element, const char *property, int value)
{
    if (g_object_class_find_property(G_OBJECT_GET_CLASS(element), property))
        g_object_set(element, property, value, nullptr);
}

void configureDecoder(GstElement *decoder)
{
    const int sliceThreading = 2;
    // The libav decoders hold back one frame for each thread that decodes whole frames.
    setIfKnown(decoder, "max-threads", 1);
    setIfKnown(decoder, "thread-type", sliceThreading);
    // A broken frame is reported at once, so that decoding can begin again at a key frame.
    setIfKnown(decoder, "max-errors", 0);
    setIfKnown(decoder, "automatic-request-sync-points", TRUE);
}

// Only exact ones: a picture is labelled by its format in GStreamer.
QList<QVideoFrame::PixelFormat> exactFormats(const QList<QVideoFrame::PixelFormat> &formats)
{
    QList<QVideoFrame::PixelFormat> exact;
    std::copy_if(formats.begin(), formats.end(), std::back_inserter(exact), VideoFormat::isExact);
    return exact;
}

GstCapsPointer capsOf(const QList<QVideoFrame::PixelFormat> &formats)
{
    QByteArrayList names;
    for (const QVideoFrame::PixelFormat format : formats)
        names.append(gst_video_format_to_string(VideoFormat::toGst(format)));
    const QByteArray caps = "video/x-raw, format=(string){ " + names.join(", ") + " }";
    return GstCapsPointer(gst_caps_from_string(caps.constData()));
}

// Decoders copy every picture for a sink that doesn't say it can handle their strides.
GstPadProbeReturn offerVideoMeta(GstPad *, GstPadProbeInfo *info, gpointer)
{
    GstQuery *query = GST_PAD_PROBE_INFO_QUERY(info);
    if (GST_QUERY_TYPE(query) != GST_QUERY_ALLOCATION)
        return GST_PAD_PROBE_OK;
    gst_query_add_allocation_meta(query, GST_VIDEO_META_API_TYPE, nullptr);
    return GST_PAD_PROBE_HANDLED;
}

void dropBytes(gpointer bytes)
{
    delete static_cast<QByteArray *>(bytes);
}

GstBuffer *wrap(const QByteArray &data)
{
    auto *bytes = new QByteArray(data);
    const gsize size = gsize(bytes->size());
    return gst_buffer_new_wrapped_full(GST_MEMORY_FLAG_READONLY,
                                       const_cast<char *>(bytes->constData()), size, 0, size, bytes,
                                       dropBytes);
}

} // namespace

/*!
    \class VideoDecoder

    appsrc, parser, decoder, converter and appsink. Encoded frames go in at the source; pictures
    come out of the sink on a streaming thread, wait in a queue, and are announced in the thread
    of this object, in order. Every picture has the timestamp that its frame came with. When that
    thread is busy for too long, the pictures are skipped for which it is too late, but never the
    newest one, and none once the stream ends.

    Elements of any kind of working fit in: those that decode a frame while it is handed to them,
    and those that take frames ahead and give the pictures from a thread of their own.
*/

VideoDecoder::VideoDecoder(QObject *parent)
    : QObject(parent),
      m_pixelFormats(exactFormats(VideoFormat::pixelFormats())),
      m_pictures(this,
                 [this](const Picture &picture) {
                     Q_EMIT pictureDecoded(picture.frame, picture.format);
                 }),
      m_pipeline(this)
{
    connect(&m_pipeline, &Pipeline::errorReported, this, &VideoDecoder::errorReported);
    connect(&m_pipeline, &Pipeline::endOfStreamReached, this, &VideoDecoder::finish);
}

VideoDecoder::~VideoDecoder()
{
    reset();
}

/*! Has the pipelines to be built decode a new stream with \a decoder. */
void VideoDecoder::setDecoder(const CodecElement &decoder)
{
    reset();
    m_element = decoder;
    m_codec = Codec::find(decoder.codec);
    m_heldBack.reset();
}

/*!
    Puts a fresh pipeline in the place of the present one. Before this returns false, errorReported()
    has been emitted.
*/
bool VideoDecoder::build()
{
    reset();
    if (!m_pipeline.build(description(*m_codec, m_element.factoryName)))
        return false;
    m_source = m_pipeline.element("source");
    m_sink = m_pipeline.element("sink");
    configureDecoder(m_pipeline.element("decoder").get());
    m_pipeline.onUpstreamEvent("decoder", [this](GstEvent *event) { handleDecoderEvent(event); });
    const GstCapsPointer caps(gst_caps_from_string(m_codec->streamCaps));
    gst_app_src_set_caps(GST_APP_SRC(m_source.get()), caps.get());
    configureSink();
    return true;
}

/*! Starts decoding. Before this returns false, errorReported() has been emitted. */
bool VideoDecoder::play()
{
    return m_pipeline.setState(GST_STATE_PLAYING);
}

/*! Drops everything that is queued. Nothing is announced from then on until the next play(). */
void VideoDecoder::reset()
{
    m_pipeline.takeDown(GST_STATE_NULL);
    m_source.reset();
    m_sink.reset();
    m_pictures.clear();
    m_lastGroup.clear();
    m_groupSequence = 0;
    m_pictures.setLongestWait(maximumDelay);
    m_hasLostFrame = false;
    m_nextSequence = 0;
    m_answeredSequence = 0;
}

/*!
    Has pictures converted to one of \a formats unless the decoder's own is among them. When there is
    no way to make any of them, the pictures come in whatever format they have.
*/
void VideoDecoder::setPixelFormats(const QList<QVideoFrame::PixelFormat> &formats)
{
    const QList<QVideoFrame::PixelFormat> exact = exactFormats(formats);
    m_pixelFormats = exact.isEmpty() ? exactFormats(VideoFormat::pixelFormats()) : exact;
    if (!m_sink)
        return;
    gst_app_sink_set_caps(GST_APP_SINK(m_sink.get()), capsOf(m_pixelFormats).get());
    const GstPadPointer pad(gst_element_get_static_pad(m_sink.get(), "sink"));
    gst_pad_push_event(pad.get(), gst_event_new_reconfigure());
}

/*! Whether no frame has come since the pipeline was built. */
bool VideoDecoder::isUnused() const
{
    return m_nextSequence == 0;
}

/*!
    Queues a frame. \a isKey tells that decoding could begin again here if what came before turned
    out to be damaged.
*/
bool VideoDecoder::push(const Frame &frame, bool isKey)
{
    announceSize(frame.data);
    GstBuffer *buffer = wrap(frame.data);
    {
        const QMutexLocker locker(&m_mutex);
        keep(frame, isKey);
        GST_BUFFER_PTS(buffer) = m_nextSequence * frameInterval;
        gst_buffer_add_reference_timestamp_meta(buffer, sequenceReference(), m_nextSequence,
                                                GST_CLOCK_TIME_NONE);
        m_arrivals[m_nextSequence % m_arrivals.size()]
                = {frame.timestamp, std::chrono::steady_clock::now()};
        ++m_nextSequence;
    }
    return gst_app_src_push_buffer(GST_APP_SRC(m_source.get()), buffer) == GST_FLOW_OK;
}

/*! The frames from the last key frame on if there is no picture of any of them; none otherwise. */
QVector<VideoDecoder::Frame> VideoDecoder::unansweredGroup() const
{
    const QMutexLocker locker(&m_mutex);
    return m_answeredSequence <= m_groupSequence ? m_lastGroup : QVector<Frame>();
}

/*! Has everything decoded that is queued; endOfStreamReached() comes after the last picture. */
void VideoDecoder::endStream()
{
    m_pictures.setLongestWait(std::chrono::milliseconds::zero());
    gst_app_src_end_of_stream(GST_APP_SRC(m_source.get()));
}

/*! The number of frames without a picture, and of pictures that wait to be announced. */
int VideoDecoder::backlog() const
{
    const QMutexLocker locker(&m_mutex);
    return int(m_nextSequence - m_answeredSequence) + m_pictures.size();
}

/*!
    Whether the decoder has taken in more frames without giving a picture than it holds back. Some
    decoders wait for a key frame without a word when a frame was lost.
*/
bool VideoDecoder::isSilent() const
{
    const QMutexLocker locker(&m_mutex);
    const int tolerance = m_heldBack.value_or(m_codec->maximumReordering) + maximumSilence;
    if (takenCount() - int(m_answeredSequence) <= tolerance)
        return false;
    const Arrival &oneTooMany
            = m_arrivals[(m_answeredSequence + quint64(tolerance)) % m_arrivals.size()];
    return !m_element.isHardwareAccelerated
            || oneTooMany.time < std::chrono::steady_clock::now() - hardwarePatience;
}

void VideoDecoder::configureSink()
{
    gst_app_sink_set_caps(GST_APP_SINK(m_sink.get()), capsOf(m_pixelFormats).get());
    m_pipeline.onSample("sink", [this](GstSample *sample) {
        enqueue(sample);
        return true;
    });
    const GstPadPointer pad(gst_element_get_static_pad(m_sink.get(), "sink"));
    gst_pad_add_probe(pad.get(), GST_PAD_PROBE_TYPE_QUERY_DOWNSTREAM, offerVideoMeta, nullptr,
                      nullptr);
}

/*! Hardware decoders aren't content with a stream of unknown size. */
void VideoDecoder::announceSize(const QByteArray &data)
{
    const QSize size = m_codec->keyFrameSize ? m_codec->keyFrameSize(data) : QSize();
    if (size.isEmpty())
        return;
    const GstCapsPointer caps(gst_caps_from_string(m_codec->streamCaps));
    gst_caps_set_simple(caps.get(), "width", G_TYPE_INT, size.width(), "height", G_TYPE_INT,
                        size.height(), nullptr);
    gst_app_src_set_caps(GST_APP_SRC(m_source.get()), caps.get());
}

int VideoDecoder::queuedFrameCount() const
{
    return m_source ? int(gst_app_src_get_current_level_buffers(GST_APP_SRC(m_source.get()))) : 0;
}

int VideoDecoder::takenCount() const
{
    return int(m_nextSequence) - queuedFrameCount();
}

/*! Remembers what decoding would have to begin again with. */
void VideoDecoder::keep(const Frame &frame, bool isKey)
{
    if (isKey || m_answeredSequence > m_groupSequence)
        m_lastGroup.clear();
    // When the very first frame fails, the fault is its own.
    const bool isBeginning = isKey && m_nextSequence > 0;
    if (isBeginning)
        m_groupSequence = m_nextSequence;
    if (isBeginning || !m_lastGroup.isEmpty())
        m_lastGroup.append(frame);
}

/*!
    Runs on the streaming thread. A decoder that asks the sender for a key frame has lost a frame,
    and what it makes of the others isn't fit to be seen.
*/
void VideoDecoder::handleDecoderEvent(GstEvent *event)
{
    if (!gst_video_event_is_force_key_unit(event))
        return;
    {
        const QMutexLocker locker(&m_mutex);
        m_hasLostFrame = true;
    }
    const GstElementPointer decoder = m_pipeline.element("decoder");
    GST_ELEMENT_ERROR(decoder.get(), STREAM, DECODE, ("A frame is lost"), (nullptr));
}

/*! Runs on the streaming thread. */
void VideoDecoder::enqueue(GstSample *sample)
{
    GstVideoInfo info;
    GstBuffer *buffer = gst_sample_get_buffer(sample);
    if (!buffer || !gst_video_info_from_caps(&info, gst_sample_get_caps(sample)))
        return;
    const QMutexLocker locker(&m_mutex);
    if (m_hasLostFrame)
        return;
    const quint64 sequence = sequenceOf(buffer);
    const quint64 timestamp = m_arrivals[sequence % m_arrivals.size()].timestamp;
    // Most streams aren't reordered as much as they might be.
    const int heldBack = takenCount() - int(sequence) - 1;
    m_heldBack = qMax(m_heldBack.value_or(0), heldBack);
    m_answeredSequence = qMax(m_answeredSequence, sequence + 1);
    m_pictures.append(
            {VideoFrame::fromGst(buffer, info, qint64(timestamp)), VideoFormat::fromGst(info)});
}

void VideoDecoder::finish()
{
    if (m_pictures.deliver())
        Q_EMIT endOfStreamReached();
}
