// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Tests the encoder service with real encoders, and the raw frames on their way to it.

#include "encodecontrol.h"
#include "encoderservice.h"
#include "qflcodecqueuecontrol.h"
#include "testmedia.h"
#include "videoformat.h"
#include "videoframe.h"

#include <QtCore/qsemaphore.h>
#include <QtMultimedia/qvideoencodersettingscontrol.h>

#include <atomic>
#include <thread>

using Status = QFLEncoder::Status;

namespace {

constexpr QSize size(320, 240);
const QMap<QString, QByteArray> decoders
        = {{QStringLiteral("H264"), "appsrc name=source ! h264parse ! avdec_h264"},
           {QStringLiteral("H265"), "appsrc name=source ! h265parse ! avdec_h265"},
           {QStringLiteral("VP8"), "appsrc name=source caps=video/x-vp8 ! vp8dec"},
           {QStringLiteral("VP9"), "appsrc name=source caps=video/x-vp9 ! vp9dec"},
           {QStringLiteral("AV1"), "appsrc name=source caps=video/x-av1 ! av1parse ! av1dec"}};

QVideoFrame makeFrame(qint64 time, bool isNoise = false)
{
    QVideoFrame frame(size.width() * size.height() * 3 / 2, size, size.width(),
                      QVideoFrame::Format_YUV420P);
    frame.map(QAbstractVideoBuffer::WriteOnly);
    std::fill_n(frame.bits(), frame.mappedBytes(), uchar(0x80));
    for (int index = 0; isNoise && index < size.width() * size.height(); ++index)
        frame.bits()[index] += QRandomGenerator::global()->bounded(32);
    frame.unmap();
    frame.setStartTime(time);
    return frame;
}

QVideoSurfaceFormat surfaceFormat(QVideoFrame::PixelFormat format = QVideoFrame::Format_YUV420P)
{
    QVideoSurfaceFormat result(size, format);
    result.setFrameRate(30);
    return result;
}

QImage toImage(const QByteArray &elements, const QByteArray &input = QByteArray())
{
    return QImage::fromData(collect(elements + " ! videoconvert ! pngenc", {input}).value(0));
}

bool isSimilar(const QColor &a, const QColor &b)
{
    return qAbs(a.red() - b.red()) <= 8 && qAbs(a.green() - b.green()) <= 8
            && qAbs(a.blue() - b.blue()) <= 8;
}

} // namespace

