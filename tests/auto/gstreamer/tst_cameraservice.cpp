// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-3.0-or-later
// Tests of the camera service with the test source and with video files.

#include "cameradevices.h"
#include "cameramodes.h"
#include "cameraservice.h"
#include "framequeue.h"
#include "gstreamersetup.h"
#include "qflrawvideosourcecontrol.h"

#include <QtMultimedia/qabstractvideosurface.h>
#include <QtMultimedia/qcameracontrol.h>
#include <QtMultimedia/qcameraviewfindersettingscontrol.h>
#include <QtMultimedia/qvideodeviceselectorcontrol.h>
#include <QtTest/qsignalspy.h>
#include <QtTest/qtest.h>

#include <algorithm>
#include <functional>

namespace {

using Formats = QList<QVideoFrame::PixelFormat>;

class Surface : public QAbstractVideoSurface
{
public:
    explicit Surface(const Formats &formats
                     = {QVideoFrame::Format_YUV420P, QVideoFrame::Format_NV12})
        : m_formats(formats)
    {
    }

    Formats supportedPixelFormats(QAbstractVideoBuffer::HandleType) const override
    {
        return m_formats;
    }
    bool start(const QVideoSurfaceFormat &format) override
    {
        ++starts;
        return QAbstractVideoSurface::start(format);
    }
    void stop() override
    {
        ++stops;
        QAbstractVideoSurface::stop();
    }
    bool present(const QVideoFrame &frame) override
    {
        times.append(frame.startTime());
        last = frame;
        if (onPresent)
            onPresent();
        return true;
    }
    // By the median gap, which a busy machine changes little.
    qreal frameRate() const
    {
        QList<qint64> gaps;
        for (int index = 1; index < times.size(); ++index)
            gaps.append(times.at(index) - times.at(index - 1));
        std::sort(gaps.begin(), gaps.end());
        return 1e6 / gaps.at(gaps.size() / 2);
    }

    int starts = 0;
    int stops = 0;
    QList<qint64> times;
    QVideoFrame last;
    std::function<void()> onPresent;

private:
    Formats m_formats;
};

// A camera service with its controls, as a media object would hold them.
struct Camera
{
    CameraService implementation;
    QMediaService &service = implementation;
    QCameraControl *control = service.requestControl<QCameraControl *>();
    QVideoDeviceSelectorControl *selector = service.requestControl<QVideoDeviceSelectorControl *>();
    QCameraViewfinderSettingsControl2 *settings
            = service.requestControl<QCameraViewfinderSettingsControl2 *>();
    QFLRawVideoSourceControl *source = service.requestControl<QFLRawVideoSourceControl *>();
    QSignalSpy errors {control, &QCameraControl::error};

    bool select(const QByteArray &name)
    {
        const int index = CameraDevices().names().indexOf(name);
        selector->setSelectedDevice(index);
        return index >= 0 && selector->selectedDevice() == index;
    }
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

QRgb pixel(QVideoFrame frame, int x, int y)
{
    frame.map(QAbstractVideoBuffer::ReadOnly);
    const uchar *bits = frame.bits() + y * frame.bytesPerLine();
    const bool isRgb = frame.pixelFormat() == QVideoFrame::Format_RGB32;
    const QRgb value = isRgb ? reinterpret_cast<const QRgb *>(bits)[x] : bits[x];
    frame.unmap();
    return value;
}

} // namespace

class tst_CameraService : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void listsCameras();
    void changesStates();
    void deliversWhatSettingsAsk_data();
    void deliversWhatSettingsAsk();
    void feedsEachSurfaceOnce();
    void stopsCallingSurfaces();
    void playsFiles_data();
    void playsFiles();
    void reportsErrors_data();
    void reportsErrors();
    void dropsTheOldestFrame();
    void choosesMode_data();
    void choosesMode();

private:
    QString path(const char *name) const;
    QByteArray url(const char *name) const;
    bool makeFile(const char *name, const char *pipeline);
    bool turn(const char *name);

