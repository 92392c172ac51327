// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Tests what sinks get from the encoder service, and encoders that fail or can't keep up.

#include "codecelements.h"
#include "encoderservice.h"
#include "qflencodecontrol.h"
#include "qflencodedvideosink.h"
#include "qflencodedvideosourcecontrol.h"
#include "testmedia.h"

#include <QtMultimedia/qvideoencodersettingscontrol.h>

#include <cmath>
#include <numeric>
#include <random>

namespace {

constexpr QSize usualSize(320, 240);
constexpr int usualPeriod = 33333;
const QMap<QString, QByteArray> decoders
        = {{QStringLiteral("H264"), "video/x-h264 ! h264parse ! avdec_h264"},
           {QStringLiteral("H265"), "video/x-h265 ! h265parse ! avdec_h265"},
           {QStringLiteral("VP8"), "video/x-vp8 ! vp8dec"},
           {QStringLiteral("VP9"), "video/x-vp9 ! vp9dec"},
           {QStringLiteral("AV1"), "video/x-av1 ! av1parse ! av1dec"}};

bool isBusy = false;
GstElement *hardware = nullptr;

// For elements that are x264enc, but pass for hardware: one never opens, the other doesn't start
// while it is busy.
GstStateChangeReturn changeState(GstElement *element, GstStateChange change)
{
    auto *const parent
            = GST_ELEMENT_CLASS(g_type_class_peek_parent(GST_ELEMENT_GET_CLASS(element)));
    hardware = element;
    if (G_OBJECT_TYPE_NAME(element) == QByteArray("x264encClosed"))
        return GST_STATE_CHANGE_FAILURE;
    if (change == GST_STATE_CHANGE_READY_TO_PAUSED && isBusy) {
        GST_ELEMENT_ERROR(element, RESOURCE, FAILED, ("no session left"), (nullptr));
        return GST_STATE_CHANGE_FAILURE;
    }
    return parent->change_state(element, change);
}

void initializeClass(gpointer elementClass, gpointer)
{
    gst_element_class_set_metadata(GST_ELEMENT_CLASS(elementClass), "Test",
                                   "Codec/Encoder/Video/Hardware", "Test", "Test");
    GST_ELEMENT_CLASS(elementClass)->change_state = changeState;
}

bool registerHardware(const char *name)
{
    const GstElementPointer encoder(gst_element_factory_make("x264enc", nullptr));
    GTypeQuery parent;
    g_type_query(G_OBJECT_TYPE(encoder.get()), &parent);
    const GType type
            = g_type_register_static_simple(parent.type, name, parent.class_size, initializeClass,
                                            parent.instance_size, nullptr, GTypeFlags(0));
    return gst_element_register(nullptr, name, GST_RANK_PRIMARY + 1000, type);
}

// Waves that stand elsewhere in every picture.
QVideoFrame makeFrame(int number, const QSize &size = usualSize)
{
    QVideoFrame frame(size.width() * size.height() * 3 / 2, size, size.width(),
                      QVideoFrame::Format_YUV420P);
    frame.map(QAbstractVideoBuffer::WriteOnly);
    std::fill_n(frame.bits(), frame.mappedBytes(), uchar(128));
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x)
            frame.bits()[y * size.width() + x]
                    += int(80 * std::sin((x + 5 * number) / 20.0F)) * (y % 96 - 48) / 48;
    }
    frame.unmap();
    frame.setStartTime(number * usualPeriod);
    return frame;
}

qint64 percentile95(QVector<qint64> values)
{
    std::sort(values.begin(), values.end());
    return values.value(values.size() * 95 / 100);
}

// Takes down what it is asked and told; frames that it refuses are 'k' and 'x' and not 'K' and 'd'.
class TestSink : public QFLEncodedVideoSink
{
public:
    ~TestSink() override { unlink(); }

    bool isFormatSupported(const QVideoEncoderSettings &settings) const override
    {
        log += '?';
        return settings.resolution() == usualSize;
    }
    bool start(const QVideoEncoderSettings &settings) override
    {
        QFLEncodedVideoSink::start(settings);
        return note('[');
    }
    bool encodedVideoFrame(const QFLEncodedVideoFrame &frame) override
    {
        const bool isKey = frame.meta().type == QFLEncodedVideoFrame::Type_Key;
        if (refuses && refuses())
            return !note(isKey ? 'k' : 'x');
        taken.append(frame);
        return note(isKey ? 'K' : 'd');
    }
    void drain() override { note('.'); }
    void stop() override
    {
        QFLEncodedVideoSink::stop();
        note(']');
    }

    mutable QByteArray log;
    QVector<QFLEncodedVideoFrame> taken;
    std::function<bool()> refuses;
    std::function<void(char)> onCall;

private:
    bool note(char call)
    {
        log += call;
        if (onCall)
            onCall(call);
        return true;
    }
};

} // namespace

