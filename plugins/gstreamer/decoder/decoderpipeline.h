// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The GStreamer pipeline that turns encoded frames into pictures.

#ifndef DECODERPIPELINE_H
#define DECODERPIPELINE_H

#include "codecs.h"
#include "pipeline.h"

#include <QtMultimedia/qvideoframe.h>
#include <QtMultimedia/qvideosurfaceformat.h>

#include <gst/app/gstappsink.h>

#include <array>
#include <chrono>
#include <deque>
#include <mutex>
#include <optional>

struct StreamFormat;

class DecoderPipeline : public QObject
{
    Q_OBJECT

public:
    struct Frame
    {
        QByteArray data;
        quint64 timestamp = 0;
    };

    explicit DecoderPipeline(QObject *parent = nullptr);
    ~DecoderPipeline() override;

    static bool isKnownCodec(const QString &codec);

    void setDecoder(const CodecElement &decoder);
    QString build();
    bool play();
    void reset();

    void setPixelFormats(const QList<QVideoFrame::PixelFormat> &formats);

    bool isUnused() const;
    bool push(const Frame &frame, bool isKey);
    QVector<Frame> unansweredGroup() const;
    void endStream();

    int backlog() const;
    bool isSilent() const;

Q_SIGNALS:
    void pictureDecoded(const QVideoFrame &picture, const QVideoSurfaceFormat &format);
    void errorReported(Pipeline::ErrorKind kind, const QString &text);
    void endOfStreamReached();

private:
    struct Arrival
    {
        quint64 timestamp = 0;
        std::chrono::steady_clock::time_point time;
    };

    struct Picture
    {
        QVideoFrame frame;
        QVideoSurfaceFormat format;
        std::chrono::steady_clock::time_point decodingTime;
    };

    void configureSource(const char *streamCaps);
    void configureSink();
    int queuedFrameCount() const;
    int takenCount() const;
    void keep(const Frame &frame, bool isKey);

    static GstPadProbeReturn handleDecoderEvent(GstPad *pad, GstPadProbeInfo *info, gpointer self);
    static GstFlowReturn handleSample(GstAppSink *sink, gpointer self);
    static GstPadProbeReturn handleQuery(GstPad *pad, GstPadProbeInfo *info, gpointer self);
    void enqueue(GstSample *sample);
    bool dequeue(Picture *picture);
    void deliver();
    void finish();

    Pipeline m_pipeline;
    CodecElement m_decoder;
    const StreamFormat *m_format = nullptr;
    GstElementPointer m_source;
    GstElementPointer m_sink;
    QList<QVideoFrame::PixelFormat> m_pixelFormats;
    bool m_isEnding = false;
    quint64 m_nextSequence = 0;
    QVector<Frame> m_lastGroup;
    quint64 m_groupSequence = 0;

    mutable std::mutex m_mutex;
    std::deque<Picture> m_pictures;
    std::array<Arrival, 256> m_arrivals = {};
    bool m_hasLostFrame = false;
    quint64 m_answeredSequence = 0;
    std::optional<int> m_heldBack;
};

#endif
