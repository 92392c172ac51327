// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Tests of the encoder and of its video surface.

#include "fakebackend.h"
#include "fakecodeccontrols.h"

#include <qflencodervideosurface.h>

#include <QtTest/QtTest>

struct Encoding : FakeWorld
{
    FakeEncodeControl *encode = service.add<FakeEncodeControl>(QFLEncodeControl_iid);
    FakeEncoderSettings *settings
            = service.add<FakeEncoderSettings>(QVideoEncoderSettingsControl_iid);
    FakeEncodedSource *source = service.add<FakeEncodedSource>(QFLEncodedVideoSourceControl_iid);

    Encoding() : FakeWorld("facelink.encoder", "e") { }
};

struct Bound : FakeService
{
    using FakeService::FakeService;

    FakeRawSource *raw = add<FakeRawSource>(QFLRawVideoSourceControl_iid);
    FakeRenderer *renderer = add<FakeRenderer>(QVideoRendererControl_iid);
    FakeMediaObject object {this};
};

static const QVideoSurfaceFormat rawFormat(QSize(320, 240), QVideoFrame::Format_NV12);
static const QByteArray bindLog
        = "X+rawvideosource, debug facelink.encoder: raw video source control acquired, "
          "X.rawvideosource surface, X+videorenderer, debug facelink.encoder: video renderer "
          "control acquired, X.videorenderer surface";
static const QByteArray unbindLog = "X.rawvideosource no surface, X.videorenderer no surface, "
                                    "X-rawvideosource, X-videorenderer";

struct LoggedEncoding : Encoding
{
    QFLEncoder encoder;

    LoggedEncoding()
    {
        logSignal(&encoder, &QFLEncoder::encodedVideoFrame, "frame");
        logSignal(&encoder, &QFLEncoder::statusChanged, "status");
        logSignal(&encoder, &QFLEncoder::errorChanged, "error");
        FakeLog::take();
    }
};

