// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Tests of what applications may do in slots, sinks and surfaces while the backend is at work.

#include <qflcamera.h>
#include <qfldecoder.h>
#include <qflencodedvideosink.h>
#include <qflencoder.h>

#include <QtMultimedia/qabstractvideosurface.h>
#include <QtMultimedia/qvideosurfaceformat.h>
#include <QtTest/QtTest>

#include <memory>

using Places = QByteArrayList;

namespace {

std::function<void(const char *)> enter;

class Surface : public QAbstractVideoSurface
{
public:
    explicit Surface(const char *name) { setObjectName(QLatin1String(name)); }

    QList<QVideoFrame::PixelFormat> supportedPixelFormats(
            QAbstractVideoBuffer::HandleType) const override
    {
        return {QVideoFrame::Format_YUV420P, QVideoFrame::Format_RGB32};
    }
    bool start(const QVideoSurfaceFormat &format) override
    {
        const QPointer<Surface> self(this);
        tell(" start");
        return self && QAbstractVideoSurface::start(format);
    }
    bool present(const QVideoFrame &) override { return tell(" present"), true; }
    void stop() override
    {
        const QPointer<Surface> self(this);
        tell(" stop");
        if (self)
            QAbstractVideoSurface::stop();
    }

private:
    void tell(const char *call) { enter((objectName().toLatin1() + call).constData()); }
};

class Sink : public QFLEncodedVideoSink
{
public:
    ~Sink() override { unlink(); }

    bool isFormatSupported(const QVideoEncoderSettings &) const override
    {
        return enter("sink isFormatSupported"), true;
    }
    bool start(const QVideoEncoderSettings &) override
    {
        return enter(m_starts++ == 0 ? "sink start" : "sink start in a run"), true;
    }
    bool encodedVideoFrame(const QFLEncodedVideoFrame &) override
    {
        ++frames;
        return enter("sink frame"), true;
    }
    void stop() override { enter("sink stop"); }

    int frames = 0;

private:
    int m_starts = 0;
};

/*! The camera's pictures go to the viewfinder, to the sink, and through the decoder to the screen. */
struct World
{
    std::unique_ptr<Surface> viewfinder {new Surface("viewfinder")};
    std::unique_ptr<Surface> screen {new Surface("screen")};
    std::unique_ptr<QFLCamera> camera {new QFLCamera};
    std::unique_ptr<QFLEncoder> encoder {new QFLEncoder};
    std::unique_ptr<QFLDecoder> decoder {new QFLDecoder};
    std::unique_ptr<Sink> sink {new Sink};

    World()
    {
        QVideoEncoderSettings settings;
        settings.setCodec(QStringLiteral("VP8"));
        encoder->setVideoSettings(settings);
        QCameraViewfinderSettings viewfinderSettings;
        viewfinderSettings.setResolution(160, 120);
        camera->setViewfinderSettings(viewfinderSettings);

        tell(&QFLCamera::stateChanged, camera.get(), "camera state");
        tell(&QFLCamera::statusChanged, camera.get(), "camera status");
        tell(&QFLEncoder::statusChanged, encoder.get(), "encoder status");
        tell(&QFLEncoder::encodedVideoFrame, encoder.get(), "encoder frame");
        tell(&QFLDecoder::statusChanged, decoder.get(), "decoder status");
        tell(&QFLDecoder::outputFormatChanged, decoder.get(), "decoder format");

        camera->setViewfinder(viewfinder.get());
        decoder->setVideoSurface(screen.get());
        sink->link(encoder.get());
        decoder->setMediaObject(encoder.get());
        encoder->setMediaObject(camera.get());
        camera->start();
    }

    /*! Applications see to it that no sink has an encoder on record that they delete. */
    void removeEncoder()
    {
        QFLSource *const source = encoder.get();
        encoder.reset();
        if (sink)
            static_cast<QFLSink *>(sink.get())->unlink(source);
    }

private:
    template<typename Signal, typename Object>
    static void tell(Signal signal, Object *object, const char *name)
    {
        QObject::connect(object, signal, [name] { enter(name); });
    }
};

using Move = std::function<void(World &)>;

} // namespace

Q_DECLARE_METATYPE(Move)

class tst_BackendReentrancy : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void inEveryCall_data();
    void inEveryCall();
    void destroyedSink();
    void stateAfterRestart();

private:
    bool run(const char *place, const Move &move);

    const Places m_places {"camera state",     "camera status",          "encoder status",
                           "encoder frame",    "decoder status",         "decoder format",
                           "viewfinder start", "viewfinder present",     "viewfinder stop",
                           "screen start",     "screen present",         "screen stop",
                           "sink start",       "sink isFormatSupported", "sink frame",
                           "sink stop",        "sink start in a run"};
};

void tst_BackendReentrancy::initTestCase()
{
    QCoreApplication::instance()->setProperty("facelink.gstreamer.cameras",
                                              QStringList {QStringLiteral("videotestsrc")});
}

