// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-3.0-or-later
// Tests of the decoder and of the sink that feeds it.

#include "fakebackend.h"
#include "fakecodeccontrols.h"

#include <qfldecodingvideosink.h>

#include <QtTest/QtTest>

struct Decoding
{
    FakeBackend backend;
    FakeService service {"d"};
    FakeDecodeControl *decode = service.add<FakeDecodeControl>(QFLDecodeControl_iid);
    FakeRenderer *renderer = service.add<FakeRenderer>(QVideoRendererControl_iid);

    Decoding() { backend.services["facelink.decoder"] = &service; }
};

struct Bound
{
    explicit Bound(const char *name) : service(name) { }

    FakeService service;
    FakeEncodedSource *source = service.add<FakeEncodedSource>(QFLEncodedVideoSourceControl_iid);
    FakeMediaObject object {&service};
};

static const QVideoSurfaceFormat outputFormat(QSize(320, 240), QVideoFrame::Format_RGB32);
static const QByteArray bindLog = "X+encodedvideosource, X.encodedvideosource addSink";
static const QByteArray unbindLog = "X.encodedvideosource removeSink, X-encodedvideosource";
static const QByteArray emptyLine = "debug facelink.decoder: ";

static QByteArray named(QByteArray log, char name)
{
    return log.replace('X', name);
}

static QVideoEncoderSettings streamSettings()
{
    QVideoEncoderSettings settings;
    settings.setBitRate(5);
    return settings;
}

class tst_QFLDecoder : public QObject
{
    Q_OBJECT

private slots:
    void forwarding()
    {
        Decoding world;
        QFLDecoder decoder;
        COMPARE_LOG("p+facelink.decoder, d+decode");
        QCOMPARE(world.backend.lastHint, QMediaServiceProviderHint());
        QCOMPARE(decoder.supportedCodecs(true), QStringList(QStringLiteral("hard")));
        QCOMPARE(decoder.supportedCodecs(false), QStringList(QStringLiteral("soft")));
        QVERIFY(decoder.isFormatSupported(streamSettings()));
        QVERIFY(!decoder.isFormatSupported(QVideoEncoderSettings()));
        world.decode->currentStatus = QFLDecoder::EndOfStreamStatus;
        QCOMPARE(decoder.status(), QFLDecoder::EndOfStreamStatus);

        const QFLEncodedVideoFrame frame("abc", 3, {});
        QVERIFY(decoder.start(streamSettings()) && decoder.decode(frame));
        world.decode->accepts = false;
        QVERIFY(!decoder.start(streamSettings()));
        QVERIFY(!decoder.decode(frame));
        decoder.drain();
        COMPARE_LOG("d.decode start 5, d.decode decode abc, d.decode start 5, d.decode decode abc, "
                    "d.decode drain");
        decoder.flush();
        decoder.stop();
        COMPARE_LOG(emptyLine + ", d.decode flush, " + emptyLine + ", d.decode stop");
    }

    // The decoder keeps no control of another class, and hands none back.
    void withoutControl_data()
    {
        QTest::addColumn<bool>("service");
        QTest::addColumn<bool>("wrongClass");
        QTest::addColumn<QByteArray>("log");
        QTest::newRow("no service") << false << false << QByteArray("p+facelink.decoder");
        const QByteArray log = "p+facelink.decoder, d+decode, p-d";
        QTest::newRow("no control") << true << false << log;
        QTest::newRow("wrong class") << true << true << log;
    }

    void withoutControl()
    {
        QFETCH(bool, service);
        QFETCH(bool, wrongClass);
        Decoding world;
        world.service.controls.clear();
        if (wrongClass)
            world.service.add<FakeRenderer>(QFLDecodeControl_iid);
        if (!service)
            world.backend.services.clear();
        {
            QFLDecoder decoder;
            QCOMPARE(decoder.status(), QFLDecoder::UnavailableStatus);
            QCOMPARE(decoder.error(), QFLDecoder::NoError);
            QCOMPARE(decoder.errorString(), QString());
            QVERIFY(!decoder.outputFormat().isValid());
            QVERIFY(decoder.supportedCodecs(false).isEmpty());
            QVERIFY(!decoder.isFormatSupported(streamSettings()));
            QVERIFY(!decoder.start(streamSettings()));
            QVERIFY(!decoder.decode(QFLEncodedVideoFrame()));
            decoder.drain();
        }
        QTEST(FakeLog::take(), "log");
        QFLDecoder decoder;
        FakeLog::take();
        decoder.flush();
        decoder.stop();
        COMPARE_LOG(emptyLine + ", " + emptyLine);
    }

