// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// What a video file contains.

#include "videofileprobe.h"

#include "pipeline.h"

#include <QtCore/qdir.h>
#include <QtCore/qfileinfo.h>

namespace {

const gint64 longestWait = gint64(5) * G_USEC_PER_SEC;

GstClockTime timeUntil(gint64 deadline)
{
    return GstClockTime(qMax<gint64>(0, deadline - g_get_monotonic_time())) * GST_USECOND;
}

bool isVideo(const GstCaps *caps)
{
    const gchar *name = gst_structure_get_name(gst_caps_get_structure(caps, 0));
    if (g_str_has_prefix(name, "video/"))
        return true;
    // Motion JPEG has a frame rate, a photograph hasn't.
    int numerator = 0;
    int denominator = 1;
    return g_str_has_prefix(name, "image/")
            && gst_structure_get_fraction(gst_caps_get_structure(caps, 0), "framerate", &numerator,
                                          &denominator)
            && numerator > 0;
}

// Runs on a streaming thread; the first video stream gets the sink.
void connectVideo(GstElement *, GstPad *pad, gpointer sink)
{
    const GstCapsPointer caps(gst_pad_query_caps(pad, nullptr));
    if (gst_caps_is_empty(caps.get()) || gst_caps_is_any(caps.get()) || !isVideo(caps.get()))
        return;
    const GstPadPointer sinkPad(gst_element_get_static_pad(GST_ELEMENT(sink), "sink"));
    if (!gst_pad_is_linked(sinkPad.get()))
        gst_pad_link(pad, sinkPad.get());
}

bool hasVideo(GstMessage *message)
{
    GstStreamCollection *streams = nullptr;
    gst_message_parse_stream_collection(message, &streams);
    bool isFound = false;
    for (guint index = 0; index < gst_stream_collection_get_size(streams); ++index) {
        GstStream *stream = gst_stream_collection_get_stream(streams, index);
        isFound = isFound || gst_stream_get_stream_type(stream) & GST_STREAM_TYPE_VIDEO;
    }
    gst_object_unref(streams);
    return isFound;
}

// A stream that nobody takes ends in an error; the parser has a pad for it by then.
bool hasStreams(GstElement *pipeline)
{
    const GstElementPointer parser(gst_bin_get_by_name(GST_BIN(pipeline), "parser"));
    GST_OBJECT_LOCK(parser.get());
    const bool hasPads = parser->numsrcpads > 0;
    GST_OBJECT_UNLOCK(parser.get());
    return hasPads;
}

bool canDecode(const GstCaps *caps)
{
    if (gst_structure_has_name(gst_caps_get_structure(caps, 0), "video/x-raw"))
        return true;
    GList *decoders = gst_element_factory_list_get_elements(GST_ELEMENT_FACTORY_TYPE_DECODER,
                                                            GST_RANK_MARGINAL);
    GList *fitting = gst_element_factory_list_filter(decoders, caps, GST_PAD_SINK, false);
    const bool isFound = fitting;
    gst_plugin_feature_list_free(fitting);
    gst_plugin_feature_list_free(decoders);
    return isFound;
}

QString errorText(GstMessage *message)
{
    GError *error = nullptr;
    gst_message_parse_error(message, &error, nullptr);
    QString text = QString::fromUtf8(error->message);
    g_clear_error(&error);
    return text;
}

} // namespace

/*!
    \class VideoFileProbe

    Reads what a file says of its first video stream, and whether it can be decoded. Nothing is
    decoded for that: it takes a tenth of the time that GstDiscoverer does.
*/

/*!
    Reads the start of the file \a path, without decoding, and blocks meanwhile: some 20
    milliseconds, five seconds at most. The failure's text names the file.
*/
CameraFailure VideoFileProbe::run(const QString &path)
{
    const QString name = QDir::toNativeSeparators(path);
    const QFileInfo file(path);
    if (!file.exists())
        return {QCamera::CameraError, tr("%1: the file does not exist").arg(name)};
    if (!file.isFile() || !file.isReadable())
        return {QCamera::CameraError, tr("%1: the file cannot be read").arg(name)};

    QString reason;
    const GstElementPointer pipeline = createPipeline(path, &reason);
    if (!pipeline)
        return {QCamera::ServiceMissingError, reason};
    reason = waitForPicture(pipeline.get());
    if (reason.isEmpty())
        reason = readStream(pipeline.get());
    gst_element_set_state(pipeline.get(), GST_STATE_NULL);
    if (reason.isEmpty())
        return {};
    return {QCamera::CameraError, QStringLiteral("%1: %2").arg(name, reason)};
}

/*! In square pixels, before the pictures are turned; empty when the file doesn't say. */
QSize VideoFileProbe::size() const
{
    return m_size;
}

/*! In frames per second, 0 when the file doesn't say. */
qreal VideoFileProbe::frameRate() const
{
    return m_frameRate;
}

/*! What has to be done to the pictures so that they stand upright. */
GstVideoOrientationMethod VideoFileProbe::rotation() const
{
    return m_rotation;
}

