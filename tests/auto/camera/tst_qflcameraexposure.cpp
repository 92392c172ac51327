// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Tests of the exposure settings of a camera.

#include "fakebackend.h"
#include "fakeopticscontrols.h"

#include <qflcamera.h>
#include <qflcameraexposure.h>

#include <QtTest/QtTest>

using Q = QCameraExposure;
using P = QCameraExposureControl;
using E = QFLCameraExposure;
using Read = std::function<double(const E *)>;
Q_DECLARE_METATYPE(Read)

struct Exposing : FakeWorld
{
    FakeExposure *control = service.add<FakeExposure>(QCameraExposureControl_iid);
    FakeFlash *flash = service.add<FakeFlash>(QCameraFlashControl_iid);

    Exposing() : FakeWorld("facelink.camera", "c") { }
};

class tst_QFLCameraExposure : public QObject
{
    Q_OBJECT

private slots:
    void values_data()
    {
        QTest::addColumn<Read>("read");
        QTest::addColumn<int>("parameter");
        QTest::addColumn<bool>("isRequested");
        QTest::addColumn<double>("missing");
        const auto row
                = [](const char *name, auto get, int parameter, bool requested, double none) {
                      QTest::newRow(name) << Read(get) << parameter << requested << none;
                  };
        row("mode", &E::exposureMode, P::ExposureMode, false, 0);
        row("compensation", &E::exposureCompensation, P::ExposureCompensation, false, 0);
        row("metering", &E::meteringMode, P::MeteringMode, false, 1);
        row("ISO", &E::isoSensitivity, P::ISO, false, -1);
        row("aperture", &E::aperture, P::Aperture, false, -1);
        row("shutter", &E::shutterSpeed, P::ShutterSpeed, false, -1);
        row("requested ISO", &E::requestedIsoSensitivity, P::ISO, true, -1);
        row("requested aperture", &E::requestedAperture, P::Aperture, true, -1);
        row("requested shutter", &E::requestedShutterSpeed, P::ShutterSpeed, true, -1);
        const Read point = [](const E *exposure) {
            return 10 * exposure->spotMeteringPoint().x() + exposure->spotMeteringPoint().y();
        };
        QTest::newRow("spot") << point << int(P::SpotMeteringPoint) << false << 0.;
    }

    void values()
    {
        QFETCH(Read, read);
        QFETCH(int, parameter);
        QFETCH(bool, isRequested);
        QFETCH(double, missing);
        Exposing world;
        const QFLCamera camera;
        QMap<int, QVariant> &values
                = isRequested ? world.control->requested : world.control->actual;
        QCOMPARE(read(camera.exposure()), missing);
        values[parameter] = QSize(3, 3);
        QCOMPARE(read(camera.exposure()), 0.);
        values[parameter] = parameter == P::SpotMeteringPoint ? QVariant(QPointF(0.2, 1)) : 3;
        QCOMPARE(read(camera.exposure()), 3.);
        world.service.controls.clear();
        QCOMPARE(read(QFLCamera().exposure()), missing);
    }

    void settersAndSignals()
    {
        Exposing world;
        QFLCamera camera;
        E *exposure = camera.exposure();
        FakeLog::take();
        exposure->setExposureMode(Q::ExposureBeach);
        exposure->setMeteringMode(Q::MeteringSpot);
        exposure->setExposureCompensation(0.5);
        exposure->setSpotMeteringPoint({2, -3});
        exposure->setManualIsoSensitivity(-100);
        exposure->setManualAperture(2.5);
        exposure->setManualShutterSpeed(0.25);
        exposure->setFlashMode(Q::FlashTorch);
        COMPARE_LOG(
                "c.cameraexposure 8 QCameraExposure::ExposureMode, "
                "c.cameraexposure 9 QCameraExposure::MeteringMode, c.cameraexposure 3 double, "
                "c.cameraexposure 7 QPointF, c.cameraexposure 0 int, c.cameraexposure 1 double, "
                "c.cameraexposure 2 double, c.cameraflash mode 32");
        const QMap<int, QVariant> given = world.control->requested;
        QCOMPARE(given[P::ExposureMode].toInt(), int(Q::ExposureBeach));
        QCOMPARE(given[P::MeteringMode].toInt(), int(Q::MeteringSpot));
        QCOMPARE(given[P::ExposureCompensation], QVariant(0.5));
        QCOMPARE(given[P::SpotMeteringPoint], QVariant(QPointF(2, -3)));
        QCOMPARE(exposure->requestedIsoSensitivity(), -100);
        QCOMPARE(exposure->requestedAperture(), 2.5);
        QCOMPARE(exposure->requestedShutterSpeed(), 0.25);
        exposure->setAutoIsoSensitivity();
        exposure->setAutoAperture();
        exposure->setAutoShutterSpeed();
        COMPARE_LOG("c.cameraexposure 0 , c.cameraexposure 1 , c.cameraexposure 2 ");

        logSignal(exposure, &E::flashReady, "ready");
        logSignal(exposure, &E::apertureChanged, "aperture");
        logSignal(exposure, &E::apertureRangeChanged, "apertures");
        logSignal(exposure, &E::shutterSpeedChanged, "shutter");
        logSignal(exposure, &E::shutterSpeedRangeChanged, "shutters");
        logSignal(exposure, &E::isoSensitivityChanged, "ISO");
        logSignal(exposure, &E::exposureCompensationChanged, "compensation");
        for (int parameter = P::ISO; parameter <= P::MeteringMode; ++parameter) {
            world.control->actual[parameter] = 40 + parameter;
            world.control->requested[parameter] = 7;
            emit world.control->requestedValueChanged(parameter);
            emit world.control->actualValueChanged(parameter);
            emit world.control->parameterRangeChanged(parameter);
        }
        emit world.flash->flashReady(true);
        COMPARE_LOG("ISO 40, aperture 41, apertures, shutter 42, shutters, compensation 43, "
                    "ready 1");
    }

