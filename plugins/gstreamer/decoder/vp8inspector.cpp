// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Looks into the bytes of a VP8 frame.

#include "vp8inspector.h"

FrameInspector::Kind Vp8Inspector::inspect(QByteArray *data)
{
    static const QByteArray startCode("\x9d\x01\x2a", 3);
    const int frameTagSize = 3;
    const int keyFrameHeaderSize = 10;
    const bool isKeyFrame = !(data->at(0) & 1);
    if (data->size() < (isKeyFrame ? keyFrameHeaderSize : frameTagSize))
        return Malformed;
    if (!isKeyFrame)
        return DeltaFrame;
    return data->mid(frameTagSize, startCode.size()) == startCode ? KeyFrame : Malformed;
}