    QTemporaryDir m_folder;
};

QString tst_CameraService::path(const char *name) const
{
    return *name ? m_folder.filePath(QLatin1String(name)) : m_folder.path();
}

QByteArray tst_CameraService::url(const char *name) const
{
    return QUrl::fromLocalFile(path(name)).toEncoded();
}

bool tst_CameraService::makeFile(const char *name, const char *pipeline)
{
    const QString text = QStringLiteral("%1 ! filesink location=\"%2\"")
                                 .arg(QLatin1String(pipeline), path(name));
    const GstElementPointer element(gst_parse_launch(text.toUtf8().constData(), nullptr));
    gst_element_set_state(element.get(), GST_STATE_PLAYING);
    const GstBusPointer bus(gst_element_get_bus(element.get()));
    GstMessage *message = gst_bus_timed_pop_filtered(
            bus.get(), 10 * GST_SECOND, GstMessageType(GST_MESSAGE_EOS | GST_MESSAGE_ERROR));
    const bool isMade = message && GST_MESSAGE_TYPE(message) == GST_MESSAGE_EOS;
    gst_clear_message(&message);
    gst_element_set_state(element.get(), GST_STATE_NULL);
    return isMade;
}

// Has an MP4 file say that it is to be shown turned by a quarter clockwise.
bool tst_CameraService::turn(const char *name)
{
    QFile file(path(name));
    if (!file.open(QIODevice::ReadWrite))
        return false;
    const int header = file.readAll().indexOf("tkhd");
    const auto matrix = QByteArray::fromHex("000000000001000000000000ffff00000000000000000000");
    return header > 0 && file.seek(header + 44) && file.write(matrix) == matrix.size();
}

void tst_CameraService::initTestCase()
{
    QVERIFY(GStreamerSetup::initialize());
    QVERIFY(makeFile("a clip.webm",
                     "videotestsrc pattern=smpte75 num-buffers=10 ! "
                     "video/x-raw,width=160,height=120,framerate=20/1 ! "
                     "vp8enc ! webmmux"));
    QVERIFY(makeFile("turned.mp4",
                     "videotestsrc pattern=smpte75 num-buffers=10 ! "
                     "video/x-raw,width=160,height=120,framerate=20/1 ! "
                     "x264enc ! video/x-h264,profile=high ! mp4mux"));
    QVERIFY(turn("turned.mp4"));
    QVERIFY(makeFile("sound.ogg", "audiotestsrc num-buffers=50 ! vorbisenc ! oggmux"));
    QVERIFY(makeFile("photo.jpg", "videotestsrc num-buffers=1 ! jpegenc"));
    QVERIFY(makeFile("notes.mp4", "fakesrc num-buffers=1 sizetype=fixed sizemax=5000"));
    QStringList files;
    for (const char *name :
         {"a clip.webm", "turned.mp4", "sound.ogg", "photo.jpg", "notes.mp4", "missing.mp4", ""})
        files.append(path(name));
    QCoreApplication::instance()->setProperty("facelink.gstreamer.cameraFiles", files);
}

void tst_CameraService::listsCameras()
{
    const CameraDevices devices;
    const QByteArray clip = url("a clip.webm");
    QCOMPARE(devices.names().first(), clip);
    QVERIFY(clip.endsWith("a%20clip.webm"));
    QCOMPARE(devices.names().last(), QByteArray("videotestsrc"));
    QCOMPARE(devices.description(clip), QStringLiteral("Video file a clip.webm"));
    QVERIFY(devices.names().contains(devices.defaultName()));

    Camera camera;
    QCOMPARE(camera.selector->deviceCount(), devices.names().size());
    QCOMPARE(camera.selector->deviceName(0).toLatin1(), clip);
    QCOMPARE(camera.selector->selectedDevice(), camera.selector->defaultDevice());
}

