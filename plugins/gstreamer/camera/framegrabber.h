// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Makes frames of what a camera's pipeline delivers.

#ifndef FRAMEGRABBER_H
#define FRAMEGRABBER_H

#include "framemagnifier.h"

#include <QtMultimedia/qvideoframe.h>
#include <QtMultimedia/qvideosurfaceformat.h>

struct CapturedFrame
{
    QVideoFrame frame;
    QVideoSurfaceFormat format;
};

class FrameGrabber
{
public:
    CapturedFrame grab(GstSample *sample);

    qreal magnification() const;
    void setMagnification(qreal factor);

private:
    void readCaps(GstCaps *caps);

    GstCapsPointer m_caps;
    GstVideoInfo m_info;
    QVideoSurfaceFormat m_format;
    FrameMagnifier m_magnifier;
};

#endif
