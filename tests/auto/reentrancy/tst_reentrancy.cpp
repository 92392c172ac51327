// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Tests of what applications may do in slots, sinks and surfaces: everything, deletion included.

#include "fakebackend.h"
#include "fakecameracontrols.h"
#include "fakecodeccontrols.h"

#include <qflcamera.h>
#include <qfldecodingvideosink.h>

#include <QtTest/QtTest>

#include <random>

namespace {

/*! A service as a backend would make it: live controls, and a renderer control for each request. */
class LiveService : public FakeService
{
public:
    explicit LiveService(const QByteArray &type) : FakeService(type)
    {
        if (type == "facelink.camera") {
            addLive<FakeCameraControl>(QCameraControl_iid)->accepts = false;
            add<FakeLocks>(QCameraLocksControl_iid);
            add<FakeViewfinderSettings>(QCameraViewfinderSettingsControl2_iid);
            raw = addLive<FakeRawSource>(QFLRawVideoSourceControl_iid);
        } else if (type == "facelink.encoder") {
            addLive<FakeEncodeControl>(QFLEncodeControl_iid);
            source = addLive<FakeEncodedSource>(QFLEncodedVideoSourceControl_iid);
        } else {
            addLive<FakeDecodeControl>(QFLDecodeControl_iid);
        }
    }

    QMediaControl *requestControl(const char *identifier) override
    {
        if (qstrcmp(identifier, QVideoRendererControl_iid) != 0)
            return FakeService::requestControl(identifier);
        renderers.append(addLive<FakeRenderer>(identifier));
        return renderers.last();
    }
    void releaseControl(QMediaControl *control) override
    {
        if (renderers.removeOne(control))
            delete control;
        else
            FakeService::releaseControl(control);
    }

    /*! Whether there are so many renderer controls, and one with each surface, null being none. */
    bool shows(int count, QVector<QAbstractVideoSurface *> surfaces) const
    {
        surfaces.removeAll(nullptr);
        for (QMediaControl *renderer : renderers)
            surfaces.removeOne(static_cast<FakeRenderer *>(renderer)->current);
        return surfaces.isEmpty() && renderers.size() == count;
    }

    FakeRawSource *raw = nullptr;
    FakeEncodedSource *source = nullptr;
    QList<QMediaControl *> renderers;

private:
    template<typename Control> Control *addLive(const char *identifier)
    {
        auto *control = add<Control>(identifier);
        control->isLive = true;
        return control;
    }
};

struct LiveBackend : FakeBackend
{
    QMediaService *requestService(const QByteArray &type,
                                  const QMediaServiceProviderHint &hint) override
    {
        FakeBackend::requestService(type, hint);
        return new LiveService(type);
    }
    void releaseService(QMediaService *service) override
    {
        FakeBackend::releaseService(service);
        delete service;
    }
};

class LoggedSink : public QFLEncodedVideoSink
{
public:
    ~LoggedSink() override
    {
        m_isDying = true;
        unlink();
    }

    bool link(QFLSource *source) override { return !m_isDying && QFLSink::link(source); }
    using QFLSink::unlink;
    void unlink() override
    {
        ++unlinking;
        QFLSink::unlink();
        --unlinking;
    }
    bool isFormatSupported(const QVideoEncoderSettings &) const override { return true; }
    bool start(const QVideoEncoderSettings &settings) override
    {
        const QFLSinkPointer self(this);
        FakeLog::add("sink started");
        return self && QFLEncodedVideoSink::start(settings);
    }
    bool encodedVideoFrame(const QFLEncodedVideoFrame &) override { return true; }
    void stop() override
    {
        const QFLSinkPointer self(this);
        FakeLog::add("sink stopped");
        if (self)
            QFLEncodedVideoSink::stop();
    }

