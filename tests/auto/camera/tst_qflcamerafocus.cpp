// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Tests of the focus and zoom settings of a camera.

#include "fakebackend.h"
#include "fakeopticscontrols.h"

#include <qflcamera.h>
#include <qflcamerafocus.h>

#include <QtTest/QtTest>

using Q = QCameraFocus;
using F = QFLCameraFocus;
using Z = QCameraFocusZone;

static const QByteArray fakeFocusLog
        = "warning default: Focus mode selection is not supported, "
          "warning default: Focus points mode selection is not supported, "
          "warning default: Focus points selection is not supported";
static const QByteArray fakeZoomLog = "warning default: The camera doesn't support zooming.";

class tst_QFLCameraFocus : public QObject
{
    Q_OBJECT

private slots:
    void controls_data()
    {
        QTest::addColumn<bool>("hasFocus");
        QTest::addColumn<bool>("hasZoom");
        QTest::newRow("both") << true << true;
        QTest::newRow("focus") << true << false;
        QTest::newRow("zoom") << false << true;
        QTest::newRow("none") << false << false;
    }

    void controls()
    {
        QFETCH(bool, hasFocus);
        QFETCH(bool, hasZoom);
        FakeWorld world("facelink.camera", "c");
        if (hasFocus)
            world.service.add<FakeFocus>(QCameraFocusControl_iid);
        if (hasZoom)
            world.service.add<FakeZoom>(QCameraZoomControl_iid);
        if (!hasFocus && !hasZoom)
            world.services.clear();
        auto *camera = new QFLCamera;
        F *focus = camera->focus();
        QCOMPARE(focus->isAvailable(), hasFocus);
        QCOMPARE(focus->focusMode(), Q::FocusModes(hasFocus ? Q::MacroFocus : Q::AutoFocus));
        QCOMPARE(focus->isFocusModeSupported(Q::ManualFocus), hasFocus);
        QVERIFY(!focus->isFocusModeSupported(Q::AutoFocus));
        QCOMPARE(focus->focusPointMode(), hasFocus ? Q::FocusPointCustom : Q::FocusPointAuto);
        QCOMPARE(focus->isFocusPointModeSupported(Q::FocusPointCenter), hasFocus);
        QVERIFY(!focus->isFocusPointModeSupported(Q::FocusPointAuto));
        QCOMPARE(focus->customFocusPoint(), hasFocus ? QPointF(0.25, 2) : QPointF(0.5, 0.5));
        QCOMPARE(focus->focusZones().size(), int(hasFocus));
        QCOMPARE(focus->maximumOpticalZoom(), hasZoom ? 9. : 1.);
        QCOMPARE(focus->maximumDigitalZoom(), hasZoom ? 8. : 1.);
        QCOMPARE(focus->opticalZoom(), hasZoom ? 5. : 1.);
        QCOMPARE(focus->digitalZoom(), hasZoom ? 4. : 1.);
        FakeLog::take();
        focus->setFocusMode(Q::HyperfocalFocus);
        focus->setFocusPointMode(Q::FocusPointFaceDetection);
        focus->setCustomFocusPoint(QPointF(-3, 4));
        COMPARE_LOG(hasFocus
                            ? "c.camerafocus mode 2, c.camerafocus points 2, c.camerafocus point -3"
                            : fakeFocusLog);
        focus->zoomTo(20, 3);
        COMPARE_LOG(hasZoom ? "c.camerazoom to 203" : fakeZoomLog);
        delete camera;
        COMPARE_LOG(hasFocus || hasZoom ? "p-c" : "");
    }

    void changes()
    {
        FakeWorld world("facelink.camera", "c");
        auto *focusControl = world.service.add<FakeFocus>(QCameraFocusControl_iid);
        auto *zoomControl = world.service.add<FakeZoom>(QCameraZoomControl_iid);
        const QFLCamera camera;
        logSignal(camera.focus(), &F::opticalZoomChanged, "optical");
        logSignal(camera.focus(), &F::digitalZoomChanged, "digital");
        logSignal(camera.focus(), &F::focusZonesChanged, "zones");
        logSignal(camera.focus(), &F::maximumOpticalZoomChanged, "most optical");
        logSignal(camera.focus(), &F::maximumDigitalZoomChanged, "most digital");
        FakeLog::take();
        emit focusControl->focusZonesChanged();
        emit zoomControl->requestedOpticalZoomChanged(1);
        emit zoomControl->requestedDigitalZoomChanged(2);
        emit zoomControl->currentOpticalZoomChanged(3);
        emit zoomControl->currentDigitalZoomChanged(4);
        emit zoomControl->maximumOpticalZoomChanged(5);
        emit zoomControl->maximumDigitalZoomChanged(6);
        COMPARE_LOG("zones, optical 3, digital 4, most optical 5, most digital 6");
    }

    void zones()
    {
        const Z none;
        QVERIFY(none.status() == Z::Invalid && none.area() == QRectF(0, 0, 0, 0));
        QVERIFY(!none.isValid() && none == Z());
        QVERIFY(!Z(QRectF(0, 0, 10, 10), Z::Focused).isValid());
        QVERIFY(Z(QRectF(0, 0, 0, 10), Z::Unused).isValid());
        QVERIFY(!Z(QRectF(0, 0, 0, 10), Z::Invalid).isValid());
        QCOMPARE(Z(QRectF()).status(), Z::Selected);
        const Z zone(QRectF(0.1, 0.2, 0.3, 0.4), Z::Unused);
        QVERIFY(zone == Z(QRectF(0.1 + 1e-15, 0.2, 0.3, 0.4), Z::Unused));
        QVERIFY(zone != Z(QRectF(0.1 + 1e-9, 0.2, 0.3, 0.4), Z::Unused));
        Z copy = none;
        copy = zone;
        QVERIFY(copy == zone);
        copy.setStatus(Z::Focused);
        QVERIFY(copy.status() == Z::Focused && zone.status() == Z::Unused && copy != zone);
        QCOMPARE(copy.area(), zone.area());
    }
};

QTEST_GUILESS_MAIN(tst_QFLCameraFocus)

#include "tst_qflcamerafocus.moc"
