// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-3.0-or-later
// Tests the encoder service with real encoders.

#include "encodecontrol.h"
#include "encoderservice.h"
#include "gstreamersetup.h"
#include "qflencodedvideosink.h"
#include "qflencodedvideosourcecontrol.h"
#include "videoframe.h"

#include <QtCore/qelapsedtimer.h>
#include <QtCore/qrandom.h>
#include <QtCore/qthread.h>
#include <QtMultimedia/qvideoencodersettingscontrol.h>
#include <QtTest/qsignalspy.h>
#include <QtTest/qtest.h>

using Status = QFLEncoder::Status;

namespace {

constexpr QSize size(320, 240);

// Fills each plane with its own bytes, over and over.
QVideoFrame makeFrame(QVideoFrame::PixelFormat format, const QByteArrayList &planes,
                      qint64 time = 0)
{
    const int bytesPerLine = size.width() * (planes.size() == 1 ? planes[0].size() : 1);
    const int lines = size.height() * (format == QVideoFrame::Format_YUV422P ? 4 : 3) / 2;
    QVideoFrame frame(bytesPerLine * (planes.size() == 1 ? size.height() : lines), size,
                      bytesPerLine, format);
    frame.map(QAbstractVideoBuffer::WriteOnly);
    for (int plane = 0; plane < planes.size(); ++plane) {
        const QByteArray &pattern = planes[plane];
        const int begin = int(frame.bits(plane) - frame.bits());
        for (int index = begin; index < frame.mappedBytes(); ++index)
            frame.bits()[index] = uchar(pattern[(index - begin) % pattern.size()]);
    }
    frame.unmap();
    frame.setStartTime(time);
    return frame;
}

QVideoFrame grayFrame(qint64 time)
{
    return makeFrame(QVideoFrame::Format_YUV420P, {"\x60", "\x80", "\x80"}, time);
}

QVideoFrame noiseFrame(qint64 time)
{
    QVideoFrame frame = grayFrame(time);
    frame.map(QAbstractVideoBuffer::WriteOnly);
    QRandomGenerator::global()->fillRange(reinterpret_cast<quint32 *>(frame.bits()),
                                          size.width() * size.height() / 4);
    frame.unmap();
    return frame;
}

QVideoSurfaceFormat surfaceFormat(QVideoFrame::PixelFormat format = QVideoFrame::Format_YUV420P)
{
    QVideoSurfaceFormat result(size, format);
    result.setFrameRate(30);
    return result;
}

QImage decodeKeyFrame(const QByteArray &data, const QByteArray &decoder)
{
    const QByteArray text = "appsrc name=source " + decoder
            + " ! videoconvert ! video/x-raw,format=BGRx ! appsink name=sink sync=false";
    const GstElementPointer pipeline(gst_parse_launch(text.constData(), nullptr));
    const GstElementPointer source(gst_bin_get_by_name(GST_BIN(pipeline.get()), "source"));
    const GstElementPointer sink(gst_bin_get_by_name(GST_BIN(pipeline.get()), "sink"));
    gst_element_set_state(pipeline.get(), GST_STATE_PLAYING);
    GstBuffer *buffer = gst_buffer_new_memdup(data.constData(), gsize(data.size()));
    gst_app_src_push_buffer(GST_APP_SRC(source.get()), buffer);
    gst_app_src_end_of_stream(GST_APP_SRC(source.get()));
    const GstSamplePointer sample(
            gst_app_sink_try_pull_sample(GST_APP_SINK(sink.get()), GST_SECOND));
    GstVideoInfo info;
    QImage image;
    if (sample && gst_video_info_from_caps(&info, gst_sample_get_caps(sample.get())))
        image = VideoFrame::fromGst(gst_sample_get_buffer(sample.get()), info, 0).image().copy();
    gst_element_set_state(pipeline.get(), GST_STATE_NULL);
    return image;
}

class TestSink : public QFLEncodedVideoSink
{
public:
    ~TestSink() override { unlink(); }