class tst_EncodedSinks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        gst_init(nullptr, nullptr);
        QVERIFY(registerHardware("x264encBusy") && registerHardware("x264encClosed"));
    }

    void init()
    {
        m_service = std::make_unique<EncoderService>();
        m_control = m_service->requestControl<QFLEncodeControl *>();
        m_source = m_service->requestControl<QFLEncodedVideoSourceControl *>();
    }

    void cleanup() { m_service.reset(); }

    // Hardware that can't be opened isn't listed, and software takes over from any other that fails.
    void failingHardware()
    {
        QCOMPARE(CodecElements::encoders().first().factoryName, QByteArray("x264encBusy"));
        for (const CodecElement &element : CodecElements::encoders())
            QVERIFY(element.factoryName != "x264encClosed");
        QSignalSpy errors(m_control, &QFLEncodeControl::error);
        for (const char *reason : {"no session left", "broke down"}) {
            const QString text = QStringLiteral("x264encBusy: %1").arg(QLatin1String(reason));
            const auto fail = [&](const char *codec) {
                isBusy = reason[0] == 'n';
                const bool isStarted = start(codec);
                if (!isBusy)
                    GST_ELEMENT_ERROR(hardware, STREAM, ENCODE, ("broke down"), (nullptr));
                isBusy = false;
                QCoreApplication::processEvents();
                return isStarted;
            };
            QTest::ignoreMessage(QtWarningMsg,
                                 QRegularExpression(text + QLatin1String(".*falling")));
            QVERIFY(fail("H264"));
            encode(0);
            QVERIFY(errors.isEmpty());
            QCOMPARE(fail("x264encBusy"), reason[0] == 'b');
            QCOMPARE(errors.count(), 1);
            QCOMPARE(errors.first()[0].value<QFLEncoder::Error>(), QFLEncoder::HardwareError);
            QVERIFY(errors.takeFirst()[1].toString().contains(text));
            QCOMPARE(m_control->status(), QFLEncoder::LoadedStatus);
        }
    }

    // In the call that stands first a sink goes, comes again, starts or ends the run, or deletes the
    // service; then follow the calls to it and to another sink, of two frames, a drain and a stop.
    void actsInCalls_data()
    {
        QTest::addColumn<QList<QByteArray>>("row");
        for (const char *row :
             {"- nothing ?[Kd.] ?[Kd.]", "[ unlink ?[] ?[Kd.]", "K unlink ?[K] ?[Kd.]",
              ". unlink ?[Kd.] ?[Kd.]", "] unlink ?[Kd.] ?[Kd.]", "K relink ?[K]?[K.] ?[KK.]",
              ". relink ?[Kd.]?[] ?[Kd.]", "[ stop ?[] ", "K stop ?[K] ?[]", ". stop ?[Kd.] ?[Kd]",
              "] stop ?[Kd.] ?[Kd.]", "[ start ?[]?[Kd.] ?[Kd.]", "K start ?[K]?[K.] ?[]?[K.]",
              ". start ?[Kd.]?[] ?[Kd]?[]", "] start ?[Kd.] ?[Kd.]", "K delete ?[K] ?[]",
              ". delete ?[Kd.] ?[Kd]", "] delete ?[Kd.] ?[Kd.]"})
            QTest::newRow(row) << QByteArray(row).split(' ');
    }

    void actsInCalls()
    {
        QFETCH(QList<QByteArray>, row);
        TestSink sink;
        TestSink other;
        bool hasActed = false;
        const auto forget = [&] {
            sink.QFLSink::unlink(m_source);
            other.QFLSink::unlink(m_source);
            m_service.reset();
        };
        const QMap<QByteArray, std::function<void()>> actions
                = {{"unlink", [&] { sink.unlink(); }},
                   {"relink", [&] { sink.link(m_source); }},
                   {"stop", [this] { m_control->stop(); }},
                   {"start", [this] { start("H264"); }},
                   {"delete", forget}};
        sink.onCall = [&](char call) {
            if (call == row[0][0] && !std::exchange(hasActed, true))
                actions[row[1]]();
        };
        QVERIFY(sink.link(m_source) && other.link(m_source) && !m_source->addSink(&other));
        start("H264");
        for (int number = 0; number < 2; ++number) {
            if (m_service && m_control->encode(makeFrame(number)))
                QTRY_VERIFY(!m_service || count("encoded") > number);
        }
        if (m_service)
            m_control->drain();
        QTRY_VERIFY(!m_service || m_control->status() != QFLEncoder::StartedStatus
                    || (sink.log + other.log).contains('.'));
        if (m_service)
            m_control->stop();
        QCOMPARE(sink.log, row[2]);
        QCOMPARE(other.log, row[3]);
    }

    void randomSinks_data()
    {
        QTest::addColumn<QString>("codec");
        for (const CodecElement &element : CodecElements::encoders())
            QTest::newRow(element.factoryName) << element.codec;
    }

    // Sinks that come and go, and one that refuses a tenth, can decode every frame that they took.
    void randomSinks()
    {
        QFETCH(QString, codec);
        constexpr unsigned seed = 20261123;
        qInfo("seed %u", seed);
        std::minstd_rand random(seed);
        std::minstd_rand refusals(seed);
        const auto isOneIn = [&](unsigned count) { return random() % count == 0; };
        TestSink sinks[3];
        sinks[2].refuses = [&] { return refusals() % 10 == 0; };
        QVERIFY(start(QTest::currentDataTag()));
        for (int number = 0; number < 240; ++number) {
            for (TestSink &sink : sinks) {
                if (!sink.isActive() && isOneIn(10))
                    QVERIFY(sink.link(m_source));
                else if (sink.isActive() && isOneIn(60))
                    sink.unlink();
            }
            encode(number);
        }
        m_control->stop();
        for (const TestSink &sink : sinks) {
            const QRegularExpression order(
                    QStringLiteral("^(\\?\\[(k|K[Kd]*[kx])*(K[Kd]*)?\\])*$"));
            QVERIFY2(order.match(QString::fromLatin1(sink.log)).hasMatch(), sink.log);
            QVERIFY2(sink.taken.size() > 10, sink.log);
            Stream input;
            for (const QFLEncodedVideoFrame &frame : sink.taken)
                input.append(frame.data());
            const Stream pictures = collect("appsrc name=source caps=" + decoders[codec], input);
            QCOMPARE(pictures.size(), input.size());
            for (int index = 0; index < pictures.size(); ++index) {
                const int number = int(sink.taken[index].meta().timestamp / usualPeriod);
                QVERIFY(averageDifference(pixels(makeFrame(number)), pictures[index]) < 4);
            }
        }
    }

    // What isn't encoded is counted, whatever the reason.
    void losses()
    {
        QVERIFY(start("H264", usualSize, 10));
        for (int number = 0; number < 9; ++number) {
            QVERIFY(m_control->encode(makeFrame(number)));
            QTRY_COMPARE(count("encoded"), number / 3 + 1);
        }
        QCOMPARE(count("skipped"), 6);
        QVERIFY(m_control->encode(makeFrame(9)));
        m_control->stop();
        QVERIFY(!m_control->encode(makeFrame(12)));
        QCOMPARE(count("dropped"), 1);
        QCOMPARE(count("refused"), 1);
    }

    // For a minute, an encoder that is too slow refuses frames, and the others aren't late.
    void tooSlow()
    {
        constexpr int offered = 1800;
        const QSize size(1920, 1080);
        QVERIFY(start("AV1", size));
        QVector<QVideoFrame> pictures;
        for (int number = 0; number < 8; ++number)
            pictures.append(makeFrame(number, size));
        QVector<qint64> delays;
        QVector<qint64> encodingTimes;
        qint64 previous = 0;
        const auto receive = [&](const QFLEncodedVideoFrame &frame) {
            const qint64 now = g_get_monotonic_time();
            delays.append(now - qint64(frame.meta().timestamp));
            encodingTimes.append(qMin(delays.last(), now - previous));
            previous = now;
        };
        connect(m_control, &QFLEncodeControl::encodedVideoFrame, this, receive);
        int number = 0;
        QTimer camera;
        camera.setTimerType(Qt::PreciseTimer);
        camera.callOnTimeout([&] {
            QVideoFrame &picture = pictures[number % pictures.size()];
            picture.setStartTime(g_get_monotonic_time());
            m_control->encode(picture);
            if (++number == offered)
                camera.stop();
        });
        camera.start(33);
        QTRY_COMPARE_WITH_TIMEOUT(number, offered, 90000);
        m_control->stop();
        QCOMPARE(count("encoded") + count("refused") + count("dropped"), offered);
        const qint64 encodingTime = std::accumulate(encodingTimes.begin(), encodingTimes.end(), 0LL)
                / encodingTimes.size();
        for (const auto &part : {delays, delays.mid(delays.size() * 3 / 4)}) {
            const qint64 delay = percentile95(part);
            qInfo("95 %% within %lld us, %lld us to encode one", delay, encodingTime);
            QVERIFY(delay < 3 * encodingTime);
        }
    }

private:
    bool start(const QByteArray &codec, const QSize &size = usualSize, qreal frameRate = 0)
    {
        QVideoEncoderSettings settings;
        settings.setCodec(QString::fromLatin1(codec));
        settings.setBitRate(1000000);
        settings.setFrameRate(frameRate);
        m_service->requestControl<QVideoEncoderSettingsControl *>()->setVideoSettings(settings);
        QVideoSurfaceFormat format(size, QVideoFrame::Format_YUV420P);
        format.setFrameRate(30);
        return m_control->start(format);
    }

    void encode(int number)
    {
        QSignalSpy frames(m_control, &QFLEncodeControl::encodedVideoFrame);
        QVERIFY(m_control->encode(makeFrame(number)));
        QVERIFY(frames.wait());
    }

    int count(const QByteArray &what) const { return m_control->property(what + "Frames").toInt(); }

    std::unique_ptr<QMediaService> m_service;
    QFLEncodeControl *m_control = nullptr;
    QFLEncodedVideoSourceControl *m_source = nullptr;
};

QTEST_GUILESS_MAIN(tst_EncodedSinks)

#include "tst_encodedsinks.moc"