/*! Whether width and height change places when the pictures are put upright. */
bool VideoFileProbe::isTurnedSideways() const
{
    switch (m_rotation) {
    case GST_VIDEO_ORIENTATION_90R:
    case GST_VIDEO_ORIENTATION_90L:
    case GST_VIDEO_ORIENTATION_UL_LR:
    case GST_VIDEO_ORIENTATION_UR_LL:
        return true;
    default:
        return false;
    }
}

GstElementPointer VideoFileProbe::createPipeline(const QString &path, QString *errorText) const
{
    GstElementPointer pipeline = Pipeline::parse(
            "filesrc name=file ! parsebin name=parser fakesink name=sink", errorText);
    if (!pipeline)
        return nullptr;
    GstElement *element = pipeline.get();
    const GstElementPointer file(gst_bin_get_by_name(GST_BIN(element), "file"));
    const GstElementPointer parser(gst_bin_get_by_name(GST_BIN(element), "parser"));
    const GstElementPointer sink(gst_bin_get_by_name(GST_BIN(element), "sink"));
    g_object_set(file.get(), "location", QFile::encodeName(path).constData(), nullptr);
    g_signal_connect(parser.get(), "pad-added", G_CALLBACK(connectVideo), sink.get());
    return pipeline;
}

/*! Empty when a frame of video has come, else the reason why there is none. */
QString VideoFileProbe::waitForPicture(GstElement *pipeline) const
{
    gst_element_set_state(pipeline, GST_STATE_PAUSED);
    const GstBusPointer bus(gst_element_get_bus(pipeline));
    const auto types = GstMessageType(GST_MESSAGE_ERROR | GST_MESSAGE_ASYNC_DONE | GST_MESSAGE_EOS
                                      | GST_MESSAGE_STREAM_COLLECTION);
    const gint64 deadline = g_get_monotonic_time() + longestWait;
    QString reason;
    bool isDone = false;
    while (!isDone && reason.isEmpty()) {
        GstMessage *message = gst_bus_timed_pop_filtered(bus.get(), timeUntil(deadline), types);
        isDone = message && GST_MESSAGE_TYPE(message) == GST_MESSAGE_ASYNC_DONE;
        if (!message)
            reason = tr("the file took too long to read");
        else if (GST_MESSAGE_TYPE(message) == GST_MESSAGE_ERROR)
            reason = hasStreams(pipeline) ? tr("the file has no video stream")
                                          : tr("the file is no video (%1)").arg(errorText(message));
        else if (GST_MESSAGE_TYPE(message) == GST_MESSAGE_EOS)
            reason = tr("the file has no video stream");
        // The type of a stream collection shares bits with others, which the filter lets through.
        else if (GST_MESSAGE_TYPE(message) == GST_MESSAGE_STREAM_COLLECTION && !hasVideo(message))
            reason = tr("the file has no video stream");
        gst_clear_message(&message);
    }
    return reason;
}

/*! Empty when the stream can be decoded, else the reason why it can't. */
QString VideoFileProbe::readStream(GstElement *pipeline)
{
    const GstElementPointer sink(gst_bin_get_by_name(GST_BIN(pipeline), "sink"));
    const GstPadPointer pad(gst_element_get_static_pad(sink.get(), "sink"));
    const GstCapsPointer caps(gst_pad_get_current_caps(pad.get()));
    if (!caps)
        return tr("the file has no video stream");
    const GstStructure *stream = gst_caps_get_structure(caps.get(), 0);
    if (!canDecode(caps.get()))
        return tr("there is no decoder for %1")
                .arg(QString::fromLatin1(gst_structure_get_name(stream)));
    readFormat(stream);
    readRotation(pad.get());
    return QString();
}

void VideoFileProbe::readFormat(const GstStructure *stream)
{
    int width = 0;
    int height = 0;
    int numerator = 0;
    int denominator = 1;
    gst_structure_get_int(stream, "width", &width);
    gst_structure_get_int(stream, "height", &height);
    if (gst_structure_get_fraction(stream, "framerate", &numerator, &denominator))
        m_frameRate = qreal(numerator) / denominator;
    if (gst_structure_get_fraction(stream, "pixel-aspect-ratio", &numerator, &denominator))
        width = int(gst_util_uint64_scale_int(guint64(width), numerator, denominator));
    m_size = QSize(width, height);
}

/*! The tag belongs to the stream or to the whole file; each kind arrives in an event of its own. */
void VideoFileProbe::readRotation(GstPad *pad)
{
    for (guint index = 0;; ++index) {
        GstEvent *event = gst_pad_get_sticky_event(pad, GST_EVENT_TAG, index);
        if (!event)
            return;
        GstTagList *tags = nullptr;
        gst_event_parse_tag(event, &tags);
        GstVideoOrientationMethod rotation = GST_VIDEO_ORIENTATION_IDENTITY;
        if (gst_video_orientation_from_tag(tags, &rotation))
            m_rotation = rotation;
        gst_event_unref(event);
    }
}
