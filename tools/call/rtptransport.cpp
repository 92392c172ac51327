// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// One end of an RTP session: sends encoded frames to a peer and receives the peer's.

#include "rtptransport.h"

#include <gst/app/gstappsrc.h>
#include <gst/rtp/gstrtpbuffer.h>
#include <gst/video/video.h>

namespace {

const guint64 rtpClockRate = 90000;

// The time stamp of a packet counts on from where the sender's clock was; the receiver, having the
// same clock, finds the packet's time as the one nearest to now.
GstPadProbeReturn restoreSenderTime(GstPad *, GstPadProbeInfo *info, gpointer)
{
    GstBuffer *buffer = gst_buffer_make_writable(GST_PAD_PROBE_INFO_BUFFER(info));
    GST_PAD_PROBE_INFO_DATA(info) = buffer;
    GstRTPBuffer packet = GST_RTP_BUFFER_INIT;
    if (!gst_rtp_buffer_map(buffer, GST_MAP_READ, &packet))
        return GST_PAD_PROBE_OK;
    const guint32 timestamp = gst_rtp_buffer_get_timestamp(&packet);
    gst_rtp_buffer_unmap(&packet);

    const quint64 now
            = gst_util_uint64_scale(quint64(g_get_monotonic_time()), rtpClockRate, G_USEC_PER_SEC);
    const quint64 ticks = now + qint32(timestamp - guint32(now));
    GST_BUFFER_PTS(buffer) = gst_util_uint64_scale(ticks, GST_SECOND, rtpClockRate);
    return GST_PAD_PROBE_OK;
}

GstBuffer *wrappedData(const QFLEncodedVideoFrame &frame)
{
    auto *data = new QByteArray(frame.data());
    const auto release = [](gpointer bytes) { delete static_cast<QByteArray *>(bytes); };
    const gsize size = gsize(data->size());
    return gst_buffer_new_wrapped_full(GST_MEMORY_FLAG_READONLY, data->data(), size, 0, size, data,
                                       release);
}

void addPacketsLost(const GValue *jitterBuffer, gpointer sum)
{
    g_autoptr(GstStructure) statistics = nullptr;
    g_object_get(g_value_get_object(jitterBuffer), "stats", &statistics, nullptr);
    guint64 lost = 0;
    gst_structure_get_uint64(statistics, "num-lost", &lost);
    *static_cast<quint64 *>(sum) += lost;
}

void setElementSocket(GstElement *pipeline, const char *elementName, GSocket *socket)
{
    g_autoptr(GstElement) element = gst_bin_get_by_name(GST_BIN(pipeline), elementName);
    g_object_set(element, "socket", socket, "close-socket", FALSE, nullptr);
}

void setElementPeer(GstElement *pipeline, const char *elementName, const RtpEndpoint &peer,
                    int portOffset)
{
    g_autoptr(GstElement) element = gst_bin_get_by_name(GST_BIN(pipeline), elementName);
    g_object_set(element, "host", peer.host.toLatin1().constData(), "port",
                 int(peer.port) + portOffset, nullptr);
}

void linkToDrain(GstElement *pipeline, GstPad *pad)
{
    GstElement *drain = gst_element_factory_make("fakesink", nullptr);
    g_object_set(drain, "sync", FALSE, "async", FALSE, nullptr);
    gst_bin_add(GST_BIN(pipeline), drain);
    g_autoptr(GstPad) target = gst_element_get_static_pad(drain, "sink");
    gst_pad_link(pad, target);
    gst_element_sync_state_with_parent(drain);
}

void addPadProbe(GstElement *element, GstPadProbeType type, GstPadProbeCallback callback,
                 gpointer data)
{
    g_autoptr(GstPad) pad = gst_element_get_static_pad(element, "sink");
    gst_pad_add_probe(pad, type, callback, data, nullptr);
}

} // namespace

/*!
    \class RtpTransport

    One rtpbin with one session over one pair of sockets, which serve both directions. The object
    belongs to the thread that made it, and signals are emitted there.

    A frame's time stamp is in microseconds of the monotonic clock, on both ends: the pipeline runs
    on that clock from its zero, so that RTP and RTCP carry it to the peer. What is received from a
    peer with a clock of its own is stamped with the time of arrival.

    A frame is handed on as soon as it is complete. The jitter buffer holds packets back only while
    one before them is missing, and for its latency at the most.
*/

/*!
    \fn void RtpTransport::frameReceived(const QFLEncodedVideoFrame &frame)

    Emitted for each complete frame from the peer.
*/

/*!
    \fn void RtpTransport::keyFrameRequested()

    Emitted when the peer needs a key frame to go on.
*/

/*!
    \fn void RtpTransport::failed(const QString &text)

    Emitted when an element fails; \a text names it. The session does not recover.
*/

RtpTransport::RtpTransport(QObject *parent) : QObject(parent) { }