    static int unlinking;

private:
    bool m_isDying = false;
};

int LoggedSink::unlinking = 0;

/*! An object that is deleted once, and can be used until its end, also from within it. */
template<typename Object> class Owned
{
public:
    ~Owned() { remove(); }

    template<typename Pointer> void adopt(Object *object, Pointer pointer)
    {
        m_object = object;
        m_isThere = [pointer] { return !pointer.isNull(); };
        m_isDying = false;
    }
    void remove()
    {
        if (get() && !std::exchange(m_isDying, true))
            delete m_object;
    }
    Object *get() const { return m_isThere && m_isThere() ? m_object : nullptr; }
    explicit operator bool() const { return get(); }
    Object *operator->() const { return get(); }

private:
    Object *m_object = nullptr;
    std::function<bool()> m_isThere;
    bool m_isDying = false;
};

/*! The surface that a camera or decoder was last asked to use, which may have been destroyed since. */
struct Request
{
    bool isMade = false;
    QPointer<QAbstractVideoSurface> surface;
};

/*! A call of everything with everything: two of each but the decoder, so that all can change. */
struct World
{
    LiveBackend backend;
    Owned<FakeSurface> viewfinder, screen, otherSurface;
    Owned<QFLCamera> camera, otherCamera;
    Owned<QFLEncoder> encoder, otherEncoder;
    Owned<QFLDecoder> decoder;
    Owned<LoggedSink> sink, otherSink;
    QVector<QFLSource *> sourcesBeingLinked;
    Request viewfinderRequest, screenRequest;
    QMediaObject *wantedCamera = nullptr, *wantedSource = nullptr;

    World()
    {
        complete();
        connectAll();
    }
    ~World() { FakeLog::onEntry() = nullptr; }

    template<typename Object, typename... Signals>
    void make(Owned<Object> &owned, Signals... signal)
    {
        if (owned)
            return;
        auto *object = new Object;
        (logSignal(object, signal, "signal"), ...);
        owned.adopt(object, QPointer<Object>(object));
    }

    void makeSink(Owned<LoggedSink> &owned)
    {
        if (owned)
            return;
        auto *object = new LoggedSink;
        owned.adopt(object, QFLSinkPointer(object));
    }

    /*! Makes what is not there. */
    void complete()
    {
        if (!camera)
            viewfinderRequest = Request();
        if (!decoder)
            screenRequest = Request();
        for (auto *surface : {&viewfinder, &screen, &otherSurface})
            make(*surface);
        for (auto *object : {&camera, &otherCamera}) {
            using Status = QCamera::LockStatus;
            using Reason = QCamera::LockChangeReason;
            make(*object, &QFLCamera::stateChanged, &QFLCamera::statusChanged,
                 &QFLCamera::captureModeChanged, qOverload<QCamera::Error>(&QFLCamera::error),
                 &QFLCamera::locked, &QFLCamera::lockFailed,
                 qOverload<Status, Reason>(&QFLCamera::lockStatusChanged),
                 qOverload<QCamera::LockType, Status, Reason>(&QFLCamera::lockStatusChanged));
        }
        for (auto *object : {&encoder, &otherEncoder}) {
            make(*object, &QFLEncoder::statusChanged, &QFLEncoder::errorChanged,
                 &QFLEncoder::encodedVideoFrame);
        }
        make(decoder, &QFLDecoder::statusChanged, &QFLDecoder::errorChanged,
             &QFLDecoder::outputFormatChanged, &QFLDecoder::endOfStream);
        makeSink(sink);
        makeSink(otherSink);
    }

    void show(QAbstractVideoSurface *surface)
    {
        viewfinderRequest = {surface != nullptr, surface};
        camera->setViewfinder(surface);
    }
    void present(QAbstractVideoSurface *surface)
    {
        screenRequest = {surface != nullptr, surface};
        decoder->setVideoSurface(surface);
    }

    template<typename Object>
    static void bind(Object *object, QMediaObject *&wanted, QMediaObject *other)
    {
        // What is bound or unbound already isn't asked for anew.
        if (object->mediaObject() != other)
            wanted = other;
        object->setMediaObject(other);
    }