void tst_CameraService::changesStates()
{
    Camera camera;
    QVERIFY(camera.select("videotestsrc"));
    QSignalSpy statuses(camera.control, &QCameraControl::statusChanged);
    QSignalSpy states(camera.control, &QCameraControl::stateChanged);
    const auto takeStatuses = [&statuses] {
        QList<int> values;
        while (!statuses.isEmpty())
            values.append(statuses.takeFirst().at(0).value<QCamera::Status>());
        return values;
    };
    QVERIFY(camera.settings->supportedViewfinderSettings().isEmpty());
    camera.control->setState(QCamera::LoadedState);
    QCOMPARE(takeStatuses(), (QList<int> {QCamera::LoadingStatus, QCamera::LoadedStatus}));
    QVERIFY(!camera.settings->supportedViewfinderSettings().isEmpty());
    QCOMPARE(camera.settings->viewfinderSettings().resolution(), QSize(640, 480));
    QVERIFY(camera.control->canChangeProperty(QCameraControl::ViewfinderSettings,
                                              camera.control->status()));
    for (int run = 0; run < 2; ++run) {
        camera.control->setState(QCamera::ActiveState);
        QTRY_COMPARE(camera.control->status(), QCamera::ActiveStatus);
        QVERIFY(!camera.control->canChangeProperty(QCameraControl::ViewfinderSettings,
                                                   camera.control->status()));
        camera.control->setState(QCamera::LoadedState);
        QCOMPARE(takeStatuses(),
                 (QList<int> {QCamera::StartingStatus, QCamera::ActiveStatus,
                              QCamera::StoppingStatus, QCamera::LoadedStatus}));
    }
    camera.control->setState(QCamera::UnloadedState);
    QCOMPARE(takeStatuses(), (QList<int> {QCamera::UnloadingStatus, QCamera::UnloadedStatus}));
    QCOMPARE(states.size(), 6);

    QCOMPARE(camera.control->captureMode(), QCamera::CaptureModes(QCamera::CaptureVideo));
    QVERIFY(camera.control->isCaptureModeSupported(QCamera::CaptureViewfinder));
    camera.control->setCaptureMode(QCamera::CaptureStillImage);
    QCOMPARE(camera.errors.takeFirst().at(0).toInt(), int(QCamera::NotSupportedFeatureError));
}

void tst_CameraService::deliversWhatSettingsAsk_data()
{
    QTest::addColumn<QCameraViewfinderSettings>("asked");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("rate");
    QTest::addColumn<QVideoFrame::PixelFormat>("format");
    QTest::newRow("defaults") << QCameraViewfinderSettings() << QSize(640, 480) << 30
                              << QVideoFrame::Format_YUV420P;
    QTest::newRow("size and rate")
            << settings({320, 240}, 5, 15) << QSize(320, 240) << 15 << QVideoFrame::Format_YUV420P;
    QTest::newRow("format") << settings({}, 0, 0, QVideoFrame::Format_NV12) << QSize(640, 480) << 30
                            << QVideoFrame::Format_NV12;
}

void tst_CameraService::deliversWhatSettingsAsk()
{
    QFETCH(QCameraViewfinderSettings, asked);
    QFETCH(QSize, size);
    QFETCH(int, rate);
    QFETCH(QVideoFrame::PixelFormat, format);
    Camera camera;
    Surface surface;
    QVERIFY(camera.select("videotestsrc"));
    camera.settings->setViewfinderSettings(asked);
    camera.source->setSurface(&surface);
    const qint64 begin = g_get_monotonic_time();
    camera.control->setState(QCamera::ActiveState);
    QTRY_VERIFY(surface.times.size() >= 16);

    QCOMPARE(surface.surfaceFormat().frameSize(), size);
    QCOMPARE(surface.surfaceFormat().pixelFormat(), format);
    QCOMPARE(surface.surfaceFormat().frameRate(), qreal(rate));
    QCOMPARE(surface.last.size(), size);
    QVERIFY2(qAbs(surface.frameRate() / rate - 1) < 0.2,
             qPrintable(QString::number(surface.frameRate())));
    QVERIFY(surface.times.first() >= begin && surface.times.last() <= g_get_monotonic_time());
    QCOMPARE(camera.settings->viewfinderSettings().resolution(), size);
    QCOMPARE(camera.settings->viewfinderSettings().maximumFrameRate(), qreal(rate));
}

