// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Tests of the decoder and of the sink that feeds it.

#include "fakebackend.h"
#include "fakecodeccontrols.h"

#include <qfldecoder_p.h>
#include <qfldecodingvideosink.h>

#include <QtTest/QtTest>

struct Decoding : FakeWorld
{
    FakeDecodeControl *decode = service.add<FakeDecodeControl>(QFLDecodeControl_iid);
    FakeRenderer *renderer = service.add<FakeRenderer>(QVideoRendererControl_iid);

    Decoding() : FakeWorld("facelink.decoder", "d") { }
};

struct Bound : FakeService
{
    using FakeService::FakeService;

    FakeEncodedSource *source = add<FakeEncodedSource>(QFLEncodedVideoSourceControl_iid);
    FakeMediaObject object {this};
};

static const QVideoSurfaceFormat outputFormat(QSize(320, 240), QVideoFrame::Format_RGB32);
static const QByteArray bindLog = "X+encodedvideosource, X.encodedvideosource addSink";
static const QByteArray unbindLog = "X.encodedvideosource removeSink, X-encodedvideosource";
static const QByteArray emptyLine = "debug facelink.decoder: ";

static QVideoEncoderSettings streamSettings()
{
    QVideoEncoderSettings settings;
    settings.setBitRate(5);
    return settings;
}

/*! A decoder as other libraries derive it. */
class DerivedDecoder : public QFLDecoder
{
public:
    struct Private : QFLDecoderPrivate
    {
        int own = 7;
    };

    DerivedDecoder() : QFLDecoder(*new Private) { }
    int own() const { return static_cast<Private *>(d_ptr.data())->own; }
};

struct LoggedDecoding : Decoding
{
    QFLDecoder decoder;

    LoggedDecoding()
    {
        logSignal(&decoder, &QFLDecoder::statusChanged, "status");
        logSignal(&decoder, &QFLDecoder::errorChanged, "error");
        logSignal(&decoder, &QFLDecoder::outputFormatChanged, "format");
        logSignal(&decoder, &QFLDecoder::endOfStream, "end");
        FakeLog::take();
    }
};

class tst_QFLDecoder : public QObject
{
    Q_OBJECT

private slots:
    void forwarding()
    {
        Decoding world;
        QFLDecoder decoder;
        COMPARE_LOG("p+facelink.decoder, d+decode");
        QCOMPARE(world.lastHint, QMediaServiceProviderHint());
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

    void derived()
    {
        Decoding world;
        const DerivedDecoder decoder;
        QCOMPARE(decoder.own(), 7);
        QCOMPARE(decoder.status(), QFLDecoder::LoadedStatus);
    }

    void withoutService()
    {
        Decoding world;
        // The decoder keeps no control of another class, and hands none back.
        world.service.add<FakeRenderer>(QFLDecodeControl_iid);
        QCOMPARE(QFLDecoder().status(), QFLDecoder::UnavailableStatus);
        COMPARE_LOG("p+facelink.decoder, d+decode, p-d");
        world.services.clear();
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
            COMPARE_LOG("p+facelink.decoder");
            decoder.flush();
            decoder.stop();
        }
        COMPARE_LOG(emptyLine + ", " + emptyLine);
    }

    void reports()
    {
        LoggedDecoding world;
        const auto report = [&](QFLDecoder::Error code, const char *text) {
            emit world.decode->error(code, QString::fromLatin1(text));
        };
        report(QFLDecoder::NoError, "");
        report(QFLDecoder::FormatError, "first");
        report(QFLDecoder::FormatError, "second");
        report(QFLDecoder::ResourceError, "second");
        COMPARE_LOG("error 2, error 2, error 1");
        const auto reportAll = [&] {
            emit world.decode->statusChanged(QFLDecoder::StartedStatus);
            emit world.decode->outputFormatChanged(outputFormat);
            report(QFLDecoder::HardwareError, "far away");
            emit world.decode->endOfStream();
        };
        runInThread(reportAll);
        COMPARE_LOG("");
        QCoreApplication::processEvents();
        COMPARE_LOG("status 8, format 320, error 3, end");
        QCOMPARE(world.decoder.error(), QFLDecoder::HardwareError);
        QCOMPARE(world.decoder.errorString(), QStringLiteral("far away"));
        QCOMPARE(world.decoder.outputFormat(), outputFormat);

        // A new run forgets the last one silently.
        QVERIFY(world.decoder.start(streamSettings()));
        COMPARE_LOG("d.decode start 5");
        QCOMPARE(world.decoder.error(), QFLDecoder::NoError);
        QCOMPARE(world.decoder.errorString(), QString());
        QVERIFY(!world.decoder.outputFormat().isValid());
        reportAll();
        reportAll();
        COMPARE_LOG("status 8, format 320, error 3, end, status 8, end");
    }

