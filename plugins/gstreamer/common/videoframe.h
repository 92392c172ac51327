// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Passes raw frames between Qt and GStreamer without copying their pixels.

#ifndef VIDEOFRAME_H
#define VIDEOFRAME_H

#include "gstpointers.h"

#include <QtMultimedia/qvideoframe.h>

#include <gst/video/video.h>

namespace VideoFrame {

QVideoFrame fromGst(GstBuffer *buffer, const GstVideoInfo &info, qint64 startTime);
GstBufferPointer toGst(const QVideoFrame &frame, const GstVideoInfo &info, QString *errorText);

} // namespace VideoFrame

#endif
