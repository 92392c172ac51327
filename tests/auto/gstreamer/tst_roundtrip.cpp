// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Sends pictures through each encoder and its decoders, as an application uses them.

#include "qflcodecinfo.h"
#include "qfldecoder.h"
#include "qflencoder.h"
#include "testmedia.h"

#include <algorithm>
#include <cmath>
#include <list>

namespace {

const QByteArray clip
        = "/usr/share/forensics-samples/original-files/movie1/VID_20191220_170832.mp4";
const int pictureCount = 10;

/*! Calls \a visit for each binary digit and the rows of pixels that it is drawn with. */
template<typename Visit> void visitDigits(const QSize &size, Visit visit)
{
    const int side = size.height() / 12;
    for (int digit = 0; digit < 8; ++digit) {
        for (int y = side; y < 2 * side; ++y)
            visit(digit, y * size.width() + side * (digit + 1), side);
    }
}

int drawnNumber(const QByteArray &picture, const QSize &size)
{
    int number = 0;
    visitDigits(size, [&](int digit, int begin, int length) {
        if (uchar(picture.at(begin + length / 2)) > 125)
            number |= 1 << digit;
    });
    return number;
}

/*! Each has its number drawn in, which isn't its index. */
Stream makePictures(const QSize &size, bool isClip)
{
    const QByteArray text = isClip
            ? "filesrc location=" + clip + " ! qtdemux ! h264parse ! avdec_h264"
            : QByteArray("videotestsrc pattern=zone-plate kx2=8 ky2=8 kt=4");
    Stream pictures = collect(text + " ! identity eos-after=" + QByteArray::number(pictureCount + 1)
                              + " ! videoconvertscale add-borders=false ! video/x-raw, format=I420"
                                ", pixel-aspect-ratio=1/1, width="
                              + QByteArray::number(size.width())
                              + ", height=" + QByteArray::number(size.height()));
    pictures = pictures.mid(0, pictureCount);
    for (int i = 0; i < pictures.size(); ++i)
        visitDigits(size, [&](int digit, int begin, int length) {
            const bool isWhite = (3 + 25 * i) >> digit & 1;
            std::fill_n(pictures[i].begin() + begin, length, char(isWhite ? 235 : 16));
        });
    return pictures;
}

QVideoFrame toFrame(const QByteArray &picture, const QSize &size, qint64 time)
{
    QVideoFrame frame(picture.size(), size, size.width(), QVideoFrame::Format_YUV420P);
    frame.map(QAbstractVideoBuffer::WriteOnly);
    std::copy(picture.begin(), picture.end(), frame.bits());
    frame.unmap();
    frame.setStartTime(time);
    return frame;
}

/*! The ratio of peak signal to noise of the brightness, in decibels. */
double similarity(const QByteArray &a, const QByteArray &b, const QSize &size)
{
    const int count = size.width() * size.height();
    qint64 squares = 1;
    for (int i = 0; i < count; ++i) {
        const int difference = uchar(a.at(i)) - uchar(b.at(i));
        squares += difference * difference;
    }
    return 10 * std::log10(255.0 * 255.0 * count / squares);
}

struct Receiver
{
    explicit Receiver(const QFLCodecInfo &info) : name(QString::fromLatin1(info.codecId()))
    {
        QVideoEncoderSettings settings;
        settings.setCodec(name);
        decoder.setVideoSurface(&surface);
        isStarted = decoder.start(settings);
    }
    ~Receiver() { decoder.setVideoSurface(nullptr); }

    /*! What is wrong with the picture that comes out for \a frame; nothing if it is \a sent. */
    QString decode(const QFLEncodedVideoFrame &frame, const QByteArray &sent, const QSize &size)
    {
        surface.frames.clear();
        if (!isStarted || !decoder.decode(frame))
            return name + QLatin1String(": refused ") + decoder.errorString();
        if (!waitFor([this] { return !surface.frames.isEmpty(); }))
            return name + QLatin1String(": no picture ") + decoder.errorString();
        const quint64 time = quint64(surface.frames.last().startTime());
        picture = pixels(surface.frames.last());
        if (surface.frames.size() != 1 || picture.size() != sent.size())
            return name + QLatin1String(": more than a picture, or a wrong size");
        const double decibels = similarity(picture, sent, size);
        const int number = drawnNumber(picture, size);
        if (time == frame.meta().timestamp && number == drawnNumber(sent, size) && decibels >= 30)
            return QString();
        return QStringLiteral("%1: number %2 at %3, %4 dB")
                .arg(name)
                .arg(number)
                .arg(time)
                .arg(decibels);
    }

    QString name;
    RecordingSurface surface;
    QFLDecoder decoder;
    bool isStarted = false;
    QByteArray picture;
};

using Infos = QList<QFLCodecInfo>;

bool isHardware(const QFLCodecInfo &info)
{
    return info.isHardwareAccelerated();
}

/*! The names of the hardware elements that can be opened, by what GStreamer says they are. */
QStringList registeredHardware()
{
    const QRegularExpression hardware(QStringLiteral("^Codec/(En|De)coder/Video/Hardware"));
    const QRegularExpression types(QStringLiteral("video/x-(h264|h265|vp8|vp9|av1)\\b"));
    QStringList names;
    GList *const features
            = gst_registry_get_feature_list(gst_registry_get(), GST_TYPE_ELEMENT_FACTORY);
    for (const GList *node = features; node; node = node->next) {
        auto *const factory = static_cast<GstElementFactory *>(node->data);
        const QString name = QString::fromLatin1(GST_OBJECT_NAME(factory));
        QString pads;
        for (auto *pad = gst_element_factory_get_static_pad_templates(factory); pad;
             pad = pad->next)
            pads += QLatin1String(
                            static_cast<GstStaticPadTemplate *>(pad->data)->static_caps.string)
                    + QLatin1Char('\n');
        const char *const kind
                = gst_element_factory_get_metadata(factory, GST_ELEMENT_METADATA_KLASS);
        if (!hardware.match(QString::fromLatin1(kind)).hasMatch() || !types.match(pads).hasMatch()
            || name.startsWith(QLatin1String("omx")))
            continue;
        const GstElementPointer element(gst_element_factory_create(factory, nullptr));
        if (element && gst_element_set_state(element.get(), GST_STATE_READY))
            names.append(name);
        if (element)
            gst_element_set_state(element.get(), GST_STATE_NULL);
    }
    gst_plugin_feature_list_free(features);
    names.sort();
    return names;
}

} // namespace

