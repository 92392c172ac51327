// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The GStreamer pipeline that encodes raw frames.

#ifndef VIDEOENCODER_H
#define VIDEOENCODER_H

#include "encoderconfiguration.h"
#include "encoderelement.h"
#include "frametally.h"
#include "pipeline.h"
#include "qflencodedvideoframe.h"
#include "rawframequeue.h"

#include <QtCore/qelapsedtimer.h>

class VideoEncoder : public QObject
{
    Q_OBJECT

public:
    explicit VideoEncoder(QObject *parent = nullptr);
    ~VideoEncoder() override;

    bool start(const EncoderConfiguration &configuration);
    void stop();

    bool encode(const QVideoFrame &frame, QString *errorText);
    void drain();
    void flush();

    void requestKeyFrame();
    void setBitRate(int bitRate);
    int pending();
    int undelivered() const;
    const FrameTally &tally() const;

Q_SIGNALS:
    void encodedVideoFrame(const QFLEncodedVideoFrame &frame);
    void errorReported(Pipeline::ErrorKind kind, const QString &text);
    void drained();
    void pendingFell(int from, int to);

private:
    struct EncodedFrame
    {
        QFLEncodedVideoFrame frame;
        GstClockTime time = 0;
    };

    void setUp(const EncoderConfiguration &configuration);
    bool play();

    void takeSample(GstSample *sample);
    void dropFrames();
    void deliver(const EncodedFrame &encoded);
    bool isFlushed(const EncodedFrame &encoded) const;
    void handleMissingKeyFrame();
    void sendKeyFrameRequest(GstClockTime after = GST_CLOCK_TIME_NONE);
    void finishDrain();

    FrameTally m_tally;
    RawFrameQueue m_input;
    std::shared_ptr<EncoderElement> m_element;
    PostedQueue<EncodedFrame> m_frames;
    Run m_run;
    QElapsedTimer m_lastKeyFrameRequest;
    bool m_keyFrameWanted = false;
    bool m_keyFrameRequested = false;
    int m_framesSinceRequest = 0;
    bool m_dropsUntilKeyFrame = false;
    GstClockTime m_flushedUntil = GST_CLOCK_TIME_NONE;
    // Destroyed first: its threads use what comes before.
    Pipeline m_pipeline;
};

#endif