    void reports()
    {
        Decoding world;
        QFLDecoder decoder;
        QSignalSpy statuses(&decoder, &QFLDecoder::statusChanged);
        QSignalSpy errors(&decoder, &QFLDecoder::errorChanged);
        QSignalSpy formats(&decoder, &QFLDecoder::outputFormatChanged);
        QSignalSpy ends(&decoder, &QFLDecoder::endOfStream);
        const auto report = [&](QFLDecoder::Error code, const char *text) {
            emit world.decode->error(code, QString::fromLatin1(text));
            return errors.size();
        };
        QCOMPARE(report(QFLDecoder::NoError, ""), 0);
        QCOMPARE(report(QFLDecoder::FormatError, "first"), 1);
        QCOMPARE(report(QFLDecoder::FormatError, "first"), 1);
        QCOMPARE(report(QFLDecoder::FormatError, "second"), 2);
        QCOMPARE(report(QFLDecoder::ResourceError, "second"), 3);
        QCOMPARE(errors.last().first().value<QFLDecoder::Error>(), QFLDecoder::ResourceError);
        QCOMPARE(decoder.error(), QFLDecoder::ResourceError);
        QCOMPARE(decoder.errorString(), QStringLiteral("second"));
        for (int i = 0; i < 2; ++i) {
            emit world.decode->statusChanged(QFLDecoder::StartedStatus);
            emit world.decode->outputFormatChanged(outputFormat);
            emit world.decode->endOfStream();
        }
        QCOMPARE(statuses.size(), 2);
        QCOMPARE(statuses.last().first().value<QFLDecoder::Status>(), QFLDecoder::StartedStatus);
        QCOMPARE(ends.size(), 2);
        QCOMPARE(formats.size(), 1);
        QCOMPARE(formats.first().first().value<QVideoSurfaceFormat>(), outputFormat);
        QCOMPARE(decoder.outputFormat(), outputFormat);

        // A new run forgets the last one silently.
        QVERIFY(decoder.start(streamSettings()));
        QCOMPARE(decoder.error(), QFLDecoder::NoError);
        QCOMPARE(decoder.errorString(), QString());
        QVERIFY(!decoder.outputFormat().isValid());
        QCOMPARE(errors.size() + formats.size(), 4);
    }

    void binding()
    {
        Decoding world;
        Bound a("a"), b("b");
        QFLDecoder decoder;
        FakeLog::take();
        QVERIFY(decoder.setMediaObject(nullptr));
        QVERIFY(!decoder.findChild<QFLDecodingVideoSink *>());
        QVERIFY(a.object.bind(&decoder));
        COMPARE_LOG(named(bindLog, 'a'));
        QCOMPARE(decoder.mediaObject(), &a.object);
        const QPointer<QFLDecodingVideoSink> sink = decoder.findChild<QFLDecodingVideoSink *>();
        QVERIFY(sink);
        QCOMPARE(a.source->lastSink, sink.data());
        QVERIFY(decoder.setMediaObject(&a.object));
        QVERIFY(sink->encodedVideoFrame(QFLEncodedVideoFrame("abc", 3, {})));
        COMPARE_LOG("d.decode decode abc");

        QVERIFY(decoder.setMediaObject(&b.object));
        COMPARE_LOG(named(unbindLog, 'a') + ", " + named(bindLog, 'b'));
        QCOMPARE(b.source->lastSink, sink.data());
        b.object.unbind(&decoder);
        COMPARE_LOG(named(unbindLog, 'b'));
        QCOMPARE(decoder.mediaObject(), nullptr);
        QVERIFY(sink);
    }

    void failedBinding_data()
    {
        QTest::addColumn<bool>("service");
        QTest::addColumn<bool>("control");
        QTest::addColumn<QByteArray>("log");
        QTest::newRow("no service") << false << false << QByteArray();
        QTest::newRow("no control") << true << false << QByteArray("x+encodedvideosource");
        QTest::newRow("wrong class")
                << true << true << QByteArray("x+encodedvideosource, x-encodedvideosource");
    }

    void failedBinding()
    {
        QFETCH(bool, service);
        QFETCH(bool, control);
        Decoding world;
        Bound a("a");
        FakeService broken("x");
        if (control)
            broken.add<FakeRenderer>(QFLEncodedVideoSourceControl_iid);
        FakeMediaObject object(service ? &broken : nullptr);
        QFLDecoder decoder;
        FakeLog::take();
        QVERIFY(!decoder.setMediaObject(&object));
        QTEST(FakeLog::take(), "log");
        QVERIFY(decoder.findChild<QFLDecodingVideoSink *>());
        QVERIFY(decoder.setMediaObject(&a.object));
        FakeLog::take();
        QVERIFY(!decoder.setMediaObject(&object));
        QVERIFY(FakeLog::take().startsWith(named(unbindLog, 'a')));
        QCOMPARE(decoder.mediaObject(), nullptr);
    }

