// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-3.0-or-later
// Decodes real streams with the decoder service.

#include "decoderservice.h"
#include "gstpointers.h"

#include <qfldecodecontrol.h>

#include <QtMultimedia/qabstractvideosurface.h>
#include <QtMultimedia/qvideorenderercontrol.h>
#include <QtTest/qsignalspy.h>
#include <QtTest/qtest.h>

#include <gst/app/gstappsink.h>

#include <limits>

using Stream = QVector<QByteArray>;
using Statuses = QVector<int>;

namespace {

const QSize smallSize(160, 128);
const QSize largeSize(320, 240);

const char *const h264Encoder
        = "x264enc tune=zerolatency speed-preset=superfast key-int-max=10 bitrate=3000"
          " ! video/x-h264, profile=constrained-baseline ! h264parse config-interval=-1"
          " ! video/x-h264, stream-format=byte-stream, alignment=au";
const char *const vp8Encoder
        = "vp8enc deadline=1 cpu-used=8 keyframe-max-dist=10 target-bitrate=3000000 threads=1";

/*! What twenty moving pictures of \a size become when they pass \a elements. */
Stream produce(const char *elements, const QSize &size = largeSize)
{
    const QString description
            = QStringLiteral("videotestsrc num-buffers=20 pattern=zone-plate kx2=8 ky2=8 kt=4"
                             " ! video/x-raw, format=I420, width=%1, height=%2, framerate=30/1"
                             " ! %3 ! appsink name=sink sync=false")
                      .arg(size.width())
                      .arg(size.height())
                      .arg(QLatin1String(elements));
    const GstElementPointer pipeline(GST_ELEMENT(
            gst_object_ref_sink(gst_parse_launch(description.toUtf8().constData(), nullptr))));
    const GstElementPointer sink(gst_bin_get_by_name(GST_BIN(pipeline.get()), "sink"));
    gst_element_set_state(pipeline.get(), GST_STATE_PLAYING);
    Stream stream;
    while (const auto sample
           = GstSamplePointer(gst_app_sink_pull_sample(GST_APP_SINK(sink.get())))) {
        GstMapInfo map;
        gst_buffer_map(gst_sample_get_buffer(sample.get()), &map, GST_MAP_READ);
        stream.append(QByteArray(reinterpret_cast<const char *>(map.data), int(map.size)));
        gst_buffer_unmap(gst_sample_get_buffer(sample.get()), &map);
    }
    gst_element_set_state(pipeline.get(), GST_STATE_NULL);
    return stream;
}

/*! The bytes of a YUV420P or RGB32 picture, without padding. */
QByteArray pixels(QVideoFrame frame)
{
    QByteArray bytes;
    frame.map(QAbstractVideoBuffer::ReadOnly);
    for (int plane = 0; plane < frame.planeCount(); ++plane) {
        const bool isRgb = frame.pixelFormat() == QVideoFrame::Format_RGB32;
        const int divisor = plane == 0 ? 1 : 2;
        const int width = isRgb ? frame.width() * 4 : frame.width() / divisor;
        for (int row = 0; row < frame.height() / divisor; ++row)
            bytes.append(reinterpret_cast<const char *>(frame.bits(plane))
                                 + row * frame.bytesPerLine(plane),
                         width);
    }
    frame.unmap();
    return bytes;
}

double meanDifference(const QByteArray &a, const QByteArray &b)
{
    if (a.size() != b.size() || a.isEmpty())
        return std::numeric_limits<double>::infinity();
    qint64 sum = 0;
    for (int i = 0; i < a.size(); ++i)
        sum += qAbs(int(uchar(a.at(i))) - int(uchar(b.at(i))));
    return double(sum) / a.size();
}

class Surface : public QAbstractVideoSurface
{
public:
    explicit Surface(QVideoFrame::PixelFormat format = QVideoFrame::Format_YUV420P)
        : pixelFormat(format)
    {
    }
    QList<QVideoFrame::PixelFormat> supportedPixelFormats(
            QAbstractVideoBuffer::HandleType) const override
    {
        return {pixelFormat};
    }
    bool start(const QVideoSurfaceFormat &format) override
    {
        ++startCount;
        return !isRefusing && QAbstractVideoSurface::start(format);
    }
    bool present(const QVideoFrame &frame) override
    {
        pictures.append(frame);
        return isActive() && thread() == QThread::currentThread();
    }

