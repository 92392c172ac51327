// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Tells when a camera is plugged in or taken away.

#include "cameradevicemonitor.h"

#include "gstreamersetup.h"

/*!
    \class CameraDeviceMonitor

    Watches from construction to destruction. devicesChanged() is emitted in the thread of this
    object, from a posted event, once for each device that comes, goes or changes.
*/

CameraDeviceMonitor::CameraDeviceMonitor(QObject *parent) : QObject(parent)
{
    if (!GStreamerSetup::initialize())
        return;
    m_monitor.reset(gst_device_monitor_new());
    // Also the Video4Linux provider when another one offers the same cameras.
    gst_device_monitor_set_show_all_devices(m_monitor.get(), true);
    gst_device_monitor_add_filter(m_monitor.get(), "Video/Source", nullptr);
    const GstBusPointer bus(gst_device_monitor_get_bus(m_monitor.get()));
    gst_bus_set_sync_handler(
            bus.get(), handleMessage,
            new GatedCall<void()> {m_gate,
                                   [this] {
                                       QMetaObject::invokeMethod(
                                               this, &CameraDeviceMonitor::devicesChanged,
                                               Qt::QueuedConnection);
                                   }},
            GatedCall<void()>::destroy);
    gst_device_monitor_start(m_monitor.get());
}

CameraDeviceMonitor::~CameraDeviceMonitor()
{
    if (!m_monitor)
        return;
    m_gate->close();
    gst_device_monitor_stop(m_monitor.get());
    const GstBusPointer bus(gst_device_monitor_get_bus(m_monitor.get()));
    gst_bus_set_sync_handler(bus.get(), nullptr, nullptr, nullptr);
}

/*! Runs on the thread of the device provider, so it only posts an event. */
GstBusSyncReply CameraDeviceMonitor::handleMessage(GstBus *, GstMessage *message, gpointer data)
{
    const auto *call = GatedCall<void()>::from(data);
    switch (GST_MESSAGE_TYPE(message)) {
    case GST_MESSAGE_DEVICE_ADDED:
    case GST_MESSAGE_DEVICE_REMOVED:
    case GST_MESSAGE_DEVICE_CHANGED:
        call->gate->pass(call->function);
        break;
    default:
        break;
    }
    // Nobody reads the bus, so nothing may pile up there.
    gst_message_unref(message);
    return GST_BUS_DROP;
}
