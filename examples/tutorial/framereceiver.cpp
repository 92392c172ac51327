// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// A source of the encoded frames that come from a connection.

#include "framereceiver.h"

#include <qflencodedvideoframe.h>
#include <qflencodedvideosink.h>

/*! \a connection is borrowed and has to outlive the receiver; the two ends agreed on \a codec. */
FrameReceiver::FrameReceiver(QIODevice *connection, const QString &codec, QObject *parent)
    : QObject(parent), m_stream(connection)
{
    m_settings.setCodec(codec);
    connect(connection, &QIODevice::readyRead, this, &FrameReceiver::readFrames);
}

//! [unlink]
FrameReceiver::~FrameReceiver()
{
    if (m_sink)
        m_sink->unlink(this);
}
//! [unlink]

//! [sinks]
bool FrameReceiver::addSink(QFLSink *sink)
{
    auto *videoSink = QFLEncodedVideoSink::fromSink(sink);
    if (m_sink || !videoSink || !videoSink->isFormatSupported(m_settings))
        return false;
    // Noted first, as the sink may remove itself while it starts.
    m_sink = videoSink;
    m_awaitsKeyFrame = true;
    if (!videoSink->start(m_settings) && m_sink == videoSink)
        m_sink = nullptr;
    return m_sink == videoSink;
}

bool FrameReceiver::removeSink(QFLSink *sink)
{
    if (!m_sink || m_sink != sink)
        return false;
    QFLEncodedVideoSink *const removed = m_sink;
    m_sink = nullptr;
    removed->stop();
    return true;
}
//! [sinks]

//! [readFrames]
void FrameReceiver::readFrames()
{
    while (m_stream.device()->bytesAvailable() > 0) {
        quint8 type = 0;
        QFLEncodedVideoFrame::MetaData meta;
        QByteArray data;
        m_stream.startTransaction();
        m_stream >> type >> meta.timestamp >> data;
        // The rest of the frame has yet to arrive.
        if (!m_stream.commitTransaction())
            return;
        const bool isKeyFrame = type == QFLEncodedVideoFrame::Type_Key;
        meta.type = isKeyFrame ? QFLEncodedVideoFrame::Type_Key : QFLEncodedVideoFrame::Type_Intra;
        deliver(QFLEncodedVideoFrame(data, meta));
    }
}
//! [readFrames]

//! [deliver]
void FrameReceiver::deliver(const QFLEncodedVideoFrame &frame)
{
    if (!m_sink)
        return;
    const bool isKeyFrame = frame.meta().type == QFLEncodedVideoFrame::Type_Key;
    if (isKeyFrame || !m_awaitsKeyFrame)
        m_awaitsKeyFrame = !m_sink->encodedVideoFrame(frame);
    if (isKeyFrame)
        m_hasRequestedKeyFrame = false;
    if (m_awaitsKeyFrame)
        requestKeyFrame();
}

void FrameReceiver::requestKeyFrame()
{
    if (m_hasRequestedKeyFrame)
        return;
    m_hasRequestedKeyFrame = true;
    m_stream.device()->putChar('\0');
}
//! [deliver]
