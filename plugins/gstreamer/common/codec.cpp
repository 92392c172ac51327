// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// What the backend knows about each codec.

#include "codec.h"

#include "av1inspector.h"
#include "nalunitinspector.h"
#include "vp8inspector.h"
#include "vp9inspector.h"

#include <algorithm>

namespace {

template<typename Inspector> std::unique_ptr<FrameInspector> create()
{
    return std::make_unique<Inspector>();
}

template<NalUnitInspector::Syntax syntax> std::unique_ptr<FrameInspector> createNalUnitInspector()
{
    return std::make_unique<NalUnitInspector>(syntax);
}

} // namespace

/*!
    \class Codec

    One row of the table of codecs, which is all that there is to add for another one besides its
    encoder elements' traits and an inspector.

    \list
    \li name: the RTP encoding name;
    \li elementCaps: what its encoders make and its decoders take, by which elements are found;
    \li streamCaps: the form in which its frames travel;
    \li encoderTail: elements that bring an encoder's frames into that form, empty if the caps are
        enough, null if there is only one form;
    \li parser: the element that a decoder needs in front of it, null if there is none;
    \li maximumReordering: by how many pictures the stream's order may differ from theirs;
    \li createInspector: what finds key frames in the bytes. Without it, what the sender says counts;
    \li keyFrameSize: tells the size of the pictures from a key frame, where no parser does; empty
        for other frames.
    \endlist
*/

/*! For a new stream; null where there is none. */
std::unique_ptr<FrameInspector> Codec::inspector() const
{
    return createInspector ? createInspector() : nullptr;
}

/*! All codecs. The first is what an application gets that doesn't choose. */
const QVector<Codec> &Codec::all()
{
    static const QVector<Codec> codecs = {
            {"H264", "video/x-h264", "video/x-h264,stream-format=byte-stream,alignment=au",
             "h264parse config-interval=-1 ! ", "h264parse", 16,
             createNalUnitInspector<NalUnitInspector::H264>},
            {"VP8", "video/x-vp8,codec-alpha=(boolean)false", "video/x-vp8", nullptr, nullptr, 0,
             create<Vp8Inspector>, Vp8Inspector::keyFrameSize},
            {"VP9", "video/x-vp9,codec-alpha=(boolean)false", "video/x-vp9,alignment=super-frame",
             nullptr, "vp9parse", 0, create<Vp9Inspector>},
            {"H265", "video/x-h265", "video/x-h265,stream-format=byte-stream,alignment=au",
             "h265parse config-interval=-1 ! ", "h265parse", 16,
             createNalUnitInspector<NalUnitInspector::H265>},
            {"AV1", "video/x-av1", "video/x-av1,stream-format=obu-stream,alignment=tu", "",
             "av1parse", 0, create<Av1Inspector>},
    };
    return codecs;
}

/*! Null for a codec that isn't known. */
const Codec *Codec::find(const QString &name)
{
    const auto found = std::find_if(all().begin(), all().end(), [&name](const Codec &codec) {
        return name == QLatin1String(codec.name);
    });
    return found == all().end() ? nullptr : &*found;
}
