// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-3.0-or-later
// Tests of the camera.

#include "fakebackend.h"
#include "fakecameracontrols.h"

#include <qflcamera.h>
#include <qflcameraexposure.h>
#include <qflcamerafocus.h>
#include <qflcamerainfo.h>

#include <QtTest/QtTest>

using CameraMaker = std::function<QFLCamera *(QObject *parent)>;
Q_DECLARE_METATYPE(CameraMaker)
Q_DECLARE_METATYPE(QMediaServiceProviderHint)

struct Capturing
{
    FakeBackend backend;
    FakeService service {"c"};
    FakeCameraControl *control = service.add<FakeCameraControl>(QCameraControl_iid);
    FakeLocks *locks = service.add<FakeLocks>(QCameraLocksControl_iid);
    FakeSelector *selector = service.add<FakeSelector>(QVideoDeviceSelectorControl_iid);
    FakeRenderer *renderer = service.add<FakeRenderer>(QVideoRendererControl_iid);

    Capturing()
    {
        backend.services["facelink.camera"] = &service;
        service.add<FakeCameraInfoControl>(QCameraInfoControl_iid);
        service.add<FakeViewfinderSettings>(QCameraViewfinderSettingsControl2_iid);
    }
};

static QByteArray line(std::initializer_list<int> numbers)
{
    QByteArray text;
    for (int number : numbers)
        text += ' ' + QByteArray::number(number);
    return text;
}

static void logLockSignals(QFLCamera *camera)
{
    using S = QCamera::LockStatus;
    using R = QCamera::LockChangeReason;
    QObject::connect(camera, qOverload<S, R>(&QFLCamera::lockStatusChanged),
                     [](S status, R reason) {
                         FakeLog::add("all" + line({status, reason}));
                     });
    QObject::connect(camera, qOverload<QCamera::LockType, S, R>(&QFLCamera::lockStatusChanged),
                     [](QCamera::LockType lock, S status, R reason) {
                         FakeLog::add("one" + line({lock, status, reason}));
                     });
    QObject::connect(camera, &QFLCamera::locked, [] { FakeLog::add("locked"); });
    QObject::connect(camera, &QFLCamera::lockFailed, [] { FakeLog::add("failed"); });
    FakeLog::take();
}

class tst_QFLCamera : public QObject
{
    Q_OBJECT

private slots:
    void construction_data()
    {
        QTest::addColumn<CameraMaker>("make");
        QTest::addColumn<QMediaServiceProviderHint>("hint");
        QTest::addColumn<int>("selected");
        const auto row = [](const char *name, auto argument, const auto &hint, int selected) {
            const CameraMaker make
                    = [=](QObject *parent) { return new QFLCamera(argument(), parent); };
            QTest::newRow(name) << make << QMediaServiceProviderHint(hint) << selected;
        };
        const auto byName = [&](const char *name, const QByteArray &device, int selected) {
            row(
                    name, [=] { return device; }, device, selected);
        };
        const auto byInfo = [&](const char *name, const QByteArray &device, int selected) {
            row(
                    name, [=] { return QFLCameraInfo(device); }, device, selected);
        };
        const auto byPosition = [&](const char *name, QCamera::Position position, int selected) {
            row(
                    name, [=] { return position; }, position, selected);
        };
        const CameraMaker makeDefault = [](QObject *parent) { return new QFLCamera(parent); };
        QTest::newRow("default") << makeDefault << QMediaServiceProviderHint() << 2;
        byName("name", "back", 1);
        byName("name up to a zero byte", QByteArray("back\0x", 6), 1);
        byName("unknown name", "missing", -1);
        byName("null name", QByteArray(), -1);
        byInfo("info", "back", 1);
        byInfo("info of a device that the service lacks", "gone", -1);
        byPosition("position", QCamera::FrontFace, 0);
        byPosition("position that no device has", QCamera::BackFace, 2);
        byPosition("no position", QCamera::UnspecifiedPosition, 2);
    }

    void construction()
    {
        QFETCH(CameraMaker, make);
        Capturing world;
        world.backend.deviceNames = {"back", "gone"};
        world.selector->selected = -1;
        QObject parent;
        bool late = true;
        world.selector->onSelection = [&] {
            late = parent.findChild<QFLCameraExposure *>() && parent.findChild<QFLCameraFocus *>();
        };
        const QFLCamera *camera = make(&parent);
        QTEST(world.backend.lastHint, "hint");
        QTEST(world.selector->selected, "selected");
        QVERIFY(late);
        QCOMPARE(camera->exposure(), parent.findChild<QFLCameraExposure *>());
        QCOMPARE(camera->focus(), parent.findChild<QFLCameraFocus *>());
        QCOMPARE(camera->imageProcessing(), nullptr);
        QCOMPARE(camera->error(), QCamera::NoError);
    }

