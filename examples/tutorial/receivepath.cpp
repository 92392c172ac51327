// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Receiver, decoder and surface.

#include "receivepath.h"

//! [construct]
ReceivePath::ReceivePath(QIODevice *connection, const QString &codec)
    : m_receiver(connection, codec), m_sink(new QFLDecodingVideoSink(&m_decoder))
{
    connectErrors();
}
//! [construct]

//! [destruct]
ReceivePath::~ReceivePath()
{
    m_sink->unlink();
    m_decoder.setVideoSurface(nullptr);
}
//! [destruct]

//! [start]
bool ReceivePath::start(QAbstractVideoSurface *surface)
{
    m_decoder.setVideoSurface(surface);
    return m_sink->link(&m_receiver);
}
//! [start]

//! [errors]
void ReceivePath::connectErrors()
{
    connect(&m_decoder, &QFLDecoder::errorChanged, this, [this] {
        if (m_decoder.status() < QFLDecoder::StartingStatus)
            Q_EMIT failed(m_decoder.errorString());
    });
}
//! [errors]
