// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Tells when a camera is plugged in or taken away.

#ifndef CAMERADEVICEMONITOR_H
#define CAMERADEVICEMONITOR_H

#include "gate.h"
#include "gstpointers.h"

#include <QtCore/qobject.h>

class CameraDeviceMonitor : public QObject
{
    Q_OBJECT

public:
    explicit CameraDeviceMonitor(QObject *parent = nullptr);
    ~CameraDeviceMonitor() override;

Q_SIGNALS:
    void devicesChanged();

private:
    static GstBusSyncReply handleMessage(GstBus *bus, GstMessage *message, gpointer call);

    const std::shared_ptr<Gate> m_gate = std::make_shared<Gate>();
    std::unique_ptr<GstDeviceMonitor, GstObjectUnref> m_monitor;
};

#endif