    void connectAll()
    {
        camera->start();
        show(viewfinder.get());
        present(screen.get());
        bind(encoder.get(), wantedCamera, camera.get());
        sink->link(encoder.get());
        bind(decoder.get(), wantedSource, encoder.get());
    }
};

LiveService *serviceOf(const QMediaObject *object)
{
    return static_cast<LiveService *>(object->service());
}

template<typename Control> Control *controlOf(const Owned<QFLCamera> &camera, const char *name)
{
    return static_cast<Control *>(serviceOf(camera.get())->controls.value(name));
}

void link(World &world, const Owned<LoggedSink> &sink, const Owned<QFLEncoder> &encoder)
{
    world.sourcesBeingLinked.append(encoder.get());
    sink->link(encoder.get());
    world.sourcesBeingLinked.removeLast();
}

/*! Applications see to it that no sink has an encoder on record, or gets it there, that they delete. */
void removeEncoder(World &world, Owned<QFLEncoder> &encoder)
{
    QFLSource *const source = encoder.get();
    if (LoggedSink::unlinking > 0 && world.sourcesBeingLinked.contains(source))
        return;
    encoder.remove();
    for (auto *sink : {&world.sink, &world.otherSink}) {
        if (*sink)
            (*sink)->unlink(source);
    }
}

using Move = std::function<void(World &)>;

/*! What applications and backends do; a move whose objects are gone does nothing. */
const QVector<QPair<const char *, Move>> &moves()
{
    static const QVector<QPair<const char *, Move>> list {
#define MOVE(object, name, call) \
    {                            \
        name, [](World &w) {     \
            if (w.object) {      \
                call;            \
            }                    \
        }                        \
    }
#define MOVE2(object, other, name, call) \
    {                                    \
        name, [](World &w) {             \
            if (w.object && w.other) {   \
                call;                    \
            }                            \
        }                                \
    }
            MOVE(camera, "delete camera", w.camera.remove()),
            MOVE(encoder, "delete encoder", removeEncoder(w, w.encoder)),
            MOVE(decoder, "delete decoder", w.decoder.remove()),
            MOVE(sink, "delete sink", w.sink.remove()),
            MOVE(viewfinder, "delete viewfinder", w.viewfinder.remove()),
            MOVE(screen, "delete screen", w.screen.remove()),
            MOVE(otherCamera, "delete other camera", w.otherCamera.remove()),
            MOVE(otherEncoder, "delete other encoder", removeEncoder(w, w.otherEncoder)),

            MOVE(camera, "start camera", w.camera->start()),
            MOVE(camera, "stop camera", w.camera->stop()),
            MOVE(camera, "unload camera", w.camera->unload()),
            MOVE(camera, "change mode",
                 w.camera->setCaptureMode(w.camera->captureMode() ^ QCamera::CaptureVideo)),
            MOVE(camera, "change settings", w.camera->setViewfinderSettings({})),
            MOVE(camera, "lock", w.camera->searchAndLock(QCamera::LockFocus)),
            MOVE(camera, "unlock", w.camera->unlock()),
            MOVE(camera, "lock found",
                 controlOf<FakeLocks>(w.camera, QCameraLocksControl_iid)
                         ->report(QCamera::LockFocus, QCamera::Locked, 1)),
            MOVE(camera, "lock lost",
                 controlOf<FakeLocks>(w.camera, QCameraLocksControl_iid)
                         ->report(QCamera::LockFocus, QCamera::Unlocked, 2)),
            MOVE(camera, "camera fails",
                 emit controlOf<FakeCameraControl>(w.camera, QCameraControl_iid)
                         ->error(QCamera::CameraError, QStringLiteral("text"))),
            MOVE2(camera, viewfinder, "show", w.show(w.viewfinder.get())),
            MOVE2(camera, otherSurface, "show elsewhere", w.show(w.otherSurface.get())),
            MOVE(camera, "show nowhere", w.show(nullptr)),

            MOVE2(encoder, camera, "bind encoder",
                  w.bind(w.encoder.get(), w.wantedCamera, w.camera.get())),
            MOVE2(encoder, otherCamera, "rebind encoder",
                  w.bind(w.encoder.get(), w.wantedCamera, w.otherCamera.get())),
            MOVE(encoder, "unbind encoder", w.bind(w.encoder.get(), w.wantedCamera, nullptr)),
            MOVE(encoder, "start encoder", w.encoder->start(QVideoSurfaceFormat())),
            MOVE(encoder, "stop encoder", w.encoder->stop()),
            MOVE2(sink, encoder, "link sink", link(w, w.sink, w.encoder)),
            MOVE2(sink, otherEncoder, "relink sink", link(w, w.sink, w.otherEncoder)),
            MOVE(sink, "unlink sink", w.sink->unlink()),
            MOVE2(otherSink, encoder, "link other sink", link(w, w.otherSink, w.encoder)),
            MOVE(otherSink, "unlink other sink", w.otherSink->unlink()),
            MOVE(encoder, "refuse sinks or not",
                 serviceOf(w.encoder.get())->source->accepts ^= true),

            MOVE2(decoder, encoder, "bind decoder",
                  w.bind(w.decoder.get(), w.wantedSource, w.encoder.get())),
            MOVE2(decoder, otherEncoder, "rebind decoder",
                  w.bind(w.decoder.get(), w.wantedSource, w.otherEncoder.get())),
            MOVE(decoder, "unbind decoder", w.bind(w.decoder.get(), w.wantedSource, nullptr)),
            MOVE(decoder, "start decoder", w.decoder->start(QVideoEncoderSettings())),
            MOVE(decoder, "stop decoder", w.decoder->stop()),
            MOVE2(decoder, screen, "present", w.present(w.screen.get())),
            MOVE2(decoder, otherSurface, "present elsewhere", w.present(w.otherSurface.get())),
            MOVE(decoder, "present nowhere", w.present(nullptr)),
#undef MOVE
#undef MOVE2
    };
    return list;
}

} // namespace

