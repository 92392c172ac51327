// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// A sink that writes encoded frames to a connection.

#include "framesender.h"

#include <qflencodedvideoframe.h>

#include <QtCore/qdatastream.h>

namespace {

// More than this in the connection's buffer would make the picture late.
const qint64 maximumBacklog = 256 * 1024LL;

} // namespace

/*! \a connection is borrowed and has to outlive the sender. */
FrameSender::FrameSender(QIODevice *connection, QObject *parent)
    : QObject(parent), m_connection(connection)
{
    connect(connection, &QIODevice::readyRead, this, &FrameSender::readRequests);
}

//! [unlink]
FrameSender::~FrameSender()
{
    unlink();
}
//! [unlink]

//! [isFormatSupported]
bool FrameSender::isFormatSupported(const QVideoEncoderSettings &settings) const
{
    return !settings.codec().isEmpty() && m_connection->isWritable();
}
//! [isFormatSupported]

//! [encodedVideoFrame]
bool FrameSender::encodedVideoFrame(const QFLEncodedVideoFrame &frame)
{
    if (m_connection->bytesToWrite() > maximumBacklog) {
        setError(OverrunError);
        return false;
    }
    const QFLEncodedVideoFrame::MetaData meta = frame.meta();
    QDataStream stream(m_connection);
    stream << quint8(meta.type) << meta.timestamp << frame.data();
    if (stream.status() != QDataStream::Ok) {
        setError(TransportError);
        return false;
    }
    return true;
}
//! [encodedVideoFrame]

//! [readRequests]
void FrameSender::readRequests()
{
    // Each byte that comes back is a request, and one key frame answers them all.
    if (!m_connection->readAll().isEmpty())
        Q_EMIT keyFrameRequested();
}
//! [readRequests]
