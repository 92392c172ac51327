// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// A GStreamer pipeline whose bus messages arrive in the thread of its owner.

#include "pipeline.h"

#include <gst/app/gstappsink.h>
#include <gst/app/gstappsrc.h>

#include <algorithm>
#include <thread>

namespace {

// Stopping may take half a second, with everything else that it does.
const std::chrono::milliseconds longestTakeDown(400);

QString sourceName(GstMessage *message)
{
    GstObject *source = GST_MESSAGE_SRC(message);
    if (source && !GST_IS_ELEMENT(source))
        source = GST_OBJECT_PARENT(source);
    if (!source || !GST_IS_ELEMENT(source))
        return QStringLiteral("GStreamer");
    GstElementFactory *factory = gst_element_get_factory(GST_ELEMENT_CAST(source));
    return QString::fromUtf8(factory ? GST_OBJECT_NAME(factory) : GST_OBJECT_NAME(source));
}

bool isFromHardware(GstMessage *message)
{
    GstObject *source = GST_MESSAGE_SRC(message);
    if (!source || !GST_IS_ELEMENT(source))
        return false;
    GstElementFactory *factory = gst_element_get_factory(GST_ELEMENT_CAST(source));
    return factory && gst_element_factory_list_is_type(factory, GST_ELEMENT_FACTORY_TYPE_HARDWARE);
}

// The first line of the debug text is a place in GStreamer's sources, the rest is the reason.
QString reasonOf(const gchar *debugText)
{
    return QString::fromUtf8(debugText).section(QLatin1Char('\n'), 1).simplified();
}

Pipeline::ErrorKind streamErrorKind(const GError *error, const QString &reason)
{
    switch (error->code) {
    case GST_STREAM_ERROR_CODEC_NOT_FOUND:
        return Pipeline::ResourceError;
    case GST_STREAM_ERROR_FAILED:
        return reason.contains(QLatin1String("not-negotiated")) ? Pipeline::FormatError
                                                                : Pipeline::ResourceError;
    default:
        return Pipeline::FormatError;
    }
}

Pipeline::ErrorKind errorKind(GstMessage *message, const GError *error, const QString &reason)
{
    if (isFromHardware(message))
        return Pipeline::HardwareError;
    if (error->domain == GST_STREAM_ERROR)
        return streamErrorKind(error, reason);
    const bool isNegotiation = error->domain == GST_CORE_ERROR
            && (error->code == GST_CORE_ERROR_NEGOTIATION || error->code == GST_CORE_ERROR_CAPS);
    return isNegotiation ? Pipeline::FormatError : Pipeline::ResourceError;
}

} // namespace

/*!
    \class Pipeline

    Holds one GStreamer pipeline at a time. State changes belong to the thread this object lives in,
    and that is where its signals are emitted, from posted events: a streaming thread is never made
    to wait, and neither a GLib main loop nor a bus watch is needed.

    A run is the time between going up to and coming down from a state. What the pipeline reported
    in a run that is over is dropped.
*/

Pipeline::Pipeline(QObject *parent)
    : QObject(parent), m_reports(this, [this](const Report &report) { handleReport(report); })
{
}

Pipeline::~Pipeline()
{
    takeDown(GST_STATE_NULL);
}

/*!
    Builds the pipeline that \a description spells out in the language of gst-launch-1.0. Null with
    an \a errorText, which names an element that isn't installed.
*/
GstElementPointer Pipeline::parse(const QByteArray &description, QString *errorText)
{
    GError *error = nullptr;
    GstParseContext *context = gst_parse_context_new();
    GstElement *parsed = gst_parse_launch_full(description.constData(), context,
                                               GST_PARSE_FLAG_FATAL_ERRORS, &error);
    gchar **missing = gst_parse_context_get_missing_elements(context);
    if (missing)
        *errorText = tr("%1: the element is not installed").arg(QString::fromUtf8(*missing));
    else if (error)
        *errorText = QString::fromUtf8(error->message);
    g_strfreev(missing);
    g_clear_error(&error);
    gst_parse_context_free(context);
    return GstElementPointer(parsed ? GST_ELEMENT(gst_object_ref_sink(parsed)) : nullptr);
}

/*!
    Replaces the present pipeline by the one that \a description spells out. On failure there is none,
    and errorReported() has been emitted by the time this returns false.
*/
bool Pipeline::build(const QByteArray &description)
{
    QString errorText;
    adopt(parse(description, &errorText));
    if (m_pipeline)
        return true;
    handleReport({true, ResourceError, errorText});
    return false;
}

