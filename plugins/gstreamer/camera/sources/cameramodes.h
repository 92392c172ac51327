// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The capture modes of a camera device.

#ifndef CAMERAMODES_H
#define CAMERAMODES_H

#include <QtCore/qsize.h>
#include <QtCore/qstring.h>
#include <QtCore/qvector.h>
#include <QtMultimedia/qvideoframe.h>

#include <gst/gst.h>

struct CameraMode
{
    bool isMotionJpeg = false;
    QVideoFrame::PixelFormat pixelFormat = QVideoFrame::Format_Invalid;
    QSize size;
    qreal minimumFrameRate = 0;
    qreal maximumFrameRate = 0;
};

namespace CameraModes {

QVector<CameraMode> fromCaps(const GstCaps *caps);
CameraMode best(const QVector<CameraMode> &modes, const QSize &size, qreal frameRate,
                QVideoFrame::PixelFormat pixelFormat);

} // namespace CameraModes

#endif
