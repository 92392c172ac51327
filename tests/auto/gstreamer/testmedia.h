// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Makes real media for the tests of the GStreamer backend, and takes down what the backend makes.

#ifndef TESTMEDIA_H
#define TESTMEDIA_H

#include "gstpointers.h"

#include <QtMultimedia/qabstractvideosurface.h>
#include <QtTest/QtTest>

#include <gst/app/gstappsink.h>
#include <gst/app/gstappsrc.h>

#include <functional>

using Stream = QVector<QByteArray>;

/*! Plays \a pipeline to its end, and returns false if it doesn't come. */
inline bool playToEnd(GstElement *pipeline)
{
    gst_element_set_state(pipeline, GST_STATE_PLAYING);
    const GstBusPointer bus(gst_element_get_bus(pipeline));
    GstMessage *message = gst_bus_timed_pop_filtered(
            bus.get(), 10 * GST_SECOND, GstMessageType(GST_MESSAGE_EOS | GST_MESSAGE_ERROR));
    const bool isAtEnd = message && GST_MESSAGE_TYPE(message) == GST_MESSAGE_EOS;
    gst_clear_message(&message);
    return isAtEnd;
}

/*! What comes out of \a elements; \a input goes into the one that is named "source". */
inline Stream collect(const QByteArray &elements, const QByteArray &input = QByteArray())
{
    const QByteArray text = elements + " ! appsink name=sink sync=false wait-on-eos=false";
    const GstElementPointer pipeline(gst_parse_launch(text.constData(), nullptr));
    const GstElementPointer source(gst_bin_get_by_name(GST_BIN(pipeline.get()), "source"));
    const GstElementPointer sink(gst_bin_get_by_name(GST_BIN(pipeline.get()), "sink"));
    gst_element_set_state(pipeline.get(), GST_STATE_PLAYING);
    if (source) {
        gst_app_src_push_buffer(GST_APP_SRC(source.get()),
                                gst_buffer_new_memdup(input.constData(), gsize(input.size())));
        gst_app_src_end_of_stream(GST_APP_SRC(source.get()));
    }
    Stream stream;
    while (const GstSamplePointer sample {
            gst_app_sink_try_pull_sample(GST_APP_SINK(sink.get()), 10 * GST_SECOND)}) {
        GstBuffer *const buffer = gst_sample_get_buffer(sample.get());
        stream.append(QByteArray(int(gst_buffer_get_size(buffer)), '\0'));
        gst_buffer_extract(buffer, 0, stream.last().data(), gsize(stream.last().size()));
    }
    gst_element_set_state(pipeline.get(), GST_STATE_NULL);
    return stream;
}

/*! Calls  function while no  element is installed, and returns what that returns. */
inline bool callWithout(const char *element, const std::function<bool()> &function)
{
    GstRegistry *const registry = gst_registry_get();
    GstPluginFeature *const feature = gst_registry_lookup_feature(registry, element);
    gst_registry_remove_feature(registry, feature);
    const bool result = function();
    gst_registry_add_feature(registry, feature);
    gst_object_unref(feature);
    return result;
}

/*! The bytes of a picture of one plane, or of three with chroma at half size, without padding. */
inline QByteArray pixels(QVideoFrame frame)
{
    QByteArray bytes;
    frame.map(QAbstractVideoBuffer::ReadOnly);
    for (int plane = 0; plane < frame.planeCount(); ++plane) {
        const bool isRgb = frame.pixelFormat() == QVideoFrame::Format_RGB32;
        const int divisor = plane == 0 ? 1 : 2;
        for (int row = 0; row < frame.height() / divisor; ++row)
            bytes.append(
                    reinterpret_cast<char *>(frame.bits(plane)) + row * frame.bytesPerLine(plane),
                    frame.width() * (isRgb ? 4 : 1) / divisor);
    }
    frame.unmap();
    return bytes;
}

class RecordingSurface : public QAbstractVideoSurface
{
public:
    using Formats = QList<QVideoFrame::PixelFormat>;

    RecordingSurface(const Formats &formats = {QVideoFrame::Format_YUV420P})
        : m_formats(formats) { }

    Formats supportedPixelFormats(QAbstractVideoBuffer::HandleType) const override
    {
        return m_formats;
    }
    bool start(const QVideoSurfaceFormat &format) override
    {
        ++starts;
        return QAbstractVideoSurface::start(format);
    }
    void stop() override
    {
        ++stops;
        QAbstractVideoSurface::stop();
    }
    bool present(const QVideoFrame &frame) override
    {
        const bool isExpected = isActive() && thread() == QThread::currentThread();
        frames.append(frame);
        if (onPresent)
            onPresent();
        return isExpected;
    }

    QPoint startsAndStops() const { return QPoint(starts, stops); }
    QVector<qint64> times() const
    {
        QVector<qint64> result;
        for (const QVideoFrame &frame : frames)
            result.append(frame.startTime());
        return result;
    }

    int starts = 0;
    int stops = 0;
    QList<QVideoFrame> frames;
    std::function<void()> onPresent;

private:
    const Formats m_formats;
};

#endif
