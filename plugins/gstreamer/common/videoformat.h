// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// How the pixel and surface formats of Qt correspond to those of GStreamer.

#ifndef VIDEOFORMAT_H
#define VIDEOFORMAT_H

#include <QtCore/qlist.h>
#include <QtMultimedia/qvideoframe.h>
#include <QtMultimedia/qvideosurfaceformat.h>

#include <gst/video/video.h>

namespace VideoFormat {

QList<QVideoFrame::PixelFormat> pixelFormats();

GstVideoFormat toGst(QVideoFrame::PixelFormat format);
QVideoFrame::PixelFormat fromGst(GstVideoFormat format);
bool isExact(QVideoFrame::PixelFormat format);

bool toGst(const QVideoSurfaceFormat &format, GstVideoInfo *info);
QVideoSurfaceFormat fromGst(const GstVideoInfo &info);

} // namespace VideoFormat

#endif
