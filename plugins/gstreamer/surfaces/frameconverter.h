// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Converts frames for a surface that lacks their pixel format.

#ifndef FRAMECONVERTER_H
#define FRAMECONVERTER_H

#include <QtMultimedia/qvideoframe.h>
#include <QtMultimedia/qvideosurfaceformat.h>

#include <gst/video/video.h>

#include <memory>

class FrameConverter
{
public:
    static std::unique_ptr<FrameConverter> create(const QVideoSurfaceFormat &input,
                                                  QVideoFrame::PixelFormat outputFormat);

    QVideoSurfaceFormat outputFormat() const;
    QVideoFrame convert(const QVideoFrame &frame);

private:
    struct ConverterFree
    {
        void operator()(GstVideoConverter *converter) const { gst_video_converter_free(converter); }
    };

    FrameConverter() = default;

    GstVideoInfo m_input;
    GstVideoInfo m_output;
    QVideoSurfaceFormat m_outputFormat;
    std::unique_ptr<GstVideoConverter, ConverterFree> m_converter;
};

#endif
