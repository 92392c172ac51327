// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// A pointer to a sink that becomes null when the sink is destroyed.

#ifndef QFLSINKPOINTER_H
#define QFLSINKPOINTER_H

#include "qflglobal.h"

#include <QtCore/qsharedpointer.h>

class QFLSink;

class Q_FACELINK_EXPORT QFLSinkPointer
{
public:
    QFLSinkPointer() = default;
    QFLSinkPointer(QFLSink *sink);

    QFLSink *data() const;
    bool isNull() const { return m_sink.isNull(); }

    QFLSink *operator->() const { return data(); }
    explicit operator bool() const { return !isNull(); }

    bool operator==(const QFLSinkPointer &other) const { return m_sink == other.m_sink; }
    bool operator!=(const QFLSinkPointer &other) const { return m_sink != other.m_sink; }

private:
    QWeakPointer<QFLSink> m_sink;
};

#endif
