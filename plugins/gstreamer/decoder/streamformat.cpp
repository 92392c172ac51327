// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// How the frames of a codec enter a decoder pipeline.

#include "streamformat.h"

#include <algorithm>
#include <iterator>

namespace {

const StreamFormat streamFormats[] = {
        {"H264", "video/x-h264, stream-format=(string)byte-stream, alignment=(string)au",
         "h264parse", 16},
        {"H265", "video/x-h265, stream-format=(string)byte-stream, alignment=(string)au",
         "h265parse", 16},
        {"VP8", "video/x-vp8", nullptr, 0},
        {"VP9", "video/x-vp9, alignment=(string)super-frame", "vp9parse", 0},
        {"AV1", "video/x-av1, stream-format=(string)obu-stream, alignment=(string)tu", "av1parse",
         0},
};

} // namespace

/*!
    \class StreamFormat

    The codec's name, the caps of its frames, the element that parses them, which is null where
    there is none, and by how many pictures the stream's order may differ from theirs.
*/

/*! Null for a codec that isn't known. */
const StreamFormat *StreamFormat::of(const QString &codec)
{
    const auto found = std::find_if(
            std::begin(streamFormats), std::end(streamFormats),
            [&codec](const StreamFormat &format) { return codec == QLatin1String(format.codec); });
    return found == std::end(streamFormats) ? nullptr : found;
}
