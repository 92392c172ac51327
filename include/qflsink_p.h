// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The link, activity and error state of a sink.

// This header is not part of the public interface: it may change from one version to the next.

#ifndef QFLSINK_P_H
#define QFLSINK_P_H

#include "qflsink.h"

#include <QtCore/qsharedpointer.h>

class QFLEncodedVideoSink;

class QFLSinkPrivate
{
public:
    QFLSinkPrivate() = default;
    virtual ~QFLSinkPrivate() = default;

    QFLSource *source = nullptr;
    QFLSink::Error error = QFLSink::NoError;
    bool active = false;

    // What QFLSinkPointer watches; it owns nothing.
    QSharedPointer<QFLSink> self;
    QFLEncodedVideoSink *videoSink = nullptr;
    int linkCount = 0;

private:
    Q_DISABLE_COPY(QFLSinkPrivate)
};

#endif
