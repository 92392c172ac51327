// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The description of one encoder or decoder implementation.

#ifndef QFLCODECINFO_H
#define QFLCODECINFO_H

#include "qflglobal.h"

#include <QtCore/qbytearray.h>
#include <QtCore/qlist.h>
#include <QtCore/qsharedpointer.h>
#include <QtCore/qstring.h>

class QFLCodecInfoPrivate;

class Q_FACELINK_EXPORT QFLCodecInfo
{
public:
    explicit QFLCodecInfo(const QByteArray &codecId = QByteArray());
    QFLCodecInfo(const QFLCodecInfo &other);
    QFLCodecInfo &operator=(const QFLCodecInfo &other);
    ~QFLCodecInfo();

    bool isNull() const;
    QByteArray codecId() const;
    QString codec() const;
    bool isEncoder() const;
    bool isHardwareAccelerated() const;
    int maxInstances() const;

    static QList<QFLCodecInfo> availableEncoders(const QString &codec = QString(),
                                                 bool hardwareOnly = false);
    static QList<QFLCodecInfo> availableDecoders(const QString &codec = QString(),
                                                 bool hardwareOnly = false);

    bool operator==(const QFLCodecInfo &other) const;
    bool operator!=(const QFLCodecInfo &other) const;

private:
    QSharedPointer<QFLCodecInfoPrivate> d;
};

#endif
