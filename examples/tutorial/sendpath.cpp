// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Camera, encoder and sender.

#include "sendpath.h"

#include <qflcodecinfo.h>

//! [construct]
SendPath::SendPath(QIODevice *connection) : m_sender(connection)
{
    connectErrors();
    connect(&m_sender, &FrameSender::keyFrameRequested, &m_encoder, &QFLEncoder::flush);
}
//! [construct]

//! [destruct]
SendPath::~SendPath()
{
    m_camera.unload();
    m_sender.unlink();
}
//! [destruct]

//! [codec]
QString SendPath::chooseCodec()
{
    const QList<QFLCodecInfo> encoders = QFLCodecInfo::availableEncoders();
    for (const QFLCodecInfo &encoder : encoders) {
        if (!QFLCodecInfo::availableDecoders(encoder.codec()).isEmpty())
            return encoder.codec();
    }
    return QString();
}
//! [codec]

bool SendPath::start(const QString &codec)
{
    //! [camera]
    m_camera.load();
    QCameraViewfinderSettings viewfinder;
    viewfinder.setResolution(640, 480);
    viewfinder.setMinimumFrameRate(30);
    viewfinder.setMaximumFrameRate(30);
    m_camera.setViewfinderSettings(viewfinder);
    //! [camera]

    //! [encoder]
    QVideoEncoderSettings settings;
    settings.setCodec(codec);
    settings.setBitRate(1000000);
    m_encoder.setVideoSettings(settings);
    //! [encoder]

    //! [link]
    if (!m_sender.link(&m_encoder) || !m_camera.bind(&m_encoder))
        return false;
    //! [link]

    //! [start]
    m_camera.start();
    //! [start]
    return m_camera.error() == QCamera::NoError;
}

//! [errors]
void SendPath::connectErrors()
{
    connect(&m_camera, QOverload<QCamera::Error>::of(&QFLCamera::error), this,
            [this] { Q_EMIT failed(m_camera.errorString()); });
    connect(&m_encoder, &QFLEncoder::errorChanged, this, [this] {
        if (m_encoder.status() < QFLEncoder::StartingStatus)
            Q_EMIT failed(m_encoder.errorString());
    });
}
//! [errors]