    QVideoFrame::PixelFormat pixelFormat;
    QVector<QVideoFrame> pictures;
    bool isRefusing = false;
    int startCount = 0;
};

struct World
{
    World()
    {
        QObject::connect(control, &QFLDecodeControl::statusChanged,
                         [this](QFLDecoder::Status status) { statuses.append(status); });
        renderer->setSurface(&surface);
    }
    ~World() { renderer->setSurface(nullptr); }

    bool start(const char *codec)
    {
        QVideoEncoderSettings settings;
        settings.setCodec(QLatin1String(codec));
        return control->start(settings);
    }
    bool decode(QByteArray data, quint64 timestamp = 0,
                QFLEncodedVideoFrame::Type type = QFLEncodedVideoFrame::Type_Intra)
    {
        return control->decode(QFLEncodedVideoFrame(data, {type, timestamp}));
    }
    QFLDecoder::Error error() const { return errors.last().at(0).value<QFLDecoder::Error>(); }
    int count() const { return surface.pictures.size(); }

    Surface surface;
    DecoderService service;
    QFLDecodeControl *control
            = qobject_cast<QFLDecodeControl *>(service.requestControl(QFLDecodeControl_iid));
    QVideoRendererControl *renderer = qobject_cast<QVideoRendererControl *>(
            service.requestControl(QVideoRendererControl_iid));
    Statuses statuses;
    QSignalSpy errors {control, &QFLDecodeControl::error};
    QSignalSpy formats {control, &QFLDecodeControl::outputFormatChanged};
    QSignalSpy ends {control, &QFLDecodeControl::endOfStream};
};

} // namespace

class tst_DecodeControl : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void roundTrip_data();
    void roundTrip();
    void run();
    void keyFrameComesFirst();
    void parameterSetsAreKept();
    void sizeChange();
    void recoversFromDamage();
    void errors_data();
    void errors();
    void fullQueueRefuses();
    void surfaceIsSwapped();
    void surfaceRefuses();
    void service();

private:
    Stream m_pictures;
    Stream m_h264;
    Stream m_vp8;
};

void tst_DecodeControl::initTestCase()
{
    QVERIFY(gst_init_check(nullptr, nullptr, nullptr));
    m_pictures = produce("identity");
    m_h264 = produce(h264Encoder);
    m_vp8 = produce(vp8Encoder);
}

void tst_DecodeControl::roundTrip_data()
{
    QTest::addColumn<QByteArray>("codec");
    QTest::addColumn<Stream>("stream");
    QTest::addColumn<QVideoFrame::PixelFormat>("pixelFormat");
    QTest::newRow("default") << QByteArray() << m_h264 << QVideoFrame::Format_YUV420P;
    QTest::newRow("RGB") << QByteArray("H264") << m_h264 << QVideoFrame::Format_RGB32;
    QTest::newRow("openh264dec") << QByteArray("openh264dec") << m_h264
                                 << QVideoFrame::Format_YUV420P;
    QTest::newRow("VP8") << QByteArray("VP8") << m_vp8 << QVideoFrame::Format_YUV420P;
}

void tst_DecodeControl::roundTrip()
{
    QFETCH(QByteArray, codec);
    QFETCH(Stream, stream);
    QFETCH(QVideoFrame::PixelFormat, pixelFormat);

    const bool isRgb = pixelFormat == QVideoFrame::Format_RGB32;
    const Stream sent = isRgb ? produce("videoconvert ! video/x-raw, format=BGRx") : m_pictures;
    const QVector<quint64> timestamps = {5, 5, 0, 4000000, 33333, quint64(1) << 62, 7, 0};
    World world;
    world.surface.pixelFormat = pixelFormat;
    QVERIFY(world.start(codec.constData()));
    QCOMPARE(stream.size(), 20);
    for (int i = 0; i < stream.size(); ++i) {
        // Each picture is out before the next frame is in.
        const quint64 timestamp = timestamps.at(i % timestamps.size());
        QVERIFY(world.decode(stream.at(i), timestamp));
        QTRY_COMPARE(world.count(), i + 1);
        QCOMPARE(world.surface.pictures.last().startTime(), qint64(timestamp));
        const QByteArray picture = pixels(world.surface.pictures.last());
        QVERIFY(meanDifference(picture, sent.at(i)) < 1);
        QVERIFY(meanDifference(picture, sent.at((i + 1) % sent.size())) > 4);
    }
    QCOMPARE(world.control->outputFormat().pixelFormat(), pixelFormat);
    QCOMPARE(world.control->outputFormat().frameSize(), largeSize);
    QCOMPARE(world.surface.surfaceFormat(), world.control->outputFormat());
    QCOMPARE(world.surface.startCount, 1);
    QCOMPARE(world.formats.count(), 1);
    QCOMPARE(world.errors.count(), 0);
}