/*!
    Replaces the present pipeline, which is stopped first, with \a pipeline, which must not run yet.
*/
void Pipeline::adopt(GstElementPointer pipeline)
{
    takeDown(GST_STATE_NULL);
    beginRun();
    m_pipeline = std::move(pipeline);
    if (!m_pipeline)
        return;
    const std::function<void(GstMessage *)> report = [this](GstMessage *message) {
        if (GST_MESSAGE_TYPE(message) == GST_MESSAGE_EOS)
            m_reports.append(Report());
        else if (GST_MESSAGE_TYPE(message) == GST_MESSAGE_ERROR)
            m_reports.append(readError(message));
    };
    const GstBusPointer bus(gst_element_get_bus(m_pipeline.get()));
    gst_bus_set_sync_handler(bus.get(), handleMessage, gated(report),
                             GatedCall<void(GstMessage *)>::destroy);
}

/*! A barrier: nothing is called by the present pipeline any more once this has returned. */
void Pipeline::closeGates()
{
    for (const std::shared_ptr<Gate> &gate : m_gates)
        gate->close();
    m_gates.clear();
}

/*!
    Takes the pipeline down to \a state; there is none any more when that is GST_STATE_NULL. Nothing
    is called or emitted by it from then on.

    A device, a disk or an encoder in the middle of a large picture can't be interrupted. The result
    is then false, after 0.4 seconds: a thread of its own takes the pipeline to its end when the
    hanging call comes back, this object has none any more, and is free for another. \a companion is
    what the pipeline needs until then.
*/
bool Pipeline::takeDown(GstState state, const std::shared_ptr<void> &companion)
{
    if (!m_pipeline)
        return true;
    if (state == GST_STATE_NULL)
        closeGates();
    std::promise<void> promise;
    std::future<void> future = promise.get_future();
    GstElementPointer pipeline(GST_ELEMENT(gst_object_ref(m_pipeline.get())));
    std::thread thread([pipeline = std::move(pipeline), promise = std::move(promise), companion,
                        state]() mutable {
        gst_element_set_state(pipeline.get(), state);
        promise.set_value();
    });
    const bool isDown = future.wait_for(longestTakeDown) == std::future_status::ready;
    if (isDown) {
        thread.join();
    } else {
        thread.detach();
        m_takeDowns.push_back(std::move(future));
    }
    if (!isDown || state == GST_STATE_NULL)
        release();
    beginRun();
    return isDown;
}

/*! Waits until at most \a most of the pipelines that takeDown() let go are still on their way. */
void Pipeline::awaitThoseLetGo(std::size_t most)
{
    const auto isDone = [](const std::future<void> &takeDown) {
        return takeDown.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
    };
    m_takeDowns.erase(std::remove_if(m_takeDowns.begin(), m_takeDowns.end(), isDone),
                      m_takeDowns.end());
    while (m_takeDowns.size() > most) {
        m_takeDowns.front().wait();
        m_takeDowns.erase(m_takeDowns.begin());
    }
}

bool Pipeline::isEmpty() const
{
    return !m_pipeline;
}

/*! A new reference to the element called \a name, null when there is none. */
GstElementPointer Pipeline::element(const char *name) const
{
    return GstElementPointer(m_pipeline ? gst_bin_get_by_name(GST_BIN(m_pipeline.get()), name)
                                        : nullptr);
}

/*!
    Takes the pipeline to \a state, for as long as that takes. A change that goes on in the
    background counts as success. On failure errorReported() has been emitted by the time this
    returns false. Going down to a lower state ends the run.
*/
bool Pipeline::setState(GstState state)
{
    if (!m_pipeline)
        return false;
    // A pipeline that is still on its way up counts as having arrived.
    const bool goesDown = state < GST_STATE_TARGET(m_pipeline.get());
    const GstStateChangeReturn result = gst_element_set_state(m_pipeline.get(), state);
    if (goesDown)
        beginRun();
    if (result != GST_STATE_CHANGE_FAILURE)
        return true;

    // The element's own words, if there are any, wait here by now.
    const Run::Watch isOn = m_run.watch();
    m_reports.deliver();
    const QString stateName = QString::fromLatin1(gst_element_state_get_name(state));
    if (isOn())
        handleReport({true, ResourceError, tr("The pipeline cannot be set to %1").arg(stateName)});
    return false;
}