    bool isFormatSupported(const QVideoEncoderSettings &settings) const override
    {
        return settings.codec() == QLatin1String("H264") && settings.resolution() == size;
    }
    bool start(const QVideoEncoderSettings &settings) override
    {
        log += '[';
        return startsStream && QFLEncodedVideoSink::start(settings);
    }
    bool encodedVideoFrame(const QFLEncodedVideoFrame &frame) override
    {
        log += frame.meta().type == QFLEncodedVideoFrame::Type_Key ? 'K' : 'd';
        return takesFrames;
    }
    void drain() override { log += '.'; }
    void stop() override
    {
        log += ']';
        QFLEncodedVideoSink::stop();
    }

    QByteArray log;
    bool startsStream = true;
    bool takesFrames = true;
};

class OtherSink : public QFLSink
{
};

} // namespace

class tst_EncodeControl : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void pixelFormats_data();
    void pixelFormats();
    void settings_data();
    void settings();
    void timesAndThreads();
    void lifeOfARun();
    void drain_data();
    void drain();
    void flush_data();
    void flush();
    void bitRate();
    void refusedStarts_data();
    void refusedStarts();
    void missingElement();
    void refusedFrames();
    void sinks();
    void refusingSinks();

private:
    QFLEncodedVideoFrame frame(int index) const;
    QByteArray types() const;
    void encode(const QVideoFrame &frame);
    void encodeGray(int count);
    void addEncoders();
    void chooseEncoder();

    QScopedPointer<QMediaService> m_service;
    QFLEncodeControl *m_control = nullptr;
    QVideoEncoderSettingsControl *m_settings = nullptr;
    QFLEncodedVideoSourceControl *m_source = nullptr;
    QScopedPointer<QSignalSpy> m_frames;
    QScopedPointer<QSignalSpy> m_errors;
    qint64 m_time = 0;
};

void tst_EncodeControl::init()
{
    m_service.reset(new EncoderService);
    m_control = m_service->requestControl<QFLEncodeControl *>();
    m_settings = m_service->requestControl<QVideoEncoderSettingsControl *>();
    m_source = m_service->requestControl<QFLEncodedVideoSourceControl *>();
    QVERIFY(m_control && m_settings && m_source);
    QCOMPARE(m_service->requestControl<QFLEncodeControl *>(), m_control);
    m_frames.reset(new QSignalSpy(m_control, &QFLEncodeControl::encodedVideoFrame));
    m_errors.reset(new QSignalSpy(m_control, &QFLEncodeControl::error));
}

QFLEncodedVideoFrame tst_EncodeControl::frame(int index) const
{
    return m_frames->at(index).first().value<QFLEncodedVideoFrame>();
}

QByteArray tst_EncodeControl::types() const
{
    QByteArray result;
    for (int index = 0; index < m_frames->count(); ++index)
        result += frame(index).meta().type == QFLEncodedVideoFrame::Type_Key ? 'K' : 'd';
    return result;
}

// Waits for the encoded frame, so that each raw frame is dealt with before the next one comes.
void tst_EncodeControl::encode(const QVideoFrame &frame)
{
    QVERIFY(m_control->encode(frame));
    QVERIFY(m_frames->wait());
}

void tst_EncodeControl::encodeGray(int count)
{
    for (; count > 0; --count)
        encode(grayFrame(m_time += 33333));
}

void tst_EncodeControl::addEncoders()
{
    QTest::addColumn<QString>("encoder");
    for (const CodecElement &element : Codecs::encoders())
        QTest::newRow(element.factoryName.constData()) << QString::fromUtf8(element.factoryName);
}

void tst_EncodeControl::chooseEncoder()
{
    QFETCH(QString, encoder);
    QVideoEncoderSettings settings;
    settings.setCodec(encoder);
    m_settings->setVideoSettings(settings);
}

