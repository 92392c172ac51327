// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Hands the encoder's frames to sinks.

#ifndef ENCODEDVIDEOSOURCECONTROL_H
#define ENCODEDVIDEOSOURCECONTROL_H

#include "qflencodedvideoframe.h"
#include "qflencodedvideosourcecontrol.h"

#include <QtCore/qvector.h>
#include <QtMultimedia/qmediaencodersettings.h>

class EncodeControl;
class QFLEncodedVideoSink;

class EncodedVideoSourceControl : public QFLEncodedVideoSourceControl
{
    Q_OBJECT

public:
    explicit EncodedVideoSourceControl(EncodeControl *encodeControl, QObject *parent = nullptr);

    bool addSink(QFLSink *sink) override;
    bool removeSink(QFLSink *sink) override;

private:
    struct LinkedSink
    {
        QFLEncodedVideoSink *sink = nullptr;
        bool isStarted = false;
        bool isDrained = false;
        bool awaitsKeyFrame = true;
    };

    LinkedSink *find(const QFLEncodedVideoSink *sink);
    QVector<QFLEncodedVideoSink *> startedSinks() const;

    bool startSink(QFLEncodedVideoSink *sink, const QVideoEncoderSettings &settings);
    void startSinks(const QVideoEncoderSettings &settings);
    void drainSinks();
    void stopSinks();

    void deliver(const QFLEncodedVideoFrame &frame);
    bool restartSink(QFLEncodedVideoSink *sink);
    void deliverTo(QFLEncodedVideoSink *sink, const QFLEncodedVideoFrame &frame);

    EncodeControl *m_encodeControl;
    QVector<LinkedSink> m_sinks;
};

#endif
