// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The GStreamer pipeline that turns encoded frames into pictures.

#ifndef VIDEODECODER_H
#define VIDEODECODER_H

#include "codecelements.h"
#include "pipeline.h"

#include <QtMultimedia/qvideoframe.h>
#include <QtMultimedia/qvideosurfaceformat.h>

#include <array>
#include <optional>

struct Codec;

class VideoDecoder : public QObject
{
    Q_OBJECT

public:
    struct Frame
    {
        QByteArray data;
        quint64 timestamp = 0;
    };

    explicit VideoDecoder(QObject *parent = nullptr);
    ~VideoDecoder() override;

    void setDecoder(const CodecElement &decoder);
    bool build();
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
    };

    void announceSize(const QByteArray &data);
    void configureSink();
    int queuedFrameCount() const;
    int takenCount() const;
    void keep(const Frame &frame, bool isKey);

    void handleDecoderEvent(GstEvent *event);
    void enqueue(GstSample *sample);
    void finish();

    CodecElement m_element;
    const Codec *m_codec = nullptr;
    GstElementPointer m_source;
    GstElementPointer m_sink;
    QList<QVideoFrame::PixelFormat> m_pixelFormats;
    quint64 m_nextSequence = 0;
    QVector<Frame> m_lastGroup;
    quint64 m_groupSequence = 0;

    PostedQueue<Picture> m_pictures;
    mutable QMutex m_mutex;
    std::array<Arrival, 256> m_arrivals = {};
    bool m_hasLostFrame = false;
    quint64 m_answeredSequence = 0;
    std::optional<int> m_heldBack;
    // Destroyed first: its threads use what comes before.
    Pipeline m_pipeline;
};

#endif