void tst_EncodeControl::pixelFormats_data()
{
    QTest::addColumn<QVideoFrame::PixelFormat>("format");
    QTest::addColumn<QByteArrayList>("planes");
    QTest::addColumn<QColor>("color");

    // Qt's own conversion says what colour the picture has, where there is one.
    const auto row = [](const char *name, QVideoFrame::PixelFormat format, QByteArrayList planes,
                        QColor color = QColor()) {
        const bool isKnown = color.isValid();
        QTest::newRow(name) << format << planes
                            << (isKnown ? color
                                        : makeFrame(format, planes).image().pixelColor(9, 9));
    };
    row("YUV420P", QVideoFrame::Format_YUV420P, {"\x60", "\x50", "\xb0"});
    row("YV12", QVideoFrame::Format_YV12, {"\x60", "\xb0", "\x50"});
    row("YUV422P", QVideoFrame::Format_YUV422P, {"\x60", "\x50", "\xb0"}, 0xaa4600);
    row("NV12", QVideoFrame::Format_NV12, {"\x60", "\x50\xb0"});
    row("NV21", QVideoFrame::Format_NV21, {"\x60", "\xb0\x50"});
    row("YUYV", QVideoFrame::Format_YUYV, {"\x60\x50\x60\xb0"});
    row("UYVY", QVideoFrame::Format_UYVY, {"\x50\x60\xb0\x60"});
    row("YUV444", QVideoFrame::Format_YUV444, {"\x60\x50\xb0"});
    row("AYUV444", QVideoFrame::Format_AYUV444, {"\xff\x60\x50\xb0"});
    row("RGB32", QVideoFrame::Format_RGB32, {"\x20\x60\xa0\xff"});
    row("ARGB32", QVideoFrame::Format_ARGB32, {"\x20\x60\xa0\xff"});
    row("BGR32", QVideoFrame::Format_BGR32, {"\xff\x20\x60\xa0"});
    row("BGRA32", QVideoFrame::Format_BGRA32, {"\xff\x20\x60\xa0"});
    row("ABGR32", QVideoFrame::Format_ABGR32, {"\x20\x60\xa0\xff"}, 0x2060a0);
    row("RGB24", QVideoFrame::Format_RGB24, {"\x20\x60\xa0"});
    row("BGR24", QVideoFrame::Format_BGR24, {"\x20\x60\xa0"});
    row("RGB565", QVideoFrame::Format_RGB565, {"\x9c\x32"});
    row("RGB555", QVideoFrame::Format_RGB555, {"\x9c\x32"});
    row("BGR565", QVideoFrame::Format_BGR565, {"\x9c\x32"});
    row("BGR555", QVideoFrame::Format_BGR555, {"\x9c\x32"});
    row("Y8", QVideoFrame::Format_Y8, {"\x60"}, 0x5d5d5d);
    row("Y16", QVideoFrame::Format_Y16, {"\x60\x60"}, 0x5d5d5d);
}

void tst_EncodeControl::pixelFormats()
{
    QFETCH(QVideoFrame::PixelFormat, format);
    QFETCH(QByteArrayList, planes);
    QFETCH(QColor, color);
    QVERIFY(m_control->supportedPixelFormats().contains(format));
    QVERIFY(m_control->start(surfaceFormat(format)));
    encode(makeFrame(format, planes));
    const QColor actual
            = decodeKeyFrame(frame(0).data(), "! h264parse ! avdec_h264").pixelColor(9, 9);
    QVERIFY2(qAbs(actual.red() - color.red()) <= 8 && qAbs(actual.green() - color.green()) <= 8
                     && qAbs(actual.blue() - color.blue()) <= 8,
             qPrintable(actual.name() + QLatin1Char(' ') + color.name()));
}

void tst_EncodeControl::settings_data()
{
    QTest::addColumn<QString>("codec");
    QTest::addColumn<QByteArray>("decoder");
    QTest::addColumn<QSize>("resolution");
    QTest::addColumn<QSize>("decodedSize");

    const QByteArray h264 = "! h264parse ! avdec_h264";
    const auto row = [](const char *name, const QByteArray &decoder, const QSize &resolution) {
        QTest::newRow(name) << QString::fromLatin1(name) << decoder << resolution
                            << (resolution.isEmpty() ? size : resolution);
    };
    row("", h264, QSize());
    row("H264", h264, QSize(160, 160));
    row("VP8", "caps=video/x-vp8 ! vp8dec", QSize(640, 480));
    for (const CodecElement &element : Codecs::encoders()) {
        row(element.factoryName.constData(),
            element.codec == QLatin1String("H264") ? h264 : "caps=video/x-vp8 ! vp8dec", QSize());
    }
}

