// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// What a video file contains.

#ifndef VIDEOFILEPROBE_H
#define VIDEOFILEPROBE_H

#include "camerafailure.h"
#include "gstpointers.h"

#include <QtCore/qcoreapplication.h>
#include <QtCore/qsize.h>

#include <gst/video/video.h>

class VideoFileProbe
{
    Q_DECLARE_TR_FUNCTIONS(VideoFileProbe)

public:
    CameraFailure run(const QString &path);

    QSize size() const;
    qreal frameRate() const;
    GstVideoOrientationMethod rotation() const;
    bool isTurnedSideways() const;

private:
    GstElementPointer createPipeline(const QString &path, QString *errorText) const;
    QString waitForPicture(GstElement *pipeline) const;
    QString readStream(GstElement *pipeline);
    void readFormat(const GstStructure *stream);
    void readRotation(GstPad *pad);

    QSize m_size;
    qreal m_frameRate = 0;
    GstVideoOrientationMethod m_rotation = GST_VIDEO_ORIENTATION_IDENTITY;
};

#endif
