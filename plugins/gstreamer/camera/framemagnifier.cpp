// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Enlarges the middle of frames.

#include "framemagnifier.h"

namespace {

// Even, because most formats have one colour for two pixels by two.
int even(qreal length)
{
    return int(length / 2) * 2;
}

int croppedLength(int length, qreal factor)
{
    return qMin(length, qMax(2, even(length / factor)));
}

} // namespace

/*!
    \class FrameMagnifier

    Crops and scales back to the same size and format, so that nothing behind it sees a change but
    the picture. That is done to the captured frames and not by an element of the pipeline: another
    factor needs no negotiation, and every source gets it in the same way.
*/

qreal FrameMagnifier::factor() const
{
    return m_factor;
}

/*! Applies to the frames from now on; 1 or more. May be called on any thread. */
void FrameMagnifier::setFactor(qreal factor)
{
    m_factor = factor;
}

/*!
    A new picture like \a buffer, which has the format \a info. With the factor 1, or if the picture
    can't be magnified, \a buffer itself is returned. Runs on the streaming thread.
*/
GstBufferPointer FrameMagnifier::magnify(GstBuffer *buffer, const GstVideoInfo &info)
{
    GstBufferPointer original(gst_buffer_ref(buffer));
    const qreal factor = m_factor;
    GstVideoFrame from;
    if (factor <= 1 || !prepare(info, factor)
        || !gst_video_frame_map(&from, &info, buffer, GST_MAP_READ))
        return original;

    GstBufferPointer result(gst_buffer_new_allocate(nullptr, GST_VIDEO_INFO_SIZE(&info), nullptr));
    GstVideoFrame to;
    const bool isMapped = gst_video_frame_map(&to, &info, result.get(), GST_MAP_WRITE);
    if (isMapped) {
        gst_video_converter_frame(m_converter.get(), &from, &to);
        gst_video_frame_unmap(&to);
    }
    gst_video_frame_unmap(&from);
    return isMapped ? std::move(result) : std::move(original);
}

bool FrameMagnifier::prepare(const GstVideoInfo &info, qreal factor)
{
    if (m_converter && factor == m_preparedFactor && gst_video_info_is_equal(&info, &m_info))
        return true;
    const int width = croppedLength(info.width, factor);
    const int height = croppedLength(info.height, factor);
    GstStructure *options = gst_structure_new(
            "options", GST_VIDEO_CONVERTER_OPT_SRC_X, G_TYPE_INT, even((info.width - width) / 2.0),
            GST_VIDEO_CONVERTER_OPT_SRC_Y, G_TYPE_INT, even((info.height - height) / 2.0),
            GST_VIDEO_CONVERTER_OPT_SRC_WIDTH, G_TYPE_INT, width,
            GST_VIDEO_CONVERTER_OPT_SRC_HEIGHT, G_TYPE_INT, height, nullptr);
    m_info = info;
    m_preparedFactor = factor;
    m_converter.reset(gst_video_converter_new(&m_info, &m_info, options));
    return bool(m_converter);
}