class tst_EncodeControl : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_service = std::make_unique<EncoderService>();
        m_control = m_service->requestControl<QFLEncodeControl *>();
        m_frames = std::make_unique<QSignalSpy>(m_control, &QFLEncodeControl::encodedVideoFrame);
        m_errors = std::make_unique<QSignalSpy>(m_control, &QFLEncodeControl::error);
    }

    // Raw frames pass between Qt and GStreamer without a copy.
    void frameOfABuffer()
    {
        GstVideoInfo info;
        QVERIFY(VideoFormat::toGst(surfaceFormat(), &info));
        GstBufferPointer buffer(gst_buffer_new_allocate(nullptr, info.size, nullptr));
        GstBuffer *const address = buffer.get();
        GstMapInfo map;
        QVERIFY(gst_buffer_map(address, &map, GST_MAP_WRITE));
        const uchar *const pixels = map.data + info.offset[2];
        gst_buffer_unmap(address, &map);
        QVideoFrame frame = VideoFrame::fromGst(address, info, 4711);
        QCOMPARE(frame.startTime(), 4711);
        // What others may read as well cannot be written to.
        QVERIFY(!frame.map(QAbstractVideoBuffer::ReadWrite));
        buffer.reset();
        QVERIFY(frame.map(QAbstractVideoBuffer::ReadWrite));
        QCOMPARE(static_cast<const uchar *>(frame.bits(2)), pixels);
        frame.unmap();
        QString errorText;
        QCOMPARE(VideoFrame::toGst(frame, info, &errorText).get(), address);
        QCOMPARE(errorText, QString());
    }

    void bufferOfAFrame()
    {
        for (const auto format : {QVideoFrame::Format_YUV420P, QVideoFrame::Format_RGB32}) {
            const int bytesPerLine = format == QVideoFrame::Format_RGB32 ? 1344 : 384;
            const QVideoFrame frame(bytesPerLine * 360, size, bytesPerLine, format);
            GstVideoInfo info;
            QVERIFY(VideoFormat::toGst(surfaceFormat(format), &info));
            QString errorText;
            GstBufferPointer buffer = VideoFrame::toGst(frame, info, &errorText);
            GstVideoFrame mapped;
            QVERIFY(gst_video_frame_map(&mapped, &info, buffer.get(), GST_MAP_READ));
            for (int plane = 0; plane < frame.planeCount(); ++plane) {
                QCOMPARE(static_cast<const uchar *>(mapped.data[plane]), frame.bits(plane));
                QCOMPARE(GST_VIDEO_FRAME_PLANE_STRIDE(&mapped, plane), frame.bytesPerLine(plane));
            }
            gst_video_frame_unmap(&mapped);
            QVERIFY(frame.isMapped());
            buffer.reset();
            QVERIFY(!frame.isMapped());
        }
    }

    // Qt's own conversion says what colour the picture has, where there is one.
    void pixelFormats()
    {
        const auto formats = m_control->supportedPixelFormats();
        QCOMPARE(formats.size(), 24);
        for (QVideoFrame::PixelFormat format : formats) {
            GstVideoInfo info;
            QVERIFY(VideoFormat::toGst(surfaceFormat(format), &info));
            const QByteArray source
                    = "videotestsrc num-buffers=1 pattern=solid-color "
                      "foreground-color=0xffa06020 ! video/x-raw,width=320,height=240,format="
                    + QByteArray(gst_video_format_to_string(GST_VIDEO_INFO_FORMAT(&info)));
            const QByteArray bytes = collect(source).value(0);
            const GstBufferPointer buffer(gst_buffer_new_memdup(bytes.data(), gsize(bytes.size())));
            const QVideoFrame raw = VideoFrame::fromGst(buffer.get(), info, 0);
            const QColor made = toImage(source).pixelColor(9, 9);
            const QImage read = raw.image();
            QVERIFY(read.isNull() || isSimilar(read.pixelColor(9, 9), made));
            QVERIFY(m_control->start(surfaceFormat(format)));
            encode(raw);
            const QColor decoded = toImage(decoders[QStringLiteral("H264")], lastFrame().data())
                                           .pixelColor(9, 9);
            QVERIFY2(isSimilar(decoded, made), qPrintable(decoded.name() + made.name()));
        }
    }

    void encoders_data()
    {
        QTest::addColumn<QString>("codec");
        QTest::addColumn<QSize>("resolution");
        QTest::newRow("") << QStringLiteral("H264") << QSize();
        QTest::newRow("H264") << QStringLiteral("H264") << QSize(160, 160);
        QTest::newRow("VP8") << QStringLiteral("VP8") << QSize(640, 480);
        for (const CodecElement &element : CodecElements::encoders())
            QTest::newRow(element.factoryName) << element.codec << QSize();
    }

    // Every encoder gives zero delay, a key frame on request, and all frames when it is drained.
    void encoders()
    {
        QFETCH(QString, codec);
        QFETCH(QSize, resolution);
        QSignalSpy ends(m_control, &QFLEncodeControl::endOfStream);
        set(QString::fromLatin1(QTest::currentDataTag()), resolution);
        QVERIFY(m_control->start(surfaceFormat()));
        encodeGray(62);
        // Every two seconds there is a key frame anyway.
        QCOMPARE(types(), QByteArray("K" + QByteArray("d").repeated(59) + "Kd"));
        m_control->flush();
        for (int run = 1; run <= 2; ++run) {
            m_frames->clear();
            encodeGray(2);
            QVERIFY(m_control->encode(makeFrame(m_time += 33333)));
            m_control->drain();
            QVERIFY(!m_control->encode(makeFrame(m_time)));
            QVERIFY(ends.wait());
            QCOMPARE(types(), QByteArray("Kdd"));
        }
        const QByteArray data = m_frames->first().first().value<QFLEncodedVideoFrame>().data();
        QCOMPARE(data.startsWith(QByteArray::fromHex("00000001")),
                 codec.startsWith(QLatin1String("H26")));
        QCOMPARE(toImage(decoders[codec], data).size(), resolution.isEmpty() ? size : resolution);
    }

    // Times survive whatever they are, and frames that come from any thread come out in this one.
    void timesAndThreads()
    {
        QVERIFY(m_control->start(surfaceFormat()));
        for (qint64 time : {5000000, 5033333, 5033333, 90000000, 17, 0}) {
            std::thread([=] { m_control->encode(makeFrame(time)); }).join();
            QVERIFY(m_frames->wait());
            QCOMPARE(lastFrame().meta().timestamp, quint64(time));
        }
        const quint64 before = quint64(g_get_monotonic_time());
        encode(makeFrame(-1));
        const quint64 time = lastFrame().meta().timestamp;
        QVERIFY(before <= time && time <= quint64(g_get_monotonic_time()));
    }

    // A camera may do all this on a thread of its own, which waits for nothing.
    void runsOfAnotherThread()
    {
        QSignalSpy statuses(m_control, &QFLEncodeControl::statusChanged);
        QSemaphore begun;
        connect(m_control, &QFLEncodeControl::statusChanged, this, [&](Status status) {
            if (status == Status::StartedStatus)
                begun.release();
        });
        std::atomic<int> accepted = 0;
        std::thread camera([&] {
            for (int run = 0; run < 5; ++run) {
                m_control->start(surfaceFormat());
                accepted += begun.tryAcquire(1, 5000) && m_control->encode(makeFrame(run));
                m_control->stop();
            }
        });
        const bool haveRun = QTest::qWaitFor([&] { return statuses.count() == 20; }, 30000);
        camera.join();
        QVERIFY(haveRun && m_control->status() == Status::LoadedStatus && m_errors->isEmpty());
        QCOMPARE(accepted, 5);
    }

    void deletedWhenTheStatusChanges()
    {
        for (const Status last : {Status::StartingStatus, Status::StartedStatus,
                                  Status::StoppingStatus, Status::LoadedStatus}) {
            init();
            connect(m_control, &QFLEncodeControl::statusChanged, this, [=](Status status) {
                if (status == last)
                    m_service.reset();
            });
            QCOMPARE(m_control->start(surfaceFormat()),
                     last != Status::StartingStatus && last != Status::StartedStatus);
            if (m_service)
                m_control->stop();
            QVERIFY(!m_service);
        }
    }

    void lifeOfARun()
    {
        QVector<Status> statuses;
        connect(m_control, &QFLEncodeControl::statusChanged, this,
                [&](Status status) { statuses.append(status); });
        const QVector<Status> run = {Status::StartingStatus, Status::StartedStatus,
                                     Status::StoppingStatus, Status::LoadedStatus};
        QVERIFY(!m_control->encode(makeFrame(0)));
        for (int count = 0; count < 2; ++count) {
            QVERIFY(m_control->start(surfaceFormat()));
            encodeGray(2);
        }
        QVERIFY(m_control->encode(makeFrame(m_time)));
        m_control->stop();
        QVERIFY(!m_control->encode(makeFrame(0)));
        QCoreApplication::processEvents();
        QCOMPARE(types(), QByteArray("KdKd"));

        // What is on its way at the time of a flush doesn't come out, apart from a key frame.
        QVERIFY(m_control->start(surfaceFormat()));
        encodeGray(2);
        QVERIFY(m_control->encode(makeFrame(1, true)));
        QVERIFY(m_control->encode(makeFrame(2, true)));
        m_control->flush();
        QVERIFY(m_control->encode(makeFrame(3)));
        QTRY_COMPARE(lastFrame().meta().timestamp, quint64(3));
        QCOMPARE(types().mid(4, 3), QByteArray("KdK"));
        m_control->stop();
        QCOMPARE(statuses, run + run + run);
        QVERIFY(m_errors->isEmpty());
    }

    // The application may stop the run when it is asked for more, which a flush leads to.
    void stopsWhenAsked()
    {
        auto *queue = m_service->requestControl<QFLCodecQueueControl *>();
        QSignalSpy requests(queue, &QFLCodecQueueControl::needData);
        connect(queue, &QFLCodecQueueControl::needData, m_control, &QFLEncodeControl::stop);
        QVERIFY(m_control->start(surfaceFormat()));
        QVERIFY(m_control->encode(makeFrame(1, true)) && m_control->encode(makeFrame(2, true)));
        m_control->flush();
        QTRY_COMPARE(m_control->status(), Status::LoadedStatus);
        QCOMPARE(requests.first().first().toInt(), queue->capacity());
    }

    void bitRate_data() { encoders_data(); }

    void bitRate()
    {
        for (int bitRate : {400000, 1200000, 400000}) {
            set(QString::fromLatin1(QTest::currentDataTag()), QSize(), 0, bitRate);
            QVERIFY(m_control->status() == Status::StartedStatus
                    || m_control->start(surfaceFormat()));
            int bits = 0;
            for (int count = 0; count < 60; ++count) {
                encode(makeFrame(m_time += 33333, true));
                bits += lastFrame().data().size() * (count >= 30 ? 8 : 0);
            }
            QVERIFY2(bits > 0.75 * bitRate && bits < 1.25 * bitRate,
                     qPrintable(QString::number(bits)));
        }
    }

    void refusedStarts()
    {
        using Row = std::tuple<QSize, QVideoFrame::PixelFormat, QSize, const char *>;
        const auto yuv = QVideoFrame::Format_YUV420P;
        for (const auto &[frames, pixels, resolution, text] :
             {Row(QSize(321, 240), yuv, QSize(), "321x240"),
              Row(QSize(8, 240), yuv, QSize(), "8x240"),
              Row(QSize(320, 8192), yuv, QSize(), "320x8192"), Row(QSize(), yuv, QSize(), "-1x-1"),
              Row(size, yuv, QSize(160, 121), "160x121"),
              Row(size, QVideoFrame::Format_Jpeg, QSize(), "Format_Jpeg")}) {
            set(QString(), QSize());
            QVERIFY(m_control->start(surfaceFormat()));
            encodeGray(1);
            set(QString(), resolution);
            QVERIFY(!m_control->start(QVideoSurfaceFormat(frames, pixels)));
            takeError(QFLEncoder::FormatError, QLatin1String(text));
            QCOMPARE(m_control->status(), Status::LoadedStatus);
        }

        auto *const settings = m_service->requestControl<QVideoEncoderSettingsControl *>();
        bool isContinuous = false;
        const auto rates = settings->supportedFrameRates(settings->videoSettings(), &isContinuous);
        QVERIFY(isContinuous);
        for (qreal rate : {rates.first(), rates.last()}) {
            set(QString(), QSize(), rate);
            QVERIFY(m_control->start(surfaceFormat()));
            encodeGray(1);
        }
        for (qreal rate : {1e10, 1e-9, -1.0, qQNaN(), qInf()}) {
            set(QString(), QSize(), rate);
            QVERIFY(!m_control->start(surfaceFormat()));
            takeError(QFLEncoder::FormatError, QStringLiteral("frames a second"));
            set(QString(), QSize());
            QVideoSurfaceFormat format = surfaceFormat();
            format.setFrameRate(rate);
            QVERIFY(m_control->start(format));
            encodeGray(1);
        }
        set(QStringLiteral("Nope"), QSize());
        QVERIFY(!m_control->start(surfaceFormat()));
        takeError(QFLEncoder::ResourceError, QStringLiteral("\"Nope\""));
        set(QString(), QSize());
        QVERIFY(!callWithout("h264parse", [this] { return m_control->start(surfaceFormat()); }));
        takeError(QFLEncoder::ResourceError, QStringLiteral("h264parse"));
        QVERIFY(m_control->start(surfaceFormat()));
        encodeGray(1);
    }

    void refusedFrames()
    {
        using Row = std::tuple<QVideoFrame, const char *>;
        const auto yuv = QVideoFrame::Format_YUV420P;
        const auto rgb = QVideoFrame::Format_RGB32;
        for (const auto &[frame, text] :
             {Row({307200, size, 1276, rgb}, "1276"),
              Row({305920, size, 1280, rgb}, "305920 bytes instead of 307200"),
              Row({115200, size, 320, QVideoFrame::Format_YV12}, "Format_YV12"),
              Row({115200, QSize(480, 160), 480, yuv},
                  "480x160 Format_YUV420P, but 320x240 Format_YUV420P was")}) {
            const bool isRgb = frame.pixelFormat() == rgb;
            QVERIFY(m_control->start(surfaceFormat(isRgb ? rgb : yuv)));
            QVERIFY(!m_control->encode(frame));
            QVERIFY(!m_control->encode(frame));
            QVERIFY(!m_control->encode(QVideoFrame()));
            takeError(QFLEncoder::FormatError, QLatin1String(text));
        }
        encodeGray(1);
        const QVideoFrame noise = makeFrame(m_time + 33333, true);
        int accepted = 0;
        while (accepted < 100 && m_control->encode(noise))
            ++accepted;
        QVERIFY(accepted >= 2 && accepted < 100);
        QTRY_COMPARE(m_frames->count(), 1 + accepted);
    }

