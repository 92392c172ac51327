// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Tests of the camera service with the test source and with video files.

#include "cameradevices.h"
#include "cameramodes.h"
#include "cameraservice.h"
#include "camerasession.h"
#include "exposurecontrol.h"
#include "flashcontrol.h"
#include "focuscontrol.h"
#include "qflrawvideosourcecontrol.h"
#include "testmedia.h"
#include "zoomcontrol.h"

#include <QtMultimedia/qcameracontrol.h>
#include <QtMultimedia/qcameraviewfindersettingscontrol.h>
#include <QtMultimedia/qvideodeviceselectorcontrol.h>
#include <QtMultimedia/qvideosurfaceformat.h>

#include <linux/v4l2-controls.h>

#include <atomic>

namespace {

using State = QCamera::State;

// A camera service with its controls, as a media object would hold them.
struct Camera
{
    explicit Camera(const QByteArray &name)
    {
        selector->setSelectedDevice(CameraDevices().names().indexOf(name));
    }

    CameraService implementation;
    QMediaService &service = implementation;
    QCameraControl *control = service.requestControl<QCameraControl *>();
    QVideoDeviceSelectorControl *selector = service.requestControl<QVideoDeviceSelectorControl *>();
    QCameraViewfinderSettingsControl2 *settings
            = service.requestControl<QCameraViewfinderSettingsControl2 *>();
    QFLRawVideoSourceControl *source = service.requestControl<QFLRawVideoSourceControl *>();
    QSignalSpy errors {control, &QCameraControl::error};
};

QCameraViewfinderSettings settings(const QSize &size, qreal minimum, qreal maximum,
                                   QVideoFrame::PixelFormat format = QVideoFrame::Format_Invalid)
{
    QCameraViewfinderSettings result;
    result.setResolution(size);
    result.setMinimumFrameRate(minimum);
    result.setMaximumFrameRate(maximum);
    result.setPixelFormat(format);
    return result;
}

int luma(const QVideoFrame &frame, int x, int y)
{
    return qGray(frame.image().pixel(x, y));
}

// By the median gap, which a busy machine changes little.
qreal frameRate(const QVector<qint64> &times)
{
    QVector<qint64> gaps;
    for (int index = 1; index < times.size(); ++index)
        gaps.append(times.at(index) - times.at(index - 1));
    std::sort(gaps.begin(), gaps.end());
    return 1e6 / gaps.at(gaps.size() / 2);
}

// The bars get darker from left to right, and from top to bottom once they are turned.
bool showsBars(const QVideoFrame &frame)
{
    const bool isTurned = frame.height() > frame.width();
    const QPoint end = isTurned ? QPoint(60, 152) : QPoint(frame.width() - 8, 8);
    return luma(frame, isTurned ? 60 : 8, 8) > 150 && luma(frame, end.x(), end.y()) < 60;
}

GstDeviceProvider *fakeProvider = nullptr;

// The first source to make a frame hangs from then on.
struct Hang
{
    std::atomic<GstElement *> source = nullptr;
    QSemaphore hasBegun;
    QSemaphore end;
};

std::atomic<Hang *> hang = nullptr;
std::atomic<bool> isTaken = false;

GstPadProbeReturn handleFakeFrame(GstPad *pad, GstPadProbeInfo *, gpointer)
{
    if (isTaken) {
        GST_ELEMENT_ERROR(GST_PAD_PARENT(pad), RESOURCE, BUSY, (nullptr),
                          ("\n%s", g_strerror(EBUSY)));
    }
    Hang *const present = hang;
    GstElement *none = nullptr;
    if (present && present->source.compare_exchange_strong(none, GST_PAD_PARENT(pad))) {
        gst_object_ref(present->source);
        present->hasBegun.release();
        present->end.acquire();
    }
    return GST_PAD_PROBE_OK;
}

GstElement *createFakeSource(GstDevice *, const gchar *)
{
    GstElement *source = gst_element_factory_make("videotestsrc", nullptr);
    g_object_set(source, "is-live", true, nullptr);
    const GstPadPointer pad(gst_element_get_static_pad(source, "src"));
    gst_pad_add_probe(pad.get(), GST_PAD_PROBE_TYPE_BUFFER, handleFakeFrame, nullptr, nullptr);
    return source;
}

// From now on the cameras of Video4Linux are those that are plugged in here.
void replaceVideo4Linux()
{
    const auto setUp = [](gpointer type, gpointer) {
        auto *provider = GST_DEVICE_PROVIDER_CLASS(type);
        gst_device_provider_class_set_static_metadata(provider, "Fake", "Video/Source", "-", "-");
        provider->start = [](GstDeviceProvider *) { return gboolean(true); };
    };
    const GType type = g_type_register_static_simple(
            GST_TYPE_DEVICE_PROVIDER, "FakeProvider", sizeof(GstDeviceProviderClass), setUp,
            sizeof(GstDeviceProvider), nullptr, GTypeFlags(0));
    gst_device_provider_register(nullptr, "v4l2deviceprovider", GST_RANK_PRIMARY, type);
    fakeProvider = gst_device_provider_factory_get_by_name("v4l2deviceprovider");
    gst_device_provider_start(fakeProvider);
}

GstDevice *plugIn(const char *path)
{
    const auto setUp = [](gpointer type, gpointer) {
        GST_DEVICE_CLASS(type)->create_element = createFakeSource;
    };
    static const GType type
            = g_type_register_static_simple(GST_TYPE_DEVICE, "FakeDevice", sizeof(GstDeviceClass),
                                            setUp, sizeof(GstDevice), nullptr, GTypeFlags(0));
    GstStructure *properties
            = gst_structure_new("properties", "device.path", G_TYPE_STRING, path,
                                "v4l2.device.bus_info", G_TYPE_STRING, "usb-1", nullptr);
    const GstCapsPointer caps(
            gst_caps_from_string("video/x-raw,format=YUY2,width=320,height=240,framerate=30/1"));
    auto *device
            = GST_DEVICE(g_object_new(type, "display-name", "Cam", "device-class", "Video/Source",
                                      "caps", caps.get(), "properties", properties, nullptr));
    gst_structure_free(properties);
    gst_device_provider_device_add(fakeProvider, device);
    return device;
}

void plugOut(GstDevice *device)
{
    gst_device_provider_device_remove(fakeProvider, device);
}

// A device that has all settings, at 0 first.
struct FakeControls : DriverSettings
{
    std::optional<Range> range(quint32 id) const override
    {
        static const QMap<quint32, Range> ranges {
                {V4L2_CID_EXPOSURE_ABSOLUTE, {3, 5000, 250, {}}},
                {V4L2_CID_ZOOM_ABSOLUTE, {100, 500, 100, {}}},
                {V4L2_CID_AUTO_EXPOSURE_BIAS, {0, 1, 0, {{0, -1000}, {1, 2000}}}},
                {V4L2_CID_ISO_SENSITIVITY, {0, 1, 0, {{0, 100000}, {1, 400000}}}}};
        return ranges.value(id, {0, 3, 2, {{0, 0}, {1, 1}, {2, 2}, {3, 3}}});
    }
    std::optional<int> value(quint32 id) const override { return values.value(id); }
    bool setValue(quint32 id, int value) override { return values.insert(id, value), true; }
    QMap<quint32, int> values;
};

} // namespace

