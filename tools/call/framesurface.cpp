// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The surface on which a picture of the call is presented.

#include "framesurface.h"

#include <QtMultimedia/qvideosurfaceformat.h>

/*!
    \class FrameSurface

    Keeps the last frame, also after it has been stopped, so that the end of the call can still be
    looked at. Frames that are to be shown have to be RGB, which QPainter draws without a conversion
    of its own; those that are only counted are taken as they are.
*/

/*!
    \fn void FrameSurface::framePresented(qint64 startTime)

    Emitted for each frame that was taken, with the frame's start time in microseconds.
*/

FrameSurface::FrameSurface(Purpose purpose, QObject *parent)
    : QAbstractVideoSurface(parent), m_purpose(purpose)
{
}

FrameSurface::~FrameSurface() = default;

/*! All frames that were handed to the surface. */
quint64 FrameSurface::framesArrived() const
{
    return m_framesArrived;
}

/*! The frames that the surface took. */
quint64 FrameSurface::framesPresented() const
{
    return m_framesPresented;
}

/*! The last frame that was presented; invalid before the first. */
QVideoFrame FrameSurface::frame() const
{
    return m_frame;
}

/*! The last frame at its full size, as an image with its own pixels; null before the first. */
QImage FrameSurface::image() const
{
    return m_frame.image();
}

QList<QVideoFrame::PixelFormat> FrameSurface::supportedPixelFormats(
        QAbstractVideoBuffer::HandleType type) const
{
    if (type != QAbstractVideoBuffer::NoHandle)
        return {};
    if (m_purpose == ShowFrames)
        return {QVideoFrame::Format_RGB32};
    return {QVideoFrame::Format_YUV420P, QVideoFrame::Format_NV12, QVideoFrame::Format_YUYV,
            QVideoFrame::Format_UYVY, QVideoFrame::Format_RGB32};
}

/*! Takes the frame if it has the format with which the surface was started. */
bool FrameSurface::present(const QVideoFrame &frame)
{
    ++m_framesArrived;
    const QVideoSurfaceFormat format = surfaceFormat();
    if (!frame.isValid() || frame.size() != format.frameSize()
        || frame.pixelFormat() != format.pixelFormat()) {
        setError(IncorrectFormatError);
        return false;
    }
    m_frame = frame;
    ++m_framesPresented;
    Q_EMIT framePresented(frame.startTime());
    return true;
}
