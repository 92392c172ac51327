// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-3.0-or-later
// Tests of the routing of a surface to a renderer control.

#include "fakecontrol.h"
#include "fakeservice.h"

#include <qvideosurfaceoutput_p.h>

#include <QtTest/QtTest>

struct Rendering
{
    FakeLog log;
    QScopedPointer<FakeService> service {new FakeService("s")};
    FakeRenderer *renderer = service->add<FakeRenderer>(QVideoRendererControl_iid);
    QScopedPointer<FakeMediaObject> object {new FakeMediaObject(service.data())};
};

static const QByteArray bindLog = "s+videorenderer, s.videorenderer surface";
static const QByteArray unbindLog = "s.videorenderer no surface, s-videorenderer";

class tst_QVideoSurfaceOutput : public QObject
{
    Q_OBJECT

private slots:
    void casts()
    {
        QVideoSurfaceOutput output;
        void *const part = static_cast<QMediaBindableInterface *>(&output);
        QCOMPARE(output.qt_metacast("QVideoSurfaceOutput"), static_cast<void *>(&output));
        QCOMPARE(output.qt_metacast("QMediaBindableInterface"), part);
        QCOMPARE(output.qt_metacast(QMediaBindableInterface_iid), part);
    }

    void binding()
    {
        Rendering world;
        FakeSurface surface;
        {
            QVideoSurfaceOutput output;
            output.setVideoSurface(&surface);
            QVERIFY(!output.setMediaObject(nullptr));
            QVERIFY(output.setMediaObject(world.object.data()));
            QCOMPARE(output.mediaObject(), world.object.data());
            COMPARE_LOG(bindLog);
            QCOMPARE(world.renderer->current.data(), &surface);
            QVERIFY(output.setMediaObject(world.object.data()));
            COMPARE_LOG(unbindLog + ", " + bindLog);
            output.setVideoSurface(nullptr);
            QCOMPARE(output.mediaObject(), world.object.data());
            COMPARE_LOG("s.videorenderer no surface");
        }
        COMPARE_LOG(unbindLog);
    }

    void failures_data()
    {
        QTest::addColumn<bool>("service");
        QTest::addColumn<bool>("control");
        QTest::addColumn<QByteArray>("log");
        QTest::newRow("no service") << false << false << unbindLog;
        QTest::newRow("no control") << true << false << unbindLog + ", x+videorenderer";
        QTest::newRow("wrong class")
                << true << true << unbindLog + ", x+videorenderer, x-videorenderer";
    }

    void failures()
    {
        QFETCH(bool, service);
        QFETCH(bool, control);
        Rendering world;
        FakeService broken("x");
        if (control)
            broken.add<FakeControl<QMediaControl>>(QVideoRendererControl_iid);
        FakeMediaObject object(service ? &broken : nullptr);
        QVideoSurfaceOutput output;
        QVERIFY(output.setMediaObject(world.object.data()));
        FakeLog::take();
        QVERIFY(!output.setMediaObject(&object));
        QTEST(FakeLog::take(), "log");
        QCOMPARE(output.mediaObject(), nullptr);
    }

    // Whatever dies first is left alone afterwards.
    void lostObjects()
    {
        Rendering world;
        QVideoSurfaceOutput output;
        {
            FakeSurface surface;
            output.setVideoSurface(&surface);
        }
        QVERIFY(output.setMediaObject(world.object.data()));
        COMPARE_LOG("s+videorenderer, s.videorenderer no surface");
        world.object.reset();
        QCOMPARE(output.mediaObject(), nullptr);
        world.renderer->setParent(nullptr);
        const QScopedPointer<FakeRenderer> orphan(world.renderer);
        world.service.reset();
        QVERIFY(!output.setMediaObject(nullptr));
        COMPARE_LOG("s.videorenderer no surface");

        Rendering other;
        QVERIFY(output.setMediaObject(other.object.data()));
        delete other.renderer;
        FakeLog::take();
        output.setVideoSurface(nullptr);
        QVERIFY(!output.setMediaObject(nullptr));
        COMPARE_LOG("");
    }
};

QTEST_GUILESS_MAIN(tst_QVideoSurfaceOutput)

#include "tst_qvideosurfaceoutput.moc"
