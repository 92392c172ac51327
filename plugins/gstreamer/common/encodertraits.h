// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// What is particular to each encoder element.

#ifndef ENCODERTRAITS_H
#define ENCODERTRAITS_H

#include <QtCore/qbytearray.h>

struct EncoderTraits
{
    const char *factoryName;
    const char *live;
    const char *keyFrameDistance;
    const char *bitRate;
    const char *constantQuality;
    int largestQuantizer;
    int smallestSide;
    bool takesKeyFrameRequests;
    bool takesBitRateWhileRunning;

    static bool isKnown(const QByteArray &factoryName);
    static const EncoderTraits &of(const QByteArray &factoryName);
};

#endif
