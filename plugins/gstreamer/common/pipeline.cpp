// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// A GStreamer pipeline whose bus messages arrive in the thread of its owner.

#include "pipeline.h"

#include <QtCore/qcoreapplication.h>

namespace {

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
    Holds one GStreamer pipeline at a time. State changes belong to the thread this object lives in,
    and that is where its signals are emitted, from posted events: a streaming thread is never made
    to wait, and neither a GLib main loop nor a bus watch is needed.

    A run is the time between going up to and coming down from a state. What the pipeline reported
    in a run that is over is dropped.
*/
Pipeline::Pipeline(QObject *parent) : QObject(parent) { }

Pipeline::~Pipeline()
{
    reset();
}

/*!
    Replaces the present pipeline, which is stopped first, with \a pipeline, which must not run yet.
*/
void Pipeline::adopt(GstElementPointer pipeline)
{
    reset();
    m_pipeline = std::move(pipeline);
    if (!m_pipeline)
        return;
    const GstBusPointer bus(gst_element_get_bus(m_pipeline.get()));
    if (bus)
        gst_bus_set_sync_handler(bus.get(), handleMessage, this, nullptr);
}

/*! Stops and frees the pipeline; none of its threads runs any more when this returns. */
void Pipeline::reset()
{
    if (!m_pipeline)
        return;
    gst_element_set_state(m_pipeline.get(), GST_STATE_NULL);
    release();
}

/*!
    Hands the pipeline over, null when there is none, without a change of its state. Nothing that it
    reports arrives any more, but its threads may still run.
*/
GstElementPointer Pipeline::release()
{
    GstElementPointer pipeline = std::move(m_pipeline);
    const GstBusPointer bus(pipeline ? gst_element_get_bus(pipeline.get()) : nullptr);
    if (bus) {
        gst_bus_set_flushing(bus.get(), TRUE);
        gst_bus_set_sync_handler(bus.get(), nullptr, nullptr, nullptr);
    }
    beginRun();
    return pipeline;
}

bool Pipeline::isEmpty() const
{
    return !m_pipeline;
}

/*! A new reference to the element called \a name, null when there is none. */
GstElementPointer Pipeline::element(const char *name) const
{
    if (!m_pipeline || !GST_IS_BIN(m_pipeline.get()))
        return nullptr;
    return GstElementPointer(gst_bin_get_by_name(GST_BIN(m_pipeline.get()), name));
}

/*!
    Takes the pipeline to \a state. A change that goes on in the background counts as success. On
    failure errorReported() has been emitted by the time this returns false. Going down to a lower
    state ends the run.
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

    // The element's own words, if there are any, have been posted to this object by now.
    const int run = m_run;
    QCoreApplication::sendPostedEvents(this, QEvent::MetaCall);
    const QString stateName = QString::fromLatin1(gst_element_state_get_name(state));
    reportError(run, ResourceError, tr("The pipeline cannot be set to %1").arg(stateName));
    return false;
}

/*! Runs on whatever thread posts the message, so it only reads the message and posts an event. */
GstBusSyncReply Pipeline::handleMessage(GstBus *, GstMessage *message, gpointer self)
{
    auto *pipeline = static_cast<Pipeline *>(self);
    const int run = pipeline->m_run;
    if (GST_MESSAGE_TYPE(message) == GST_MESSAGE_EOS) {
        QMetaObject::invokeMethod(
                pipeline, [pipeline, run] { pipeline->reportEndOfStream(run); },
                Qt::QueuedConnection);
    } else if (GST_MESSAGE_TYPE(message) == GST_MESSAGE_ERROR) {
        pipeline->postError(run, message);
    }
    // Nobody reads the bus, so nothing may pile up there.
    gst_message_unref(message);
    return GST_BUS_DROP;
}

void Pipeline::postError(int run, GstMessage *message)
{
    GError *error = nullptr;
    gchar *debugText = nullptr;
    gst_message_parse_error(message, &error, &debugText);
    const QString reason = reasonOf(debugText);
    const ErrorKind kind = errorKind(message, error, reason);
    QString text
            = QStringLiteral("%1: %2").arg(sourceName(message), QString::fromUtf8(error->message));
    if (!reason.isEmpty())
        text += QStringLiteral(" (%1)").arg(reason);
    g_clear_error(&error);
    g_free(debugText);
    QMetaObject::invokeMethod(
            this, [this, run, kind, text] { reportError(run, kind, text); }, Qt::QueuedConnection);
}

void Pipeline::beginRun()
{
    ++m_run;
    m_errorReported = false;
}

/*! One failure makes several elements complain; only the first complaint says what is wrong. */
void Pipeline::reportError(int run, ErrorKind kind, const QString &text)
{
    if (run != m_run || m_errorReported)
        return;
    m_errorReported = true;
    Q_EMIT errorReported(kind, text);
}

void Pipeline::reportEndOfStream(int run)
{
    if (run == m_run)
        Q_EMIT endOfStreamReached();
}
