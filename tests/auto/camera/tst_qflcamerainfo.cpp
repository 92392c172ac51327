// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Tests of the description of a camera.

#include "fakebackend.h"
#include "fakecameracontrols.h"

#include <qflcamera.h>
#include <qflcamerainfo.h>

#include <QtCore/qdebug.h>
#include <QtTest/QtTest>

struct Devices : FakeBackend
{
    Devices()
    {
        deviceNames = {"dev1", "", "b\xe9", "dev1"};
        deviceMap["dev1"] = {"One", QCamera::FrontFace, 270};
        deviceMap[""] = {"Nameless", QCamera::BackFace, 90};
        deviceMap["unlisted"] = {"Hidden", QCamera::FrontFace, 0};
        defaultDeviceName = "dev1";
    }
};

static QString namesOf(const QList<QFLCameraInfo> &cameras)
{
    QString names;
    for (const QFLCameraInfo &camera : cameras)
        names += camera.deviceName() + QLatin1Char(';');
    return names;
}

class tst_QFLCameraInfo : public QObject
{
    Q_OBJECT

private slots:
    void byName()
    {
        Devices world;
        const QFLCameraInfo info("dev1");
        COMPARE_LOG("p devices facelink.camera, p deviceDescription facelink.camera dev1, "
                    "p cameraPosition dev1, p cameraOrientation dev1");
        QVERIFY(!info.isNull());
        QCOMPARE(info.deviceName(), QStringLiteral("dev1"));
        QCOMPARE(info.description(), QStringLiteral("One"));
        QCOMPARE(info.position(), QCamera::FrontFace);
        QCOMPARE(info.orientation(), 270);
        QFLCameraInfo copy;
        QVERIFY(copy == QFLCameraInfo() && copy != info);
        copy = info;
        QVERIFY(copy == info && !(copy != info) && QFLCameraInfo("dev1") == info);
        world.deviceMap["dev1"].orientation = 0;
        QVERIFY(QFLCameraInfo("dev1") != info);
        QCOMPARE(copy.orientation(), 270);
        QCOMPARE(QFLCameraInfo("b\xe9").deviceName(), QString::fromLatin1("b\xe9"));
        QCOMPARE(QFLCameraInfo(QByteArray("")).description(), QStringLiteral("Nameless"));

        FakeLog::take();
        for (const QByteArray &name :
             {QByteArray(), QByteArray("unlisted"), QByteArray("dev1\0", 5)}) {
            const QFLCameraInfo none(name);
            COMPARE_LOG(name.isNull() ? "" : "p devices facelink.camera");
            QVERIFY(none.isNull() && none.deviceName().isNull() && none.description().isNull());
            QCOMPARE(none.position(), QCamera::UnspecifiedPosition);
            QCOMPARE(none.orientation(), 0);
        }
    }

    void lists()
    {
        Devices world;
        QCOMPARE(namesOf(QFLCameraInfo::availableCameras()),
                 QString::fromLatin1("dev1;;b\xe9;dev1;"));
        QCOMPARE(namesOf(QFLCameraInfo::availableCameras(QCamera::FrontFace)),
                 QStringLiteral("dev1;dev1;"));
        QCOMPARE(QFLCameraInfo::defaultCamera().deviceName(), QStringLiteral("dev1"));
        world.defaultDeviceName = "unlisted";
        QVERIFY(QFLCameraInfo::defaultCamera().isNull());
        world.defaultDeviceName = QByteArray();
        QVERIFY(QFLCameraInfo::defaultCamera().isNull());
    }

    void fromCamera()
    {
        FakeWorld world("facelink.camera", "c");
        auto *selector = world.service.add<FakeSelector>(QVideoDeviceSelectorControl_iid);
        world.service.add<FakeCameraInfoControl>(QCameraInfoControl_iid);
        {
            const QFLCamera camera(QByteArray("other"));
            FakeLog::take();
            QVERIFY(!QFLCameraInfo(camera).isNull());
            COMPARE_LOG("info default: info from camera \"other\" \"2\" false "
                        "QCamera::UnspecifiedPosition 90");
            selector->names.clear();
            QVERIFY(!QFLCameraInfo(camera).isNull());
            COMPARE_LOG("info default: info from camera \"\" \"\" false QCamera::BackFace 180");
        }
        world.service.controls.remove(QCameraInfoControl_iid);
        const QFLCamera camera;
        QVERIFY(QFLCameraInfo(camera).isNull());
    }

    // The name is in the text already when the position is put there.
    void debugOutput_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("position");
        QTest::newRow("/dev/video1") << QStringLiteral("/dev/video1, position=FrontFace") << 2;
        QTest::newRow("%2") << QStringLiteral("BackFace, position=BackFace") << 1;
        QTest::newRow("x") << QStringLiteral("x, position=") << 3;
    }

    void debugOutput()
    {
        QFETCH(QString, text);
        QFETCH(int, position);
        const QByteArray name = QTest::currentDataTag();
        FakeBackend backend;
        backend.deviceNames = {name};
        backend.deviceMap[name] = {"", QCamera::Position(position), 270};
        text = QStringLiteral("\"QFLCameraInfo(deviceName=") + text
                + QStringLiteral(", orientation=270)\"");
        QString compact, spaced;
        QDebug(&compact).nospace() << QFLCameraInfo(name) << 1 << 2;
        QCOMPARE(compact, text + QStringLiteral(" 1 2 "));
        QDebug(&spaced) << QFLCameraInfo(name);
        QVERIFY(spaced.startsWith(QLatin1Char(' ') + text + QLatin1Char(' ')));
    }
};

QTEST_GUILESS_MAIN(tst_QFLCameraInfo)

#include "tst_qflcamerainfo.moc"