    void ranges()
    {
        Exposing world;
        const QFLCamera camera;
        const QVariantList mixed {100, QStringLiteral("dark"), 50.5, 50.5};
        world.control->ranges = {{P::ISO, mixed},
                                 {P::Aperture, mixed},
                                 {P::ShutterSpeed, mixed},
                                 {P::ExposureMode, {QVariant::fromValue(Q::ExposureSnow)}},
                                 {P::MeteringMode, {int(Q::MeteringSpot)}}};
        FakeLog::take();
        bool continuous = false;
        QCOMPARE(camera.exposure()->supportedIsoSensitivities(), QList<int>({100, 51, 51}));
        QCOMPARE(camera.exposure()->supportedApertures(&continuous),
                 QList<qreal>({100, 50.5, 50.5}));
        QVERIFY(continuous);
        QCOMPARE(camera.exposure()->supportedShutterSpeeds(), QList<qreal>({100, 50.5, 50.5}));
        COMPARE_LOG("warning default: Incompatible ISO value type, int is expected, "
                    "warning default: Incompatible aperture value type, qreal is expected, "
                    "warning default: Incompatible shutter speed value type, qreal is expected");
        QVERIFY(camera.exposure()->isExposureModeSupported(Q::ExposureSnow));
        QVERIFY(!camera.exposure()->isExposureModeSupported(Q::ExposureBeach));
        QVERIFY(camera.exposure()->isMeteringModeSupported(Q::MeteringSpot));
        QVERIFY(!camera.exposure()->isMeteringModeSupported(Q::MeteringMatrix));
        world.control->ranges[P::MeteringMode] = {QStringLiteral("3")};
        QVERIFY(camera.exposure()->isMeteringModeSupported(Q::MeteringSpot));
    }

    void withoutControls()
    {
        Exposing world;
        auto *camera = new QFLCamera;
        QVERIFY(camera->exposure()->isAvailable());
        QCOMPARE(camera->exposure()->flashMode(), Q::FlashModes(Q::FlashFill));
        QVERIFY(camera->exposure()->isFlashModeSupported(Q::FlashAuto));
        QVERIFY(!camera->exposure()->isFlashModeSupported(Q::FlashOn));
        QVERIFY(camera->exposure()->isFlashReady());
        FakeLog::take();
        delete camera;
        COMPARE_LOG("c-cameraexposure, p-c");

        world.service.controls.remove(QCameraExposureControl_iid);
        const QFLCamera flashOnly;
        bool continuous = true;
        QVERIFY(!flashOnly.exposure()->isAvailable());
        QVERIFY(flashOnly.exposure()->isFlashReady());
        QCOMPARE(flashOnly.exposure()->supportedApertures(&continuous), QList<qreal>());
        QVERIFY(continuous);
        flashOnly.exposure()->setManualAperture(2);

        world.services.clear();
        const QFLCamera nothing;
        QCOMPARE(nothing.exposure()->flashMode(), Q::FlashModes(Q::FlashOff));
        QVERIFY(!nothing.exposure()->isFlashModeSupported(Q::FlashAuto));
        QVERIFY(!nothing.exposure()->isFlashReady());
        nothing.exposure()->setFlashMode(Q::FlashOn);
    }
};

QTEST_GUILESS_MAIN(tst_QFLCameraExposure)

#include "tst_qflcameraexposure.moc"
