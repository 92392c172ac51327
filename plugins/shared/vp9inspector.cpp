// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Looks into the bytes of a VP9 frame.

#include "vp9inspector.h"

#include <QtCore/qendian.h>

/*!
    \class Vp9Inspector

    A superframe begins with the bytes of the first frame in it, and that one decides: nothing that
    follows can be decoded without it.
*/

FrameInspector::Kind Vp9Inspector::inspect(QByteArray *data)
{
    const quint32 syncCode = 0x498342;
    const int shortestKeyFrame = 5;
    const uchar header = uchar(data->at(0));
    const bool isHighestProfile = (header & 0x30) == 0x30;
    if (header >> 6 != 2 || (isHighestProfile && header & 8))
        return Malformed;
    // The reserved bit of the highest profile moves all that comes after it.
    const int shift = isHighestProfile ? 0 : 1;
    const bool showsExistingFrame = header >> (2 + shift) & 1;
    const bool isKeyFrame = !(header >> (1 + shift) & 1);
    if (showsExistingFrame || !isKeyFrame)
        return DeltaFrame;
    if (data->size() < shortestKeyFrame)
        return Malformed;
    const quint32 next = qFromBigEndian<quint32>(data->constData() + 1);
    return (next >> (7 + shift) & 0xffffff) == syncCode ? KeyFrame : Malformed;
}
