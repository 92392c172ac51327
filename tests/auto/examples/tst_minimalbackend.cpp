// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Tests the minimal backend, the only one that is found, through the library.

#include "framesurface.h"

#include <qfldecodecontrol.h>
#include <qfldecoder.h>
#include <qflencodedvideosink.h>
#include <qflencoder.h>
#include <qflencodervideosurface.h>

#include <QtMultimedia/qmediaservice.h>
#include <QtTest/QtTest>

#include <functional>
#include <memory>
#include <thread>

struct RefusingSink : QFLEncodedVideoSink
{
    ~RefusingSink() override { unlink(); }
    bool isFormatSupported(const QVideoEncoderSettings &) const override { return true; }
    bool encodedVideoFrame(const QFLEncodedVideoFrame &frame) override
    {
        types.append(thread == QThread::currentThread() ? int(frame.meta().type) : -1);
        return types.size() != 2;
    }
    QList<int> types;
    QThread *const thread = QThread::currentThread();
};

// Takes down calls and signals, and does something in one of them.
struct Log
{
    bool note(char call)
    {
        text += call;
        if (text == moment)
            action();
        return true;
    }
    QByteArray text;
    QByteArray moment;
    std::function<void()> action;
};

struct TestSink : QFLEncodedVideoSink
{
    bool isFormatSupported(const QVideoEncoderSettings &) const override
    {
        return log->note(names[0]);
    }
    bool start(const QVideoEncoderSettings &settings) override
    {
        QFLEncodedVideoSink::start(settings);
        return log->note(settings.frameRate() == 25 ? names[1] : '!');
    }
    bool encodedVideoFrame(const QFLEncodedVideoFrame &frame) override
    {
        return log->note(names[frame.meta().type == QFLEncodedVideoFrame::Type_Key ? 2 : 3]);
    }
    void drain() override { log->note(names[4]); }
    void stop() override
    {
        QFLEncodedVideoSink::stop();
        log->note(names[5]);
    }
    Log *log = nullptr;
    QByteArray names;
};

// Does as planned with each picture: shows it, skips it, fails, or refuses to start.
struct TestSurface : QAbstractVideoSurface
{
    QList<QVideoFrame::PixelFormat> supportedPixelFormats(
            QAbstractVideoBuffer::HandleType) const override
    {
        return {QVideoFrame::Format_RGB32};
    }
    bool start(const QVideoSurfaceFormat &format) override
    {
        if (plan.startsWith("refuse"))
            return !log->note('x');
        return QAbstractVideoSurface::start(format) && log->note('[');
    }
    bool present(const QVideoFrame &) override
    {
        if (plan.startsWith("fail"))
            QAbstractVideoSurface::stop();
        return log->note('P') && plan.startsWith("show");
    }
    void stop() override
    {
        QAbstractVideoSurface::stop();
        log->note(']');
    }
    Log *log = nullptr;
    QByteArray plan = "show";
};

