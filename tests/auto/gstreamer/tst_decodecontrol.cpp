// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Decodes real streams with the decoder service.

#include "bitstreamgate.h"
#include "codec.h"
#include "codecelements.h"
#include "decoderservice.h"
#include "qfldecodecontrol.h"
#include "testmedia.h"

#include <QtMultimedia/qvideorenderercontrol.h>

using Statuses = QVector<int>;

namespace {

struct Decoding
{
    Decoding()
    {
        QObject::connect(control, &QFLDecodeControl::statusChanged,
                         [this](QFLDecoder::Status status) { statuses.append(status); });
        renderer->setSurface(&surface);
    }
    ~Decoding() { renderer->setSurface(nullptr); }

    bool start(const QByteArray &codec)
    {
        QVideoEncoderSettings settings;
        settings.setCodec(QString::fromLatin1(codec));
        return control->start(settings);
    }
    bool decode(QByteArray data, quint64 timestamp = 0)
    {
        const auto type = QFLEncodedVideoFrame::Type_Intra;
        return control->decode(QFLEncodedVideoFrame(data, {type, timestamp}));
    }
    QFLDecoder::Error error() const { return errors.last().at(0).value<QFLDecoder::Error>(); }
    int count() const { return surface.frames.size(); }
    QVideoFrame picture() const { return surface.frames.last(); }

    RecordingSurface surface;
    DecoderService implementation;
    QMediaService &service = implementation;
    QFLDecodeControl *control = service.requestControl<QFLDecodeControl *>();
    QVideoRendererControl *renderer = service.requestControl<QVideoRendererControl *>();
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
    void initTestCase()
    {
        QVERIFY(gst_init_check(nullptr, nullptr, nullptr));
        m_pictures = produce("identity");
        for (const QString &codec : streamEncoders.keys()) {
            m_streams[codec] = produce(streamEncoders[codec]);
            QCOMPARE(m_streams[codec].size(), 20);
        }
        m_h264 = m_streams[QStringLiteral("H264")];
        m_vp8 = m_streams[QStringLiteral("VP8")];
    }

    void roundTrip_data()
    {
        QTest::addColumn<QString>("codec");
        QTest::addColumn<QVideoFrame::PixelFormat>("pixelFormat");
        QTest::newRow("") << QStringLiteral("H264") << QVideoFrame::Format_YUV420P;
        QTest::newRow("H264") << QStringLiteral("H264") << QVideoFrame::Format_RGB32;
        for (const CodecElement &decoder : CodecElements::decoders())
            QTest::newRow(decoder.factoryName) << decoder.codec << QVideoFrame::Format_YUV420P;
    }

    void roundTrip()
    {
        QFETCH(QString, codec);
        QFETCH(QVideoFrame::PixelFormat, pixelFormat);
        const Stream sent = pixelFormat == QVideoFrame::Format_RGB32
                ? produce("videoconvert ! video/x-raw, format=BGRx")
                : m_pictures;
        const QVector<quint64> timestamps = {5, 5, 0, 4000000, 33333, quint64(1) << 62, 7, 0};
        RecordingSurface surface({pixelFormat});
        Decoding decoding;
        decoding.renderer->setSurface(&surface);
        QVERIFY(decoding.start(QTest::currentDataTag()));
        for (int i = 0; i < 20; ++i) {
            // Each picture is out before the next frame is in.
            const quint64 timestamp = timestamps.at(i % timestamps.size());
            QVERIFY(decoding.decode(m_streams[codec].at(i), timestamp));
            QTRY_COMPARE(surface.frames.size(), i + 1);
            QCOMPARE(surface.frames.last().startTime(), qint64(timestamp));
            QVERIFY(averageDifference(pixels(surface.frames.last()), sent.at(i)) < 1);
            QVERIFY(averageDifference(pixels(surface.frames.last()), sent.at((i + 1) % 20)) > 4);
        }
        QCOMPARE(surface.surfaceFormat(), decoding.control->outputFormat());
        QCOMPARE(surface.surfaceFormat().pixelFormat(), pixelFormat);
        QCOMPARE(surface.surfaceFormat().frameSize(), QSize(320, 240));
        QCOMPARE(QPoint(surface.starts, decoding.formats.count()), QPoint(1, 1));
        QCOMPARE(decoding.errors.count(), 0);
    }

