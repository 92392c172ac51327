// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-3.0-or-later
// Tests of the encoder and of its video surface.

#include "fakebackend.h"
#include "fakecodeccontrols.h"

#include <qflencodervideosurface.h>

#include <QtTest/QtTest>

struct Encoding
{
    FakeBackend backend;
    FakeService service {"e"};
    FakeEncodeControl *encode = service.add<FakeEncodeControl>(QFLEncodeControl_iid);
    FakeEncoderSettings *settings
            = service.add<FakeEncoderSettings>(QVideoEncoderSettingsControl_iid);
    FakeEncodedSource *source = service.add<FakeEncodedSource>(QFLEncodedVideoSourceControl_iid);

    Encoding() { backend.services["facelink.encoder"] = &service; }
};

struct Bound
{
    explicit Bound(const char *name) : service(name) { }

    FakeService service;
    FakeRawSource *raw = service.add<FakeRawSource>(QFLRawVideoSourceControl_iid);
    FakeRenderer *renderer = service.add<FakeRenderer>(QVideoRendererControl_iid);
    FakeMediaObject object {&service};
};

class FrameReceiver : public QObject
{
    Q_OBJECT

public slots:
    void receive(QFLEncodedVideoFrame frame)
    {
        frames.append(frame);
        thread = QThread::currentThread();
    }

public:
    QList<QFLEncodedVideoFrame> frames;
    QThread *thread = nullptr;
};

static const QVideoSurfaceFormat rawFormat(QSize(320, 240), QVideoFrame::Format_NV12);
static const QByteArray bindLog
        = "X+rawvideosource, debug facelink.encoder: raw video source control acquired, "
          "X.rawvideosource surface, X+videorenderer, debug facelink.encoder: video renderer "
          "control acquired, X.videorenderer surface";
static const QByteArray unbindLog = "X.rawvideosource no surface, X.videorenderer no surface, "
                                    "X-rawvideosource, X-videorenderer";

static QByteArray named(QByteArray log, char name)
{
    return log.replace('X', name);
}

class tst_QFLEncoder : public QObject
{
    Q_OBJECT

private slots:
    void forwarding()
    {
        Encoding world;
        QFLEncoder encoder;
        COMPARE_LOG("p+facelink.encoder, e+encode, e+videoencodersettings, e+encodedvideosource");
        QCOMPARE(world.backend.lastHint, QMediaServiceProviderHint());
        QCOMPARE(encoder.supportedCodecs(true), QStringList(QStringLiteral("hard")));
        QCOMPARE(encoder.supportedCodecs(false), QStringList(QStringLiteral("soft")));
        QCOMPARE(encoder.supportedPixelFormats(), world.encode->supportedPixelFormats());
        world.encode->currentStatus = QFLEncoder::StartedStatus;
        QCOMPARE(encoder.status(), QFLEncoder::StartedStatus);

        QVideoEncoderSettings settings;
        settings.setResolution(320, 240);
        settings.setFrameRate(15);
        encoder.setVideoSettings(settings);
        QCOMPARE(encoder.videoSettings(), settings);
        bool continuous = false;
        QCOMPARE(encoder.supportedResolutions(settings, &continuous), QList<QSize>({{320, 240}}));
        QVERIFY(std::exchange(continuous, false));
        QCOMPARE(encoder.supportedFrameRates(settings, &continuous), QList<qreal>({15}));
        QVERIFY(continuous);
        QVERIFY(encoder.supportedFrameRates(settings).isEmpty());

        QVideoFrame frame(16, QSize(2, 2), 8, QVideoFrame::Format_RGB32);
        frame.setStartTime(7);
        QVERIFY(encoder.start(rawFormat) && encoder.encode(frame));
        world.encode->accepts = false;
        QVERIFY(!encoder.start(rawFormat));
        QVERIFY(!encoder.encode(frame));
        encoder.drain();
        encoder.flush();
        encoder.stop();
        COMPARE_LOG("e.encode start 320, e.encode encode 7, e.encode start 320, e.encode encode 7, "
                    "e.encode drain, e.encode flush, e.encode stop");
    }