void tst_CameraService::feedsEachSurfaceOnce()
{
    Surface shared;
    Surface rgb({QVideoFrame::Format_Jpeg, QVideoFrame::Format_RGB32});
    {
        Camera camera;
        QVERIFY(camera.select("videotestsrc"));
        auto *first = camera.service.requestControl<QVideoRendererControl *>();
        auto *second = camera.service.requestControl<QVideoRendererControl *>();
        QVERIFY(first != second);
        camera.source->setSurface(&shared);
        first->setSurface(&shared);
        second->setSurface(&rgb);
        camera.control->setState(QCamera::ActiveState);
        QTRY_VERIFY(rgb.times.size() >= 5);

        QCOMPARE(rgb.times, shared.times);
        QCOMPARE(QSet<qint64>(rgb.times.cbegin(), rgb.times.cend()).size(), rgb.times.size());
        QCOMPARE(rgb.surfaceFormat().pixelFormat(), QVideoFrame::Format_RGB32);
        for (int x : {20, 320, 600}) {
            const QRgb colour = pixel(rgb.last, x, 240);
            const qreal luma
                    = 16 + 0.257 * qRed(colour) + 0.504 * qGreen(colour) + 0.098 * qBlue(colour);
            QVERIFY(qAbs(luma - pixel(shared.last, x, 240)) < 4);
        }
        camera.service.releaseControl(first);
        QCOMPARE(shared.stops, 0);
    }
    QCOMPARE(QPoint(shared.starts, shared.stops), QPoint(1, 1));
    QCOMPARE(QPoint(rgb.starts, rgb.stops), QPoint(1, 1));
    QVERIFY(!shared.isActive() && !rgb.isActive());
}

void tst_CameraService::stopsCallingSurfaces()
{
    Camera camera;
    QVERIFY(camera.select("videotestsrc"));
    Surface lasting;
    auto removed = std::make_unique<Surface>();
    auto destroyed = std::make_unique<Surface>();
    auto *renderer = camera.service.requestControl<QVideoRendererControl *>();
    removed->onPresent = [&] {
        if (removed->times.size() == 3)
            renderer->setSurface(nullptr);
    };
    renderer->setSurface(removed.get());
    camera.service.requestControl<QVideoRendererControl *>()->setSurface(destroyed.get());
    camera.source->setSurface(&lasting);
    camera.control->setState(QCamera::ActiveState);
    QTRY_VERIFY(destroyed->times.size() >= 2);
    destroyed.reset();
    QTRY_VERIFY(lasting.times.size() >= 6);
    QCOMPARE(removed->times.size(), 3);
    QCOMPARE(QPoint(removed->starts, removed->stops), QPoint(1, 1));
    QCOMPARE(QPoint(lasting.starts, lasting.stops), QPoint(1, 0));
    // A surface that stops the camera gets no frame afterwards.
    lasting.onPresent = [&] { camera.control->setState(QCamera::LoadedState); };
    QTRY_VERIFY(!lasting.isActive());
    QCOMPARE(QPoint(lasting.starts, lasting.stops), QPoint(1, 1));
}

void tst_CameraService::playsFiles_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QCameraViewfinderSettings>("asked");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("rate");
    const QByteArray clip = "a clip.webm";
    QTest::newRow("as it is") << clip << QCameraViewfinderSettings() << QSize(160, 120) << 20;
    QTest::newRow("smaller") << clip << settings({80, 60}, 0, 10) << QSize(80, 60) << 10;
    QTest::newRow("faster") << clip << settings({}, 0, 40) << QSize(160, 120) << 40;
    QTest::newRow("upright") << QByteArray("turned.mp4") << QCameraViewfinderSettings()
                             << QSize(120, 160) << 20;
}