    // The control stays requested, because the sink still has it on record.
    void refusedLink()
    {
        Decoding world;
        Bound a("a"), b("b");
        a.source->accepts = false;
        QFLDecoder decoder;
        FakeLog::take();
        QVERIFY(!decoder.setMediaObject(&a.object));
        QCOMPARE(decoder.mediaObject(), nullptr);
        COMPARE_LOG(named(bindLog, 'a'));
        QVERIFY(decoder.setMediaObject(&b.object));
        COMPARE_LOG("b+encodedvideosource, a.encodedvideosource removeSink, "
                    "b.encodedvideosource addSink");
    }

    void boundObjectDiesFirst()
    {
        Decoding world;
        QFLDecoder decoder;
        {
            Bound a("a");
            QVERIFY(decoder.setMediaObject(&a.object));
            FakeLog::take();
        }
        QCOMPARE(decoder.mediaObject(), nullptr);
        Bound b("b");
        QVERIFY(decoder.setMediaObject(&b.object));
        COMPARE_LOG(named(bindLog, 'b'));
    }

    // A failed bind of the output is not recorded, so the next surface tries again.
    void videoSurface()
    {
        Decoding world;
        FakeSurface first, second;
        QFLDecoder decoder;
        FakeLog::take();
        const auto set = [&](QAbstractVideoSurface *surface) {
            decoder.setVideoSurface(surface);
            QByteArrayList log = FakeLog::take().split(',');
            const QByteArray line = log.takeFirst();
            const bool complete = line.startsWith(emptyLine)
                    && line.contains("0x" + QByteArray::number(quintptr(surface), 16));
            return complete ? log.join(',').trimmed() : "bad debug line: " + line;
        };
        QCOMPARE(set(nullptr), QByteArray());
        QMediaControl *renderer = world.service.controls.take(QVideoRendererControl_iid);
        QCOMPARE(set(&first), QByteArray("d+videorenderer"));
        QCOMPARE(set(&first), QByteArray("d+videorenderer"));
        QCOMPARE(set(nullptr), QByteArray());
        world.service.controls[QVideoRendererControl_iid] = renderer;
        QCOMPARE(set(&first), QByteArray("d+videorenderer, d.videorenderer surface"));
        QCOMPARE(world.renderer->current.data(), &first);
        QCOMPARE(set(&second), QByteArray("d.videorenderer surface"));
        QCOMPARE(world.renderer->current.data(), &second);
        QCOMPARE(set(nullptr),
                 QByteArray("d.videorenderer no surface, d.videorenderer no surface, "
                            "d-videorenderer"));
        QCOMPARE(set(nullptr), QByteArray());
    }

    void destruction_data()
    {
        QTest::addColumn<int>("status");
        QTest::addColumn<QByteArray>("stop");
        QTest::newRow("started") << 8 << QByteArray(emptyLine + ", d.decode stop, ");
        QTest::newRow("starting") << 7 << QByteArray();
    }

    void destruction()
    {
        QFETCH(int, status);
        QFETCH(QByteArray, stop);
        Decoding world;
        Bound a("a");
        FakeSurface surface;
        {
            QFLDecoder decoder;
            decoder.setVideoSurface(&surface);
            QVERIFY(decoder.setMediaObject(&a.object));
            connect(decoder.findChild<QFLDecodingVideoSink *>(), &QObject::destroyed,
                    [] { FakeLog::add("sink destroyed"); });
            world.decode->currentStatus = QFLDecoder::Status(status);
            FakeLog::take();
        }
        COMPARE_LOG(stop + named(unbindLog, 'a') + ", sink destroyed, d-decode, p-d, "
                    + "d.videorenderer no surface, d-videorenderer");
    }

    void releaseToTheDefaultProvider()
    {
        Decoding world;
        QScopedPointer<QFLDecoder> decoder(new QFLDecoder);
        const FakeBackend other("other");
        decoder.reset();
        COMPARE_LOG("d-decode, other-d");
    }