void tst_DecodeControl::run()
{
    const Statuses startStatuses = {QFLDecoder::LoadingStatus, QFLDecoder::LoadedStatus,
                                    QFLDecoder::StartingStatus, QFLDecoder::StartedStatus};
    const Statuses stopStatuses = {QFLDecoder::StoppingStatus, QFLDecoder::LoadedStatus,
                                   QFLDecoder::UnloadingStatus, QFLDecoder::UnloadedStatus};
    World world;
    int countAtEnd = 0;
    connect(world.control, &QFLDecodeControl::endOfStream, this,
            [&] { countAtEnd = world.count(); });
    QCOMPARE(world.control->status(), QFLDecoder::UnloadedStatus);
    QVERIFY(!world.decode(m_h264.first()));
    QVERIFY(world.start("H264"));
    QCOMPARE(world.control->videoSettings().codec(), QStringLiteral("H264"));
    for (const QByteArray &frame : m_h264)
        QVERIFY(world.decode(frame));
    world.control->drain();
    QVERIFY(!world.decode(m_h264.first()));
    QTRY_COMPARE(world.ends.count(), 1);
    QCOMPARE(countAtEnd, m_h264.size());
    QCOMPARE(world.statuses, startStatuses + Statuses {QFLDecoder::EndOfStreamStatus});

    // What is queued when the flush comes is never seen.
    world.control->flush();
    QCOMPARE(world.control->status(), QFLDecoder::StartedStatus);
    for (int i = 0; i < 5; ++i)
        QVERIFY(world.decode(m_h264.at(i)));
    world.control->flush();
    QVERIFY(!world.decode(m_h264.at(5)));
    QVERIFY(world.decode(m_h264.at(0), 99));
    QTRY_COMPARE(world.count(), countAtEnd + 1);
    QCOMPARE(world.surface.pictures.last().startTime(), 99);
    QCOMPARE(world.surface.startCount, 1);

    world.statuses.clear();
    QVERIFY(world.start("VP8"));
    QCOMPARE(world.statuses, stopStatuses + startStatuses);
    QVERIFY(world.decode(m_vp8.first()));
    QTRY_COMPARE(world.count(), countAtEnd + 2);
    QCOMPARE(world.formats.count(), 2);
    world.control->stop();
    QVERIFY(!world.surface.isActive());
    QCOMPARE(world.control->videoSettings(), QVideoEncoderSettings());
    QCOMPARE(world.errors.count(), 0);
}

void tst_DecodeControl::keyFrameComesFirst()
{
    for (const Stream &stream : {m_h264, m_vp8}) {
        World world;
        QVERIFY(world.start(stream == m_h264 ? "H264" : "VP8"));
        QVERIFY(!world.decode(stream.at(1), 1, QFLEncodedVideoFrame::Type_Key));
        QVERIFY(!world.decode(stream.at(0), 2, QFLEncodedVideoFrame::Type_Invalid));
        QVERIFY(!world.decode(QByteArray(), 3, QFLEncodedVideoFrame::Type_Key));
        QVERIFY(world.decode(stream.at(0), 4));
        QVERIFY(world.decode(stream.at(1), 5));
        QTRY_COMPARE(world.count(), 2);
        QCOMPARE(world.surface.pictures.first().startTime(), 4);
        QCOMPARE(world.errors.count(), 0);
    }
}

void tst_DecodeControl::parameterSetsAreKept()
{
    const int slicePosition = m_h264.first().indexOf(QByteArray("\0\0\1\x65", 4));
    const QByteArray slice = m_h264.first().mid(slicePosition);
    World world;
    QVERIFY(world.start("H264"));
    QVERIFY(!world.decode(slice));
    QVERIFY(world.decode(m_h264.first().left(slicePosition)));
    QVERIFY(!world.decode(m_h264.at(1)));
    QVERIFY(world.decode(slice));
    QTRY_COMPARE(world.count(), 1);
    world.control->flush();
    QVERIFY(world.decode(slice));
    QTRY_COMPARE(world.count(), 2);
    QVERIFY(meanDifference(pixels(world.surface.pictures.last()), m_pictures.first()) < 1);
}

