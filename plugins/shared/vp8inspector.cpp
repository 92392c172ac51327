// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Looks into the bytes of a VP8 frame.

#include "vp8inspector.h"

#include <QtCore/qendian.h>

namespace {

const int frameTagSize = 3;
const int keyFrameHeaderSize = 10;

bool isKeyFrame(const QByteArray &frame)
{
    return !(frame.at(0) & 1);
}

} // namespace

/*!
    \class Vp8Inspector

    Reads the frame tag and, of key frames, the start code and the size behind it.
*/

/*! The size of the pictures from \a frame on; empty unless that is a key frame. */
QSize Vp8Inspector::keyFrameSize(const QByteArray &frame)
{
    if (frame.size() < keyFrameHeaderSize || !isKeyFrame(frame))
        return QSize();
    const int sizePosition = 6;
    return {qFromLittleEndian<quint16>(frame.constData() + sizePosition) & 0x3fff,
            qFromLittleEndian<quint16>(frame.constData() + sizePosition + 2) & 0x3fff};
}

FrameInspector::Kind Vp8Inspector::inspect(QByteArray *data)
{
    static const QByteArray startCode("\x9d\x01\x2a", 3);
    const bool isKey = isKeyFrame(*data);
    if (data->size() < (isKey ? keyFrameHeaderSize : frameTagSize))
        return Malformed;
    if (!isKey)
        return DeltaFrame;
    return data->mid(frameTagSize, startCode.size()) == startCode ? KeyFrame : Malformed;
}