private:
    void set(const QString &codec, const QSize &resolution, qreal frameRate = 0, int bitRate = -1)
    {
        QVideoEncoderSettings settings;
        settings.setCodec(codec);
        settings.setResolution(resolution);
        settings.setFrameRate(frameRate);
        settings.setBitRate(bitRate);
        auto *const control = m_service->requestControl<QVideoEncoderSettingsControl *>();
        control->setVideoSettings(settings);
        QCOMPARE(control->videoSettings(), settings);
    }

    QFLEncodedVideoFrame lastFrame() const
    {
        return m_frames->last().first().value<QFLEncodedVideoFrame>();
    }

    QByteArray types() const
    {
        QByteArray result;
        for (const QVariantList &arguments : *m_frames) {
            const auto type = arguments.first().value<QFLEncodedVideoFrame>().meta().type;
            result += type == QFLEncodedVideoFrame::Type_Key ? 'K' : 'd';
        }
        return result;
    }

    // Waits for the encoded frame, so that each raw frame is dealt with before the next one comes.
    void encode(const QVideoFrame &frame)
    {
        QVERIFY(m_control->encode(frame));
        QVERIFY(m_frames->wait());
    }

    void encodeGray(int count)
    {
        for (; count > 0; --count)
            encode(makeFrame(m_time += 33333));
    }

    void takeError(QFLEncoder::Error error, const QString &text)
    {
        QCOMPARE(m_errors->count(), 1);
        QCOMPARE(m_errors->first().first().value<QFLEncoder::Error>(), error);
        QVERIFY(m_errors->takeFirst().last().toString().contains(text));
    }

    std::unique_ptr<QMediaService> m_service;
    QFLEncodeControl *m_control = nullptr;
    std::unique_ptr<QSignalSpy> m_frames;
    std::unique_ptr<QSignalSpy> m_errors;
    qint64 m_time = 0;
};

QTEST_GUILESS_MAIN(tst_EncodeControl)

#include "tst_encodecontrol.moc"
