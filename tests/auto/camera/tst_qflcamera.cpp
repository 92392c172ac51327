// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Tests of the camera.

#include "fakebackend.h"
#include "fakecameracontrols.h"

#include <qflcamera.h>
#include <qflcameraexposure.h>
#include <qflcamerafocus.h>
#include <qflcamerainfo.h>

#include <QtTest/QtTest>

using Hint = QMediaServiceProviderHint;
using CameraMaker = std::function<QFLCamera *(QObject *parent)>;
Q_DECLARE_METATYPE(CameraMaker)
Q_DECLARE_METATYPE(QMediaServiceProviderHint)

struct Capturing : FakeWorld
{
    FakeCameraControl *control = service.add<FakeCameraControl>(QCameraControl_iid);
    FakeLocks *locks = service.add<FakeLocks>(QCameraLocksControl_iid);
    FakeSelector *selector = service.add<FakeSelector>(QVideoDeviceSelectorControl_iid);
    FakeRenderer *renderer = service.add<FakeRenderer>(QVideoRendererControl_iid);

    Capturing() : FakeWorld("facelink.camera", "c")
    {
        service.add<FakeCameraInfoControl>(QCameraInfoControl_iid);
        service.add<FakeViewfinderSettings>(QCameraViewfinderSettingsControl2_iid);
    }
};

struct LoggedCapturing : Capturing
{
    using S = QCamera::LockStatus;
    using R = QCamera::LockChangeReason;

    QFLCamera camera;

    LoggedCapturing()
    {
        logSignal(&camera, &QFLCamera::stateChanged, "state");
        logSignal(&camera, &QFLCamera::statusChanged, "status");
        logSignal(&camera, &QFLCamera::captureModeChanged, "mode");
        logSignal(&camera, qOverload<QCamera::Error>(&QFLCamera::error), "error");
        logSignal(&camera, qOverload<S, R>(&QFLCamera::lockStatusChanged), "all");
        logSignal(&camera, qOverload<QCamera::LockType, S, R>(&QFLCamera::lockStatusChanged),
                  "one");
        logSignal(&camera, &QFLCamera::locked, "locked");
        logSignal(&camera, &QFLCamera::lockFailed, "failed");
        FakeLog::take();
    }
};

class tst_QFLCamera : public QObject
{
    Q_OBJECT

private slots:
    void construction_data()
    {
        QTest::addColumn<CameraMaker>("make");
        QTest::addColumn<Hint>("hint");
        QTest::addColumn<int>("selected");
        FakeBackend backend;
        backend.deviceNames = {"back", "gone", "front"};
        const auto row = [](const char *name, const auto &argument, const auto &hint, int index) {
            const CameraMaker make
                    = [=](QObject *parent) { return new QFLCamera(argument, parent); };
            QTest::newRow(name) << make << Hint(hint) << index;
        };
        const QByteArray back = "back", front = "front", cut("back\0x", 6), gone = "gone", null;
        const CameraMaker makeDefault = [](QObject *parent) { return new QFLCamera(parent); };
        QTest::newRow("default") << makeDefault << Hint() << 2;
        row("name", back, back, 1);
        row("first name", front, front, 0);
        row("name up to a zero byte", cut, cut, 1);
        row("unknown name", gone, gone, -1);
        row("null name", null, null, -1);
        row("info", QFLCameraInfo(back), back, 1);
        row("info of a lost device", QFLCameraInfo(gone), gone, -1);
        row("position", QCamera::FrontFace, QCamera::FrontFace, 0);
        row("position that no device has", QCamera::BackFace, QCamera::BackFace, 2);
        row("no position", QCamera::UnspecifiedPosition, QCamera::UnspecifiedPosition, 2);
    }

    void construction()
    {
        QFETCH(CameraMaker, make);
        Capturing world;
        world.selector->selected = -1;
        QObject parent;
        bool late = true;
        world.selector->onSelection = [&] {
            late = parent.findChild<QFLCameraExposure *>() && parent.findChild<QFLCameraFocus *>();
        };
        const QFLCamera *camera = make(&parent);
        QTEST(world.lastHint, "hint");
        QTEST(world.selector->selected, "selected");
        QVERIFY(late);
        QCOMPARE(camera->exposure(), parent.findChild<QFLCameraExposure *>());
        QCOMPARE(camera->focus(), parent.findChild<QFLCameraFocus *>());
        QCOMPARE(camera->imageProcessing(), nullptr);
        QCOMPARE(camera->error(), QCamera::NoError);
    }

