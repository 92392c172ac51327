// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Scriptable controls of a camera service.

#ifndef FAKECAMERACONTROLS_H
#define FAKECAMERACONTROLS_H

#include "fakecontrol.h"

#include <QtMultimedia/qcameracontrol.h>
#include <QtMultimedia/qcamerainfocontrol.h>
#include <QtMultimedia/qcameralockscontrol.h>
#include <QtMultimedia/qcameraviewfindersettingscontrol.h>
#include <QtMultimedia/qvideodeviceselectorcontrol.h>

#include <functional>

/*! Reports changes of the state only, unless it is live. */
class FakeCameraControl : public FakeControl<QCameraControl>
{
public:
    QCamera::State state() const override { return ask("state"), currentState; }
    void setState(QCamera::State state) override
    {
        const QPointer<FakeCameraControl> self(this);
        log("setState", state);
        if (!self || (std::exchange(currentState, state) == state && !isLive))
            return;
        emit stateChanged(state);
        if (self && isLive)
            emit statusChanged(currentStatus);
    }
    QCamera::Status status() const override { return ask("status"), currentStatus; }
    QCamera::CaptureModes captureMode() const override { return currentMode; }
    void setCaptureMode(QCamera::CaptureModes mode) override
    {
        currentMode = mode;
        const QPointer<FakeCameraControl> self(this);
        log("setCaptureMode", mode);
        if (self)
            emit captureModeChanged(mode);
    }
    bool isCaptureModeSupported(QCamera::CaptureModes mode) const override { return mode == 2; }
    bool canChangeProperty(PropertyChangeType type, QCamera::Status status) const override
    {
        return ask("can " + QByteArray::number(type) + ' ' + QByteArray::number(status));
    }

    QCamera::State currentState = QCamera::UnloadedState;
    QCamera::Status currentStatus = QCamera::UnloadedStatus;
    QCamera::CaptureModes currentMode = QCamera::CaptureViewfinder;
};

class FakeLocks : public FakeControl<QCameraLocksControl>
{
public:
    QCamera::LockTypes supportedLocks() const override { return supported; }
    QCamera::LockStatus lockStatus(QCamera::LockType lock) const override { return statuses[lock]; }
    void searchAndLock(QCamera::LockTypes locks) override
    {
        const auto request = onRequest;
        log("lock", locks);
        request();
    }
    void unlock(QCamera::LockTypes locks) override { log("unlock", locks); }

    void report(int lock, int status, int reason)
    {
        statuses[QCamera::LockType(lock)] = QCamera::LockStatus(status);
        emit lockStatusChanged(QCamera::LockType(lock), QCamera::LockStatus(status),
                               QCamera::LockChangeReason(reason));
    }

    QCamera::LockTypes supported = QCamera::LockExposure | QCamera::LockFocus;
    QMap<QCamera::LockType, QCamera::LockStatus> statuses;
    std::function<void()> onRequest = [] {};
};

class FakeSelector : public FakeControl<QVideoDeviceSelectorControl>
{
public:
    int deviceCount() const override { return names.size(); }
    QString deviceName(int index) const override { return names.value(index); }
    QString deviceDescription(int index) const override { return QString::number(index); }
    int defaultDevice() const override { return 2; }
    int selectedDevice() const override { return selected; }
    void setSelectedDevice(int index) override
    {
        log("select", index);
        selected = index;
        onSelection();
    }

    QStringList names = {QStringLiteral("front"), QStringLiteral("back"), QStringLiteral("other"),
                         QStringLiteral("back")};
    int selected = 0;
    std::function<void()> onSelection = [] {};
};

class FakeCameraInfoControl : public FakeControl<QCameraInfoControl>
{
public:
    QCamera::Position cameraPosition(const QString &name) const override
    {
        if (name.isEmpty())
            return QCamera::BackFace;
        return name == QLatin1String("front") ? QCamera::FrontFace : QCamera::UnspecifiedPosition;
    }
    int cameraOrientation(const QString &name) const override { return name.isEmpty() ? 180 : 90; }
};

class FakeViewfinderSettings : public FakeControl<QCameraViewfinderSettingsControl2>
{
public:
    QList<QCameraViewfinderSettings> supportedViewfinderSettings() const override
    {
        return supported;
    }
    QCameraViewfinderSettings viewfinderSettings() const override { return current; }
    void setViewfinderSettings(const QCameraViewfinderSettings &) override { log("set"); }

    QList<QCameraViewfinderSettings> supported;
    QCameraViewfinderSettings current;
};

class FakeOlderViewfinderSettings : public FakeControl<QCameraViewfinderSettingsControl>
{
public:
    bool isViewfinderParameterSupported(ViewfinderParameter parameter) const override
    {
        return !unsupported.contains(parameter);
    }
    QVariant viewfinderParameter(ViewfinderParameter parameter) const override
    {
        return values.value(parameter);
    }
    void setViewfinderParameter(ViewfinderParameter parameter, const QVariant &value) override
    {
        values[parameter] = value;
        log(QByteArray::number(parameter) + ' ' + value.typeName());
    }

    QMap<int, QVariant> values;
    QList<int> unsupported;
};

#endif