/*! Ends the session. */
RtpTransport::~RtpTransport()
{
    if (m_pipeline)
        gst_element_set_state(m_pipeline, GST_STATE_NULL);
    gst_clear_object(&m_source);
    gst_clear_object(&m_depayloader);
    gst_clear_object(&m_pipeline);
}

/*!
    Starts the session with \a peer, whose address has to be resolved. \a peerClock says whether the
    sender's time stamps are readings of this machine's clock. On failure returns false, and
    \a errorText says why. The sockets are shared and stay open until the last owner is gone.
*/
bool RtpTransport::open(const RtpPayload &payload, const RtpSocketPair &sockets,
                        const RtpEndpoint &peer, PeerClock peerClock, QString *errorText)
{
    if (!gst_init_check(nullptr, nullptr, nullptr)) {
        *errorText = tr("GStreamer does not start");
        return false;
    }
    if (!build(payload, errorText))
        return false;
    setSockets(sockets, peer);
    connectCallbacks(peerClock);
    useMonotonicClock();
    if (gst_element_set_state(m_pipeline, GST_STATE_PLAYING) != GST_STATE_CHANGE_FAILURE)
        return true;
    *errorText = tr("the RTP pipeline does not start");
    return false;
}

/*! Sends a frame to the peer without waiting. Returns false if the session takes no frames. */
bool RtpTransport::send(const QFLEncodedVideoFrame &frame)
{
    if (!m_source)
        return false;
    GstBuffer *buffer = wrappedData(frame);
    GST_BUFFER_PTS(buffer) = frame.meta().timestamp * GST_USECOND;
    if (frame.meta().type != QFLEncodedVideoFrame::Type_Key)
        GST_BUFFER_FLAG_SET(buffer, GST_BUFFER_FLAG_DELTA_UNIT);
    return gst_app_src_push_buffer(GST_APP_SRC(m_source), buffer) == GST_FLOW_OK;
}

/*! Asks the peer for a key frame, by RTCP. */
void RtpTransport::requestKeyFrame()
{
    if (!m_depayloader)
        return;
    g_autoptr(GstPad) pad = gst_element_get_static_pad(m_depayloader, "sink");
    gst_pad_push_event(pad,
                       gst_video_event_new_upstream_force_key_unit(GST_CLOCK_TIME_NONE, TRUE, 0));
}

/*! How many of the peer's packets never came, or came too late. */
quint64 RtpTransport::packetsLost() const
{
    if (!m_pipeline)
        return 0;
    GstIterator *jitterBuffers
            = gst_bin_iterate_all_by_element_factory_name(GST_BIN(m_pipeline), "rtpjitterbuffer");
    quint64 lost = 0;
    gst_iterator_foreach(jitterBuffers, addPacketsLost, &lost);
    gst_iterator_free(jitterBuffers);
    return lost;
}

bool RtpTransport::build(const RtpPayload &payload, QString *errorText)
{
    const QByteArray description = "rtpbin name=session rtp-profile=avpf latency=60"
                                   " appsrc name=source is-live=true format=time caps="
            + payload.frameCaps + " ! " + payload.payloader
            + " name=payloader mtu=1200 pt=96 timestamp-offset=0" + " ! session.send_rtp_sink_0"
            + " session.send_rtp_src_0 ! udpsink name=rtpsink sync=false async=false"
            + " session.send_rtcp_src_0 ! udpsink name=rtcpsink sync=false async=false"
            + " udpsrc name=rtpsource caps=\"" + payload.packetCaps()
            + "\" ! session.recv_rtp_sink_0" + " udpsrc name=rtcpsource ! session.recv_rtcp_sink_0 "
            + payload.depayloader + " name=depayloader ! " + payload.frameCaps
            + " ! appsink name=sink sync=false async=false enable-last-sample=false";
    g_autoptr(GError) error = nullptr;
    m_pipeline = gst_parse_launch_full(description.constData(), nullptr,
                                       GST_PARSE_FLAG_FATAL_ERRORS, &error);
    if (!m_pipeline) {
        *errorText = QString::fromUtf8(error->message);
        return false;
    }
    m_source = gst_bin_get_by_name(GST_BIN(m_pipeline), "source");
    m_depayloader = gst_bin_get_by_name(GST_BIN(m_pipeline), "depayloader");
    return true;
}

void RtpTransport::setSockets(const RtpSocketPair &sockets, const RtpEndpoint &peer)
{
    setElementSocket(m_pipeline, "rtpsource", sockets.rtpSocket());
    setElementSocket(m_pipeline, "rtpsink", sockets.rtpSocket());
    setElementSocket(m_pipeline, "rtcpsource", sockets.rtcpSocket());
    setElementSocket(m_pipeline, "rtcpsink", sockets.rtcpSocket());
    setElementPeer(m_pipeline, "rtpsink", peer, 0);
    setElementPeer(m_pipeline, "rtcpsink", peer, 1);
}

