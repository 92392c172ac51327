// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The stream settings of an encoded video sink.

// This header is not part of the public interface: it may change from one version to the next.

#ifndef QFLENCODEDVIDEOSINK_P_H
#define QFLENCODEDVIDEOSINK_P_H

#include "qflencodedvideosink.h"

class QFLEncodedVideoSinkPrivate
{
public:
    QFLEncodedVideoSinkPrivate() = default;
    virtual ~QFLEncodedVideoSinkPrivate() = default;

    QVideoEncoderSettings settings;

private:
    Q_DISABLE_COPY(QFLEncodedVideoSinkPrivate)
};

#endif
