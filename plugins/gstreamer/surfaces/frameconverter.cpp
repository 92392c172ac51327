// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Converts frames for a surface that lacks their pixel format.

#include "frameconverter.h"

#include "videoformat.h"
#include "videoframe.h"

/*!
    \class FrameConverter

    Used on one thread, for frames of one format.
*/

/*!
    Null when GStreamer has no conversion from \a input to \a outputFormat. Formats that it doesn't
    tell from another one don't count: a frame is labelled by its format in GStreamer.
*/
std::unique_ptr<FrameConverter> FrameConverter::create(const QVideoSurfaceFormat &input,
                                                       QVideoFrame::PixelFormat outputFormat)
{
    QVideoSurfaceFormat output(input.frameSize(), outputFormat);
    output.setFrameRate(input.frameRate());
    output.setPixelAspectRatio(input.pixelAspectRatio());
    if (!VideoFormat::isExact(outputFormat))
        return nullptr;

    std::unique_ptr<FrameConverter> converter(new FrameConverter);
    converter->m_outputFormat = output;
    if (!VideoFormat::toGst(input, &converter->m_input)
        || !VideoFormat::toGst(output, &converter->m_output))
        return nullptr;
    converter->m_converter.reset(
            gst_video_converter_new(&converter->m_input, &converter->m_output, nullptr));
    return converter->m_converter ? std::move(converter) : nullptr;
}

QVideoSurfaceFormat FrameConverter::outputFormat() const
{
    return m_outputFormat;
}

/*! A new frame with the start time of \a frame; an invalid one if \a frame can't be read. */
QVideoFrame FrameConverter::convert(const QVideoFrame &frame)
{
    QString reason;
    const GstBufferPointer input = VideoFrame::toGst(frame, m_input, &reason);
    if (!input)
        return QVideoFrame();
    const GstBufferPointer output(
            gst_buffer_new_allocate(nullptr, GST_VIDEO_INFO_SIZE(&m_output), nullptr));

    GstVideoFrame from;
    GstVideoFrame to;
    if (!gst_video_frame_map(&from, &m_input, input.get(), GST_MAP_READ))
        return QVideoFrame();
    if (!gst_video_frame_map(&to, &m_output, output.get(), GST_MAP_WRITE)) {
        gst_video_frame_unmap(&from);
        return QVideoFrame();
    }
    gst_video_converter_frame(m_converter.get(), &from, &to);
    gst_video_frame_unmap(&to);
    gst_video_frame_unmap(&from);

    return VideoFrame::fromGst(output.get(), m_output, frame.startTime());
}