class tst_Reentrancy : public QObject
{
    Q_OBJECT

private slots:
    void everyMoveInEveryCall_data()
    {
        QTest::addColumn<Move>("move");
        for (const auto &[name, move] : moves())
            QTest::newRow(name) << move;
    }

    void everyMoveInEveryCall();
    void randomWalk();
};

Q_DECLARE_METATYPE(Move)

static const char *encodingFault(const World &world, const Owned<QFLCamera> &camera)
{
    const QFLEncoder *encoder = world.encoder.get();
    const bool isBound = encoder && encoder->mediaObject() == camera.get();
    auto *surface = encoder ? encoder->findChild<QAbstractVideoSurface *>() : nullptr;
    const Request viewfinder = &camera == &world.camera ? world.viewfinderRequest : Request();
    const LiveService *service = serviceOf(camera.get());
    if (surface && (service->raw->current == surface) != isBound)
        return "The encoder's surface is on the wrong raw video source control.";
    if (!service->shows(isBound + viewfinder.isMade,
                        {isBound ? surface : nullptr, viewfinder.surface}))
        return "The camera has the wrong renderer controls.";
    if (camera->state() != controlOf<FakeCameraControl>(camera, QCameraControl_iid)->currentState)
        return "The camera's state is not that of its control.";
    if (encoder && encoder->mediaObject() && encoder->mediaObject() != world.wantedCamera)
        return "The encoder is not bound to the camera that was asked for last.";
    return nullptr;
}

static const char *decodingFault(const World &world)
{
    const QFLDecoder *decoder = world.decoder.get();
    const Request screen = world.screenRequest;
    if (!serviceOf(decoder)->shows(screen.isMade, {screen.surface}))
        return "The decoder has the wrong renderer control.";
    if (decoder->mediaObject() && decoder->mediaObject() != world.wantedSource)
        return "The decoder is not bound to the object that was asked for last.";
    auto *sink = decoder->findChild<QFLDecodingVideoSink *>();
    for (const auto *encoder : {&world.encoder, &world.otherEncoder}) {
        const bool isBound = *encoder && decoder->mediaObject() == encoder->get();
        if (sink && *encoder && serviceOf(encoder->get())->source->sinks.contains(sink) != isBound)
            return "The decoder's sink is at the wrong source.";
    }
    return nullptr;
}