/*!
    Has \a call get what arrives at the appsink called \a sink, on the streaming thread. If it
    returns false the pipeline fails for a format that doesn't fit.
*/
void Pipeline::onSample(const char *sink, const std::function<bool(GstSample *)> &call)
{
    using Call = GatedCall<bool(GstSample *)>;
    GstAppSinkCallbacks callbacks = {};
    callbacks.new_sample = [](GstAppSink *appSink, gpointer data) {
        const GstSamplePointer sample(gst_app_sink_pull_sample(appSink));
        bool isTaken = false;
        const bool isOpen = Call::from(data)->gate->pass(
                [&] { isTaken = sample && Call::from(data)->function(sample.get()); });
        if (!isOpen || !sample)
            return GST_FLOW_FLUSHING;
        return isTaken ? GST_FLOW_OK : GST_FLOW_NOT_NEGOTIATED;
    };
    gst_app_sink_set_callbacks(GST_APP_SINK(element(sink).get()), &callbacks, gated(call),
                               Call::destroy);
}

/*! Has \a call know when the appsrc called \a source has nothing left, on its streaming thread. */
void Pipeline::onNeedData(const char *source, const std::function<void()> &call)
{
    using Call = GatedCall<void()>;
    GstAppSrcCallbacks callbacks = {};
    callbacks.need_data = [](GstAppSrc *, guint, gpointer data) {
        Call::from(data)->gate->pass(Call::from(data)->function);
    };
    gst_app_src_set_callbacks(GST_APP_SRC(element(source).get()), &callbacks, gated(call),
                              Call::destroy);
}

/*! Has \a call see each event that comes out of the sink pad of \a element, on any thread. */
void Pipeline::onUpstreamEvent(const char *element, const std::function<void(GstEvent *)> &call)
{
    using Call = GatedCall<void(GstEvent *)>;
    const auto probe = [](GstPad *, GstPadProbeInfo *info, gpointer data) {
        Call::from(data)->gate->pass(
                [&] { Call::from(data)->function(GST_PAD_PROBE_INFO_EVENT(info)); });
        return GST_PAD_PROBE_OK;
    };
    const GstPadPointer pad(gst_element_get_static_pad(this->element(element).get(), "sink"));
    gst_pad_add_probe(pad.get(), GST_PAD_PROBE_TYPE_EVENT_UPSTREAM, probe, gated(call),
                      Call::destroy);
}

/*! What GStreamer can be given to call \a function with; it is open until the pipeline goes. */
template<typename Function> gpointer Pipeline::gated(const std::function<Function> &function)
{
    m_gates.push_back(std::make_shared<Gate>());
    return new GatedCall<Function> {m_gates.back(), function};
}

/*! Runs on whatever thread posts the message, so it only has the message read. */
GstBusSyncReply Pipeline::handleMessage(GstBus *, GstMessage *message, gpointer data)
{
    const auto *call = GatedCall<void(GstMessage *)>::from(data);
    call->gate->pass([&] { call->function(message); });
    // Nobody reads the bus, so nothing may pile up there.
    gst_message_unref(message);
    return GST_BUS_DROP;
}

Pipeline::Report Pipeline::readError(GstMessage *message)
{
    GError *error = nullptr;
    gchar *debugText = nullptr;
    gst_message_parse_error(message, &error, &debugText);
    const QString reason = reasonOf(debugText);
    Report report {
            true, errorKind(message, error, reason),
            QStringLiteral("%1: %2").arg(sourceName(message), QString::fromUtf8(error->message))};
    if (!reason.isEmpty())
        report.text += QStringLiteral(" (%1)").arg(reason);
    g_clear_error(&error);
    g_free(debugText);
    return report;
}

void Pipeline::release()
{
    closeGates();
    const GstBusPointer bus(gst_element_get_bus(m_pipeline.get()));
    gst_bus_set_flushing(bus.get(), TRUE);
    gst_bus_set_sync_handler(bus.get(), nullptr, nullptr, nullptr);
    m_pipeline.reset();
}

void Pipeline::beginRun()
{
    m_run.begin();
    m_reports.clear();
    m_errorReported = false;
}

/*! One failure makes several elements complain; only the first complaint says what is wrong. */
void Pipeline::handleReport(const Report &report)
{
    if (!report.isError)
        Q_EMIT endOfStreamReached();
    else if (!std::exchange(m_errorReported, true))
        Q_EMIT errorReported(report.kind, report.text);
}
