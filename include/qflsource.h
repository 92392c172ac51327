// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The interface of anything that produces encoded frames.

#ifndef QFLSOURCE_H
#define QFLSOURCE_H

#include "qflglobal.h"

#include <QtCore/qobject.h>

class QFLSink;

class Q_FACELINK_EXPORT QFLSource
{
public:
    virtual ~QFLSource();

    virtual bool addSink(QFLSink *sink) = 0;
    virtual bool removeSink(QFLSink *sink) = 0;

    virtual void sinkActiveChanged(QFLSink *sink, bool active);
    virtual void sinkErrorChanged(QFLSink *sink);
};

#define QFLSource_iid "facelink.source/1.0"
Q_DECLARE_INTERFACE(QFLSource, QFLSource_iid)

#endif