    void withoutControlsOrService()
    {
        Capturing world;
        world.service.controls.clear();
        QFLCamera bare(QCamera::FrontFace);
        FakeLog::take();
        QCOMPARE(bare.error(), QCamera::NoError);
        QCOMPARE(bare.availability(), QMultimedia::ServiceMissing);
        bare.searchAndLock(QCamera::LockFocus);
        QCOMPARE(bare.requestedLocks(), QCamera::LockTypes());
        QCOMPARE(bare.lockStatus(), QCamera::Unlocked);
        bare.start();
        QCOMPARE(bare.error(), QCamera::ServiceMissingError);
        COMPARE_LOG("");

        world.services.clear();
        QFLCamera camera;
        logSignal(&camera, qOverload<QCamera::Error>(&QFLCamera::error), "error");
        FakeLog::take();
        QCOMPARE(camera.error(), QCamera::ServiceMissingError);
        QVERIFY(camera.exposure() && camera.focus());
        for (auto request : {&QFLCamera::load, &QFLCamera::unload, &QFLCamera::start,
                             &QFLCamera::stop, &QFLCamera::stop}) {
            (camera.*request)();
            COMPARE_LOG("error 3");
            QCOMPARE(camera.errorString(), QStringLiteral("The camera service is missing"));
        }
        QCOMPARE(camera.availability(), QMultimedia::ServiceMissing);
        camera.setCaptureMode(QCamera::CaptureVideo);
        camera.setViewfinder(nullptr);
        QCOMPARE(camera.captureMode(), QCamera::CaptureModes(QCamera::CaptureStillImage));
        QVERIFY(!camera.isCaptureModeSupported(QCamera::CaptureVideo));
        QCOMPARE(camera.status(), QCamera::UnavailableStatus);
        QCOMPARE(camera.state(), QCamera::UnloadedState);
        QVERIFY(QFLCameraInfo(camera).isNull());
        COMPARE_LOG("info default: info from camera \"\" \"\" true QCamera::UnspecifiedPosition 0");
    }

    void states()
    {
        LoggedCapturing world;
        world.camera.load();
        QCOMPARE(world.camera.state(), QCamera::LoadedState);
        world.camera.start();
        QCOMPARE(world.camera.state(), QCamera::ActiveState);
        world.camera.stop();
        world.camera.stop();
        world.camera.unload();
        QCOMPARE(world.camera.state(), QCamera::UnloadedState);
        COMPARE_LOG("c.camera setState 1, state 1, c.camera setState 2, state 2, "
                    "c.camera setState 1, state 1, c.camera setState 1, c.camera setState 0, "
                    "state 0");
        world.control->currentStatus = QCamera::StartingStatus;
        QCOMPARE(world.camera.status(), QCamera::StartingStatus);

        QCOMPARE(world.camera.availability(), QMultimedia::Available);
        for (int i = 0; i < 2; ++i)
            emit world.control->error(QCamera::CameraError, QStringLiteral("lens cap"));
        QCOMPARE(world.camera.error(), QCamera::CameraError);
        QCOMPARE(world.camera.errorString(), QStringLiteral("lens cap"));
        QCOMPARE(world.camera.availability(), QMultimedia::ResourceError);
        world.camera.start();
        COMPARE_LOG("c.camera status, error 1, error 1, c.camera setState 2, state 2");
        QCOMPARE(world.camera.error(), QCamera::NoError);
        QCOMPARE(world.camera.errorString(), QString());
        QCOMPARE(world.camera.availability(), QMultimedia::Available);
        world.selector->names.clear();
        QCOMPARE(world.camera.availability(), QMultimedia::ResourceError);
    }

    // How a property changes, and what happens at the next turn of the event loop.
    void propertyChange_data()
    {
        QTest::addColumn<bool>("active");
        QTest::addColumn<bool>("allowed");
        QTest::newRow("not active") << false << false;
        QTest::newRow("allowed") << true << true;
        QTest::newRow("restart") << true << false;
    }