/*! What doesn't hold at rest, whatever led there: the last request of each kind is in force. */
static const char *firstFault(const World &world)
{
    for (const auto *camera : {&world.camera, &world.otherCamera}) {
        if (const char *fault = *camera ? encodingFault(world, *camera) : nullptr)
            return fault;
    }
    return world.decoder ? decodingFault(world) : nullptr;
}

static bool hasDestroyedSink(const World &world)
{
    for (const auto *encoder : {&world.encoder, &world.otherEncoder}) {
        if (*encoder && serviceOf(encoder->get())->source->hasDestroyedSink())
            return true;
    }
    return false;
}

static int count(const World &world, const Owned<LoggedSink> &sink)
{
    int sources = 0;
    for (const auto *encoder : {&world.encoder, &world.otherEncoder}) {
        if (*encoder && sink)
            sources += serviceOf(encoder->get())->source->sinks.count(sink.get());
    }
    return sources;
}

/*! A move that is made while the camera restarts may have it restart again. */
static void comeToRest()
{
    QCoreApplication::processEvents();
    FakeLog::onEntry() = nullptr;
    QCoreApplication::processEvents();
}

// Each row makes one move, again and again, with each other move made in each call on its way.
void tst_Reentrancy::everyMoveInEveryCall()
{
    QFETCH(Move, move);
    for (const auto &[name, other] : moves()) {
        bool isMade = true;
        for (int call = 0; isMade; ++call) {
            isMade = false;
            World world;
            int calls = 0;
            FakeLog::onEntry() = [&, &other = other] {
                if (calls++ != call)
                    return;
                isMade = true;
                other(world);
            };
            move(world);
            comeToRest();
            const char *fault = firstFault(world);
            if (!fault && world.sink && world.otherSink && hasDestroyedSink(world))
                fault = "A source has a sink that is gone.";
            // Encoders have one sink on record, and let others go only with the service.
            const bool isAlone = count(world, world.otherSink) == 0;
            if (!fault && isAlone && count(world, world.sink) > 1)
                fault = "The sink has two sources.";
            if (world.sink)
                world.sink->unlink();
            if (!fault && isAlone && count(world, world.sink) > 0)
                fault = "The sink is not on record.";
            QVERIFY2(!fault,
                     qPrintable(QStringLiteral("%1 In \"%2\", call %3: %4")
                                        .arg(QLatin1String(fault), QLatin1String(name))
                                        .arg(call)
                                        .arg(QLatin1String(FakeLog::take()))));
        }
    }
}

void tst_Reentrancy::randomWalk()
{
    std::mt19937 random(20260123);
    const auto below = [&](int limit) { return int(random() % quint32(limit)); };
    World world;
    int depth = 0;
    for (int step = 0; step < 20000; ++step) {
        FakeLog::onEntry() = [&] {
            if (depth == 3 || below(8) != 0)
                return;
            ++depth;
            moves()[below(moves().size())].second(world);
            --depth;
        };
        moves()[below(moves().size())].second(world);
        if (below(4) == 0) {
            comeToRest();
            const char *fault = firstFault(world);
            QVERIFY2(!fault,
                     qPrintable(
                             QStringLiteral("%1 In step %2.").arg(QLatin1String(fault)).arg(step)));
        }
        FakeLog::onEntry() = nullptr;
        world.complete();
        FakeLog::take();
        if (below(20) == 0)
            world.connectAll();
    }
    QVERIFY(world.camera && world.encoder && world.decoder && world.sink);
}

QTEST_GUILESS_MAIN(tst_Reentrancy)

#include "tst_reentrancy.moc"