    void withoutControls_data()
    {
        QTest::addColumn<bool>("service");
        QTest::addColumn<QByteArray>("release");
        QTest::newRow("no service") << false << QByteArray();
        QTest::newRow("no controls") << true << QByteArray("p-e");
    }

    void withoutControls()
    {
        QFETCH(bool, service);
        QFETCH(QByteArray, release);
        Encoding world;
        world.service.controls.clear();
        if (!service)
            world.backend.services.clear();
        {
            QFLEncoder encoder;
            FakeSink sink;
            QCOMPARE(encoder.status(), QFLEncoder::UnavailableStatus);
            QCOMPARE(encoder.error(), QFLEncoder::NoError);
            QVERIFY(encoder.supportedCodecs(false).isEmpty());
            QVERIFY(encoder.supportedPixelFormats().isEmpty());
            QVERIFY(!encoder.start(rawFormat));
            QVERIFY(!encoder.encode(QVideoFrame()));
            encoder.drain();
            encoder.flush();
            encoder.stop();
            encoder.setVideoSettings(QVideoEncoderSettings());
            QVERIFY(encoder.videoSettings().isNull());
            bool continuous = true;
            QVERIFY(encoder.supportedFrameRates({}, &continuous).isEmpty() && !continuous);
            continuous = true;
            QVERIFY(encoder.supportedResolutions({}, &continuous).isEmpty() && !continuous);
            QVERIFY(!sink.link(&encoder));
            QVERIFY(!encoder.removeSink(&sink));

            QFLEncoderVideoSurface own(&encoder), orphan(nullptr);
            FakeLog::take();
            for (QFLEncoderVideoSurface *surface : {&own, &orphan}) {
                QVERIFY(surface->supportedPixelFormats().isEmpty());
                QVERIFY(!surface->start(rawFormat) && !surface->isActive());
                QVERIFY(FakeLog::take().startsWith("debug facelink.encoder: QVideoSurfaceFormat("));
                QVERIFY(!surface->present(QVideoFrame()));
                surface->stop();
                COMPARE_LOG("debug facelink.encoder: ");
            }
        }
        COMPARE_LOG(release);
    }

    // A control of the wrong class goes back at once.
    void wrongClasses()
    {
        Encoding world;
        for (const char *identifier : {QFLEncodeControl_iid, QVideoEncoderSettingsControl_iid,
                                       QFLEncodedVideoSourceControl_iid})
            world.service.add<FakeRenderer>(identifier);
        QFLEncoder encoder;
        COMPARE_LOG("p+facelink.encoder, e+encode, e-encode, e+videoencodersettings, "
                    "e-videoencodersettings, e+encodedvideosource, e-encodedvideosource");
        QCOMPARE(encoder.status(), QFLEncoder::UnavailableStatus);
    }

    void errors()
    {
        Encoding world;
        QFLEncoder encoder;
        QSignalSpy spy(&encoder, &QFLEncoder::errorChanged);
        for (const char *text : {"first", "second", "second"})
            emit world.encode->error(QFLEncoder::FormatError, QString::fromLatin1(text));
        QCOMPARE(spy.size(), 3);
        QCOMPARE(spy.last().first().value<QFLEncoder::Error>(), QFLEncoder::FormatError);
        QVERIFY(encoder.start(rawFormat));
        QCOMPARE(encoder.error(), QFLEncoder::FormatError);
        QCOMPARE(encoder.errorString(), QStringLiteral("second"));
    }