void tst_DecodeControl::sizeChange()
{
    for (const char *codec : {"avdec_h264", "openh264dec", "vp8dec"}) {
        const char *encoder = qstrcmp(codec, "vp8dec") == 0 ? vp8Encoder : h264Encoder;
        World world;
        QVERIFY(world.start(codec));
        int count = 0;
        for (const QSize &size : {largeSize, smallSize, largeSize}) {
            QVERIFY(world.decode(produce(encoder, size).first()));
            ++count;
            QTRY_COMPARE(world.count(), count);
            QCOMPARE(world.control->outputFormat().frameSize(), size);
            QCOMPARE(world.surface.surfaceFormat().frameSize(), size);
            QCOMPARE(world.surface.pictures.last().size(), size);
        }
        QCOMPARE(world.formats.count(), 3);
        QCOMPARE(world.surface.startCount, 3);
    }
}

void tst_DecodeControl::recoversFromDamage()
{
    // Its header says that the first partition is longer than the frame.
    const QByteArray damaged = m_vp8.first().left(12);
    World world;
    QVERIFY(world.start("VP8"));
    for (int i = 1; i <= 3; ++i) {
        QVERIFY(world.decode(m_vp8.first()));
        QTRY_COMPARE(world.count(), i);
        QVERIFY(world.decode(damaged));
        QTRY_VERIFY(!world.decode(m_vp8.at(1)));
        QCOMPARE(world.errors.count(), 0);
    }
    QVERIFY(world.decode(damaged));
    QTRY_COMPARE(world.errors.count(), 1);
    QCOMPARE(world.error(), QFLDecoder::ResourceError);
    QVERIFY(world.errors.first().at(1).toString().startsWith(QLatin1String("vp8dec: ")));
    QCOMPARE(world.control->status(), QFLDecoder::UnloadedStatus);
    QVERIFY(world.start("VP8"));
    QVERIFY(world.decode(m_vp8.first()));
    QTRY_COMPARE(world.surface.startCount, 2);
}

void tst_DecodeControl::errors_data()
{
    QTest::addColumn<QByteArray>("codec");
    QTest::addColumn<QByteArray>("missing");
    QTest::addColumn<QFLDecoder::Error>("code");
    QTest::addColumn<QString>("text");
    QTest::newRow("unknown codec") << QByteArray("H999") << QByteArray() << QFLDecoder::FormatError
                                   << QStringLiteral("The codec \"H999\" is unknown");
    QTest::newRow("missing element")
            << QByteArray("H264") << QByteArray("h264parse") << QFLDecoder::ResourceError
            << QStringLiteral("h264parse: the element is not installed");
    QTest::newRow("no H264") << QByteArray("H264") << QByteArray() << QFLDecoder::FormatError
                             << QStringLiteral("The data is no H264 frame");
    QTest::newRow("no VP8") << QByteArray("VP8") << QByteArray() << QFLDecoder::FormatError
                            << QStringLiteral("The data is no VP8 frame");
}

void tst_DecodeControl::errors()
{
    QFETCH(QByteArray, codec);
    QFETCH(QByteArray, missing);
    World world;
    GstRegistry *registry = gst_registry_get();
    GstPluginFeature *feature = gst_registry_lookup_feature(registry, missing.constData());
    QCOMPARE(bool(feature), !missing.isEmpty());
    if (feature)
        gst_registry_remove_feature(registry, feature);
    const bool isStarted = world.start(codec.constData());
    if (feature) {
        gst_registry_add_feature(registry, feature);
        gst_object_unref(feature);
    }
    for (int i = 0; i < 3; ++i)
        QVERIFY(!world.decode(QByteArray(1000, 'x'), 0, QFLEncodedVideoFrame::Type_Key));
    QCOMPARE(world.errors.count(), 1);
    QTEST(world.error(), "code");
    QTEST(world.errors.last().at(1).toString(), "text");
    QCOMPARE(world.control->status(),
             isStarted ? QFLDecoder::StartedStatus : QFLDecoder::UnloadedStatus);

    QVERIFY(isStarted || world.start("H264"));
    QVERIFY(world.decode(codec == "VP8" ? m_vp8.first() : m_h264.first()));
    QTRY_COMPARE(world.count(), 1);
}