void tst_EncodeControl::settings()
{
    QFETCH(QString, codec);
    QFETCH(QByteArray, decoder);
    QFETCH(QSize, resolution);
    QVideoEncoderSettings settings;
    settings.setCodec(codec);
    settings.setResolution(resolution);
    settings.setFrameRate(10);
    m_settings->setVideoSettings(settings);
    QCOMPARE(m_settings->videoSettings(), settings);

    QVERIFY(m_control->start(surfaceFormat()));
    encodeGray(1);
    // At a third of the frames' rate, two of three are left out, and the third needs no waiting for.
    QVERIFY(m_control->encode(grayFrame(m_time + 33333)));
    QVERIFY(m_control->encode(grayFrame(m_time + 66666)));
    encode(grayFrame(m_time + 99999));
    QCOMPARE(types(), QByteArray("Kd"));
    QCOMPARE(frame(1).meta().timestamp, quint64(m_time + 99999));
    if (decoder != "caps=video/x-vp8 ! vp8dec")
        QVERIFY(frame(0).data().startsWith(QByteArray::fromHex("00000001")));
    QTEST(decodeKeyFrame(frame(0).data(), decoder).size(), "decodedSize");
}

// Times survive whatever they are, frames may come from any thread, and all come out in this one.
void tst_EncodeControl::timesAndThreads()
{
    QVERIFY(m_control->start(surfaceFormat()));
    const QVector<qint64> times = {5000000, 5033333, 5033333, 90000000, 17, 0};
    for (int index = 0; index < times.size(); ++index) {
        const QVideoFrame raw = grayFrame(times[index]);
        const QScopedPointer<QThread> thread(QThread::create([&] { m_control->encode(raw); }));
        thread->start();
        QVERIFY(m_frames->wait());
        QVERIFY(thread->wait());
        QCOMPARE(frame(index).meta().timestamp, quint64(times[index]));
    }
    const qint64 before = g_get_monotonic_time();
    encode(grayFrame(-1));
    QVERIFY(qint64(frame(times.size()).meta().timestamp) >= before);
    QVERIFY(qint64(frame(times.size()).meta().timestamp) <= g_get_monotonic_time());
}

void tst_EncodeControl::lifeOfARun()
{
    QVector<Status> statuses;
    connect(m_control, &QFLEncodeControl::statusChanged, this, [&](Status status) {
        QCOMPARE(m_control->status(), status);
        statuses.append(status);
    });
    QCOMPARE(m_control->status(), Status::LoadedStatus);
    QVERIFY(!m_control->encode(grayFrame(0)));
    m_control->stop();
    QCOMPARE(statuses, {});

    const QVector<Status> starting = {Status::StartingStatus, Status::StartedStatus};
    const QVector<Status> stopping = {Status::StoppingStatus, Status::LoadedStatus};
    QVERIFY(m_control->start(surfaceFormat()));
    encodeGray(2);
    QVERIFY(m_control->start(surfaceFormat()));
    encodeGray(2);
    QVERIFY(m_control->encode(grayFrame(m_time)));
    m_control->stop();
    QCOMPARE(statuses, starting + stopping + starting + stopping);
    QVERIFY(!m_control->encode(grayFrame(0)));
    QCoreApplication::processEvents();
    QCOMPARE(types(), QByteArray("KdKd"));
    QVERIFY(m_errors->isEmpty());
}

void tst_EncodeControl::drain_data()
{
    addEncoders();
}

void tst_EncodeControl::drain()
{
    chooseEncoder();
    QSignalSpy ends(m_control, &QFLEncodeControl::endOfStream);
    QVERIFY(m_control->start(surfaceFormat()));
    for (int run = 1; run <= 2; ++run) {
        encodeGray(2);
        QVERIFY(m_control->encode(grayFrame(m_time += 33333)));
        m_control->drain();
        QVERIFY(!m_control->encode(grayFrame(m_time)));
        QVERIFY(ends.wait());
        QCOMPARE(ends.count(), run);
        QCOMPARE(types(), QByteArray("Kdd").repeated(run));
    }
    QCOMPARE(m_control->status(), Status::StartedStatus);
}

void tst_EncodeControl::flush_data()
{
    addEncoders();
}

