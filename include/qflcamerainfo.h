// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The description of one camera device.

#ifndef QFLCAMERAINFO_H
#define QFLCAMERAINFO_H

#include "qflglobal.h"

#include <QtCore/qbytearray.h>
#include <QtCore/qlist.h>
#include <QtCore/qsharedpointer.h>
#include <QtCore/qstring.h>
#include <QtMultimedia/qcamera.h>

class QDebug;
class QFLCamera;
class QFLCameraInfoPrivate;

class Q_FACELINK_EXPORT QFLCameraInfo
{
public:
    explicit QFLCameraInfo(const QByteArray &name = QByteArray());
    explicit QFLCameraInfo(const QFLCamera &camera);
    QFLCameraInfo(const QFLCameraInfo &other);
    QFLCameraInfo &operator=(const QFLCameraInfo &other);
    ~QFLCameraInfo();

    bool isNull() const;
    QString deviceName() const;
    QString description() const;
    QCamera::Position position() const;
    int orientation() const;

    static QFLCameraInfo defaultCamera();
    static QList<QFLCameraInfo> availableCameras(QCamera::Position position
                                                 = QCamera::UnspecifiedPosition);

    bool operator==(const QFLCameraInfo &other) const;
    bool operator!=(const QFLCameraInfo &other) const;

private:
    QSharedPointer<QFLCameraInfoPrivate> d;
};

#ifndef QT_NO_DEBUG_STREAM
Q_FACELINK_EXPORT QDebug operator<<(QDebug debug, const QFLCameraInfo &camera);
#endif

#endif
