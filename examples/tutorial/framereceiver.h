// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// A source of the encoded frames that come from a connection.

#ifndef FRAMERECEIVER_H
#define FRAMERECEIVER_H

#include <qflsource.h>

#include <QtCore/qdatastream.h>
#include <QtMultimedia/qmediaencodersettings.h>

class QFLEncodedVideoFrame;
class QFLEncodedVideoSink;

//! [class]
class FrameReceiver : public QObject, public QFLSource
{
    Q_OBJECT
    Q_INTERFACES(QFLSource)

public:
    FrameReceiver(QIODevice *connection, const QString &codec, QObject *parent = nullptr);
    ~FrameReceiver() override;

    bool addSink(QFLSink *sink) override;
    bool removeSink(QFLSink *sink) override;

private:
    void readFrames();
    void deliver(const QFLEncodedVideoFrame &frame);
    void requestKeyFrame();

    QDataStream m_stream;
    QVideoEncoderSettings m_settings;
    QFLEncodedVideoSink *m_sink = nullptr;
    bool m_awaitsKeyFrame = true;
    bool m_hasRequestedKeyFrame = false;
};
//! [class]

#endif
