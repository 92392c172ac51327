// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Tells when a camera is plugged in or taken away.

#include "cameradevicemonitor.h"

#include "gstreamersetup.h"

/*!
    Watches from construction to destruction. devicesChanged() is emitted in the thread of this
    object, from a posted event, once for each device that comes, goes or changes.
*/
CameraDeviceMonitor::CameraDeviceMonitor(QObject *parent) : QObject(parent)
{
    if (!GStreamerSetup::initialize())
        return;
    m_monitor.reset(gst_device_monitor_new());
    gst_device_monitor_add_filter(m_monitor.get(), "Video/Source", nullptr);
    const GstBusPointer bus(gst_device_monitor_get_bus(m_monitor.get()));
    gst_bus_set_sync_handler(bus.get(), handleMessage, this, nullptr);
    gst_device_monitor_start(m_monitor.get());
}

CameraDeviceMonitor::~CameraDeviceMonitor()
{
    if (!m_monitor)
        return;
    gst_device_monitor_stop(m_monitor.get());
    const GstBusPointer bus(gst_device_monitor_get_bus(m_monitor.get()));
    gst_bus_set_sync_handler(bus.get(), nullptr, nullptr, nullptr);
}

/*! Runs on the thread of the device provider, so it only posts an event. */
GstBusSyncReply CameraDeviceMonitor::handleMessage(GstBus *, GstMessage *message, gpointer self)
{
    switch (GST_MESSAGE_TYPE(message)) {
    case GST_MESSAGE_DEVICE_ADDED:
    case GST_MESSAGE_DEVICE_REMOVED:
    case GST_MESSAGE_DEVICE_CHANGED:
        QMetaObject::invokeMethod(static_cast<CameraDeviceMonitor *>(self),
                                  &CameraDeviceMonitor::devicesChanged, Qt::QueuedConnection);
        break;
    default:
        break;
    }
    // Nobody reads the bus, so nothing may pile up there.
    gst_message_unref(message);
    return GST_BUS_DROP;
}