    void propertyChange()
    {
        QFETCH(bool, active);
        QFETCH(bool, allowed);
        const bool restarts = active && !allowed;
        const QByteArray before = QByteArray("c.camera status, c.camera state")
                + (active ? ", c.camera can X 1" : "") + (restarts ? ", c.camera setState 1" : "");
        const QByteArray after = restarts ? "c.camera setState 2" : "";
        LoggedCapturing world;
        world.control->accepts = allowed;
        active ? world.camera.start() : world.camera.load();
        FakeLog::take();
        QVERIFY(world.camera.isCaptureModeSupported(QCamera::CaptureVideo));
        QVERIFY(!world.camera.isCaptureModeSupported(QCamera::CaptureStillImage));
        world.camera.setCaptureMode(QCamera::CaptureVideo);
        COMPARE_LOG(named(before, '1') + ", c.camera setCaptureMode 2, mode 2");
        QCOMPARE(world.camera.captureMode(), QCamera::CaptureModes(QCamera::CaptureVideo));
        world.camera.setCaptureMode(QCamera::CaptureVideo);
        COMPARE_LOG("");
        emit world.control->statusChanged(QCamera::LoadedStatus);
        COMPARE_LOG("status 4");
        QCOMPARE(world.camera.state(), active ? QCamera::ActiveState : QCamera::LoadedState);
        QCoreApplication::processEvents();
        COMPARE_LOG(after);
        world.camera.setViewfinderSettings(QCameraViewfinderSettings());
        QCoreApplication::processEvents();
        const QByteArray log = named(before, '5') + ", c.cameraviewfindersettings2 set";
        COMPARE_LOG(after.isEmpty() ? log : log + ", " + after);
    }

    void restartCancelled()
    {
        LoggedCapturing world;
        world.control->accepts = false;
        world.control->isLive = true;
        for (auto request : {&QFLCamera::stop, &QFLCamera::unload}) {
            world.camera.start();
            world.camera.setCaptureMode(world.camera.captureMode() ^ QCamera::CaptureVideo);
            QCOMPARE(world.camera.state(), QCamera::ActiveState);
            (world.camera.*request)();
            FakeLog::take();
            QCoreApplication::processEvents();
            COMPARE_LOG("");
            QCOMPARE(world.camera.state(), world.control->currentState);
        }
    }

    void locks()
    {
        LoggedCapturing world;
        QCOMPARE(world.camera.supportedLocks(), world.locks->supportedLocks());
        const auto report = [&](int lock, int status, int reason) {
            world.locks->report(lock, status, reason);
            return FakeLog::take();
        };
        world.camera.searchAndLock();
        COMPARE_LOG("c.cameralocks lock 5");
        QCOMPARE(world.camera.requestedLocks(), QCamera::LockExposure | QCamera::LockFocus);
        QCOMPARE(report(4, 1, 0), QByteArray("all 1 0, one 4 1 0"));
        QCOMPARE(report(1, 2, 1), QByteArray("one 1 2 1"));
        QCOMPARE(world.camera.lockStatus(), QCamera::Searching);
        QCOMPARE(world.camera.lockStatus(QCamera::LockExposure), QCamera::Locked);
        QCOMPARE(report(4, 2, 1), QByteArray("all 2 1, locked, one 4 2 1"));
        QCOMPARE(report(4, 0, 2), QByteArray("all 0 2, failed, one 4 0 2"));
        QCOMPARE(report(4, 2, 1), QByteArray("all 2 1, locked, one 4 2 1"));

        // A lock that nobody requested counts for nothing, but its reason is kept.
        QCOMPARE(report(2, 2, 2), QByteArray("one 2 2 2"));
        QCOMPARE(world.camera.lockStatus(QCamera::LockWhiteBalance), QCamera::Unlocked);
        world.camera.unlock();
        COMPARE_LOG("c.cameralocks unlock 5, all 0 2, failed");
        QCOMPARE(world.camera.requestedLocks(), QCamera::LockTypes());
        world.camera.searchAndLock(QCamera::LockWhiteBalance);
        world.camera.unlock();
        COMPARE_LOG("c.cameralocks lock 0, c.cameralocks unlock 0");

        // What is reported during a request shows in the aggregate only after it.
        world.locks->onRequest = [&] {
            world.locks->report(4, 1, 0);
            world.locks->report(4, 2, 1);
        };
        world.camera.searchAndLock(QCamera::LockFocus);
        COMPARE_LOG("c.cameralocks lock 4, one 4 1 0, one 4 2 1, all 2 1, locked");
        world.camera.searchAndLock(QCamera::LockFocus);
        COMPARE_LOG("c.cameralocks lock 4, one 4 1 0, one 4 2 1");
        world.camera.unlock(QCamera::LockFocus | QCamera::LockWhiteBalance);
        COMPARE_LOG("c.cameralocks unlock 4, all 0 1");

        // A lock that is given up as soon as it is reached is not announced any more.
        world.locks->onRequest = [] {};
        world.locks->report(4, 1, 0);
        world.camera.searchAndLock(QCamera::LockFocus);
        FakeLog::take();
        callOnce([&] { world.camera.unlock(); });
        QCOMPARE(report(4, 2, 1),
                 QByteArray("all 2 1, c.cameralocks unlock 4, all 0 1, one 4 2 1"));

        world.locks->supported |= QCamera::LockWhiteBalance;
        world.locks->report(2, 1, 0);
        world.camera.searchAndLock();
        QCOMPARE(world.camera.requestedLocks(), world.locks->supported);
        QCOMPARE(world.camera.lockStatus(), QCamera::Searching);
    }