void tst_EncodeControl::flush()
{
    chooseEncoder();
    QVERIFY(m_control->start(surfaceFormat()));
    encodeGray(62);
    // Every two seconds there is a key frame anyway.
    QCOMPARE(types(), QByteArray("K" + QByteArray("d").repeated(59) + "Kd"));
    m_control->flush();
    encodeGray(2);
    QCOMPARE(types().mid(62), QByteArray("Kd"));

    // What is on its way at the time of the flush doesn't come out, apart from a key frame.
    QVERIFY(m_control->encode(noiseFrame(1)));
    QVERIFY(m_control->encode(noiseFrame(2)));
    m_control->flush();
    QVERIFY(m_control->encode(grayFrame(3)));
    QTRY_COMPARE(frame(m_frames->count() - 1).meta().timestamp, quint64(3));
    QCOMPARE(types().mid(64, 1), QByteArray("K"));
}

void tst_EncodeControl::bitRate()
{
    QVideoEncoderSettings settings;
    settings.setBitRate(200000);
    m_settings->setVideoSettings(settings);
    QVERIFY(m_control->start(surfaceFormat()));
    const auto encodedBits = [this] {
        int bits = 0;
        for (int count = 0; count < 60; ++count) {
            encode(noiseFrame(m_time += 33333));
            bits += frame(m_frames->count() - 1).data().size() * (count >= 30 ? 8 : 0);
        }
        return bits;
    };
    const int before = encodedBits();
    settings.setBitRate(600000);
    m_settings->setVideoSettings(settings);
    const int after = encodedBits();
    QVERIFY2(before > 150000 && before < 250000, qPrintable(QString::number(before)));
    QVERIFY2(after > 450000 && after < 750000, qPrintable(QString::number(after)));
}

void tst_EncodeControl::refusedStarts_data()
{
    QTest::addColumn<QVideoSurfaceFormat>("format");
    QTest::addColumn<QString>("codec");
    QTest::addColumn<QSize>("resolution");
    QTest::addColumn<QFLEncoder::Error>("error");
    QTest::addColumn<QString>("value");

    const auto row = [](const char *name, const QSize &frames, QVideoFrame::PixelFormat format,
                        const char *codec, const QSize &resolution, QFLEncoder::Error error,
                        const char *value) {
        QTest::newRow(name) << QVideoSurfaceFormat(frames, format) << QString::fromLatin1(codec)
                            << resolution << error << QString::fromLatin1(value);
    };
    const auto yuv = QVideoFrame::Format_YUV420P;
    const auto formatError = QFLEncoder::FormatError;
    row("odd", QSize(321, 240), yuv, "", QSize(), formatError, "321x240");
    row("tiny", QSize(8, 240), yuv, "", QSize(), formatError, "8x240");
    row("huge", QSize(320, 8192), yuv, "", QSize(), formatError, "320x8192");
    row("empty", QSize(), yuv, "", QSize(), formatError, "-1x-1");
    row("odd scaled", size, yuv, "", QSize(160, 121), formatError, "160x121");
    row("pixels", size, QVideoFrame::Format_Jpeg, "", QSize(), formatError, "Format_Jpeg");
    row("codec", size, yuv, "Nope", QSize(), QFLEncoder::ResourceError, "\"Nope\"");
}

void tst_EncodeControl::refusedStarts()
{
    QFETCH(QVideoSurfaceFormat, format);
    QFETCH(QString, codec);
    QFETCH(QSize, resolution);
    QFETCH(QString, value);
    QVERIFY(m_control->start(surfaceFormat()));
    QVideoEncoderSettings settings;
    settings.setCodec(codec);
    settings.setResolution(resolution);
    m_settings->setVideoSettings(settings);

    QVERIFY(!m_control->start(format));
    QCOMPARE(m_errors->count(), 1);
    QTEST(m_errors->first().first().value<QFLEncoder::Error>(), "error");
    QVERIFY(m_errors->first().last().toString().contains(value));
    QCOMPARE(m_control->status(), Status::LoadedStatus);

    m_settings->setVideoSettings(QVideoEncoderSettings());
    QVERIFY(m_control->start(surfaceFormat()));
    encodeGray(1);
}