void RtpTransport::connectCallbacks(PeerClock peerClock)
{
    g_autoptr(GstElement) session = gst_bin_get_by_name(GST_BIN(m_pipeline), "session");
    g_signal_connect(session, "pad-added", G_CALLBACK(padAdded), this);

    g_autoptr(GstElement) payloader = gst_bin_get_by_name(GST_BIN(m_pipeline), "payloader");
    addPadProbe(payloader, GST_PAD_PROBE_TYPE_EVENT_UPSTREAM, eventAtPayloader, this);
    if (peerClock == OwnClock)
        addPadProbe(m_depayloader, GST_PAD_PROBE_TYPE_BUFFER, restoreSenderTime, nullptr);

    g_autoptr(GstElement) sink = gst_bin_get_by_name(GST_BIN(m_pipeline), "sink");
    GstAppSinkCallbacks callbacks = {};
    callbacks.new_sample = sampleReceived;
    gst_app_sink_set_callbacks(GST_APP_SINK(sink), &callbacks, this, nullptr);

    g_autoptr(GstBus) bus = gst_element_get_bus(m_pipeline);
    gst_bus_set_sync_handler(bus, handleMessage, this, nullptr);
}

void RtpTransport::useMonotonicClock()
{
    g_autoptr(GstClock) clock = gst_system_clock_obtain();
    gst_pipeline_use_clock(GST_PIPELINE(m_pipeline), clock);
    gst_element_set_start_time(m_pipeline, GST_CLOCK_TIME_NONE);
    gst_element_set_base_time(m_pipeline, 0);
}

// Runs on a streaming thread. A peer that starts again comes with a new source identifier and so on
// a new pad, which takes the place of the one before. The depayloader then asks for a key frame.
// What still comes of the stream before has to end somewhere, or the session fails.
void RtpTransport::padAdded(GstElement *, GstPad *pad, gpointer self)
{
    auto *transport = static_cast<RtpTransport *>(self);
    g_autofree gchar *name = gst_pad_get_name(pad);
    if (!g_str_has_prefix(name, "recv_rtp_src_"))
        return;
    g_autoptr(GstPad) target = gst_element_get_static_pad(transport->m_depayloader, "sink");
    g_autoptr(GstPad) previous = gst_pad_get_peer(target);
    if (previous) {
        gst_pad_unlink(previous, target);
        linkToDrain(transport->m_pipeline, previous);
    }
    gst_pad_link(pad, target);
}

// Runs on a streaming thread.
GstFlowReturn RtpTransport::sampleReceived(GstAppSink *sink, gpointer self)
{
    auto *transport = static_cast<RtpTransport *>(self);
    g_autoptr(GstSample) sample = gst_app_sink_pull_sample(sink);
    GstBuffer *buffer = sample ? gst_sample_get_buffer(sample) : nullptr;
    GstMapInfo map;
    if (!buffer || !gst_buffer_map(buffer, &map, GST_MAP_READ))
        return GST_FLOW_OK;
    QFLEncodedVideoFrame::MetaData meta;
    meta.type = GST_BUFFER_FLAG_IS_SET(buffer, GST_BUFFER_FLAG_DELTA_UNIT)
            ? QFLEncodedVideoFrame::Type_Intra
            : QFLEncodedVideoFrame::Type_Key;
    meta.timestamp = GST_TIME_AS_USECONDS(GST_BUFFER_PTS(buffer));
    const QFLEncodedVideoFrame frame(reinterpret_cast<const char *>(map.data), map.size, meta);
    gst_buffer_unmap(buffer, &map);
    const auto deliver = [transport, frame] { Q_EMIT transport->frameReceived(frame); };
    QMetaObject::invokeMethod(transport, deliver, Qt::QueuedConnection);
    return GST_FLOW_OK;
}

// Runs on a streaming thread.
GstPadProbeReturn RtpTransport::eventAtPayloader(GstPad *, GstPadProbeInfo *info, gpointer self)
{
    if (gst_video_event_is_force_key_unit(GST_PAD_PROBE_INFO_EVENT(info))) {
        QMetaObject::invokeMethod(static_cast<RtpTransport *>(self),
                                  &RtpTransport::keyFrameRequested, Qt::QueuedConnection);
    }
    return GST_PAD_PROBE_OK;
}

// Runs on any thread. Nobody reads the bus, so each message ends here.
GstBusSyncReply RtpTransport::handleMessage(GstBus *, GstMessage *message, gpointer self)
{
    if (GST_MESSAGE_TYPE(message) == GST_MESSAGE_ERROR) {
        g_autoptr(GError) error = nullptr;
        gst_message_parse_error(message, &error, nullptr);
        const QString text
                = QStringLiteral("%1: %2").arg(QString::fromUtf8(GST_OBJECT_NAME(message->src)),
                                               QString::fromUtf8(error->message));
        auto *transport = static_cast<RtpTransport *>(self);
        const auto report = [transport, text] { Q_EMIT transport->failed(text); };
        QMetaObject::invokeMethod(transport, report, Qt::QueuedConnection);
    }
    gst_message_unref(message);
    return GST_BUS_DROP;
}
