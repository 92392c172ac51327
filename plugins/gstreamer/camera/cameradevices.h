// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The cameras that the backend offers.

#ifndef CAMERADEVICES_H
#define CAMERADEVICES_H

#include <QtCore/qbytearray.h>
#include <QtCore/qcoreapplication.h>
#include <QtCore/qlist.h>
#include <QtCore/qstring.h>
#include <QtMultimedia/qcamera.h>

class CameraDevices
{
    Q_DECLARE_TR_FUNCTIONS(CameraDevices)

public:
    CameraDevices();

    QList<QByteArray> names() const;
    QByteArray defaultName() const;

    QString description(const QByteArray &name) const;
    QCamera::Position position(const QByteArray &name) const;
    int orientation(const QByteArray &name) const;

    static bool isTestSource(const QByteArray &name);
    static QString filePath(const QByteArray &name);
    static QByteArray video4LinuxPort(const QByteArray &name);

private:
    struct Device
    {
        QByteArray name;
        QString description;
        QByteArray path;
    };

    void addAnnounced(const QStringList &cameras);
    void addVideo4Linux();
    void addTestSource();
    QByteArray path(const QByteArray &name) const;

    QList<Device> m_devices;
};

#endif