    void lifeOfARun()
    {
        Decoding decoding;
        QVERIFY(!decoding.decode(m_h264.first()));
        QVERIFY(decoding.start("H264"));
        for (int i = 0; i < 5; ++i)
            QVERIFY(decoding.decode(m_h264.at(i)));
        // What is queued by now is never seen, and only a key frame goes on from there.
        decoding.control->flush();
        QVERIFY(!decoding.decode(m_h264.at(5)));
        QVERIFY(decoding.decode(m_h264.at(0), 99));
        QTRY_COMPARE(decoding.count(), 1);
        QCOMPARE(decoding.picture().startTime(), 99);

        int countAtEnd = 0;
        connect(decoding.control, &QFLDecodeControl::endOfStream, this,
                [&] { countAtEnd = decoding.count(); });
        for (const QByteArray &frame : m_h264)
            QVERIFY(decoding.decode(frame));
        decoding.control->drain();
        QVERIFY(!decoding.decode(m_h264.first()));
        QTRY_COMPARE(countAtEnd, 1 + m_h264.size());
        QCOMPARE(decoding.control->status(), QFLDecoder::EndOfStreamStatus);
        decoding.control->flush();
        QCOMPARE(decoding.control->status(), QFLDecoder::StartedStatus);
        QVERIFY(decoding.decode(m_h264.first()));
        decoding.control->drain();
        QTRY_COMPARE(countAtEnd, 2 + m_h264.size());
        QCOMPARE(decoding.surface.starts, 1);
        // Draining can be called off.
        decoding.control->flush();
        decoding.control->drain();
        decoding.control->flush();
        QVERIFY(decoding.decode(m_h264.first()));

        decoding.statuses.clear();
        QVERIFY(decoding.start("VP8"));
        QCOMPARE(decoding.statuses,
                 Statuses({QFLDecoder::StoppingStatus, QFLDecoder::LoadedStatus,
                           QFLDecoder::UnloadingStatus, QFLDecoder::UnloadedStatus,
                           QFLDecoder::LoadingStatus, QFLDecoder::LoadedStatus,
                           QFLDecoder::StartingStatus, QFLDecoder::StartedStatus}));
        QVERIFY(decoding.decode(m_vp8.first()));
        QTRY_COMPARE(decoding.count(), countAtEnd + 1);
        decoding.control->stop();
        QVERIFY(!decoding.surface.isActive());
        QCOMPARE(QPoint(decoding.ends.count(), decoding.errors.count()), QPoint(2, 0));
    }

    void sizeChange()
    {
        for (const CodecElement &decoder : CodecElements::decoders()) {
            const QByteArray encoder = streamEncoders[decoder.codec];
            Decoding decoding;
            QVERIFY(decoding.start(decoder.factoryName));
            for (const QSize &size : {QSize(320, 240), QSize(160, 128), QSize(320, 240)}) {
                const int count = decoding.count() + 1;
                QVERIFY(decoding.decode(produce(encoder, size.width(), size.height()).first()));
                QTRY_COMPARE(decoding.count(), count);
                QCOMPARE(decoding.control->outputFormat().frameSize(), size);
                QCOMPARE(decoding.surface.surfaceFormat().frameSize(), size);
                QCOMPARE(decoding.picture().size(), size);
                QCOMPARE(QPoint(decoding.formats.count(), decoding.surface.starts),
                         QPoint(count, count));
            }
        }
    }

