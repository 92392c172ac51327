// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// A sink that writes encoded frames to a connection.

#ifndef FRAMESENDER_H
#define FRAMESENDER_H

#include <qflencodedvideosink.h>

#include <QtCore/qiodevice.h>

//! [class]
class FrameSender : public QObject, public QFLEncodedVideoSink
{
    Q_OBJECT
    Q_INTERFACES(QFLEncodedVideoSink : QFLSink)

public:
    explicit FrameSender(QIODevice *connection, QObject *parent = nullptr);
    ~FrameSender() override;

    bool isFormatSupported(const QVideoEncoderSettings &settings) const override;
    bool encodedVideoFrame(const QFLEncodedVideoFrame &frame) override;

Q_SIGNALS:
    void keyFrameRequested();

private:
    void readRequests();

    QIODevice *m_connection;
};
//! [class]

#endif
