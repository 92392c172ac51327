// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// How a decoding sink mirrors the status and the errors of its decoder.

// This header is not part of the public interface: it may change from one version to the next.

#ifndef QFLDECODINGVIDEOSINK_P_H
#define QFLDECODINGVIDEOSINK_P_H

#include "qfldecodingvideosink.h"

class QFLDecodingVideoSinkPrivate
{
public:
    QFLDecodingVideoSinkPrivate(QFLDecodingVideoSink *sink, QFLDecoder *decoder);

    void _q_error(QFLDecoder::Error error);
    void _q_statusChanged(QFLDecoder::Status status);

    QFLDecodingVideoSink *q_ptr;
    QFLDecoder *decoder;
    int run = 0;
};

#endif