    void recoversFromDamage()
    {
        // Its header says that the first partition is longer than the frame.
        const QByteArray damaged = m_vp8.first().left(12);
        Decoding decoding;
        QVERIFY(decoding.start("VP8"));
        for (int i = 1; i <= 3; ++i) {
            QVERIFY(decoding.decode(m_vp8.first()));
            QTRY_COMPARE(decoding.count(), i);
            QVERIFY(decoding.decode(damaged));
            QTRY_VERIFY(!decoding.decode(m_vp8.at(1)));
            QCOMPARE(decoding.errors.count(), 0);
        }
        QVERIFY(decoding.start("VP8"));
        for (int i = 0; i < 10; ++i) {
            QCOMPARE(decoding.errors.count(), 0);
            QVERIFY(decoding.decode(damaged));
            QTRY_VERIFY(!decoding.decode(m_vp8.at(1)));
        }
        QCOMPARE(decoding.error(), QFLDecoder::ResourceError);
        QVERIFY(decoding.errors.first().at(1).toString().startsWith(QLatin1String("vp8dec: ")));
        QCOMPARE(decoding.control->status(), QFLDecoder::UnloadedStatus);
        QVERIFY(decoding.start("VP8") && decoding.decode(m_vp8.first()));
        QTRY_COMPARE(decoding.count(), 4);
    }

    void errors_data()
    {
        QTest::addColumn<QByteArray>("codec");
        QTest::addColumn<bool>("isStarted");
        QTest::newRow("The codec \"H999\" is unknown") << QByteArray("H999") << false;
        QTest::newRow("h264parse: the element is not installed") << QByteArray("H264") << false;
        QTest::newRow("The data is no H264 frame") << QByteArray("H264") << true;
        QTest::newRow("The data is no VP8 frame") << QByteArray("VP8") << true;
    }

    void errors()
    {
        QFETCH(QByteArray, codec);
        QFETCH(bool, isStarted);
        Decoding decoding;
        const auto start = [&] { return decoding.start(codec); };
        QCOMPARE(isStarted ? start() : callWithout("h264parse", start), isStarted);
        for (int i = 0; i < 3; ++i)
            QVERIFY(!decoding.decode(QByteArray(1000, 'x')));
        QCOMPARE(decoding.errors.count(), 1);
        const bool isMissing = codec == "H264" && !isStarted;
        QCOMPARE(decoding.error(), isMissing ? QFLDecoder::ResourceError : QFLDecoder::FormatError);
        QCOMPARE(decoding.errors.last().at(1).toString(), QLatin1String(QTest::currentDataTag()));
        QCOMPARE(decoding.control->status(),
                 isStarted ? QFLDecoder::StartedStatus : QFLDecoder::UnloadedStatus);
        QVERIFY(isStarted || decoding.start("H264"));
        QVERIFY(decoding.decode(codec == "VP8" ? m_vp8.first() : m_h264.first()));
        QTRY_COMPARE(decoding.count(), 1);
    }

    // Of a codec whose bytes nobody can read, the sender's word counts.
    void trustsLabelWithoutInspector()
    {
        BitstreamGate gate;
        for (int stream = 0; stream < 2; ++stream) {
            gate.reset(Codec().inspector());
            QByteArray data("frame");
            QCOMPARE(gate.examine(&data, false), BitstreamGate::AwaitingKeyFrame);
            QCOMPARE(gate.examine(&data, true), BitstreamGate::AdmittedKeyFrame);
            QCOMPARE(gate.examine(&data, false), BitstreamGate::Admitted);
        }
    }

    void surfaceIsSwapped()
    {
        Decoding decoding;
        QVERIFY(decoding.start("H264"));
        QVERIFY(decoding.decode(m_h264.at(0)));
        QTRY_COMPARE(decoding.count(), 1);
        // No key frame is needed for the converter to come in.
        auto rgb = std::make_unique<RecordingSurface>(
                RecordingSurface::Formats {QVideoFrame::Format_RGB32});
        decoding.renderer->setSurface(rgb.get());
        QVERIFY(!decoding.surface.isActive());
        QVERIFY(decoding.decode(m_h264.at(1)));
        QTRY_COMPARE(rgb->frames.size(), 1);
        QCOMPARE(rgb->surfaceFormat(), decoding.control->outputFormat());
        // Decoding goes on without a surface, whether it was destroyed or taken away.
        rgb.reset();
        QVERIFY(decoding.decode(m_h264.at(2)));
        decoding.renderer->setSurface(&decoding.surface);
        QVERIFY(decoding.decode(m_h264.at(3), 3));
        QTRY_COMPARE(decoding.picture().startTime(), 3);
        const int count = decoding.count();
        QVERIFY(decoding.decode(m_h264.at(4)));
        decoding.renderer->setSurface(nullptr);
        decoding.control->drain();
        QTRY_COMPARE(decoding.ends.count(), 1);
        QCOMPARE(decoding.count(), count);
        QCOMPARE(decoding.errors.count(), 0);
    }