void tst_DecodeControl::fullQueueRefuses()
{
    World world;
    QVERIFY(world.start("VP8"));
    int count = 0;
    while (count < 100 && world.decode(m_vp8.at(count % m_vp8.size())))
        ++count;
    // Besides the 32 that are queued, one may be on its way through the decoder.
    QVERIFY(count == 32 || count == 33);
    QTRY_COMPARE(world.count(), count);
    // One frame is lost, so those that build on it are refused as well.
    QVERIFY(!world.decode(m_vp8.at(5)));
    QVERIFY(world.decode(m_vp8.at(0)));
    QTRY_COMPARE(world.count(), count + 1);
}

void tst_DecodeControl::surfaceIsSwapped()
{
    World world;
    QVERIFY(world.start("H264"));
    QVERIFY(world.decode(m_h264.at(0)));
    QTRY_COMPARE(world.count(), 1);
    Surface same;
    world.renderer->setSurface(&same);
    QVERIFY(!world.surface.isActive());
    QCOMPARE(same.surfaceFormat(), world.control->outputFormat());
    QVERIFY(world.decode(m_h264.at(1)));
    QTRY_COMPARE(same.pictures.size(), 1);

    // No key frame is needed for the converter to come in.
    auto rgb = std::make_unique<Surface>(QVideoFrame::Format_RGB32);
    world.renderer->setSurface(rgb.get());
    QVERIFY(world.decode(m_h264.at(2)));
    QTRY_COMPARE(rgb->pictures.size(), 1);
    QCOMPARE(rgb->pictures.first().pixelFormat(), QVideoFrame::Format_RGB32);
    QCOMPARE(world.control->outputFormat().pixelFormat(), QVideoFrame::Format_RGB32);

    // Decoding goes on without a surface, whether it was destroyed or taken away.
    rgb.reset();
    QVERIFY(world.decode(m_h264.at(3)));
    world.renderer->setSurface(&same);
    QVERIFY(world.decode(m_h264.at(4), 4));
    QTRY_COMPARE(same.pictures.last().startTime(), 4);
    const int count = same.pictures.size();
    QVERIFY(world.decode(m_h264.at(5)));
    world.renderer->setSurface(nullptr);
    QVERIFY(!same.isActive());
    world.control->drain();
    QTRY_COMPARE(world.ends.count(), 1);
    QCOMPARE(same.pictures.size(), count);
    QCOMPARE(world.count(), 1);
    QCOMPARE(world.errors.count(), 0);
}

void tst_DecodeControl::surfaceRefuses()
{
    World world;
    world.surface.isRefusing = true;
    QVERIFY(world.start("VP8"));
    QVERIFY(world.decode(m_vp8.at(0)));
    QVERIFY(world.decode(m_vp8.at(1)));
    QTRY_COMPARE(world.errors.count(), 1);
    QCOMPARE(world.error(), QFLDecoder::FormatError);
    Surface unusable(QVideoFrame::Format_User);
    world.renderer->setSurface(&unusable);
    QCOMPARE(world.errors.count(), 2);
    QCOMPARE(world.error(), QFLDecoder::FormatError);

    Surface willing;
    world.renderer->setSurface(&willing);
    QVERIFY(world.decode(m_vp8.at(2), 2));
    QTRY_VERIFY(!willing.pictures.isEmpty() && willing.pictures.last().startTime() == 2);
    QCOMPARE(world.surface.startCount, 1);
    QCOMPARE(world.errors.count(), 2);
}

void tst_DecodeControl::service()
{
    World world;
    QCOMPARE(world.service.requestControl(QFLDecodeControl_iid), world.control);
    QVERIFY(!world.service.requestControl("facelink.encodecontrol/1.0"));
    QVERIFY(world.control->supportedCodecs(false).contains(QLatin1String("VP8")));
    QVideoEncoderSettings settings;
    QVERIFY(world.control->isFormatSupported(settings));
    settings.setCodec(QStringLiteral("H999"));
    QVERIFY(!world.control->isFormatSupported(settings));

    QVERIFY(world.start("H264"));
    world.service.releaseControl(world.control);
    QCOMPARE(world.control->status(), QFLDecoder::StartedStatus);
    world.service.releaseControl(world.control);
    QCOMPARE(world.control->status(), QFLDecoder::UnloadedStatus);
}

QTEST_GUILESS_MAIN(tst_DecodeControl)

#include "tst_decodecontrol.moc"