class tst_QFLEncoder : public QObject
{
    Q_OBJECT

private slots:
    void forwarding()
    {
        Encoding world;
        QFLEncoder encoder;
        COMPARE_LOG("p+facelink.encoder, e+encode, e+videoencodersettings, e+encodedvideosource");
        QCOMPARE(world.lastHint, QMediaServiceProviderHint());
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

    void withoutService()
    {
        Encoding world;
        // A control of the wrong class goes back at once.
        for (const char *identifier : {QFLEncodeControl_iid, QVideoEncoderSettingsControl_iid,
                                       QFLEncodedVideoSourceControl_iid})
            world.service.add<FakeRenderer>(identifier);
        QCOMPARE(QFLEncoder().status(), QFLEncoder::UnavailableStatus);
        COMPARE_LOG("p+facelink.encoder, e+encode, e-encode, e+videoencodersettings, "
                    "e-videoencodersettings, e+encodedvideosource, e-encodedvideosource, p-e");

        world.services.clear();
        QFLEncoder encoder;
        FakeSink sink;
        COMPARE_LOG("p+facelink.encoder");
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

        for (QFLEncoder *owner : {&encoder, static_cast<QFLEncoder *>(nullptr)}) {
            QFLEncoderVideoSurface surface(owner);
            QVERIFY(!surface.isFormatSupported(rawFormat) && !surface.start(rawFormat));
            QVERIFY(!surface.present(QVideoFrame()));
            surface.stop();
        }
    }

    void reports()
    {
        LoggedEncoding world;
        FakeEncodeControl queued;
        connect(&world.encoder, SIGNAL(encodedVideoFrame(QFLEncodedVideoFrame)), &queued,
                SIGNAL(encodedVideoFrame(QFLEncodedVideoFrame)), Qt::QueuedConnection);
        logSignal(&queued, &QFLEncodeControl::encodedVideoFrame, "queued");
        const auto reportAll = [&] {
            emit world.encode->encodedVideoFrame(QFLEncodedVideoFrame("abc", 3, {}));
            emit world.encode->statusChanged(QFLEncoder::StartedStatus);
            emit world.encode->error(QFLEncoder::HardwareError, QStringLiteral("far away"));
        };
        runInThread(reportAll);
        COMPARE_LOG("");
        QCoreApplication::processEvents();
        COMPARE_LOG("frame abc, status 6, error 4");
        QVERIFY(world.encoder.start(rawFormat));
        QCOMPARE(world.encoder.error(), QFLEncoder::HardwareError);
        QCOMPARE(world.encoder.errorString(), QStringLiteral("far away"));
        reportAll();
        COMPARE_LOG("e.encode start 320, frame abc, status 6, error 4");
        QCoreApplication::processEvents();
        COMPARE_LOG("queued abc, queued abc");
    }

    void binding()
    {
        LoggedEncoding world;
        Bound a("a"), b("b");
        FakeMediaObject nothing(nullptr);
        QVERIFY(world.encoder.setMediaObject(nullptr));
        QVERIFY(a.object.bind(&world.encoder));
        COMPARE_LOG("e+encode, " + named(bindLog, 'a'));
        QCOMPARE(world.encoder.mediaObject(), &a.object);
        const QPointer<QAbstractVideoSurface> surface = a.raw->current;
        QVERIFY(qobject_cast<QFLEncoderVideoSurface *>(surface));
        QCOMPARE(surface->parent(), &world.encoder);
        QCOMPARE(a.renderer->current, surface);

        QVERIFY(world.encoder.setMediaObject(&a.object));
        COMPARE_LOG("");
        QVERIFY(world.encoder.setMediaObject(&b.object));
        COMPARE_LOG(named(unbindLog, 'a') + ", " + named(bindLog, 'b'));
        QCOMPARE(b.raw->current, surface);
        QVERIFY(!world.encoder.setMediaObject(&nothing));
        COMPARE_LOG(named(unbindLog, 'b'));
        QCOMPARE(world.encoder.mediaObject(), nullptr);

        QVERIFY(world.encoder.setMediaObject(&a.object));
        FakeLog::take();
        a.object.unbind(&world.encoder);
        COMPARE_LOG(named(unbindLog, 'a'));
        QVERIFY(surface);

        // Bound again while it is being unbound, the encoder keeps the controls.
        QVERIFY(a.object.bind(&world.encoder));
        callOnce([&] { QVERIFY(a.object.bind(&world.encoder)); });
        a.object.unbind(&world.encoder);
        QCOMPARE(world.encoder.mediaObject(), &a.object);
        QVERIFY(a.raw->current == surface && a.renderer->current == surface);
    }

    void boundObjectDies()
    {
        LoggedEncoding world;
        Bound b("b");
        {
            Bound a("a");
            QVERIFY(world.encoder.setMediaObject(&a.object));
        }
        // The controls outlived their object for a moment, and may not keep the surface.
        QVERIFY(FakeLog::take().endsWith(
                named(bindLog, 'a') + ", a.rawvideosource no surface, a.videorenderer no surface"));
        QCOMPARE(world.encoder.mediaObject(), nullptr);
        {
            Bound unbound("u");
            QVERIFY(world.encoder.setMediaObject(&unbound.object));
            QVERIFY(world.encoder.setMediaObject(&b.object));
        }
        QVERIFY(FakeLog::take().endsWith(named(bindLog, 'b')));
        QCOMPARE(world.encoder.mediaObject(), &b.object);

        // The object, or its service, may die while the surface is being attached.
        auto *object = new FakeMediaObject(&b);
        QVERIFY(world.encoder.setMediaObject(nullptr));
        FakeLog::take();
        callOnce([&] { delete object; });
        QVERIFY(!world.encoder.setMediaObject(object));
        COMPARE_LOG("b+rawvideosource, debug facelink.encoder: raw video source control acquired, "
                    "b.rawvideosource surface, b.rawvideosource no surface");
        auto *service = new FakeService("s");
        service->add<FakeRawSource>(QFLRawVideoSourceControl_iid);
        FakeMediaObject orphan(service);
        callOnce([&] { delete service; });
        QVERIFY(world.encoder.setMediaObject(&orphan));
        QVERIFY(FakeLog::take().endsWith("s.rawvideosource surface"));
        QVERIFY(world.encoder.setMediaObject(&b.object));
        FakeLog::take();

        // A control that died, and one of the wrong class, is left alone.
        delete b.raw;
        QVERIFY(world.encoder.setMediaObject(nullptr));
        COMPARE_LOG("b.videorenderer no surface, b-videorenderer");
        b.controls = {{QFLRawVideoSourceControl_iid, b.renderer}};
        QVERIFY(world.encoder.setMediaObject(&b.object));
        QVERIFY(world.encoder.setMediaObject(nullptr));
        COMPARE_LOG("b+rawvideosource, b+videorenderer");
    }

    void sinks()
    {
        LoggedEncoding world;
        FakeSink first, second;
        const QByteArray add = "e.encodedvideosource addSink";
        const QByteArray remove = "e.encodedvideosource removeSink";
        QVERIFY(!world.encoder.removeSink(nullptr));
        QVERIFY(first.link(&world.encoder));
        QCOMPARE(world.source->lastSink(), &first);
        QVERIFY(!world.encoder.removeSink(&second));
        COMPARE_LOG(add);
        world.source->removes = false;
        QVERIFY(!world.encoder.removeSink(&first));
        world.source->removes = true;
        QVERIFY(world.encoder.removeSink(&first));
        QVERIFY(!world.encoder.removeSink(&first));
        COMPARE_LOG(remove + ", " + remove);

        QVERIFY(world.encoder.addSink(&first) && world.encoder.addSink(&second));
        QVERIFY(!world.encoder.removeSink(&first));
        world.source->accepts = false;
        QVERIFY(!world.encoder.addSink(&first));
        world.source->accepts = true;
        QVERIFY(world.encoder.removeSink(&second));
        COMPARE_LOG(add + ", " + add + ", " + add + ", " + remove);

        // A sink that is added while another one is refused its removal stays on record.
        world.source->sinks.clear();
        QVERIFY(world.encoder.addSink(&first));
        world.source->removes = false;
        callOnce([&] { QVERIFY(world.encoder.addSink(&second)); });
        QVERIFY(!world.encoder.removeSink(&first));
        world.source->removes = true;
        QVERIFY(world.encoder.removeSink(&second));

        // So does one that is added while another one is refused.
        world.source->accepts = false;
        callOnce([&] {
            world.source->accepts = true;
            QVERIFY(world.encoder.addSink(&second));
        });
        QVERIFY(!world.encoder.addSink(&first));
        QVERIFY(world.encoder.removeSink(&second));

        // Nor is an encoder touched that was deleted on the way.
        world.source->removes = false;
        world.source->sinks.clear();
        QScopedPointer<QFLEncoder> other(new QFLEncoder);
        QVERIFY(other->addSink(&first));
        callOnce([&] { other.reset(); });
        QVERIFY(!other.data()->removeSink(&first));
        QVERIFY(!other);
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
            callOnce([&] { QVERIFY(!encoder.addSink(&sink)); });
        }
        COMPARE_LOG("e.encodedvideosource removeSink, " + named(unbindLog, 'a')
                    + ", e-videoencodersettings, e-encode, e-encodedvideosource, p-e, "
                      "surface destroyed");
    }

    void surface()
    {
        LoggedEncoding world;
        QFLEncoderVideoSurface surface(&world.encoder);
        COMPARE_LOG("e+encode");
        logSignal(&surface, &QAbstractVideoSurface::activeChanged, "active");
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

        // Of a start and a stop within each other the last one counts.
        callOnce([&] { surface.stop(); });
        QVERIFY(!surface.start(rawFormat) && !surface.isActive());
        callOnce([&] { QVERIFY(surface.start(rawFormat)); });
        surface.stop();
        QVERIFY(surface.isActive());
    }
};

QTEST_GUILESS_MAIN(tst_QFLEncoder)

#include "tst_qflencoder.moc"
