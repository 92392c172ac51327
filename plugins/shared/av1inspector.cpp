// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Looks into the bytes of an AV1 temporal unit.

#include "av1inspector.h"

namespace {

enum ObuType { SequenceHeader = 1, FrameHeader = 3, Frame = 6 };

struct Obu
{
    int type = 0;
    int payload = 0;
    int end = 0;
};

/*! Reads the number at \a position, which moves behind it; -1 if it doesn't end within the data. */
qint64 readLeb128(const QByteArray &data, int *position)
{
    const int maximumBytes = 8;
    quint64 value = 0;
    for (int i = 0; i < maximumBytes && *position < data.size(); ++i) {
        const uchar byte = uchar(data.at((*position)++));
        value |= quint64(byte & 0x7f) << (7 * i);
        if (!(byte & 0x80))
            return qint64(value);
    }
    return -1;
}

/*! False when what lies at \a begin is no OBU, or one that is cut off. */
bool readObu(const QByteArray &data, int begin, Obu *obu)
{
    const uchar header = uchar(data.at(begin));
    const bool isForbidden = header & 0x80;
    const bool hasExtension = header & 4;
    const bool hasSize = header & 2;
    obu->type = header >> 3 & 0xf;
    obu->payload = begin + (hasExtension ? 2 : 1);
    if (isForbidden || obu->payload > data.size())
        return false;
    const qint64 size = hasSize ? readLeb128(data, &obu->payload) : data.size() - obu->payload;
    if (size < 0 || size > data.size() - obu->payload)
        return false;
    obu->end = obu->payload + int(size);
    return true;
}

/*! Whether decoding can begin at a frame with this header, if a sequence header came before it. */
bool isShownKeyFrame(uchar header)
{
    const bool showsExistingFrame = header & 0x80;
    const int type = header >> 5 & 3;
    const bool isShown = header & 0x10;
    return !showsExistingFrame && type == 0 && isShown;
}

} // namespace

/*!
    \class Av1Inspector

    Takes the low-overhead format, in which every OBU but the last one has its size.
*/

FrameInspector::Kind Av1Inspector::inspect(QByteArray *data)
{
    bool hasSequenceHeader = false;
    Obu obu;
    for (int begin = 0; begin < data->size(); begin = obu.end) {
        if (!readObu(*data, begin, &obu))
            return Malformed;
        if (obu.type == SequenceHeader)
            hasSequenceHeader = true;
        if (obu.type != FrameHeader && obu.type != Frame)
            continue;
        if (obu.payload == obu.end)
            return Malformed;
        const bool isKeyFrame = hasSequenceHeader && isShownKeyFrame(uchar(data->at(obu.payload)));
        return isKeyFrame ? KeyFrame : DeltaFrame;
    }
    return Malformed;
}