    void backendThread()
    {
        Decoding world;
        QFLDecoder decoder;
        QSignalSpy statuses(&decoder, &QFLDecoder::statusChanged);
        QSignalSpy formats(&decoder, &QFLDecoder::outputFormatChanged);
        QSignalSpy errors(&decoder, &QFLDecoder::errorChanged);
        QSignalSpy ends(&decoder, &QFLDecoder::endOfStream);
        QThread *thread = nullptr;
        connect(&decoder, &QFLDecoder::endOfStream, [&] { thread = QThread::currentThread(); });
        runInThread([&] {
            emit world.decode->statusChanged(QFLDecoder::StartedStatus);
            emit world.decode->outputFormatChanged(outputFormat);
            emit world.decode->error(QFLDecoder::HardwareError, QStringLiteral("far away"));
            emit world.decode->endOfStream();
        });
        QCOMPARE(statuses.size() + formats.size() + errors.size() + ends.size(), 0);
        QTRY_COMPARE(ends.size(), 1);
        QCOMPARE(thread, decoder.thread());
        QCOMPARE(statuses.value(0).value(0).value<QFLDecoder::Status>(), QFLDecoder::StartedStatus);
        QCOMPARE(formats.size() + errors.size(), 2);
        QCOMPARE(decoder.outputFormat(), outputFormat);
        QCOMPARE(decoder.errorString(), QStringLiteral("far away"));
    }

    void sinkStream()
    {
        Decoding world;
        QFLDecoder decoder;
        FakeSource source;
        {
            QFLDecodingVideoSink sink(&decoder);
            QCOMPARE(sink.parent(), &decoder);
            QVERIFY(sink.link(&source));
            FakeLog::take();
            QVERIFY(sink.isFormatSupported(streamSettings()));
            QVERIFY(!sink.isFormatSupported(QVideoEncoderSettings()));
            world.decode->accepts = false;
            QVERIFY(!sink.start(streamSettings()));
            QVERIFY(!sink.isActive());
            QVERIFY(sink.videoEncoderSettings().isNull());
            QVERIFY(!sink.encodedVideoFrame(QFLEncodedVideoFrame()));
            COMPARE_LOG(emptyLine + ", d.decode start 5, d.decode decode ");

            world.decode->accepts = true;
            QVERIFY(sink.start(streamSettings()));
            QCOMPARE(sink.videoEncoderSettings(), streamSettings());
            sink.drain();
            QVERIFY(sink.isActive());
            COMPARE_LOG(emptyLine + ", d.decode start 5, s active 1, " + emptyLine
                        + ", d.decode drain");
            sink.stop();
            QVERIFY(sink.videoEncoderSettings().isNull());
            COMPARE_LOG(emptyLine + ", " + emptyLine + ", d.decode stop, s active 0");
            QVERIFY(sink.start(streamSettings()));
            FakeLog::take();
        }
        COMPARE_LOG("s active 0");
    }

    void sinkFollowsStatus()
    {
        Decoding world;
        QFLDecoder decoder;
        QFLDecodingVideoSink sink(&decoder);
        for (int status = 0; status <= 8; ++status) {
            for (bool before : {true, false}) {
                sink.setActive(before);
                emit world.decode->statusChanged(QFLDecoder::Status(status));
                QCOMPARE(sink.isActive(), status >= 7);
            }
        }
    }

    void sinkError_data()
    {
        QTest::addColumn<int>("decoderError");
        QTest::addColumn<QByteArray>("log");
        QTest::newRow("resource") << 1 << QByteArray("s error 4, s error 4");
        QTest::newRow("format") << 2 << QByteArray("s error 1, s error 1");
        QTest::newRow("hardware") << 3 << QByteArray("s error 5, s error 5");
        QTest::newRow("none") << 0 << QByteArray("s error 0, s error 0");
        QTest::newRow("above") << 4 << QByteArray("s error 0, s error 0");
        QTest::newRow("below") << -1 << QByteArray("s error 0, s error 0");
    }

    void sinkError()
    {
        QFETCH(int, decoderError);
        Decoding world;
        QFLDecoder decoder;
        QFLDecodingVideoSink sink(&decoder);
        FakeSource source;
        sink.setError(QFLSink::OverrunError);
        QVERIFY(sink.link(&source));
        FakeLog::take();
        for (const char *text : {"one", "two"})
            emit world.decode->error(QFLDecoder::Error(decoderError), QString::fromLatin1(text));
        QTEST(FakeLog::take(), "log");
    }

    void sinkWithoutDecoder()
    {
        const FakeLog log;
        QFLDecodingVideoSink sink(nullptr);
        QVERIFY(!sink.isFormatSupported(streamSettings()));
        QVERIFY(!sink.start(streamSettings()));
        QVERIFY(!sink.encodedVideoFrame(QFLEncodedVideoFrame()));
        sink.setActive(true);
        sink.drain();
        QVERIFY(!sink.isActive());
        sink.setActive(true);
        sink.stop();
        QVERIFY(!sink.isActive());
        COMPARE_LOG(emptyLine + ", " + emptyLine + ", " + emptyLine);
    }
};

QTEST_GUILESS_MAIN(tst_QFLDecoder)

#include "tst_qfldecoder.moc"