    void nameBeyondLatin1()
    {
        Capturing world;
        world.selector->names[2] = QString::fromUtf8("kamera \xc5\x82");
        const QFLCamera first;
        const QFLCameraInfo info(first);
        world.selector->selected = -1;
        const QFLCamera second(info);
        QCOMPARE(world.selector->selected, 2);
    }

    void requests()
    {
        Capturing world;
        const QByteArray log = "p+facelink.camera, c+camera, c+cameralocks, c+videodeviceselector, "
                               "c+camerainfo, c+cameraviewfindersettings2";
        const QFLCamera camera;
        COMPARE_LOG(log + ", c.videodeviceselector select 2");
        world.service.controls.remove(QCameraViewfinderSettingsControl2_iid);
        const QFLCamera older;
        COMPARE_LOG(log + ", c+cameraviewfindersettings, c.videodeviceselector select 2");
    }

    void withoutService()
    {
        const QString missing = QStringLiteral("The camera service is missing");
        FakeBackend backend;
        QFLCamera camera;
        QSignalSpy spy(&camera, SIGNAL(error(QCamera::Error)));
        QCOMPARE(camera.error(), QCamera::ServiceMissingError);
        QCOMPARE(camera.errorString(), missing);
        QVERIFY(camera.exposure() && camera.focus());
        int calls = 0;
        for (auto request : {&QFLCamera::load, &QFLCamera::unload, &QFLCamera::start,
                             &QFLCamera::stop, &QFLCamera::stop}) {
            (camera.*request)();
            QCOMPARE(spy.size(), ++calls);
            QCOMPARE(spy.last().first().value<QCamera::Error>(), QCamera::ServiceMissingError);
            QCOMPARE(camera.errorString(), missing);
        }
        QCOMPARE(camera.availability(), QMultimedia::ServiceMissing);
        camera.setCaptureMode(QCamera::CaptureVideo);
        camera.setViewfinder(nullptr);
        QCOMPARE(camera.captureMode(), QCamera::CaptureModes(QCamera::CaptureStillImage));
        QVERIFY(!camera.isCaptureModeSupported(QCamera::CaptureVideo));
        QCOMPARE(camera.status(), QCamera::UnavailableStatus);
        QCOMPARE(camera.state(), QCamera::UnloadedState);
        FakeLog::take();
        QVERIFY(QFLCameraInfo(camera).isNull());
        COMPARE_LOG("info default: info from camera \"\" \"\" true QCamera::UnspecifiedPosition 0");
    }

    void withoutCameraControl()
    {
        Capturing world;
        world.service.add<FakeRenderer>(QCameraControl_iid);
        QFLCamera camera;
        QSignalSpy spy(&camera, SIGNAL(error(QCamera::Error)));
        QCOMPARE(camera.error(), QCamera::NoError);
        QCOMPARE(camera.availability(), QMultimedia::ServiceMissing);
        camera.start();
        QCOMPARE(spy.size(), 1);
        QCOMPARE(camera.error(), QCamera::ServiceMissingError);
    }

    void states()
    {
        Capturing world;
        QFLCamera camera;
        QSignalSpy states(&camera, &QFLCamera::stateChanged);
        QSignalSpy statuses(&camera, &QFLCamera::statusChanged);
        FakeLog::take();
        camera.load();
        QCOMPARE(camera.state(), QCamera::LoadedState);
        camera.start();
        QCOMPARE(camera.state(), QCamera::ActiveState);
        camera.stop();
        camera.stop();
        camera.unload();
        QCOMPARE(camera.state(), QCamera::UnloadedState);
        QCOMPARE(states.size(), 4);
        QCOMPARE(states.at(1).first().value<QCamera::State>(), QCamera::ActiveState);
        COMPARE_LOG("c.camera setState 1, c.camera setState 2, c.camera setState 1, "
                    "c.camera setState 1, c.camera setState 0");
        world.control->currentStatus = QCamera::StartingStatus;
        emit world.control->statusChanged(QCamera::StartingStatus);
        QCOMPARE(statuses.size(), 1);
        QCOMPARE(camera.status(), QCamera::StartingStatus);
    }

