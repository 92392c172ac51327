// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The value that carries one compressed video frame.

#ifndef QFLENCODEDVIDEOFRAME_H
#define QFLENCODEDVIDEOFRAME_H

#include "qflglobal.h"

#include <QtCore/qbytearray.h>
#include <QtCore/qmetatype.h>
#include <QtCore/qshareddata.h>

class QDebug;
class QFLEncodedVideoFramePrivate;

class Q_FACELINK_EXPORT QFLEncodedVideoFrame
{
public:
    enum Type : int { Type_Invalid = 0, Type_Key = 1, Type_Intra = 2 };

    struct MetaData
    {
        Type type = Type_Invalid;
        quint64 timestamp = 0;
    };

    QFLEncodedVideoFrame();
    QFLEncodedVideoFrame(QByteArray &data, const MetaData &meta);
    QFLEncodedVideoFrame(const char *data, unsigned long size, const MetaData &meta);
    QFLEncodedVideoFrame(const QFLEncodedVideoFrame &other);
    QFLEncodedVideoFrame &operator=(const QFLEncodedVideoFrame &other);
    ~QFLEncodedVideoFrame();

    bool isValid() const;
    QByteArray data() const;
    MetaData meta() const;
    void setTimestamp(unsigned long long timestamp);

    bool operator==(const QFLEncodedVideoFrame &other) const;
    bool operator!=(const QFLEncodedVideoFrame &other) const;

private:
    QExplicitlySharedDataPointer<QFLEncodedVideoFramePrivate> d;
};

#ifndef QT_NO_DEBUG_STREAM
Q_FACELINK_EXPORT QDebug operator<<(QDebug debug, const QFLEncodedVideoFrame &frame);
#endif

Q_DECLARE_METATYPE(::QFLEncodedVideoFrame)
Q_DECLARE_METATYPE(::QFLEncodedVideoFrame::Type)
Q_DECLARE_METATYPE(::QFLEncodedVideoFrame::MetaData)

#endif