void tst_CameraService::playsFiles()
{
    QFETCH(QByteArray, file);
    QFETCH(QCameraViewfinderSettings, asked);
    QFETCH(QSize, size);
    QFETCH(int, rate);
    Camera camera;
    Surface surface;
    QVERIFY(camera.select(url(file)));
    camera.settings->setViewfinderSettings(asked);
    camera.source->setSurface(&surface);
    camera.control->setState(QCamera::ActiveState);
    // The clip lasts half a second, so this takes it round twice.
    QTRY_VERIFY(surface.times.size() >= 1.3 * rate);

    QCOMPARE(QPoint(surface.starts, camera.errors.size()), QPoint(1, 0));
    QCOMPARE(surface.last.size(), size);
    QVERIFY2(qAbs(surface.frameRate() / rate - 1) < 0.2,
             qPrintable(QString::number(surface.frameRate())));
    // The bars get darker from left to right, and from top to bottom once they are turned.
    const bool isTurned = size.height() > size.width();
    const QPoint end = isTurned ? QPoint(60, 152) : QPoint(size.width() - 8, 8);
    QVERIFY(pixel(surface.last, isTurned ? 60 : 8, 8) > 150);
    QVERIFY(pixel(surface.last, end.x(), end.y()) < 60);
}

void tst_CameraService::reportsErrors_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QCameraViewfinderSettings>("asked");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("text");
    const auto add = [](const char *file, const char *reason) {
        QTest::newRow(file) << QByteArray(file) << QCameraViewfinderSettings()
                            << int(QCamera::CameraError) << QString::fromLatin1(reason);
    };
    add("missing.mp4", "the file does not exist");
    add("notes.mp4", "the file is no video");
    add("sound.ogg", "the file has no video stream");
    add("photo.jpg", "the file has no video stream");
    add("", "the file cannot be read");
    QTest::newRow("size") << QByteArray("a clip.webm") << settings({99999, 10}, 0, 0)
                          << int(QCamera::InvalidRequestError) << QStringLiteral("99999x10");
    QTest::newRow("rate") << QByteArray("a clip.webm") << settings({}, 30, 15)
                          << int(QCamera::InvalidRequestError) << QStringLiteral("30 to 15");
    QTest::newRow("format") << QByteArray("a clip.webm")
                            << settings({}, 0, 0, QVideoFrame::Format_Jpeg)
                            << int(QCamera::NotSupportedFeatureError) << QStringLiteral("30");
}

void tst_CameraService::reportsErrors()
{
    QFETCH(QByteArray, file);
    QFETCH(QCameraViewfinderSettings, asked);
    QFETCH(int, code);
    QFETCH(QString, text);
    Camera camera;
    Surface surface;
    QVERIFY(camera.select(url(file)));
    camera.settings->setViewfinderSettings(asked);
    camera.source->setSurface(&surface);
    const bool isFileWrong = code == QCamera::CameraError;
    for (int attempt = 1; attempt <= 2; ++attempt) {
        camera.control->setState(QCamera::ActiveState);
        QCOMPARE(camera.errors.size(), attempt);
        QCOMPARE(camera.errors.last().at(0).toInt(), code);
        const QString reported = camera.errors.last().at(1).toString();
        QVERIFY2(reported.contains(text), qPrintable(reported));
        QVERIFY2(!isFileWrong || reported.contains(path(file)), qPrintable(reported));
        QCOMPARE(camera.control->state(),
                 isFileWrong ? QCamera::UnloadedState : QCamera::LoadedState);
    }
    QVERIFY(camera.select(
            QUrl::fromLocalFile(m_folder.filePath(QStringLiteral("a clip.webm"))).toEncoded()));
    camera.settings->setViewfinderSettings(QCameraViewfinderSettings());
    camera.control->setState(QCamera::ActiveState);
    QTRY_COMPARE(camera.control->status(), QCamera::ActiveStatus);
    QVERIFY(surface.isActive());
}