    void errorsAndAvailability()
    {
        Capturing world;
        QFLCamera camera;
        QSignalSpy spy(&camera, SIGNAL(error(QCamera::Error)));
        QCOMPARE(camera.availability(), QMultimedia::Available);
        for (int count = 1; count <= 2; ++count) {
            emit world.control->error(QCamera::CameraError, QStringLiteral("lens cap"));
            QCOMPARE(spy.size(), count);
        }
        QCOMPARE(spy.last().first().value<QCamera::Error>(), QCamera::CameraError);
        QCOMPARE(camera.error(), QCamera::CameraError);
        QCOMPARE(camera.errorString(), QStringLiteral("lens cap"));
        QCOMPARE(camera.availability(), QMultimedia::ResourceError);
        camera.start();
        QCOMPARE(camera.error(), QCamera::NoError);
        QCOMPARE(camera.errorString(), QString());
        QCOMPARE(spy.size(), 2);
        QCOMPARE(camera.availability(), QMultimedia::Available);
        world.selector->names.clear();
        QCOMPARE(camera.availability(), QMultimedia::ResourceError);
    }

    void captureMode()
    {
        Capturing world;
        QFLCamera camera;
        QSignalSpy spy(&camera, &QFLCamera::captureModeChanged);
        QVERIFY(camera.isCaptureModeSupported(QCamera::CaptureVideo));
        QVERIFY(!camera.isCaptureModeSupported(QCamera::CaptureStillImage));
        camera.setCaptureMode(QCamera::CaptureVideo);
        QCOMPARE(camera.captureMode(), QCamera::CaptureModes(QCamera::CaptureVideo));
        QCOMPARE(spy.size(), 1);
        world.control->accepts = false;
        camera.start();
        FakeLog::take();
        camera.setCaptureMode(QCamera::CaptureVideo);
        COMPARE_LOG("");
    }

    // How a property changes, and what happens at the next turn of the event loop.
    void propertyChange_data()
    {
        QTest::addColumn<bool>("active");
        QTest::addColumn<bool>("allowed");
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QByteArray>("after");
        const QByteArray asked = "c.camera status, c.camera state";
        QTest::newRow("not active") << false << false << asked << QByteArray();
        QTest::newRow("allowed") << true << true << asked + ", c.camera can X 1" << QByteArray();
        QTest::newRow("restart") << true << false
                                 << asked + ", c.camera can X 1, c.camera setState 1"
                                 << QByteArray("c.camera setState 2");
    }

    void propertyChange()
    {
        QFETCH(bool, active);
        QFETCH(QByteArray, before);
        QFETCH(QByteArray, after);
        QFETCH(bool, allowed);
        Capturing world;
        QFLCamera camera;
        world.control->accepts = allowed;
        active ? camera.start() : camera.load();
        QSignalSpy states(&camera, &QFLCamera::stateChanged);
        QSignalSpy statuses(&camera, &QFLCamera::statusChanged);
        FakeLog::take();
        camera.setCaptureMode(QCamera::CaptureVideo);
        COMPARE_LOG(QByteArray(before).replace('X', '1') + ", c.camera setCaptureMode 2");
        emit world.control->statusChanged(QCamera::LoadedStatus);
        QCOMPARE(statuses.size(), 1);
        QCOMPARE(camera.state(), active ? QCamera::ActiveState : QCamera::LoadedState);
        QCoreApplication::processEvents();
        COMPARE_LOG(after);

        camera.setViewfinderSettings(QCameraViewfinderSettings());
        COMPARE_LOG(before.replace('X', '5') + ", c.cameraviewfindersettings2 set");
        QCoreApplication::processEvents();
        COMPARE_LOG(after);
        QCOMPARE(states.size(), 0);
    }

    void restartCancelled()
    {
        Capturing world;
        QFLCamera camera;
        world.control->accepts = false;
        camera.start();
        camera.setCaptureMode(QCamera::CaptureVideo);
        QCOMPARE(camera.state(), QCamera::ActiveState);
        FakeLog::take();
        camera.stop();
        QCOMPARE(camera.state(), QCamera::LoadedState);
        QCoreApplication::processEvents();
        COMPARE_LOG("c.camera setState 1");
    }

    void lockReports()
    {
        Capturing world;
        QFLCamera camera;
        logLockSignals(&camera);
        QCOMPARE(camera.supportedLocks(), world.locks->supportedLocks());
        const auto report = [&](int lock, int status, int reason) {
            world.locks->report(lock, status, reason);
            return FakeLog::take();
        };
        camera.searchAndLock();
        COMPARE_LOG("c.cameralocks lock 5");
        QCOMPARE(camera.requestedLocks(), QCamera::LockExposure | QCamera::LockFocus);
        QCOMPARE(report(4, 1, 0), QByteArray("all 1 0, one 4 1 0"));
        QCOMPARE(report(1, 2, 1), QByteArray("one 1 2 1"));
        QCOMPARE(camera.lockStatus(), QCamera::Searching);
        QCOMPARE(camera.lockStatus(QCamera::LockExposure), QCamera::Locked);
        QCOMPARE(report(4, 2, 1), QByteArray("all 2 1, locked, one 4 2 1"));
        QCOMPARE(report(4, 0, 2), QByteArray("all 0 2, failed, one 4 0 2"));
        QCOMPARE(report(4, 2, 1), QByteArray("all 2 1, locked, one 4 2 1"));

        // A lock that nobody requested counts for nothing, but its reason is kept.
        QCOMPARE(report(2, 2, 2), QByteArray("one 2 2 2"));
        QCOMPARE(camera.lockStatus(QCamera::LockWhiteBalance), QCamera::Unlocked);
        camera.unlock();
        COMPARE_LOG("c.cameralocks unlock 5, all 0 2, failed");
        QCOMPARE(camera.requestedLocks(), QCamera::LockTypes());
    }

