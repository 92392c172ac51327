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
inline Stream collect(const QByteArray &elements, const Stream &input = Stream())
{
    const QByteArray text = elements + " ! appsink name=sink sync=false wait-on-eos=false";
    const GstElementPointer pipeline(gst_parse_launch(text.constData(), nullptr));
    const GstElementPointer source(gst_bin_get_by_name(GST_BIN(pipeline.get()), "source"));
    const GstElementPointer sink(gst_bin_get_by_name(GST_BIN(pipeline.get()), "sink"));
    gst_element_set_state(pipeline.get(), GST_STATE_PLAYING);
    if (source) {
        for (const QByteArray &bytes : input)
            gst_app_src_push_buffer(GST_APP_SRC(source.get()),
                                    gst_buffer_new_memdup(bytes.constData(), gsize(bytes.size())));
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

/*! The elements that make a stream of a codec, with a key frame every ten frames. */
inline const QMap<QString, QByteArray> streamEncoders = {
        {QStringLiteral("H264"),
         "x264enc tune=zerolatency speed-preset=superfast key-int-max=10 bitrate=3000"
         " ! video/x-h264, profile=constrained-baseline ! h264parse config-interval=-1"
         " ! video/x-h264, stream-format=byte-stream, alignment=au"},
        {QStringLiteral("H265"),
         "x265enc tune=zerolatency speed-preset=ultrafast key-int-max=10 bitrate=3000"
         " ! h265parse config-interval=-1 ! video/x-h265, stream-format=byte-stream, alignment=au"},
        {QStringLiteral("VP8"),
         "vp8enc deadline=1 cpu-used=8 keyframe-max-dist=10 target-bitrate=3000000 threads=1"},
        {QStringLiteral("VP9"),
         "vp9enc deadline=1 cpu-used=8 keyframe-max-dist=10 target-bitrate=3000000 threads=1"
         " lag-in-frames=0"},
        {QStringLiteral("AV1"),
         "av1enc usage-profile=realtime cpu-used=10 keyframe-max-dist=10 target-bitrate=3000"
         " lag-in-frames=0 max-quantizer=56 ! av1parse"
         " ! video/x-av1, stream-format=obu-stream, alignment=tu"}};

/*! What twenty moving pictures of \a width and \a height become when they pass \a elements. */
inline Stream produce(const QByteArray &elements, int width = 320, int height = 240)
{
    return collect("videotestsrc num-buffers=20 pattern=zone-plate kx2=8 ky2=8 kt=4"
                   " ! video/x-raw, format=I420, framerate=30/1, width="
                   + QByteArray::number(width) + ", height=" + QByteArray::number(height) + " ! "
                   + elements);
}

inline double averageDifference(const QByteArray &a, const QByteArray &b)
{
    if (a.size() != b.size() || a.isEmpty())
        return qInf();
    qint64 sum = 0;
    for (int i = 0; i < a.size(); ++i)
        sum += qAbs(int(uchar(a.at(i))) - int(uchar(b.at(i))));
    return double(sum) / a.size();
}

/*! Calls \a function while no \a element is installed, and returns what that returns. */
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

/*! Works off events until \a condition is true; false if it isn't after some milliseconds. */
inline bool waitFor(const std::function<bool()> &condition, int milliseconds = 20000)
{
    QDeadlineTimer deadline(milliseconds);
    QTimer wakeUp;
    wakeUp.start(qMin(milliseconds, 100));
    while (!condition() && !deadline.hasExpired())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return condition();
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
        return answer != "start" && QAbstractVideoSurface::start(format);
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
        const QDeadlineTimer end(answer == "slow" ? 50 : 0);
        while (!end.hasExpired())
            continue;
        if (answer == "stop")
            stop();
        return isExpected && (answer.isEmpty() || answer == "slow");
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
    QByteArray answer;

private:
    const Formats m_formats;
};

#endif