    void binding()
    {
        LoggedDecoding world;
        Bound a("a"), b("b");
        QVERIFY(world.decoder.setMediaObject(nullptr));
        QVERIFY(!world.decoder.findChild<QFLDecodingVideoSink *>());
        QVERIFY(a.object.bind(&world.decoder));
        COMPARE_LOG(named(bindLog, 'a'));
        QCOMPARE(world.decoder.mediaObject(), &a.object);
        const QPointer<QFLDecodingVideoSink> sink
                = world.decoder.findChild<QFLDecodingVideoSink *>();
        QVERIFY(sink);
        QCOMPARE(a.source->lastSink(), sink.data());
        QVERIFY(world.decoder.setMediaObject(&a.object));
        QVERIFY(sink->encodedVideoFrame(QFLEncodedVideoFrame("abc", 3, {})));
        COMPARE_LOG("d.decode decode abc");

        QVERIFY(world.decoder.setMediaObject(&b.object));
        COMPARE_LOG(named(unbindLog, 'a') + ", " + named(bindLog, 'b'));
        QCOMPARE(b.source->lastSink(), sink.data());
        b.object.unbind(&world.decoder);
        COMPARE_LOG(named(unbindLog, 'b'));
        QCOMPARE(world.decoder.mediaObject(), nullptr);
        {
            Bound unbound("u");
            QVERIFY(world.decoder.setMediaObject(&unbound.object));
            QVERIFY(world.decoder.setMediaObject(&b.object));
            QVERIFY(FakeLog::take().endsWith(named(bindLog, 'b')));
        }
        QCOMPARE(world.decoder.mediaObject(), &b.object);
        QVERIFY(sink);
    }

    void failedBinding()
    {
        Decoding world;
        FakeService wrong("x");
        FakeMediaObject nothing(nullptr), object(&wrong);
        QFLDecoder decoder;
        FakeLog::take();
        QVERIFY(!decoder.setMediaObject(&nothing));
        QVERIFY(!decoder.setMediaObject(&object));
        COMPARE_LOG("x+encodedvideosource");
        wrong.add<FakeRenderer>(QFLEncodedVideoSourceControl_iid);
        QVERIFY(!decoder.setMediaObject(&object));
        COMPARE_LOG("x+encodedvideosource, x-encodedvideosource");
        QVERIFY(decoder.findChild<QFLDecodingVideoSink *>());
        {
            Bound a("a"), b("b");
            QVERIFY(decoder.setMediaObject(&a.object));
            FakeLog::take();
            QVERIFY(!decoder.setMediaObject(&nothing));
            COMPARE_LOG(named(unbindLog, 'a'));
            QCOMPARE(decoder.mediaObject(), nullptr);

            // The control of a refused link stays requested, because the sink has it on record.
            a.source->accepts = false;
            QVERIFY(!decoder.setMediaObject(&a.object));
            QCOMPARE(decoder.mediaObject(), nullptr);
            COMPARE_LOG(named(bindLog, 'a'));
            QVERIFY(decoder.setMediaObject(&b.object));
            COMPARE_LOG("b+encodedvideosource, a.encodedvideosource removeSink, "
                        "b.encodedvideosource addSink");
        }
        // The control outlived its object for a moment, and may not keep the sink.
        QCOMPARE(decoder.mediaObject(), nullptr);
        COMPARE_LOG("b.encodedvideosource removeSink");
    }

