// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Tests of the viewfinder settings of a camera.

#include "fakebackend.h"
#include "fakecameracontrols.h"

#include <qflcamera.h>

#include <QtTest/QtTest>

using V = QVideoFrame;
using Settings = QCameraViewfinderSettings;

static Settings make(const QSize &resolution, qreal minimum, qreal maximum,
                     V::PixelFormat format = V::Format_Invalid, const QSize &aspect = QSize())
{
    Settings settings;
    settings.setResolution(resolution);
    settings.setMinimumFrameRate(minimum);
    settings.setMaximumFrameRate(maximum);
    settings.setPixelFormat(format);
    settings.setPixelAspectRatio(aspect);
    return settings;
}

class tst_ViewfinderSettings : public QObject
{
    Q_OBJECT

private slots:
    // Each digit of the result is the index of an entry that matches.
    void filter_data()
    {
        QTest::addColumn<Settings>("wanted");
        QTest::addColumn<QByteArray>("matching");
        const QSize any;
        QTest::newRow("nothing") << Settings() << QByteArray("012345");
        QTest::newRow("resolution") << make({1280, 720}, 0, 0) << QByteArray("025");
        QTest::newRow("no width") << make({0, 720}, 30, 0) << QByteArray("12");
        QTest::newRow("minimum") << make(any, 30, 0) << QByteArray("12");
        QTest::newRow("minimum, nearly") << make(any, 30.0003, 0) << QByteArray("12");
        QTest::newRow("minimum, not quite") << make(any, 20.0001997, 0) << QByteArray("");
        QTest::newRow("maximum") << make(any, 0, -7) << QByteArray("");
        QTest::newRow("maximum, barely") << make(any, 0, 100000) << QByteArray("4");
        QTest::newRow("maximum of an entry") << make(any, 0, 15) << QByteArray("3");
        QTest::newRow("tiny rate") << make(any, 1e-13, 15) << QByteArray("3");
        QTest::newRow("small rate") << make(any, 2e-12, 15) << QByteArray("");
        QTest::newRow("format") << make(any, 0, 0, V::Format_NV12) << QByteArray("05");
        QTest::newRow("aspect") << make(any, 0, 0, V::Format_Invalid, {4, 3}) << QByteArray("3");
        QTest::newRow("flat aspect")
                << make(any, 20, 0, V::Format_Invalid, {4, 0}) << QByteArray("4");
    }

    void filter()
    {
        QFETCH(Settings, wanted);
        QFETCH(QByteArray, matching);
        FakeWorld world("facelink.camera", "c");
        auto *control
                = world.service.add<FakeViewfinderSettings>(QCameraViewfinderSettingsControl2_iid);
        control->supported = {make({1280, 720}, 15, 30, V::Format_NV12),
                              make({640, 480}, 30, 30.0001, V::Format_YUYV),
                              make({1280, 720}, 30.0001, 30, V::Format_YUYV),
                              make({1920, 1080}, 7.5, 15, V::Format_Invalid, {4, 3}),
                              make({320, 240}, 20, 100001, V::Format_RGB32),
                              make({1280, 720}, 15, 30, V::Format_NV12)};
        const QFLCamera camera;
        QList<Settings> expected;
        for (char index : matching)
            expected += control->supported[index - '0'];
        QCOMPARE(camera.supportedViewfinderSettings(wanted), expected);
    }