void tst_CameraService::dropsTheOldestFrame()
{
    FrameQueue queue;
    QList<QVideoFrame> frames;
    connect(&queue, &FrameQueue::frameCaptured, this,
            [&frames](const QVideoFrame &frame) { frames.append(frame); });
    const GstElementPointer pipeline(
            gst_parse_launch("videotestsrc pattern=smpte75 num-buffers=10 horizontal-speed=40 ! "
                             "video/x-raw,format=GRAY8,width=280 ! appsink name=frames sync=false",
                             nullptr));
    const GstElementPointer sink(gst_bin_get_by_name(GST_BIN(pipeline.get()), "frames"));
    queue.connectTo(GST_APP_SINK(sink.get()));
    gst_element_set_state(pipeline.get(), GST_STATE_PLAYING);
    const GstBusPointer bus(gst_element_get_bus(pipeline.get()));
    GstMessage *message = gst_bus_timed_pop_filtered(bus.get(), 5 * GST_SECOND, GST_MESSAGE_EOS);
    QVERIFY(message);
    gst_message_unref(message);
    QCoreApplication::processEvents();
    gst_element_set_state(pipeline.get(), GST_STATE_NULL);
    QCOMPARE(queue.droppedCount(), 8);
    // Each bar is as wide as one step of the picture: of ten frames the last two have moved by
    // eight and nine bars, which is by one and two, seven bars making a round.
    QCOMPARE(frames.size(), 2);
    QCOMPARE(pixel(frames.at(0), 60, 10), pixel(frames.at(1), 20, 10));
}

void tst_CameraService::choosesMode_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<qreal>("rate");
    QTest::addColumn<QString>("expected");
    QTest::newRow("raw") << QSize(640, 480) << 30.0 << QStringLiteral("640x480@30 raw");
    QTest::newRow("raw is too slow")
            << QSize(1280, 720) << 30.0 << QStringLiteral("1280x720@30 jpeg");
    QTest::newRow("slow enough") << QSize(1280, 720) << 10.0 << QStringLiteral("1280x720@10 raw");
    QTest::newRow("smaller than any")
            << QSize(320, 180) << 15.0 << QStringLiteral("640x480@30 raw");
    QTest::newRow("larger than any")
            << QSize(3840, 2160) << 30.0 << QStringLiteral("1280x720@30 jpeg");
}

void tst_CameraService::choosesMode()
{
    QFETCH(QSize, size);
    QFETCH(qreal, rate);
    QFETCH(QString, expected);
    const GstCapsPointer caps(gst_caps_from_string(
            "video/x-raw,format=YUY2,width=640,height=480,framerate=30/1;"
            "video/x-raw,format={YUY2,P010_10LE},width=1280,height=720,framerate={10/1,5/1};"
            "video/x-raw(memory:DMABuf),format=NV12,width=1280,height=720,framerate=60/1;"
            "image/jpeg,width={640,1280},height=720,framerate=[15/1,30/1]"));
    const QVector<CameraMode> modes = CameraModes::fromCaps(caps.get());
    QCOMPARE(modes.size(), 5);
    const CameraMode mode = CameraModes::best(modes, size, rate);
    QCOMPARE(QStringLiteral("%1x%2@%3 %4")
                     .arg(mode.size.width())
                     .arg(mode.size.height())
                     .arg(mode.maximumFrameRate)
                     .arg(QLatin1String(mode.isMotionJpeg ? "jpeg" : "raw")),
             expected);
}

QTEST_GUILESS_MAIN(tst_CameraService)

#include "tst_cameraservice.moc"