    // A failed bind of the output is not recorded, so the next surface tries again.
    void videoSurface()
    {
        LoggedDecoding world;
        FakeSurface first, second;
        const auto set = [&](QAbstractVideoSurface *surface) {
            world.decoder.setVideoSurface(surface);
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
        world.service.controls[QVideoRendererControl_iid] = world.decode;
        QCOMPARE(set(&first), QByteArray("d+videorenderer, d-decode"));
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

    // The service goes to the default provider of the day, and only a started decoder is stopped.
    void destruction()
    {
        Decoding world;
        Bound a("a");
        FakeSurface surface;
        world.decode->currentStatus = QFLDecoder::StartingStatus;
        delete new QFLDecoder;
        COMPARE_LOG("p+facelink.decoder, d+decode, d-decode, p-d");
        QScopedPointer<QFLDecoder> decoder(new QFLDecoder);
        decoder->setVideoSurface(&surface);
        QVERIFY(decoder->setMediaObject(&a.object));
        connect(decoder->findChild<QFLDecodingVideoSink *>(), &QObject::destroyed,
                [] { FakeLog::add("sink destroyed"); });
        world.decode->currentStatus = QFLDecoder::StartedStatus;
        const FakeBackend other("other");
        decoder.reset();
        COMPARE_LOG(emptyLine + ", d.decode stop, " + named(unbindLog, 'a')
                    + ", sink destroyed, d-decode, other-d, "
                      "d.videorenderer no surface, d-videorenderer");
    }

    void sink()
    {
        LoggedDecoding world;
        FakeSource source;
        {
            QFLDecodingVideoSink sink(&world.decoder);
            QCOMPARE(sink.parent(), &world.decoder);
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
        {
            // Of a start and a stop within each other the last one counts.
            QFLDecodingVideoSink sink(&world.decoder);
            callOnce([&] { sink.stop(); });
            QVERIFY(!sink.start(streamSettings()) && !sink.isActive());
            callOnce([&] { QVERIFY(sink.start(streamSettings())); });
            sink.stop();
            QVERIFY(sink.isActive());
        }

        QFLDecodingVideoSink sink(nullptr);
        QVERIFY(!sink.isFormatSupported(streamSettings()) && !sink.start(streamSettings()));
        QVERIFY(!sink.encodedVideoFrame(QFLEncodedVideoFrame()));
        for (auto end : {&QFLDecodingVideoSink::drain, &QFLDecodingVideoSink::stop}) {
            QVERIFY(sink.QFLEncodedVideoSink::start(streamSettings()));
            (sink.*end)();
            QVERIFY(!sink.isActive() && sink.videoEncoderSettings().isNull());
        }
    }

    // Both feed the decoder and follow it; the one that is started last has the settings.
    void twoSinks()
    {
        LoggedDecoding world;
        QFLDecodingVideoSink first(&world.decoder), second(&world.decoder);
        QVERIFY(first.start(streamSettings()) && second.start(QVideoEncoderSettings()));
        QVERIFY(first.encodedVideoFrame(QFLEncodedVideoFrame("a", 1, {})));
        QVERIFY(second.encodedVideoFrame(QFLEncodedVideoFrame("b", 1, {})));
        COMPARE_LOG(emptyLine + ", d.decode start 5, " + emptyLine
                    + ", d.decode start -1, d.decode decode a, d.decode decode b");
        first.stop();
        QVERIFY(!first.isActive() && second.isActive());
        for (auto status : {QFLDecoder::StartedStatus, QFLDecoder::LoadedStatus}) {
            emit world.decode->statusChanged(status);
            QCOMPARE(first.isActive(), status == QFLDecoder::StartedStatus);
            QCOMPARE(second.isActive(), first.isActive());
        }
    }

    // A decoder lives on in the thread that it is moved to, and hears of a backend there.
    void otherThread()
    {
        LoggedDecoding world;
        QThread thread;
        QThread *where = nullptr;
        connect(&world.decoder, &QFLDecoder::statusChanged, &world.decoder,
                [&] { where = QThread::currentThread(); });
        QVERIFY(world.decoder.thread() == QThread::currentThread());
        world.decoder.moveToThread(&thread);
        emit world.decode->statusChanged(QFLDecoder::StartedStatus);
        QCOMPARE(where, nullptr);
        thread.start();
        QTRY_COMPARE(where, &thread);
        bool isStarted = false;
        QThread *home = QThread::currentThread();
        QMetaObject::invokeMethod(
                &world.decoder,
                [&] {
                    isStarted = world.decoder.start(streamSettings());
                    world.decoder.moveToThread(home);
                },
                Qt::BlockingQueuedConnection);
        QVERIFY(isStarted);
        thread.quit();
        QVERIFY(thread.wait());
    }

    void sinkFollowsDecoder()
    {
        LoggedDecoding world;
        FakeSource source;
        QFLDecodingVideoSink sink(&world.decoder);
        for (int status = 0; status <= 8; ++status) {
            for (bool before : {true, false}) {
                sink.setActive(before);
                emit world.decode->statusChanged(QFLDecoder::Status(status));
                QCOMPARE(sink.isActive(), status >= 7);
            }
        }
        sink.setError(QFLSink::OverrunError);
        QVERIFY(sink.link(&source));
        FakeLog::take();
        for (int error = -1; error <= 4; ++error)
            emit world.decode->error(QFLDecoder::Error(error), QStringLiteral("text"));
        emit world.decode->error(QFLDecoder::FormatError, QStringLiteral("one"));
        emit world.decode->error(QFLDecoder::FormatError, QStringLiteral("two"));
        COMPARE_LOG("error -1, s error 0, error 0, s error 0, error 1, s error 4, error 2, "
                    "s error 1, error 3, s error 5, error 4, s error 0, error 2, s error 1, "
                    "error 2, s error 1");
    }
};

QTEST_GUILESS_MAIN(tst_QFLDecoder)

#include "tst_qfldecoder.moc"