    // The service goes back to the provider that it came from.
    void lifetime()
    {
        Capturing world;
        FakeSurface surface;
        const QByteArray log = "p+facelink.camera, c+camera, c+cameralocks, c+videodeviceselector, "
                               "c+camerainfo, c+cameraviewfindersettings2";
        const QByteArray others = ", c+cameraexposure, c+cameraflash, c+camerafocus, "
                                  "c+camerazoom, c.videodeviceselector select 2";
        auto *settings = world.service.controls.take(QCameraViewfinderSettingsControl2_iid);
        const QFLCamera older;
        COMPARE_LOG(log + ", c+cameraviewfindersettings" + others);
        world.service.controls[QCameraViewfinderSettingsControl2_iid] = settings;
        auto *camera = new QFLCamera;
        COMPARE_LOG(log + others);

        camera->setViewfinder(&surface);
        COMPARE_LOG("c+videorenderer, c.videorenderer surface");
        QCOMPARE(world.renderer->current.data(), &surface);
        connect(camera->exposure(), &QObject::destroyed, [] { FakeLog::add("no exposure"); });
        connect(camera->focus(), &QObject::destroyed, [] { FakeLog::add("no focus"); });
        const FakeBackend other("other");
        delete camera;
        COMPARE_LOG("no exposure, no focus, c-camera, c-cameralocks, c-videodeviceselector, "
                    "c-camerainfo, c-cameraviewfindersettings2, p-c, "
                    "c.videorenderer no surface, c-videorenderer");
    }

    void backendThread()
    {
        LoggedCapturing world;
        world.camera.searchAndLock(QCamera::LockFocus);
        FakeLog::take();
        runInThread([&] {
            emit world.control->stateChanged(QCamera::ActiveState);
            emit world.control->error(QCamera::CameraError, QStringLiteral("far away"));
            world.locks->report(QCamera::LockFocus, QCamera::Locked, QCamera::LockAcquired);
            emit world.control->captureModeChanged(QCamera::CaptureVideo);
            emit world.control->statusChanged(QCamera::ActiveStatus);
        });
        COMPARE_LOG("");
        QCoreApplication::processEvents();
        COMPARE_LOG("state 2, error 1, all 2 1, locked, one 4 2 1, mode 2, status 8");
        QCOMPARE(world.camera.state(), QCamera::ActiveState);
        QCOMPARE(world.camera.errorString(), QStringLiteral("far away"));
    }
};

QTEST_GUILESS_MAIN(tst_QFLCamera)

#include "tst_qflcamera.moc"
