// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Makes frames of what a camera's pipeline delivers.

#include "framegrabber.h"

#include "videoformat.h"
#include "videoframe.h"

/*!
    \class FrameGrabber

    Used on one streaming thread at a time; only the magnification belongs to all threads.
*/

/*!
    The picture in \a sample; invalid if Qt doesn't have its format. Its start time is this moment,
    in microseconds of the monotonic clock, whatever time the source gave it.
*/
CapturedFrame FrameGrabber::grab(GstSample *sample)
{
    const qint64 captureTime = g_get_monotonic_time();
    readCaps(gst_sample_get_caps(sample));
    const GstBufferPointer buffer = m_magnifier.magnify(gst_sample_get_buffer(sample), m_info);
    return {VideoFrame::fromGst(buffer.get(), m_info, captureTime), m_format};
}

qreal FrameGrabber::magnification() const
{
    return m_magnifier.factor();
}

/*! Shows the middle of the frames that arrive from now on \a factor times as large, at least 1. */
void FrameGrabber::setMagnification(qreal factor)
{
    m_magnifier.setFactor(factor);
}

void FrameGrabber::readCaps(GstCaps *caps)
{
    if (caps == m_caps.get())
        return;
    m_caps.reset(gst_caps_ref(caps));
    gst_video_info_from_caps(&m_info, caps);
    m_format = VideoFormat::fromGst(m_info);
}
