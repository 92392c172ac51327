// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Tests of the links between sources and sinks.

#include "fakecodeccontrols.h"

#include <QtTest/QtTest>

class tst_QFLSink : public QObject
{
    Q_OBJECT

private slots:
    void linkAndUnlink()
    {
        const FakeLog log;
        FakeSource a("a "), b("b ");
        FakeSink sink;
        sink.unlink();
        COMPARE_LOG("");
        QVERIFY(sink.link(&a));
        COMPARE_LOG("a addSink");
        QVERIFY(sink.link(&b));
        COMPARE_LOG("a removeSink, b addSink");
        sink.unlink();
        sink.unlink();
        COMPARE_LOG("b removeSink");

        QVERIFY(sink.link(&a));
        QVERIFY(!sink.unlink(nullptr));
        COMPARE_LOG("a addSink");
        QVERIFY(!sink.link(nullptr));
        COMPARE_LOG("a removeSink");

        QVERIFY(sink.link(&a));
        QVERIFY(!sink.unlink(&b));
        sink.setActive(true);
        COMPARE_LOG("a addSink, a active 1");
        QVERIFY(sink.unlink(&a));
        sink.setActive(false);
        sink.unlink();
        QVERIFY(!sink.unlink(&a));
        COMPARE_LOG("");
    }

    void pointers()
    {
        QScopedPointer<FakeSink> sink(new FakeSink);
        FakeSink other;
        const QFLSinkPointer null, pointer(sink.data()), same = pointer;
        QVERIFY(!null && !null.data() && null == QFLSinkPointer(nullptr));
        QVERIFY(pointer && pointer.data() == sink.data() && pointer == same);
        QVERIFY(pointer != QFLSinkPointer(&other) && pointer != null);
        QCOMPARE(QFLEncodedVideoSink::fromSink(pointer.data()), sink.data());
        sink.reset();
        QVERIFY(pointer.isNull() && !pointer.data() && pointer == same && pointer != null);

        QFLSink plain;
        QCOMPARE(QFLEncodedVideoSink::fromSink(&plain), nullptr);
        QCOMPARE(QFLEncodedVideoSink::fromSink(nullptr), nullptr);
    }

    // The source is on record while it is being asked, and stays so when it refuses.
    void refusedLink()
    {
        class Reporting : public FakeSource
        {
            bool addSink(QFLSink *sink) override
            {
                sink->setError(QFLSink::FormatError);
                return FakeSource::addSink(sink);
            }
        };
        const FakeLog log;
        Reporting source;
        source.accepts = false;
        FakeSink sink;
        QVERIFY(!sink.link(&source));
        COMPARE_LOG("s error 1, s addSink");
        sink.setActive(true);
        sink.setError(QFLSink::ResourceError);
        sink.unlink();
        COMPARE_LOG("s active 1, s error 4, s removeSink");
    }

    void activityAndStream()
    {
        const FakeLog log;
        FakeSource source;
        FakeSink sink;
        QVERIFY(!sink.isActive());
        QCOMPARE(sink.error(), QFLSink::NoError);
        sink.setActive(true);
        sink.setError(QFLSink::HardwareError);
        QVERIFY(sink.isActive());
        QCOMPARE(sink.error(), QFLSink::HardwareError);
        COMPARE_LOG("");
        QVERIFY(sink.link(&source));
        sink.setActive(true);
        sink.setActive(false);
        sink.setActive(false);
        sink.setError(QFLSink::HardwareError);
        sink.setError(QFLSink::HardwareError);
        COMPARE_LOG("s addSink, s active 0, s error 5, s error 5");

        QVideoEncoderSettings settings;
        settings.setBitRate(5);
        QVERIFY(sink.start(settings));
        QVERIFY(sink.isActive());
        sink.drain();
        QCOMPARE(sink.videoEncoderSettings(), settings);
        sink.stop();
        QVERIFY(sink.videoEncoderSettings().isNull());
        QVERIFY(!sink.isActive());
        COMPARE_LOG("s active 1, s active 0");
    }
};

QTEST_APPLESS_MAIN(tst_QFLSink)

#include "tst_qflsink.moc"
