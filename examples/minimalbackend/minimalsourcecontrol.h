// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Hands the encoder's frames to sinks, each from a key frame on.

#ifndef MINIMALSOURCECONTROL_H
#define MINIMALSOURCECONTROL_H

#include <qflencodedvideosourcecontrol.h>

#include <qflsinkpointer.h>

#include <QtCore/qmap.h>
#include <QtMultimedia/qmediaencodersettings.h>

#include <functional>

class MinimalEncodeControl;
class QFLEncodedVideoFrame;
class QFLEncodedVideoSink;

class MinimalSourceControl : public QFLEncodedVideoSourceControl
{
    Q_OBJECT

public:
    MinimalSourceControl(MinimalEncodeControl *encodeControl, QObject *parent);

    bool addSink(QFLSink *sink) override;
    bool removeSink(QFLSink *sink) override;

private:
    enum SinkState { Idle, AwaitsKeyFrame, Receives, Drained };

    bool isLinked(QFLEncodedVideoSink *sink) const;
    bool isStarted(QFLEncodedVideoSink *sink) const;
    std::function<bool()> watch(QFLEncodedVideoSink *sink) const;
    void forEachSink(const std::function<void(QFLEncodedVideoSink *)> &call);
    bool startSink(QFLEncodedVideoSink *sink);
    void startOrReport(QFLEncodedVideoSink *sink);
    void startSinks();
    void drainSinks();
    void stopSinks();
    void deliver(const QFLEncodedVideoFrame &frame);
    void deliverTo(QFLEncodedVideoSink *sink, const QFLEncodedVideoFrame &frame);

    MinimalEncodeControl *m_encodeControl;
    QMap<QFLEncodedVideoSink *, QFLSinkPointer> m_sinks;
    QMap<QFLEncodedVideoSink *, SinkState> m_states;
    int m_stream = 0;
};

#endif