    // What is reported during a request shows in the aggregate only after it.
    void lockRequests()
    {
        Capturing world;
        QFLCamera camera;
        logLockSignals(&camera);
        camera.searchAndLock(QCamera::LockWhiteBalance);
        camera.unlock();
        COMPARE_LOG("c.cameralocks lock 0, c.cameralocks unlock 0");
        world.locks->onRequest = [&] {
            world.locks->report(4, 1, 0);
            world.locks->report(4, 2, 1);
        };
        camera.searchAndLock(QCamera::LockFocus);
        COMPARE_LOG("c.cameralocks lock 4, one 4 1 0, one 4 2 1, all 2 1, locked");
        camera.searchAndLock(QCamera::LockFocus);
        COMPARE_LOG("c.cameralocks lock 4, one 4 1 0, one 4 2 1");
        camera.unlock(QCamera::LockFocus | QCamera::LockWhiteBalance);
        COMPARE_LOG("c.cameralocks unlock 4, all 0 1");
    }

    void locksWithoutControl()
    {
        Capturing world;
        world.service.controls.remove(QCameraLocksControl_iid);
        QFLCamera camera;
        logLockSignals(&camera);
        camera.searchAndLock(QCamera::LockFocus);
        QCOMPARE(camera.supportedLocks() | camera.requestedLocks(), QCamera::LockTypes());
        camera.unlock();
        QCOMPARE(camera.lockStatus(), QCamera::Unlocked);
        COMPARE_LOG("");
    }

    void viewfinder()
    {
        Capturing world;
        FakeSurface first, second;
        QFLCamera camera;
        FakeLog::take();
        camera.setViewfinder(nullptr);
        COMPARE_LOG("");
        camera.setViewfinder(&first);
        QCOMPARE(world.renderer->current.data(), &first);
        camera.setViewfinder(&second);
        QCOMPARE(world.renderer->current.data(), &second);
        COMPARE_LOG("c+videorenderer, c.videorenderer surface, c.videorenderer surface");
        camera.setViewfinder(nullptr);
        COMPARE_LOG("c.videorenderer no surface, c.videorenderer no surface, c-videorenderer");
    }

    // The service goes back to the provider that it came from.
    void destruction()
    {
        Capturing world;
        FakeSurface surface;
        auto *camera = new QFLCamera;
        camera->setViewfinder(&surface);
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
        Capturing world;
        QFLCamera camera;
        QSignalSpy states(&camera, &QFLCamera::stateChanged);
        QSignalSpy errors(&camera, SIGNAL(error(QCamera::Error)));
        QSignalSpy locks(&camera, &QFLCamera::locked);
        QSignalSpy modes(&camera, &QFLCamera::captureModeChanged);
        QSignalSpy statuses(&camera, &QFLCamera::statusChanged);
        camera.searchAndLock(QCamera::LockFocus);
        runInThread([&] {
            emit world.control->stateChanged(QCamera::ActiveState);
            emit world.control->error(QCamera::CameraError, QStringLiteral("far away"));
            world.locks->report(QCamera::LockFocus, QCamera::Locked, QCamera::LockAcquired);
            emit world.control->captureModeChanged(QCamera::CaptureVideo);
            emit world.control->statusChanged(QCamera::ActiveStatus);
        });
        const auto count = [&] {
            return line(
                    {states.size(), errors.size(), locks.size(), modes.size(), statuses.size()});
        };
        QCOMPARE(count(), QByteArray(" 0 0 0 0 0"));
        QTRY_COMPARE(count(), QByteArray(" 1 1 1 1 1"));
        QCOMPARE(camera.state(), QCamera::ActiveState);
        QCOMPARE(camera.errorString(), QStringLiteral("far away"));
    }
};

QTEST_GUILESS_MAIN(tst_QFLCamera)

#include "tst_qflcamera.moc"