    void binding()
    {
        Encoding world;
        Bound a("a"), b("b");
        FakeMediaObject nothing(nullptr);
        QFLEncoder encoder;
        QVERIFY(encoder.setMediaObject(nullptr));
        FakeLog::take();
        QVERIFY(a.object.bind(&encoder));
        COMPARE_LOG("e+encode, " + named(bindLog, 'a'));
        QCOMPARE(encoder.mediaObject(), &a.object);
        const QPointer<QAbstractVideoSurface> surface = a.raw->current;
        QVERIFY(qobject_cast<QFLEncoderVideoSurface *>(surface));
        QCOMPARE(surface->parent(), &encoder);
        QCOMPARE(a.renderer->current, surface);

        QVERIFY(encoder.setMediaObject(&a.object));
        COMPARE_LOG("");
        QVERIFY(encoder.setMediaObject(&b.object));
        COMPARE_LOG(named(unbindLog, 'a') + ", " + named(bindLog, 'b'));
        QCOMPARE(b.raw->current, surface);
        QVERIFY(!encoder.setMediaObject(&nothing));
        COMPARE_LOG(named(unbindLog, 'b'));
        QCOMPARE(encoder.mediaObject(), nullptr);

        QVERIFY(encoder.setMediaObject(&a.object));
        FakeLog::take();
        a.object.unbind(&encoder);
        COMPARE_LOG(named(unbindLog, 'a'));
        QVERIFY(surface);
    }

    void firstBindWithoutService()
    {
        Encoding world;
        FakeMediaObject nothing(nullptr);
        QFLEncoder encoder;
        QVERIFY(!encoder.setMediaObject(&nothing));
        QVERIFY(encoder.findChild<QFLEncoderVideoSurface *>());
    }

    // A control of the wrong class of a bound object's service is not handed back.
    void boundServiceWithoutControls()
    {
        Encoding world;
        FakeService service("a");
        service.add<FakeRenderer>(QFLRawVideoSourceControl_iid);
        FakeMediaObject object(&service);
        QFLEncoder encoder;
        FakeLog::take();
        QVERIFY(encoder.setMediaObject(&object));
        QVERIFY(encoder.setMediaObject(nullptr));
        COMPARE_LOG("e+encode, a+rawvideosource, a+videorenderer");
        QVERIFY(encoder.findChild<QFLEncoderVideoSurface *>());
    }

    void boundObjectDiesFirst()
    {
        Encoding world;
        QFLEncoder encoder;
        {
            Bound a("a");
            QVERIFY(encoder.setMediaObject(&a.object));
            FakeLog::take();
        }
        QCOMPARE(encoder.mediaObject(), nullptr);
        Bound b("b");
        QVERIFY(encoder.setMediaObject(&b.object));
        COMPARE_LOG(named(bindLog, 'b'));
    }

    void sinks()
    {
        Encoding world;
        QFLEncoder encoder;
        FakeSink first, second;
        FakeLog::take();
        const QByteArray add = "e.encodedvideosource addSink";
        const QByteArray remove = "e.encodedvideosource removeSink";
        QVERIFY(!encoder.removeSink(nullptr));
        QVERIFY(first.link(&encoder));
        QCOMPARE(world.source->lastSink, &first);
        QVERIFY(!encoder.removeSink(&second));
        COMPARE_LOG(add);
        world.source->removes = false;
        QVERIFY(!encoder.removeSink(&first));
        world.source->removes = true;
        QVERIFY(encoder.removeSink(&first));
        QVERIFY(!encoder.removeSink(&first));
        COMPARE_LOG(remove + ", " + remove);

        QVERIFY(encoder.addSink(&first) && encoder.addSink(&second));
        QVERIFY(!encoder.removeSink(&first));
        world.source->accepts = false;
        QVERIFY(!encoder.addSink(&first));
        world.source->accepts = true;
        QVERIFY(encoder.removeSink(&second));
        COMPARE_LOG(add + ", " + add + ", " + add + ", " + remove);
    }

    void destruction()
    {
        Encoding world;
        Bound a("a");
        FakeSink sink;
        {
            QFLEncoder encoder;
            QVERIFY(sink.link(&encoder));
            QVERIFY(encoder.setMediaObject(&a.object));
            connect(encoder.findChild<QFLEncoderVideoSurface *>(), &QObject::destroyed,
                    [] { FakeLog::add("surface destroyed"); });
            FakeLog::take();
        }
        COMPARE_LOG("e.encodedvideosource removeSink, " + named(unbindLog, 'a')
                    + ", e-videoencodersettings, e-encode, e-encodedvideosource, p-e, "
                      "surface destroyed");
    }