void tst_EncodeControl::missingElement()
{
    GstRegistry *registry = gst_registry_get();
    GstPluginFeature *parser = gst_registry_lookup_feature(registry, "h264parse");
    QVERIFY(parser);
    gst_registry_remove_feature(registry, parser);
    const bool startsWithoutParser = m_control->start(surfaceFormat());
    gst_registry_add_feature(registry, parser);

    QVERIFY(!startsWithoutParser);
    QCOMPARE(m_errors->count(), 1);
    QCOMPARE(m_errors->first().first().value<QFLEncoder::Error>(), QFLEncoder::ResourceError);
    QVERIFY(m_errors->first().last().toString().contains(QLatin1String("h264parse")));
    QVERIFY(m_control->start(surfaceFormat()));
}

void tst_EncodeControl::refusedFrames()
{
    const QVideoFrame other(320 * 180 * 3 / 2, QSize(320, 180), 320, QVideoFrame::Format_YUV420P);
    const QVideoFrame shortened(320 * 200, size, 320, QVideoFrame::Format_YUV420P);
    for (int run = 1; run <= 2; ++run) {
        QVERIFY(m_control->start(surfaceFormat()));
        QVERIFY(!m_control->encode(other));
        QVERIFY(!m_control->encode(shortened));
        QVERIFY(!m_control->encode(QVideoFrame()));
        QCOMPARE(m_errors->count(), run);
    }
    QCOMPARE(m_errors->first().first().value<QFLEncoder::Error>(), QFLEncoder::FormatError);
    QVERIFY(m_errors->first().last().toString().contains(QLatin1String("320x180")));
    QVERIFY(m_errors->first().last().toString().contains(QLatin1String("320x240")));
    encodeGray(1);

    const QVideoFrame noise = noiseFrame(m_time + 33333);
    int accepted = 0;
    while (accepted < 100 && m_control->encode(noise))
        ++accepted;
    QVERIFY(accepted >= 2 && accepted < 100);
    QTRY_COMPARE(m_frames->count(), 1 + accepted);
}

void tst_EncodeControl::sinks()
{
    TestSink early;
    TestSink late;
    OtherSink other;
    QVERIFY(early.link(m_source));
    QVERIFY(!m_source->addSink(&early));
    QVERIFY(!m_source->addSink(&other));
    QVERIFY(!m_source->addSink(nullptr));
    QVERIFY(m_control->start(surfaceFormat()));
    encodeGray(2);
    QVERIFY(late.link(m_source));
    QCOMPARE(late.videoEncoderSettings().resolution(), size);
    encodeGray(2);
    QCOMPARE(early.log, QByteArray("[KdKd"));
    QCOMPARE(late.log, QByteArray("[Kd"));

    late.unlink();
    QVERIFY(!m_source->removeSink(&late));
    encodeGray(1);
    QCOMPARE(late.log, QByteArray("[Kd]"));
    m_control->drain();
    QTRY_COMPARE(early.log, QByteArray("[KdKdd."));
    encodeGray(2);
    m_control->stop();
    QCOMPARE(early.log, QByteArray("[KdKdd.][Kd]"));
}

void tst_EncodeControl::refusingSinks()
{
    TestSink sink;
    sink.startsStream = false;
    QVERIFY(sink.link(m_source));
    QVERIFY(m_control->start(surfaceFormat()));
    encodeGray(1);
    QCOMPARE(m_errors->count(), 1);
    QCOMPARE(m_errors->first().first().value<QFLEncoder::Error>(), QFLEncoder::ConsumerError);
    QVERIFY(!sink.link(m_source));
    QCOMPARE(sink.log, QByteArray("[["));

    sink.startsStream = true;
    sink.takesFrames = false;
    QVERIFY(sink.link(m_source));
    encodeGray(1);
    QCOMPARE(sink.log, QByteArray("[[[K"));
    // Half a second passes until the encoder is bothered again.
    encodeGray(1);
    QCOMPARE(types(), QByteArray("KKd"));
    sink.takesFrames = true;
    QElapsedTimer timer;
    for (timer.start(); !types().endsWith('K') && !timer.hasExpired(2000);)
        encodeGray(1);
    encodeGray(1);
    QCOMPARE(sink.log, QByteArray("[[[KKd"));
}

QTEST_GUILESS_MAIN(tst_EncodeControl)

#include "tst_encodecontrol.moc"
