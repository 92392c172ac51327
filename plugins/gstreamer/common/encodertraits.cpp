// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// What is particular to each encoder element.

#include "encodertraits.h"

#include <algorithm>
#include <iterator>

namespace {

// By default x264enc, vp9enc and x265enc hold frames back, vp8enc on several busy cores falls
// seconds behind, and av1enc aborts the process when it isn't given a largest quantizer. With their
// usual buffers of some seconds vp8enc, vp9enc and av1enc take as long to get used to a new bit
// rate. Pictures of x265enc drift away from the original at widths of 16 and 32.
const EncoderTraits known[] = {
        {"x264enc", "tune=zerolatency speed-preset=superfast", "key-int-max=%distance",
         "bitrate=%kilobits", "qp-min=%quantizer", 51, 16, true},
        {"openh264enc", "rate-control=bitrate complexity=low", "gop-size=%distance",
         "bitrate=%bits", "qp-min=%quantizer", 51, 16, true},
        {"vp8enc",
         "deadline=1 cpu-used=-12 threads=1 lag-in-frames=0 end-usage=cbr "
         "buffer-initial-size=500 buffer-optimal-size=600 buffer-size=1000",
         "keyframe-max-dist=%distance", "target-bitrate=%bits", "min-quantizer=%quantizer", 63, 16,
         true},
        {"vp9enc",
         "deadline=1 cpu-used=8 threads=1 row-mt=true lag-in-frames=0 end-usage=cbr "
         "buffer-initial-size=500 buffer-optimal-size=600 buffer-size=1000",
         "keyframe-max-dist=%distance", "target-bitrate=%bits", "min-quantizer=%quantizer", 63, 16,
         true},
        {"x265enc", "tune=zerolatency speed-preset=ultrafast option-string=open-gop=0",
         "key-int-max=%distance", "bitrate=%kilobits", "option-string=open-gop=0:qpmin=%quantizer",
         51, 64, true},
        {"av1enc",
         "usage-profile=realtime cpu-used=10 threads=1 lag-in-frames=0 min-quantizer=4 "
         "max-quantizer=56 end-usage=cbr buf-initial-sz=500 buf-optimal-sz=600 buf-sz=1000",
         "keyframe-max-dist=%distance", "target-bitrate=%kilobits", "min-quantizer=%quantizer", 63,
         16, false},
};

// Properties that an element doesn't have are passed over. The VA and NV elements share most.
const EncoderTraits other
        = {nullptr,
           "b-frames=0 bframes=0 max-bframes=0 zerolatency=true rate-control=cbr rc-mode=cbr",
           "key-int-max=%distance gop-size=%distance keyframe-max-dist=%distance "
           "keyframe-period=%distance",
           "bitrate=%unit target-bitrate=%unit "
           "extra-controls=controls,video_bitrate=%bits,video_gop_size=%distance,"
           "video_bitrate_mode=1,repeat_sequence_header=1",
           "min-qp=%quantizer qp-min=%quantizer",
           51,
           16,
           true};

const EncoderTraits *find(const QByteArray &factoryName)
{
    return std::find_if(std::begin(known), std::end(known), [&](const EncoderTraits &traits) {
        return factoryName == traits.factoryName;
    });
}

} // namespace

/*!
    \class EncoderTraits

    The properties by which an element encodes live video, as texts of the form "name=value
    name=value". In the values %distance stands for the number of frames from one key frame to the
    next, %bits and %kilobits for the bit rate, %unit for the bit rate in the unit that the
    property's own description tells, and %quantizer for the finest quantizer. A picture's sides
    must have smallestSide pixels at least.

    Constant quality is a bit rate as the ceiling and a quantizer that doesn't get finer than the
    quality asks for: every element can do that without delay.
*/

/*! True if the element's settings for live video have been tried out. */
bool EncoderTraits::isKnown(const QByteArray &factoryName)
{
    return find(factoryName) != std::end(known);
}

/*! What is known of the element, or for others the names that most hardware elements use. */
const EncoderTraits &EncoderTraits::of(const QByteArray &factoryName)
{
    const EncoderTraits *traits = find(factoryName);
    return traits == std::end(known) ? other : *traits;
}