void tst_BackendReentrancy::inEveryCall_data()
{
    QTest::addColumn<Move>("move");
    const auto row = [](const char *name, const Move &move) { QTest::newRow(name) << move; };
    row("delete camera", [](World &w) { w.camera.reset(); });
    row("delete encoder", [](World &w) { w.removeEncoder(); });
    row("delete decoder", [](World &w) { w.decoder.reset(); });
    row("delete sink", [](World &w) { w.sink.reset(); });
    row("delete viewfinder", [](World &w) { w.viewfinder.reset(); });
    row("delete screen", [](World &w) { w.screen.reset(); });
    row("stop camera", [](World &w) { w.camera->stop(); });
    row("restart camera", [](World &w) {
        w.camera->stop();
        w.camera->start();
    });
    row("stop encoder", [](World &w) { w.encoder->stop(); });
    row("stop decoder", [](World &w) { w.decoder->stop(); });
    row("flush decoder", [](World &w) { w.decoder->flush(); });
    row("unbind encoder", [](World &w) { w.encoder->setMediaObject(nullptr); });
    row("rebind encoder", [](World &w) {
        w.encoder->setMediaObject(nullptr);
        w.encoder->setMediaObject(w.camera.get());
    });
    row("unbind decoder", [](World &w) { w.decoder->setMediaObject(nullptr); });
    row("rebind decoder", [](World &w) {
        w.decoder->setMediaObject(nullptr);
        w.decoder->setMediaObject(w.encoder.get());
    });
    row("unlink sink", [](World &w) { w.sink->unlink(); });
    row("relink sink", [](World &w) { w.sink->link(w.encoder.get()); });
    row("no viewfinder", [](World &w) { w.camera->setViewfinder(nullptr); });
    row("no screen", [](World &w) { w.decoder->setVideoSurface(nullptr); });
}

void tst_BackendReentrancy::inEveryCall()
{
    QFETCH(Move, move);
    for (const QByteArray &place : m_places)
        QVERIFY2(run(place, move), place);
}

// Whether the place was reached, where the move was made; the calls that follow must not be missed
// by what is left.
bool tst_BackendReentrancy::run(const char *place, const Move &move)
{
    bool isMade = false;
    int pictures = 0;
    std::unique_ptr<World> world;
    enter = [&](const char *here) {
        pictures += qstrcmp(here, "screen present") == 0;
        const bool isHere
                = world && QThread::currentThread() == thread() && qstrcmp(here, place) == 0;
        if (isHere && !std::exchange(isMade, true))
            move(*world);
    };
    world.reset(new World);
    QElapsedTimer timer;
    timer.start();
    while (!isMade && pictures < 2 && timer.elapsed() < 5000)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    if (world->sink)
        world->sink->unlink();
    if (world->sink && world->encoder)
        world->sink->link(world->encoder.get());
    if (world->camera)
        world->camera->stop();
    if (world->encoder)
        world->encoder->setMediaObject(nullptr);
    if (world->decoder)
        world->decoder->stop();
    QCoreApplication::processEvents();
    enter = [](const char *) {};
    world.reset();
    QCoreApplication::processEvents();
    return isMade;
}

// The encoder has only the second sink on record, and can't take the first one off.
void tst_BackendReentrancy::destroyedSink()
{
    enter = [](const char *) {};
    World world;
    Sink second;
    QVERIFY(second.link(world.encoder.get()));
    QTRY_VERIFY(world.sink->frames > 2 && second.frames > 2);
    QTest::ignoreMessage(QtWarningMsg, "A sink was destroyed that had not been unlinked");
    world.sink.reset();
    second.frames = 0;
    QTRY_VERIFY(second.frames > 2);
}

// The camera ignores reports while it is to be restarted, so what comes after that is told anew.
void tst_BackendReentrancy::stateAfterRestart()
{
    enter = [](const char *) {};
    World world;
    QTRY_COMPARE(world.camera->status(), QCamera::ActiveStatus);
    QCameraViewfinderSettings settings = world.camera->viewfinderSettings();
    settings.setResolution(320, 240);
    world.camera->setViewfinderSettings(settings);
    QCOMPARE(world.camera->state(), QCamera::ActiveState);
    world.camera->stop();
    QCOMPARE(world.camera->state(), QCamera::LoadedState);

    world.camera->start();
    QTRY_COMPARE(world.camera->status(), QCamera::ActiveStatus);
    settings.setPixelFormat(QVideoFrame::Format_Jpeg);
    world.camera->setViewfinderSettings(settings);
    QTRY_COMPARE(world.camera->state(), QCamera::LoadedState);
    QVERIFY(world.camera->error() != QCamera::NoError);
}

QTEST_GUILESS_MAIN(tst_BackendReentrancy)

#include "tst_backendreentrancy.moc"