class tst_RoundTrip : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(gst_init_check(nullptr, nullptr, nullptr));
        QVERIFY2(QFile::exists(QString::fromLatin1(clip)), "forensics-samples-files is missing");
    }

    void roundTrip_data()
    {
        QTest::addColumn<QByteArray>("encoder");
        QTest::addColumn<QSize>("size");
        QTest::addColumn<bool>("isClip");
        for (const QSize &size : sizes) {
            for (const QFLCodecInfo &encoder : QFLCodecInfo::availableEncoders()) {
                for (const bool isClip : {false, true})
                    QTest::addRow("%s %d %s", encoder.codecId().constData(), size.height(),
                                  isClip ? "clip" : "pattern")
                            << encoder.codecId() << size << isClip;
            }
        }
    }

    // A stream is decoded by all decoders at once, and they must agree on every pixel.
    void roundTrip()
    {
        QFETCH(QByteArray, encoder);
        QFETCH(QSize, size);
        QFETCH(bool, isClip);
        pass(QFLCodecInfo(encoder), QFLCodecInfo::availableDecoders(QFLCodecInfo(encoder).codec()),
             size, isClip);
    }

    void hardware()
    {
        const Infos encoders = QFLCodecInfo::availableEncoders();
        const Infos decoders = QFLCodecInfo::availableDecoders();
        QVERIFY(std::is_partitioned(encoders.begin(), encoders.end(), isHardware));
        QVERIFY(std::is_partitioned(decoders.begin(), decoders.end(), isHardware));
        QStringList names;
        for (const QFLCodecInfo &info : QFLCodecInfo::availableEncoders(QString(), true)
                     + QFLCodecInfo::availableDecoders(QString(), true))
            names.append(QString::fromLatin1(info.codecId()));
        names.sort();
        QCOMPARE(names, registeredHardware());
        if (names.isEmpty())
            qInfo("There is no hardware encoder or decoder on this machine.");
        else
            qInfo("Hardware: %s", qPrintable(names.join(QLatin1Char(' '))));
        for (const char *codec : {"H264", "H265", "VP8", "VP9"})
            QVERIFY(!QFile::exists(QStringLiteral("/dev/nvidia0"))
                    || isHardware(
                            QFLCodecInfo::availableDecoders(QString::fromLatin1(codec)).value(0)));
        for (const QFLCodecInfo &encoder : encoders) {
            const Infos matching = QFLCodecInfo::availableDecoders(encoder.codec());
            if (!isHardware(encoder) && !std::any_of(matching.begin(), matching.end(), isHardware))
                continue;
            for (const QSize &size : sizes) {
                pass(encoder, matching, size, true);
                pass(encoder, matching, size, false);
            }
        }
    }

private:
    const QVector<QSize> sizes = {{320, 240}, {640, 360}, {1280, 720}, {1920, 1080}};

    void pass(const QFLCodecInfo &encoderInfo, const Infos &decoderInfos, const QSize &size,
              bool isClip)
    {
        const Stream pictures = makePictures(size, isClip);
        QCOMPARE(pictures.size(), pictureCount);
        QVERIFY(!decoderInfos.isEmpty());
        std::list<Receiver> receivers(decoderInfos.begin(), decoderInfos.end());
        QVector<QFLEncodedVideoFrame> encoded;
        QFLEncoder encoder;
        connect(&encoder, &QFLEncoder::encodedVideoFrame,
                [&](const QFLEncodedVideoFrame &frame) { encoded.append(frame); });
        QVideoEncoderSettings settings;
        settings.setCodec(QString::fromLatin1(encoderInfo.codecId()));
        settings.setEncodingMode(QMultimedia::ConstantBitRateEncoding);
        settings.setBitRate(qMax(2000000, size.width() * size.height() * 12));
        encoder.setVideoSettings(settings);
        QVideoSurfaceFormat format(size, QVideoFrame::Format_YUV420P);
        format.setFrameRate(30);
        QVERIFY2(encoder.start(format), qPrintable(encoder.errorString()));
        for (int i = 0; i < pictureCount; ++i) {
            // The next picture is sent when this one has arrived, so nothing may hold it back.
            const qint64 time = (qint64(1) << 40) + 33333 * i;
            QVERIFY(encoder.encode(toFrame(pictures.at(i), size, time)));
            QVERIFY2(waitFor([&] { return encoded.size() > i; }),
                     qPrintable(encoder.errorString()));
            QCOMPARE(encoded.size(), i + 1);
            QCOMPARE(encoded.last().meta().timestamp, quint64(time));
            for (Receiver &receiver : receivers) {
                QCOMPARE(receiver.decode(encoded.last(), pictures.at(i), size), QString());
                QVERIFY(receiver.picture == receivers.front().picture);
            }
        }
    }
};

QTEST_GUILESS_MAIN(tst_RoundTrip)

#include "tst_roundtrip.moc"
