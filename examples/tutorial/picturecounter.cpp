// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// A surface that counts the pictures that it gets.

#include "picturecounter.h"

#include <QtMultimedia/qvideoframe.h>

//! [surface]
QList<QVideoFrame::PixelFormat> PictureCounter::supportedPixelFormats(
        QAbstractVideoBuffer::HandleType type) const
{
    if (type != QAbstractVideoBuffer::NoHandle)
        return {};
    return {QVideoFrame::Format_YUV420P, QVideoFrame::Format_NV12, QVideoFrame::Format_RGB32};
}

bool PictureCounter::present(const QVideoFrame &)
{
    Q_EMIT counted(++m_count);
    return true;
}
//! [surface]