class tst_MinimalBackend : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // The second frame is refused by the sink, the fifth by the decoder, which a damaged frame has
    // just put off. A thread in the place of a camera's hands out the pictures.
    void roundTrip()
    {
        QFLEncoder encoder;
        QFLDecoder decoder;
        FrameSurface surface(FrameSurface::ShowFrames);
        RefusingSink sink;
        decoder.setVideoSurface(&surface);
        QVERIFY(encoder.bind(&decoder) && sink.link(&encoder));
        QFLEncoderVideoSurface camera(&encoder);
        QImage image(33, 17, QImage::Format_RGB32);
        image.fill(Qt::red);
        camera.start(QVideoSurfaceFormat(image.size(), QVideoFrame::Format_RGB32));
        for (int number = 1; number <= 7; ++number) {
            image.setPixelColor(number, number, Qt::blue);
            std::thread([&] { QVERIFY(camera.present(QVideoFrame(image))); }).join();
            QTRY_COMPARE(sink.types.size(), number);
            QTRY_COMPARE(surface.image() == image, number != 5);
            if (number == 4)
                decoder.decode({"damaged", 7, {QFLEncodedVideoFrame::Type_Key, 0}});
        }
        QCOMPARE(sink.types, QList<int>({1, 2, 1, 2, 2, 1, 2}));
        QCOMPARE(sink.videoEncoderSettings().codec(), QStringLiteral("RLE"));
        QCOMPARE(sink.videoEncoderSettings().resolution(), image.size());
        QCOMPARE(sink.videoEncoderSettings().frameRate(), 30.0);
        QCOMPARE(decoder.error(), QFLDecoder::FormatError);
    }

    // What is noted before and after something is done in a call or a slot. Two pictures of
    // different sizes are shown, then the stream is drained, started anew and stopped. S, L, E: status; + and -:
    // answer of start(); F: format; e: end of the stream; [P]: calls to the surface.
    void actsInDecoding_data()
    {
        addRows({"- nothing S+F[PF][PEeL]S+L4", "S delete L-", "S start LS++F[PF][PEeL]S+L4",
                 "S+F delete L", "S+F start LS+F[PEeL]S+L4", "S+F[ delete L]",
                 "S+F[ start LS+]F[PEeL]S+L4", "S+F[ take ]FEeLS+L4", "S+F[P delete L]",
                 "S+F[P start L]S+F[PEeL]S+L4", "S+F[PF][PE delete ]", "S+F[PF][PE flush SL]S+L4",
                 "S+F[PF][PE start L]S+LS+L4", "S+F[PF][PEe delete ]", "S+F[PF][PEeL delete ]-",
                 "S+F[PF][PEeL start ]S+-L4", "S+F[PF][PEeL] start S+-L4",
                 "S+F[PF][PEeL]S+L start S+8"});
    }

    void actsInDecoding()
    {
        QFETCH(QList<QByteArray>, row);
        auto decoder = std::make_unique<QFLDecoder>();
        TestSurface surface;
        QVideoEncoderSettings settings;
        settings.setCodec(QStringLiteral("RLE"));
        const auto start = [&] { m_log.note(decoder->start(settings) ? '+' : '-'); };
        m_log = {{},
                 row[0],
                 Actions {{"delete", [&] { decoder.reset(); }},
                          {"stop", [&] { decoder->stop(); }},
                          {"start", start},
                          {"flush", [&] { decoder->flush(); }},
                          {"take", [&] { decoder->setVideoSurface(nullptr); }}}[row[1]]};
        surface.log = &m_log;
        decoder->setVideoSurface(&surface);
        connect(decoder.get(), &QFLDecoder::statusChanged, this,
                [this](QFLDecoder::Status status) { m_log.note("    LE  S"[status]); });
        connect(decoder.get(), &QFLDecoder::outputFormatChanged, this, [this] { m_log.note('F'); });
        connect(decoder.get(), &QFLDecoder::endOfStream, this, [this] { m_log.note('e'); });
        run(decoder, row,
            {start, [&] { decoder->decode(keyFrame(1)); }, [&] { decoder->decode(keyFrame(2)); },
             [&] { decoder->drain(); }, start, [&] { decoder->stop(); }});
    }

    // The same with an encoder and the calls ?[Kd.] and /(Nn:) to two sinks. X: encoded frame. After
    // the drain there is another picture, then another start. "restart" stops on another thread.
    void actsInEncoding_data()
    {
        addRows({"- nothing S?[/(+KNXdnX.:]?[K)/(NXL])S?[/(+6", "S delete L-",
                 "S start LS?[/(+-KNXdnX.:]?[K)/(NXL])S?[/(+6", "S?[ delete ]L-",
                 "S?[ start L]S?[/(+-KNXdnX.:]?[K)/(NXL])S?[/(+6",
                 "S?[ unlink ]/(+NXnX:)/(NXL)S/(+6", "S?[/(+K delete ]L)",
                 "S?[/(+K start L])S?[/(+KNX.:]?[K)/(NXL])S?[/(+6",
                 "S?[/(+K restart ])S?[/(+LKNX.:]?[K)/(NXL])S?[/(+6",
                 "S?[/(+K unlink ]NXnX:)/(NXL)S/(+6",
                 "S?[/(+K relink ]?[NXKNX.:]?[K)/(NXL])S?[/(+6", "S?[/(+KNX delete ]L)",
                 "S?[/(+KNXdnX. delete ]L)", "S?[/(+KNXdnX.:]?[K)/(NXL delete ])-",
                 "S?[/(+KNXdnX.:]?[K)/(NXL start ])S?[/(+-6",
                 "S?[/(+KNXdnX.:]?[K)/(NXL] start )S?[/(+-6"});
    }

    void actsInEncoding()
    {
        QFETCH(QList<QByteArray>, row);
        auto encoder = std::make_unique<QFLEncoder>();
        TestSink sinks[2];
        QImage image(2, 1, QImage::Format_RGB32);
        image.fill(Qt::red);
        const QVideoFrame picture(image);
        QVideoSurfaceFormat format(picture.size(), picture.pixelFormat());
        format.setFrameRate(25);
        const auto start = [&] { m_log.note(encoder->start(format) ? '+' : '-'); };
        const auto forget = [&] {
            for (TestSink &sink : sinks)
                sink.QFLSink::unlink(encoder.get());
            encoder.reset();
        };
        const auto restart = [&] {
            std::thread([&] { encoder->stop(); }).join();
            start();
        };
        m_log = {{},
                 row[0],
                 Actions {{"delete", forget},
                          {"stop", [&] { encoder->stop(); }},
                          {"start", start},
                          {"restart", restart},
                          {"unlink", [&] { sinks[0].unlink(); }},
                          {"relink", [&] { sinks[0].link(encoder.get()); }}}[row[1]]};
        for (int index : {1, 0}) {
            sinks[index].log = &m_log;
            sinks[index].names = index == 0 ? "?[Kd.]" : "/(Nn:)";
            QVERIFY(sinks[index].link(encoder.get()));
        }
        connect(encoder.get(), &QFLEncoder::statusChanged, this,
                [this](QFLEncoder::Status status) { m_log.note("   L  S"[status]); });
        connect(encoder.get(), &QFLEncoder::encodedVideoFrame, this, [this] { m_log.note('X'); });
        const auto encode = [&] { encoder->encode(picture); };
        run(encoder, row, {start, encode, encode, [&] { encoder->drain(); }, encode, start});
        if (encoder)
            forget();
    }

    void failingSurface_data()
    {
        addRows({"[PP delete ] skip,skip", "x?x[PP! delete  refuse,refuse,show,fail",
                 "[P![P[PP[PP! delete  fail,fail,skip,fail,show,fail"});
    }

    // A failure ('!', or '?' of the start) is told once, until a picture is shown again.
    void failingSurface()
    {
        QFETCH(QList<QByteArray>, row);
        auto decoder = std::make_unique<QFLDecoder>();
        TestSurface surface;
        m_log = {{}, row[0], [&] { decoder.reset(); }};
        surface.log = &m_log;
        decoder->setVideoSurface(&surface);
        connect(decoder->service()->requestControl<QFLDecodeControl *>(), &QFLDecodeControl::error,
                this, [this](QFLDecoder::Error code) {
                    m_log.note(code == QFLDecoder::ResourceError ? '!' : '?');
                });
        QVideoEncoderSettings settings;
        settings.setCodec(QStringLiteral("RLE"));
        QList<std::function<void()>> steps {[&] { QVERIFY(decoder->start(settings)); }};
        for (const QByteArray &plan : row[3].split(',')) {
            steps.append([&surface, &decoder, plan] {
                surface.plan = plan;
                QVERIFY(decoder->decode(keyFrame(1)));
            });
        }
        run(decoder, row, steps);
    }

private:
    using Actions = QMap<QByteArray, std::function<void()>>;

    static void addRows(const QList<QByteArray> &rows)
    {
        QTest::addColumn<QList<QByteArray>>("row");
        for (const QByteArray &row : rows)
            QTest::newRow(row) << row.split(' ');
    }

    // Takes the steps for as long as there is an object, and puts its status behind the log.
    template<typename Object>
    void run(const std::unique_ptr<Object> &object, const QList<QByteArray> &row,
             const QList<std::function<void()>> &steps)
    {
        for (const std::function<void()> &step : steps) {
            if (object)
                step();
            QCoreApplication::processEvents();
        }
        const QByteArray status = object ? QByteArray::number(object->status()) : QByteArray();
        QCOMPARE(m_log.text + status, row[0] == "-" ? row[2] : row[0] + row[2]);
    }

    static QFLEncodedVideoFrame keyFrame(char width)
    {
        QByteArray data = QByteArray::fromHex("010000000100ff0000ff");
        data[2] = data[5] = width;
        return {data, {QFLEncodedVideoFrame::Type_Key, 0}};
    }

    Log m_log;
};

QTEST_GUILESS_MAIN(tst_MinimalBackend)

#include "tst_minimalbackend.moc"
