// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Converts each frame once for all surfaces that need the same format.

#include "sharedconversions.h"

/*!
    \class SharedConversions

    Those that the surfaces of one service need, of pictures that all have the same format.
*/

/*!
    The format of the frames that convert() makes of those of the format \a input; invalid when
    GStreamer has no conversion to \a outputFormat. Another \a input ends the conversions there are.
*/
QVideoSurfaceFormat SharedConversions::prepare(const QVideoSurfaceFormat &input,
                                               QVideoFrame::PixelFormat outputFormat)
{
    if (input != m_input) {
        m_conversions.clear();
        m_input = input;
    }
    Conversion &conversion = m_conversions[outputFormat];
    if (!conversion.converter)
        conversion.converter = FrameConverter::create(input, outputFormat);
    return conversion.converter ? conversion.converter->outputFormat() : QVideoSurfaceFormat();
}

/*!
    The same frame for each call with the same \a frame. Invalid when \a frame can't be read, or the
    conversion hasn't been prepared.
*/
QVideoFrame SharedConversions::convert(const QVideoFrame &frame,
                                       QVideoFrame::PixelFormat outputFormat)
{
    Conversion &conversion = m_conversions[outputFormat];
    if (conversion.source == frame || !conversion.converter)
        return conversion.result;
    conversion.source = frame;
    conversion.result = conversion.converter->convert(frame);
    ++m_count;
    return conversion.result;
}

/*! Gives the memory of the frames back to their source. */
void SharedConversions::releaseFrames()
{
    for (auto &[format, conversion] : m_conversions) {
        conversion.source = QVideoFrame();
        conversion.result = QVideoFrame();
    }
}

/*! How many frames have been made since resetCount(). */
int SharedConversions::count() const
{
    return m_count;
}

void SharedConversions::resetCount()
{
    m_count = 0;
}
