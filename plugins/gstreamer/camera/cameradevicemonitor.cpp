// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Tells when a camera is plugged in or taken away.

#include "cameradevicemonitor.h"

#include "gstreamersetup.h"

#include <QtCore/qmutex.h>

// Outlives the monitor while a thread of a device provider is at work with it.
struct CameraDeviceMonitor::Receiver
{
    QMutex mutex;
    CameraDeviceMonitor *monitor;
};

/*!
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
    m_receiver = std::make_shared<Receiver>();
    m_receiver->monitor = this;
    gst_bus_set_sync_handler(bus.get(), handleMessage, new std::shared_ptr<Receiver>(m_receiver),
                             dropReceiver);
    gst_device_monitor_start(m_monitor.get());
}

CameraDeviceMonitor::~CameraDeviceMonitor()
{
    if (!m_monitor)
        return;
    {
        const QMutexLocker locker(&m_receiver->mutex);
        m_receiver->monitor = nullptr;
    }
    gst_device_monitor_stop(m_monitor.get());
    const GstBusPointer bus(gst_device_monitor_get_bus(m_monitor.get()));
    gst_bus_set_sync_handler(bus.get(), nullptr, nullptr, nullptr);
}

/*! Runs on the thread of the device provider, so it only posts an event. */
GstBusSyncReply CameraDeviceMonitor::handleMessage(GstBus *, GstMessage *message, gpointer receiver)
{
    Receiver *const target = static_cast<std::shared_ptr<Receiver> *>(receiver)->get();
    const QMutexLocker locker(&target->mutex);
    switch (GST_MESSAGE_TYPE(message)) {
    case GST_MESSAGE_DEVICE_ADDED:
    case GST_MESSAGE_DEVICE_REMOVED:
    case GST_MESSAGE_DEVICE_CHANGED:
        if (target->monitor) {
            QMetaObject::invokeMethod(target->monitor, &CameraDeviceMonitor::devicesChanged,
                                      Qt::QueuedConnection);
        }
        break;
    default:
        break;
    }
    // Nobody reads the bus, so nothing may pile up there.
    gst_message_unref(message);
    return GST_BUS_DROP;
}

void CameraDeviceMonitor::dropReceiver(gpointer receiver)
{
    delete static_cast<std::shared_ptr<Receiver> *>(receiver);
}