class tst_CameraService : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(gst_init_check(nullptr, nullptr, nullptr));
        replaceVideo4Linux();
        const QByteArray bars = "videotestsrc pattern=smpte75 num-buffers=10 ! "
                                "video/x-raw,width=160,height=120,framerate=20/1 ! ";
        makeFile("a clip.webm", bars + "vp8enc ! webmmux");
        makeFile("turned.mp4", bars + "x264enc ! video/x-h264,profile=high ! mp4mux");
        turn("turned.mp4");
        makeFile("sound.ogg", "audiotestsrc num-buffers=50 ! vorbisenc ! oggmux");
        makeFile("notes.mp4", "fakesrc num-buffers=1 sizetype=fixed sizemax=5000");
        QStringList files {QStringLiteral("videotestsrc")};
        for (const char *name :
             {"a clip.webm", "turned.mp4", "sound.ogg", "notes.mp4", "missing.mp4"})
            files.append(path(name));
        QCoreApplication::instance()->setProperty("facelink.gstreamer.cameras", files);
    }

    void changesStates()
    {
        Camera camera("videotestsrc");
        QList<int> statuses;
        connect(camera.control, &QCameraControl::statusChanged, this,
                [&](QCamera::Status status) { statuses.append(status); });
        camera.control->setState(QCamera::LoadedState);
        QVERIFY(!camera.settings->supportedViewfinderSettings().isEmpty());
        for (int count = 0; count < 2; ++count) {
            camera.control->setState(QCamera::ActiveState);
            QTRY_COMPARE(camera.control->status(), QCamera::ActiveStatus);
            camera.control->setState(QCamera::LoadedState);
        }
        camera.control->setState(QCamera::UnloadedState);
        const QList<int> run = {QCamera::StartingStatus, QCamera::ActiveStatus,
                                QCamera::StoppingStatus, QCamera::LoadedStatus};
        QCOMPARE(statuses,
                 (QList<int> {QCamera::LoadingStatus, QCamera::LoadedStatus} + run + run
                  + QList<int> {QCamera::UnloadingStatus, QCamera::UnloadedStatus}));
    }

    void obeysWithinSignals()
    {
        const QVector<int> ends {QCamera::UnloadedStatus, QCamera::LoadedStatus,
                                 QCamera::ActiveStatus, -1};
        for (auto trigger : {QCamera::LoadingStatus, QCamera::StartingStatus, QCamera::ActiveStatus,
                             QCamera::StoppingStatus, QCamera::UnloadingStatus}) {
            for (int wanted = 0; wanted < ends.size(); ++wanted) {
                auto camera = std::make_unique<Camera>("videotestsrc");
                bool isObeyed = false;
                const auto obey = [&](QCamera::Status status) {
                    if (status != trigger || std::exchange(isObeyed, true))
                        return;
                    ends.at(wanted) < 0 ? camera.reset() : camera->control->setState(State(wanted));
                };
                connect(camera->control, &QCameraControl::statusChanged, obey);
                for (State state : {State::ActiveState, State::LoadedState, State::UnloadedState}) {
                    if (!isObeyed)
                        camera->control->setState(state);
                    QTRY_VERIFY(isObeyed || camera->control->status() != QCamera::StartingStatus);
                }
                QTRY_COMPARE(camera ? int(camera->control->status()) : -1, ends.at(wanted));
                QCOMPARE(camera ? int(camera->control->state()) : 3, wanted);
            }
        }
    }

    void followsPort()
    {
        Camera camera("videotestsrc");
        QSignalSpy changes(camera.selector, &QVideoDeviceSelectorControl::devicesChanged);
        const QByteArray name = "v4l2:usb-1";
        GstDevice *device = plugIn("/dev/video1");
        for (int round = 1; round <= 2; ++round) {
            QTRY_COMPARE(changes.size(), 2 * round - 1);
            const int index = CameraDevices().names().indexOf(name);
            QCOMPARE(camera.selector->deviceName(index), QString::fromLatin1(name));
            camera.selector->setSelectedDevice(index);
            QCOMPARE(camera.control->status(), QCamera::UnloadedStatus);
            isTaken = true;
            camera.control->setState(QCamera::ActiveState);
            QTRY_COMPARE(camera.control->status(), QCamera::UnloadedStatus);
            QVERIFY(camera.errors.takeLast().at(1).toString().startsWith(
                    QLatin1String("Cam: another program may be using the camera")));
            isTaken = false;
            camera.control->setState(QCamera::ActiveState);
            QTRY_COMPARE(camera.control->status(), QCamera::ActiveStatus);
            plugOut(device);
            QTRY_COMPARE_WITH_TIMEOUT(changes.size(), 2 * round, 1000);
            const QString text = QStringLiteral("Cam: the camera has been unplugged");
            QCOMPARE(camera.errors.value(round - 1), (QVariantList {QCamera::CameraError, text}));
            QCOMPARE(camera.control->status(), QCamera::UnavailableStatus);
            QVERIFY(!CameraDevices().names().contains(name));
            device = plugIn("/dev/video0");
        }
        plugOut(device);
    }

    void leavesHangingCamera()
    {
        GstDevice *const device = plugIn("/dev/video0");
        for (int wanted : {0, 1, 2}) {
            Hang present;
            hang = &present;
            auto camera = std::make_unique<Camera>("v4l2:usb-1");
            camera->control->setState(QCamera::ActiveState);
            present.hasBegun.acquire();
            const qint64 begin = g_get_monotonic_time();
            wanted == 2 ? camera.reset() : camera->control->setState(State(wanted));
            QVERIFY(g_get_monotonic_time() - begin < 500000);
            if (camera)
                camera->control->setState(QCamera::ActiveState);
            QTRY_VERIFY(!camera || camera->control->status() == QCamera::ActiveStatus);
            present.end.release();
            const GstElementPointer source(present.source);
            QTRY_COMPARE(GST_OBJECT_REFCOUNT_VALUE(source.get()), 1);
            camera.reset();
            hang = nullptr;
        }
        plugOut(device);
    }

    void delivers_data()
    {
        QTest::addColumn<QByteArray>("device");
        QTest::addColumn<QCameraViewfinderSettings>("asked");
        QTest::addColumn<QSize>("size");
        QTest::addColumn<int>("rate");
        const QByteArray test = "videotestsrc";
        QTest::newRow("defaults") << test << QCameraViewfinderSettings() << QSize(640, 480) << 30;
        QTest::newRow("size and rate")
                << test << settings({320, 240}, 5, 15) << QSize(320, 240) << 15;
        QTest::newRow("format") << test << settings({}, 0, 0, QVideoFrame::Format_NV12)
                                << QSize(640, 480) << 30;
        const QByteArray clip = url("a clip.webm");
        QTest::newRow("as it is") << clip << QCameraViewfinderSettings() << QSize(160, 120) << 20;
        QTest::newRow("smaller") << clip << settings({80, 60}, 0, 10) << QSize(80, 60) << 10;
        QTest::newRow("faster") << clip << settings({}, 0, 40) << QSize(160, 120) << 40;
        QTest::newRow("upright") << url("turned.mp4") << QCameraViewfinderSettings()
                                 << QSize(120, 160) << 20;
    }

    void delivers()
    {
        QFETCH(QByteArray, device);
        QFETCH(QCameraViewfinderSettings, asked);
        QFETCH(QSize, size);
        QFETCH(int, rate);
        Camera camera(device);
        RecordingSurface surface({QVideoFrame::Format_YUV420P, QVideoFrame::Format_NV12});
        camera.settings->setViewfinderSettings(asked);
        camera.source->setSurface(&surface);
        const qint64 begin = g_get_monotonic_time();
        camera.control->setState(QCamera::ActiveState);
        // A clip lasts half a second, so this takes it round twice.
        QTRY_VERIFY(surface.frames.size() >= qMax(16.0, 1.3 * rate));
        const QVector<qint64> frameTimes = surface.times();
        QVERIFY(frameTimes.first() >= begin && frameTimes.last() <= g_get_monotonic_time());
        QVERIFY(qAbs(frameRate(frameTimes) / rate - 1) < 0.2);
        QCOMPARE(QPoint(surface.starts, camera.errors.size()), QPoint(1, 0));
        const bool isNv12 = asked.pixelFormat() == QVideoFrame::Format_NV12;
        QCOMPARE(surface.surfaceFormat().pixelFormat(),
                 isNv12 ? QVideoFrame::Format_NV12 : QVideoFrame::Format_YUV420P);
        QCOMPARE(surface.surfaceFormat().frameSize(), size);
        QCOMPARE(surface.surfaceFormat().frameRate(), qreal(rate));
        QCOMPARE(surface.frames.last().size(), size);
        QCOMPARE(camera.settings->viewfinderSettings().resolution(), size);
        QCOMPARE(camera.settings->viewfinderSettings().maximumFrameRate(), qreal(rate));
        QVERIFY(device == "videotestsrc" || showsBars(surface.frames.last()));
    }

    void feedsEachSurfaceOnce()
    {
        RecordingSurface shared;
        RecordingSurface rgb({QVideoFrame::Format_Jpeg, QVideoFrame::Format_RGB32});
        {
            Camera camera("videotestsrc");
            auto *first = camera.service.requestControl<QVideoRendererControl *>();
            auto *second = camera.service.requestControl<QVideoRendererControl *>();
            camera.source->setSurface(&shared);
            first->setSurface(&shared);
            second->setSurface(&rgb);
            camera.control->setState(QCamera::ActiveState);
            QTRY_VERIFY(rgb.frames.size() >= 5);
            const QVector<qint64> rgbTimes = rgb.times();
            QCOMPARE(rgbTimes, shared.times());
            QCOMPARE(QSet<qint64>(rgbTimes.cbegin(), rgbTimes.cend()).size(), rgbTimes.size());
            for (int x : {20, 320, 600})
                QVERIFY(qAbs(luma(rgb.frames.last(), x, 240) - luma(shared.frames.last(), x, 240))
                        < 4);
            camera.service.releaseControl(first);
            QCOMPARE(shared.stops, 0);
        }
        QCOMPARE(shared.startsAndStops(), QPoint(1, 1));
        QCOMPARE(rgb.startsAndStops(), QPoint(1, 1));
        QVERIFY(!shared.isActive() && !rgb.isActive());
    }

    void stopsCallingSurfaces()
    {
        Camera camera("videotestsrc");
        RecordingSurface lasting;
        RecordingSurface removed;
        auto destroyed = std::make_unique<RecordingSurface>();
        auto *renderer = camera.service.requestControl<QVideoRendererControl *>();
        removed.onPresent = [&] {
            if (removed.frames.size() == 3)
                renderer->setSurface(nullptr);
        };
        renderer->setSurface(&removed);
        camera.service.requestControl<QVideoRendererControl *>()->setSurface(destroyed.get());
        camera.source->setSurface(&lasting);
        camera.control->setState(QCamera::ActiveState);
        QTRY_VERIFY(destroyed->frames.size() >= 2);
        destroyed.reset();
        QTRY_VERIFY(lasting.frames.size() >= 6);
        QCOMPARE(removed.frames.size(), 3);
        QCOMPARE(removed.startsAndStops(), QPoint(1, 1));
        QCOMPARE(lasting.startsAndStops(), QPoint(1, 0));
        // A surface that stops the camera gets no frame afterwards.
        lasting.onPresent = [&] { camera.control->setState(QCamera::LoadedState); };
        QTRY_VERIFY(!lasting.isActive());
        QCOMPARE(lasting.startsAndStops(), QPoint(1, 1));
    }

    void survivesSurfaces_data()
    {
        QTest::addColumn<QString>("errorText");
        QTest::newRow("start") << QStringLiteral("doesn't start with pictures of 640x480");
        QTest::newRow("stop") << QStringLiteral("has stopped showing pictures");
        QTest::newRow("format") << QStringLiteral("takes none of the available pixel formats");
        QTest::newRow("skip") << QStringLiteral("has stopped showing pictures");
    }

    // What a surface does wrong is told once, and it is tried again while others go on.
    void survivesSurfaces()
    {
        QFETCH(QString, errorText);
        const int failures = qstrcmp(QTest::currentDataTag(), "skip") != 0;
        Camera camera("videotestsrc");
        const bool isUsable = qstrcmp(QTest::currentDataTag(), "format") != 0;
        RecordingSurface surface(
                {isUsable ? QVideoFrame::Format_YUV420P : QVideoFrame::Format_Jpeg});
        RecordingSurface other;
        surface.answer = QTest::currentDataTag();
        auto *renderer = camera.service.requestControl<QVideoRendererControl *>();
        renderer->setSurface(&surface);
        camera.service.requestControl<QVideoRendererControl *>()->setSurface(&other);
        // An encoder tells itself why it doesn't start, and isn't asked each second.
        RecordingSurface encoder;
        encoder.answer = "start";
        camera.source->setSurface(&encoder);
        camera.control->setState(QCamera::ActiveState);
        QTRY_VERIFY(other.frames.size() >= 10);
        QCOMPARE(camera.errors.size(), failures);
        surface.answer.clear();
        const int count = surface.frames.size();
        QTRY_VERIFY(surface.frames.size() > count + 1 || !isUsable);
        QCOMPARE(surface.isActive(), isUsable);
        // A surface that has failed once more is told again.
        surface.answer = "stop";
        QTRY_VERIFY(camera.errors.size() == (isUsable ? failures + 1 : failures));
        QCOMPARE(camera.control->status(), QCamera::ActiveStatus);
        QCOMPARE(other.startsAndStops(), QPoint(1, 0));
        QCOMPARE(encoder.startsAndStops(), QPoint(1, 0));
        QCOMPARE(camera.errors.first().first().toInt(), int(QCamera::CameraError));
        QVERIFY(camera.errors.first().last().toString().contains(errorText));
    }

    void zooms()
    {
        Camera camera(url("a clip.webm"));
        RecordingSurface surface;
        camera.source->setSurface(&surface);
        auto *zoom = camera.service.requestControl<QCameraZoomControl *>();
        const auto frame = [&](qreal factor) {
            zoom->zoomTo(1, factor);
            camera.control->setState(QCamera::ActiveState);
            // Two frames may wait and one may be on its way when the factor changes.
            const int last = surface.frames.size() + 3;
            const bool hasCome = QTest::qWaitFor([&] { return surface.frames.size() > last; });
            return hasCome ? surface.frames.at(last) : QVideoFrame();
        };
        for (int starts = 1; starts <= 2; ++starts) {
            const QVideoFrame half = frame(2);
            const QVideoFrame whole = frame(0);
            for (int x : {20, 80, 120})
                QVERIFY(qAbs(luma(half, x, 40) - luma(whole, 40 + x / 2, 50)) < 8);
            QCOMPARE(QPoint(surface.starts, half.width()), QPoint(starts, 160));
            camera.control->setState(QCamera::LoadedState);
        }
    }

    void setsDevice()
    {
        using C = QCameraExposureControl;
        using Row = std::tuple<C::ExposureParameter, QVariantList, QVariantList, quint32, QPoint>;
        for (const auto &[parameter, range, values, id, manualAndAutomatic] :
             {Row {C::ShutterSpeed, {3e-4, 0.5}, {0.02, 0.02}, V4L2_CID_EXPOSURE_AUTO, {2, 0}},
              Row {C::ISO, {100, 400}, {300, 400}, V4L2_CID_ISO_SENSITIVITY_AUTO, {0, 1}},
              Row {C::ExposureCompensation, {-1, 2}, {1, 2}, V4L2_CID_AUTO_EXPOSURE_BIAS, {1, 0}},
              Row {C::MeteringMode, {1, 2, 3}, {1, 1}, V4L2_CID_EXPOSURE_METERING, {3, 2}},
              Row {C::ExposureMode, {0, 1, 4, 8, 7, 19}, {19, 19}, V4L2_CID_SCENE_MODE, {3, 0}}}) {
            OpenDevice device;
            ExposureControl control(&device);
            QVERIFY(!control.setValue(parameter, values.first()));
            device.open(std::make_unique<FakeControls>());
            bool isContinuous = false;
            QCOMPARE(control.supportedParameterRange(parameter, &isContinuous), range);
            QCOMPARE(isContinuous, parameter == C::ShutterSpeed);
            QSignalSpy changes(&control, &C::actualValueChanged);
            QVERIFY(control.setValue(parameter, values.first()) && changes.contains({parameter}));
            QCOMPARE(device.value(id).value(), manualAndAutomatic.x());
            QVERIFY(!control.setValue(parameter, 6000) && !control.setValue(parameter, QPoint()));
            QCOMPARE(control.requestedValue(parameter), values.first());
            QCOMPARE(control.actualValue(parameter), values.last());
            QVERIFY(control.setValue(parameter, QVariant()));
            QCOMPARE(device.value(id).value(), manualAndAutomatic.y());
        }
        CameraSession session;
        FocusControl focus(session.device());
        FlashControl flash(session.device());
        ZoomControl zoom(&session);
        session.device()->open(std::make_unique<FakeControls>());
        zoom.zoomTo(9, 9);
        zoom.zoomTo(qQNaN(), qQNaN());
        QCOMPARE(QPointF(zoom.currentOpticalZoom(), zoom.currentDigitalZoom()), QPointF(5, 4));
        focus.setFocusMode(QCameraFocus::ContinuousFocus);
        QCOMPARE(focus.focusMode(), QCameraFocus::ContinuousFocus);
        flash.setFlashMode(QCameraExposure::FlashVideoLight);
        QCOMPARE(flash.flashMode(), QCameraExposure::FlashVideoLight);
        session.close();
        QVERIFY(!flash.isFlashModeSupported(QCameraExposure::FlashVideoLight));
    }

    void reportsErrors_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QCameraViewfinderSettings>("asked");
        QTest::addColumn<QCamera::Error>("code");
        const auto row = [](const char *text, const char *file, QCamera::Error code,
                            const QCameraViewfinderSettings &asked = QCameraViewfinderSettings()) {
            QTest::newRow(text) << QByteArray(file) << asked << code;
        };
        row("the file does not exist", "missing.mp4", QCamera::CameraError);
        row("the file is no video", "notes.mp4", QCamera::CameraError);
        row("the file has no video stream", "sound.ogg", QCamera::CameraError);
        const auto requestError = QCamera::InvalidRequestError;
        row("99999x10", "a clip.webm", requestError, settings({99999, 10}, 0, 0));
        row("30 to 15", "a clip.webm", requestError, settings({}, 30, 15));
        row("30", "a clip.webm", QCamera::NotSupportedFeatureError,
            settings({}, 0, 0, QVideoFrame::Format_Jpeg));
    }

    void reportsErrors()
    {
        QFETCH(QByteArray, file);
        QFETCH(QCameraViewfinderSettings, asked);
        QFETCH(QCamera::Error, code);
        Camera camera(url(file));
        camera.settings->setViewfinderSettings(asked);
        const bool isFileWrong = code == QCamera::CameraError;
        for (int attempt = 1; attempt <= 2; ++attempt) {
            camera.control->setState(QCamera::ActiveState);
            QCOMPARE(camera.errors.size(), attempt);
            QCOMPARE(camera.errors.last().at(0).toInt(), int(code));
            const QString text = camera.errors.last().at(1).toString();
            QVERIFY(text.contains(QLatin1String(QTest::currentDataTag())));
            QVERIFY(!isFileWrong || text.contains(path(file)));
            QCOMPARE(camera.control->state(),
                     isFileWrong ? QCamera::UnloadedState : QCamera::LoadedState);
        }
        camera.selector->setSelectedDevice(0);
        camera.settings->setViewfinderSettings(QCameraViewfinderSettings());
        camera.control->setState(QCamera::ActiveState);
        QTRY_COMPARE(camera.control->status(), QCamera::ActiveStatus);
    }

    void choosesMode()
    {
        const GstCapsPointer caps(gst_caps_from_string(
                "video/x-raw,format=YUY2,width=640,height=480,framerate=30/1;"
                "video/x-raw,format={YUY2,P010_10LE},width=1280,height=720,framerate={10/1,5/1};"
                "video/x-raw(memory:DMABuf),format=NV12,width=1280,height=720,framerate=60/1;"
                "image/jpeg,width={640,1280},height=720,framerate=[15/1,30/1]"));
        const QVector<CameraMode> modes = CameraModes::fromCaps(caps.get());
        QCOMPARE(modes.size(), 5);
        const auto best = [&](int width, int height, qreal rate) {
            const CameraMode mode = CameraModes::best(modes, QSize(width, height), rate, {});
            return QVector<int> {mode.size.width(), mode.size.height(), int(mode.maximumFrameRate),
                                 mode.isMotionJpeg};
        };
        QCOMPARE(best(640, 480, 30), QVector<int>({640, 480, 30, false}));
        QCOMPARE(best(1280, 720, 30), QVector<int>({1280, 720, 30, true}));
        QCOMPARE(best(1280, 720, 10), QVector<int>({1280, 720, 10, false}));
        QCOMPARE(best(320, 180, 15), QVector<int>({640, 480, 30, false}));
        QCOMPARE(best(3840, 2160, 30), QVector<int>({1280, 720, 30, true}));
    }

private:
    QString path(const QByteArray &name) const
    {
        return m_folder.filePath(QString::fromUtf8(name));
    }
    QByteArray url(const QByteArray &name) const
    {
        return QUrl::fromLocalFile(path(name)).toEncoded();
    }
    void makeFile(const QByteArray &name, const QByteArray &elements) const
    {
        const QByteArray text = elements + " ! filesink location=\"" + path(name).toUtf8() + '"';
        const GstElementPointer pipeline(gst_parse_launch(text.constData(), nullptr));
        QVERIFY(playToEnd(pipeline.get()));
        gst_element_set_state(pipeline.get(), GST_STATE_NULL);
    }

    // Has an MP4 file say that it is to be shown turned by a quarter clockwise.
    void turn(const QByteArray &name) const
    {
        QFile file(path(name));
        QVERIFY(file.open(QIODevice::ReadWrite));
        QVERIFY(file.seek(file.readAll().indexOf("tkhd") + 44));
        file.write(QByteArray::fromHex("000000000001000000000000ffff00000000000000000000"));
    }

    QTemporaryDir m_folder;
};

QTEST_GUILESS_MAIN(tst_CameraService)

#include "tst_cameraservice.moc"