    void surface()
    {
        Encoding world;
        QFLEncoder encoder;
        FakeLog::take();
        QFLEncoderVideoSurface surface(&encoder);
        COMPARE_LOG("e+encode");
        connect(&surface, &QAbstractVideoSurface::activeChanged,
                [](bool active) { FakeLog::add("active " + QByteArray::number(active)); });
        for (auto type : {QAbstractVideoBuffer::NoHandle, QAbstractVideoBuffer::EGLImageHandle})
            QCOMPARE(surface.supportedPixelFormats(type), world.encode->supportedPixelFormats());

        QString text;
        QDebug(&text) << rawFormat;
        const QByteArray line = "debug facelink.encoder: " + text.trimmed().toUtf8();
        world.encode->accepts = false;
        QVERIFY(!surface.start(rawFormat) && !surface.isActive());
        COMPARE_LOG(line + ", e.encode start 320");
        world.encode->accepts = true;
        QVERIFY(surface.present(QVideoFrame()));
        QVERIFY(surface.start(rawFormat));
        QCOMPARE(surface.surfaceFormat(), rawFormat);
        surface.stop();
        surface.stop();
        COMPARE_LOG("e.encode encode -1, " + line
                    + ", e.encode start 320, active 1, "
                      "debug facelink.encoder: , e.encode stop, active 0, "
                      "debug facelink.encoder: , e.encode stop");
    }

    void backendThread()
    {
        Encoding world;
        QFLEncoder encoder;
        FrameReceiver receiver;
        connect(&encoder, &QFLEncoder::encodedVideoFrame, &receiver, &FrameReceiver::receive);
        QSignalSpy errors(&encoder, &QFLEncoder::errorChanged);
        QSignalSpy statuses(&encoder, &QFLEncoder::statusChanged);
        const QFLEncodedVideoFrame frame("abc", 3, {});
        runInThread([&] {
            emit world.encode->encodedVideoFrame(frame);
            emit world.encode->statusChanged(QFLEncoder::StartedStatus);
            emit world.encode->error(QFLEncoder::HardwareError, QStringLiteral("far away"));
        });
        QCOMPARE(receiver.frames.size() + errors.size() + statuses.size(), 0);
        QTRY_COMPARE(errors.size(), 1);
        QCOMPARE(receiver.frames, QList<QFLEncodedVideoFrame>({frame}));
        QCOMPARE(receiver.thread, encoder.thread());
        QCOMPARE(statuses.value(0).value(0).value<QFLEncoder::Status>(), QFLEncoder::StartedStatus);
        QCOMPARE(encoder.error(), QFLEncoder::HardwareError);
        QCOMPARE(encoder.errorString(), QStringLiteral("far away"));
    }

    void frameAcrossThreads_data()
    {
        QTest::addColumn<bool>("byName");
        QTest::newRow("by name") << true;
        QTest::newRow("by pointer") << false;
    }

    void frameAcrossThreads()
    {
        QFETCH(bool, byName);
        Encoding world;
        QFLEncoder encoder;
        FrameReceiver receiver;
        if (byName)
            connect(&encoder, SIGNAL(encodedVideoFrame(QFLEncodedVideoFrame)), &receiver,
                    SLOT(receive(QFLEncodedVideoFrame)));
        else
            connect(&encoder, &QFLEncoder::encodedVideoFrame, &receiver, &FrameReceiver::receive);
        QThread thread;
        receiver.moveToThread(&thread);
        thread.start();
        const QFLEncodedVideoFrame frame("abc", 3, {});
        emit world.encode->encodedVideoFrame(frame);
        QMetaObject::invokeMethod(&receiver, [&] {
            receiver.moveToThread(encoder.thread());
            thread.quit();
        });
        thread.wait();
        QCOMPARE(receiver.frames, QList<QFLEncodedVideoFrame>({frame}));
        QCOMPARE(receiver.thread, &thread);
    }
};

QTEST_GUILESS_MAIN(tst_QFLEncoder)

#include "tst_qflencoder.moc"
