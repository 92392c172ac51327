// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Hands the encoder's frames to sinks.

#ifndef ENCODEDVIDEOSOURCECONTROL_H
#define ENCODEDVIDEOSOURCECONTROL_H

#include "qflencodedvideoframe.h"
#include "qflencodedvideosourcecontrol.h"
#include "qflsinkpointer.h"
#include "run.h"

#include <QtCore/qvector.h>
#include <QtMultimedia/qmediaencodersettings.h>

class QFLEncodedVideoSink;
class StreamingEncodeControl;

class EncodedVideoSourceControl : public QFLEncodedVideoSourceControl
{
    Q_OBJECT

public:
    explicit EncodedVideoSourceControl(StreamingEncodeControl *encodeControl,
                                       QObject *parent = nullptr);
    ~EncodedVideoSourceControl() override;

    bool addSink(QFLSink *sink) override;
    bool removeSink(QFLSink *sink) override;

private:
    enum SinkState { Stopped, Starting, Started, Drained };

    struct LinkedSink
    {
        QFLEncodedVideoSink *sink = nullptr;
        QFLSinkPointer pointer;
        SinkState state = Stopped;
        bool awaitsKeyFrame = true;
        bool isSlow = false;
    };

    LinkedSink *find(const QFLEncodedVideoSink *sink);
    QVector<QFLEncodedVideoSink *> receivers();
    void dropDestroyedSinks();

    bool startSink(QFLEncodedVideoSink *sink, const QVideoEncoderSettings &settings);
    void restartSink(QFLEncodedVideoSink *sink);
    void startSinks(const QVideoEncoderSettings &settings);
    void reportRefusal(const QVideoEncoderSettings &settings);
    void drainSinks();
    void stopSinks();

    void deliver(const QFLEncodedVideoFrame &frame);
    void deliverTo(QFLEncodedVideoSink *sink, const QFLEncodedVideoFrame &frame);
    bool prepare(QFLEncodedVideoSink *sink, bool isKeyFrame);
    void handleDelivery(QFLEncodedVideoSink *sink, bool isTaken, qint64 nanoseconds);

    StreamingEncodeControl *m_encodeControl;
    Run m_run;
    QVector<LinkedSink> m_sinks;
};

#endif
