// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The base of everything that receives encoded media from a source.

#ifndef QFLSINK_H
#define QFLSINK_H

#include "qflglobal.h"

#include <QtCore/qobject.h>
#include <QtCore/qscopedpointer.h>

class QFLSinkPrivate;
class QFLSource;

class Q_FACELINK_EXPORT QFLSink
{
public:
    enum Error : int {
        NoError = 0,
        FormatError = 1,
        TransportError = 2,
        OverrunError = 3,
        ResourceError = 4,
        HardwareError = 5
    };

    QFLSink();
    virtual ~QFLSink();

    virtual bool link(QFLSource *source);
    virtual bool unlink(QFLSource *source);
    virtual void unlink();

    virtual bool isActive() const;
    void setActive(bool active);

    Error error() const;
    void setError(Error error);

protected:
    explicit QFLSink(QFLSinkPrivate &dd);

private:
    Q_DISABLE_COPY(QFLSink)
    friend class QFLEncodedVideoSink;
    friend class QFLSinkPointer;

    QScopedPointer<QFLSinkPrivate> d_ptr;
};

#define QFLSink_iid "facelink.sink/1.0"
Q_DECLARE_INTERFACE(QFLSink, QFLSink_iid)

#endif