    // The newest request holds, also one that is made while the surface is being stopped.
    void startedWhileStopping()
    {
        Decoding decoding;
        QVERIFY(decoding.start("H264"));
        QVERIFY(decoding.decode(m_h264.first(), 1));
        QVERIFY(waitFor([&] { return decoding.surface.times().contains(1); }));
        connect(&decoding.surface, &QAbstractVideoSurface::activeChanged, this, [&](bool isActive) {
            decoding.surface.disconnect(this);
            QVERIFY(!isActive && decoding.start("H264"));
        });
        decoding.control->stop();
        QCOMPARE(decoding.control->status(), QFLDecoder::StartedStatus);
        QVERIFY(decoding.decode(m_h264.first(), 2));
        QVERIFY(waitFor([&] { return decoding.surface.times().contains(2); }));
    }

    void surfaces_data()
    {
        QTest::addColumn<QVideoFrame::PixelFormat>("format");
        QTest::addColumn<QString>("errorText");
        QTest::newRow("nv12") << QVideoFrame::Format_NV12 << QString();
        QTest::newRow("uyvy") << QVideoFrame::Format_UYVY << QString();
        QTest::newRow("jpeg") << QVideoFrame::Format_Jpeg << QStringLiteral("takes none of");
        QTest::newRow("nothing") << QVideoFrame::Format_Invalid << QStringLiteral("takes none of");
        QTest::newRow("start") << QVideoFrame::Format_RGB32 << QStringLiteral("doesn't start");
        QTest::newRow("stop") << QVideoFrame::Format_RGB32 << QStringLiteral("has stopped");
        QTest::newRow("skip") << QVideoFrame::Format_RGB32 << QString();
        QTest::newRow("slow") << QVideoFrame::Format_RGB32 << QString();
    }

    // What a surface does wrong is told once, and decoding goes on for one that works.
    void surfaces()
    {
        QFETCH(QVideoFrame::PixelFormat, format);
        QFETCH(QString, errorText);
        RecordingSurface surface(format ? RecordingSurface::Formats {format}
                                        : RecordingSurface::Formats());
        if (format == QVideoFrame::Format_RGB32)
            surface.answer = QTest::currentDataTag();
        Decoding decoding;
        decoding.renderer->setSurface(&surface);
        QVERIFY(decoding.start("H264"));
        for (int i = 0; i < m_h264.size(); ++i)
            QVERIFY(decoding.decode(m_h264.at(i), quint64(i)));
        QVERIFY(waitFor([&] {
            return errorText.isEmpty() ? surface.times().contains(19) : !decoding.errors.isEmpty();
        }));
        decoding.renderer->setSurface(&decoding.surface);
        QVERIFY(decoding.decode(m_h264.first(), 20));
        QVERIFY(waitFor([&] { return decoding.surface.times().contains(20); }));
        QCOMPARE(decoding.errors.count(), errorText.isEmpty() ? 0 : 1);
        QVERIFY(errorText.isEmpty() || decoding.errors.last().at(1).toString().contains(errorText));
        QVERIFY(surface.starts == 1 || surface.answer == "stop" || surface.frames.isEmpty());
        // Twenty pictures of 50 milliseconds each are late from the third on.
        QVERIFY(surface.answer != "slow" || surface.frames.size() < 10);
    }

private:
    Stream m_pictures;
    QMap<QString, Stream> m_streams;
    Stream m_h264;
    Stream m_vp8;
};

QTEST_GUILESS_MAIN(tst_DecodeControl)

#include "tst_decodecontrol.moc"
