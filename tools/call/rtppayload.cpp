// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// How a codec's frames travel in RTP packets.

#include "rtppayload.h"

#include <QtCore/qlist.h>

namespace {

const QList<RtpPayload> &payloads()
{
    static const QList<RtpPayload> list = {
            {QStringLiteral("H264"), "video/x-h264,stream-format=byte-stream,alignment=au",
             "rtph264pay aggregate-mode=zero-latency",
             "rtph264depay request-keyframe=true wait-for-keyframe=true"},
            {QStringLiteral("VP8"), "video/x-vp8", "rtpvp8pay picture-id-mode=15-bit",
             "rtpvp8depay request-keyframe=true wait-for-keyframe=true"},
            {QStringLiteral("VP9"), "video/x-vp9", "rtpvp9pay picture-id-mode=15-bit",
             "rtpvp9depay request-keyframe=true wait-for-keyframe=true"},
            {QStringLiteral("H265"), "video/x-h265,stream-format=byte-stream,alignment=au",
             "rtph265pay aggregate-mode=zero-latency", "rtph265depay"},
    };
    return list;
}

} // namespace

/*! The payload of the codec with this RTP encoding name; null if the call cannot carry it. */
RtpPayload RtpPayload::forCodec(const QString &codec)
{
    for (const RtpPayload &payload : payloads()) {
        if (payload.codec == codec)
            return payload;
    }
    return RtpPayload();
}

/*!
    The packets' caps. The feedback entry lets the receiving session ask the sender for a key frame.
*/
QByteArray RtpPayload::packetCaps() const
{
    return "application/x-rtp,media=video,clock-rate=90000,payload=96,"
           "rtcp-fb-nack-pli=(boolean)true,encoding-name="
            + codec.toLatin1();
}
