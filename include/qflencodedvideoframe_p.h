// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The record that the copies of an encoded frame share.

// This header is not part of the public interface: it may change from one version to the next.

#ifndef QFLENCODEDVIDEOFRAME_P_H
#define QFLENCODEDVIDEOFRAME_P_H

#include "qflencodedvideoframe.h"

class QFLEncodedVideoFramePrivate : public QSharedData
{
public:
    QByteArray data;
    QFLEncodedVideoFrame::MetaData meta;
};

#endif
