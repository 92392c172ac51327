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
// rate. Pictures of x265enc drift away from the original at widths of 16 and 32. Of H.264 only the
// constrained baseline profile can be decoded by everyone, and by openh264dec without delay.
//
// The others are hardware's, by the beginning that the names of a family's elements have in common
// ("vah264enc", and "varenderD129h264enc" on a second card). Older and newer elements of a family
// differ in their properties, so properties that an element doesn't have are passed over. Drivers
// of Video4Linux pass over unknown controls in the same way; all of them have to be set at once.
const EncoderTraits known[] = {
        {"x264enc",
         "tune=zerolatency speed-preset=superfast cabac=false dct8x8=false option-string=weightp=0",
         "key-int-max=%distance", "bitrate=%kilobits", "qp-min=%quantizer", 51, 16, true, true},
        {"openh264enc", "rate-control=bitrate complexity=low", "gop-size=%distance",
         "bitrate=%bits", "qp-min=%quantizer", 51, 16, true, true},
        {"vp8enc",
         "deadline=1 cpu-used=-12 threads=1 lag-in-frames=0 end-usage=cbr "
         "buffer-initial-size=500 buffer-optimal-size=600 buffer-size=1000",
         "keyframe-max-dist=%distance", "target-bitrate=%bits", "min-quantizer=%quantizer", 63, 16,
         true, true},
        {"vp9enc",
         "deadline=1 cpu-used=8 threads=1 row-mt=true lag-in-frames=0 end-usage=cbr "
         "buffer-initial-size=500 buffer-optimal-size=600 buffer-size=1000",
         "keyframe-max-dist=%distance", "target-bitrate=%bits", "min-quantizer=%quantizer", 63, 16,
         true, true},
        {"x265enc", "tune=zerolatency speed-preset=ultrafast option-string=open-gop=0",
         "key-int-max=%distance", "bitrate=%kilobits", "option-string=open-gop=0:qpmin=%quantizer",
         51, 64, true, true},
        {"av1enc",
         "usage-profile=realtime cpu-used=10 threads=1 lag-in-frames=0 min-quantizer=4 "
         "max-quantizer=56 end-usage=cbr buf-initial-sz=500 buf-optimal-sz=600 buf-sz=1000",
         "keyframe-max-dist=%distance", "target-bitrate=%kilobits", "min-quantizer=%quantizer", 63,
         16, false, true},
        {"v4l2", "", "",
         "extra-controls=controls,video_bitrate=%bits,video_bitrate_mode=1,"
         "frame_level_rate_control_enable=1,video_gop_size=%distance,"
         "h264_i_frame_period=%distance,video_b_frames=0,repeat_sequence_header=1,"
         "h264_minimum_qp_value=%quantizer,hevc_minimum_qp_value=%quantizer,"
         "vpx_minimum_qp_value=%quantizer",
         "", 51, 16, true, true},
        {"vaapi", "max-bframes=0 rate-control=cbr", "keyframe-period=%distance",
         "bitrate=%kilobits", "min-qp=%quantizer", 51, 16, true, true},
        {"va", "b-frames=0 rate-control=cbr", "key-int-max=%distance", "bitrate=%kilobits",
         "min-qp=%quantizer", 51, 16, true, false},
        {"nv",
         "bframes=0 b-frames=0 zerolatency=true zero-reorder-delay=true rc-lookahead=0 rc-mode=cbr "
         "rate-control=cbr",
         "gop-size=%distance", "bitrate=%kilobits",
         "qp-min-i=%quantizer qp-min-p=%quantizer min-qp-i=%quantizer min-qp-p=%quantizer", 51, 16,
         true, true},
        {"qsv", "b-frames=0 low-latency=true rc-lookahead=0 rate-control=cbr", "gop-size=%distance",
         "bitrate=%kilobits", "min-qp-i=%quantizer min-qp-p=%quantizer", 51, 16, true, true},
        {"msdk", "b-frames=0 async-depth=1 rc-lookahead=0 rate-control=cbr", "gop-size=%distance",
         "bitrate=%kilobits", "min-qp=%quantizer", 51, 16, true, true},
        {"amcvidenc", "", "i-frame-interval=%seconds", "bitrate=%bits", "", 51, 16, true, true},
};

// For hardware of no known family: the names that most elements use.
const EncoderTraits other
        = {nullptr,
           "b-frames=0 bframes=0 max-bframes=0 zerolatency=true low-latency=true rate-control=cbr "
           "rc-mode=cbr",
           "key-int-max=%distance gop-size=%distance keyframe-max-dist=%distance "
           "keyframe-period=%distance",
           "bitrate=%unit target-bitrate=%unit",
           "min-qp=%quantizer qp-min=%quantizer",
           51,
           16,
           true,
           false};

const EncoderTraits *find(const QByteArray &factoryName)
{
    return std::find_if(std::begin(known), std::end(known), [&](const EncoderTraits &traits) {
        return factoryName.startsWith(traits.factoryName);
    });
}

} // namespace

/*!
    \class EncoderTraits

    The properties by which an element encodes live video, as texts of the form "name=value
    name=value". In the values %distance and %seconds stand for the number of frames and of seconds
    from one key frame to the next, %bits and %kilobits for the bit rate, %unit for the bit rate in
    the unit that the property's own description tells, and %quantizer for the finest quantizer, 0
    when any will do. A picture's sides must have smallestSide pixels at least.

    An element that doesn't take key frame requests, or a bit rate while it runs, is restarted
    between two frames. For the bit rate that also depends on what the property says of itself.

    Constant quality is a bit rate as the ceiling and a quantizer that doesn't get finer than the
    quality asks for: every element can do that without delay.
*/

/*! True if the element's settings for live video have been tried out. */
bool EncoderTraits::isKnown(const QByteArray &factoryName)
{
    return find(factoryName) != std::end(known);
}

/*! What is known of the element, or for others of hardware elements in general. */
const EncoderTraits &EncoderTraits::of(const QByteArray &factoryName)
{
    const EncoderTraits *traits = find(factoryName);
    return traits == std::end(known) ? other : *traits;
}