    void lists()
    {
        FakeWorld world("facelink.camera", "c");
        auto *control
                = world.service.add<FakeViewfinderSettings>(QCameraViewfinderSettingsControl2_iid);
        const qreal nearly = 30 + 1e-11;
        control->supported = {make({1280, 720}, 15, 30, V::Format_YUYV),
                              make({640, 480}, 30, 30, V::Format_NV12),
                              make({1280, 720}, 15, nearly, V::Format_YUYV),
                              make({1920, 1080}, 15, 30, V::Format_RGB32),
                              make({100, 10000}, 7.5, 15, V::Format_NV12)};
        const QFLCamera camera;
        QCOMPARE(camera.supportedViewfinderResolutions(),
                 QList<QSize>({{640, 480}, {1280, 720}, {100, 10000}, {1920, 1080}}));
        QList<QPair<qreal, qreal>> ranges;
        for (const QCamera::FrameRateRange &range : camera.supportedViewfinderFrameRateRanges())
            ranges.append({range.minimumFrameRate, range.maximumFrameRate});
        QVERIFY(ranges
                == (QList<QPair<qreal, qreal>>({{7.5, 15}, {15, 30}, {30, 30}, {15, nearly}})));
        QCOMPARE(camera.supportedViewfinderPixelFormats(),
                 QList<V::PixelFormat>({V::Format_YUYV, V::Format_NV12, V::Format_RGB32}));
        const Settings yuyv = make({}, 0, 0, V::Format_YUYV);
        QCOMPARE(camera.supportedViewfinderResolutions(yuyv), QList<QSize>({{1280, 720}}));
        QCOMPARE(camera.supportedViewfinderFrameRateRanges(yuyv).size(), 2);
        QCOMPARE(camera.supportedViewfinderPixelFormats(yuyv).size(), 1);
        control->current = yuyv;
        QCOMPARE(camera.viewfinderSettings(), yuyv);
    }

    // Areas are 32-bit numbers, which wrap around.
    void areas()
    {
        FakeWorld world("facelink.camera", "c");
        auto *control
                = world.service.add<FakeViewfinderSettings>(QCameraViewfinderSettingsControl2_iid);
        control->supported = {make({65536, 65537}, 0, 0), make({1, 1}, 0, 0),
                              make({65536, 32768}, 0, 0), make({65536, 65536}, 0, 0)};
        QCOMPARE(QFLCamera().supportedViewfinderResolutions(),
                 QList<QSize>({{65536, 32768}, {65536, 65536}, {1, 1}, {65536, 65537}}));
    }

    // Every supported parameter is written, set or not.
    void olderOrNoControl()
    {
        FakeWorld world("facelink.camera", "c");
        world.service.add<FakeCameraControl>(QCameraControl_iid)->accepts = false;
        QFLCamera bare;
        bare.start();
        FakeLog::take();
        bare.setViewfinderSettings(make({6, 4}, 0, 30));
        COMPARE_LOG("");
        QVERIFY(bare.viewfinderSettings().isNull());
        world.service.controls.clear();

        auto *control = world.service.add<FakeOlderViewfinderSettings>(
                QCameraViewfinderSettingsControl_iid);
        QFLCamera camera;
        FakeLog::take();
        camera.setViewfinderSettings(make({6, 4}, 0, 30, V::Format_NV12));
        COMPARE_LOG("c.cameraviewfindersettings 0 QSize, c.cameraviewfindersettings 2 double, "
                    "c.cameraviewfindersettings 3 double, c.cameraviewfindersettings 1 QSize, "
                    "c.cameraviewfindersettings 4 int");
        QCOMPARE(camera.viewfinderSettings(), make({6, 4}, 0, 30, V::Format_NV12));
        control->values[4] = QVariant::fromValue(V::Format_YUYV);
        QCOMPARE(camera.viewfinderSettings().pixelFormat(), V::Format_YUYV);
        control->values[4] = QVariant(QSize(1, 1));
        QCOMPARE(camera.viewfinderSettings().pixelFormat(), V::Format_Invalid);
        control->values[1] = QSize(4, 3);
        control->values[2] = 15;
        control->unsupported = {0, 3};
        QCOMPARE(camera.viewfinderSettings(), make({}, 15, 0, V::Format_Invalid, {4, 3}));
        control->unsupported = {0, 1, 2, 4};
        camera.setViewfinderSettings(make({7, 7}, 1, 2));
        COMPARE_LOG("c.cameraviewfindersettings 3 double");
        QVERIFY(camera.supportedViewfinderSettings().isEmpty());
        QVERIFY(camera.supportedViewfinderResolutions().isEmpty());

        control->unsupported.clear();
        QScopedPointer<QFLCamera> deleted(new QFLCamera);
        callOnce([&] { deleted.reset(); });
        FakeLog::take();
        deleted->setViewfinderSettings(make({6, 4}, 0, 30));
        COMPARE_LOG("c.cameraviewfindersettings 0 QSize, c-cameraviewfindersettings, p-c");
    }
};

QTEST_GUILESS_MAIN(tst_ViewfinderSettings)

#include "tst_viewfindersettings.moc"
