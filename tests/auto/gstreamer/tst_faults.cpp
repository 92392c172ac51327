// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Gives each decoder streams that are damaged on their way.

#include "qflcodecinfo.h"
#include "qfldecoder.h"
#include "qflencodedvideoframe.h"
#include "testmedia.h"

#include <random>

enum Fault { Drop, Flip, Truncate, Garbage, Empty, SizeChange };

class tst_Faults : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(gst_init_check(nullptr, nullptr, nullptr));
        m_pictures = produce("identity");
        for (const QString &codec : streamEncoders.keys()) {
            m_streams[codec] = produce(streamEncoders[codec]);
            m_smallStreams[codec] = produce(streamEncoders[codec], 160, 128);
        }
    }

    void recovery_data()
    {
        QTest::addColumn<QByteArray>("decoder");
        QTest::addColumn<int>("fault");
        const QVector<const char *> names
                = {"drop", "flip", "truncate", "garbage", "empty", "size"};
        for (const QFLCodecInfo &decoder : QFLCodecInfo::availableDecoders()) {
            for (int fault = Drop; fault <= SizeChange; ++fault)
                QTest::addRow("%s %s", decoder.codecId().constData(), names.at(fault))
                        << decoder.codecId() << fault;
        }
    }

    // The key frame may come right behind the damaged ones, before the decoder has complained.
    void recovery()
    {
        QFETCH(QByteArray, decoder);
        QFETCH(int, fault);
        const QString codec = QFLCodecInfo(decoder).codec();
        const Stream stream = m_streams[codec];
        QVideoEncoderSettings settings;
        settings.setCodec(QString::fromLatin1(decoder));
        for (quint32 seed = 0; seed < 8; ++seed) {
            std::mt19937 random(seed);
            RecordingSurface surface;
            QFLDecoder receiver;
            receiver.setVideoSurface(&surface);
            QSignalSpy errors(&receiver, &QFLDecoder::errorChanged);
            const auto decode = [&](QByteArray data, int time) {
                const auto type = QFLEncodedVideoFrame::Type_Intra;
                return receiver.decode(QFLEncodedVideoFrame(data, {type, quint64(time)}));
            };
            const auto shows = [&](int time, int milliseconds = 20000) {
                return waitFor([&] { return surface.times().contains(time); }, milliseconds);
            };
            QVERIFY(receiver.start(settings));
            QVERIFY(decode(stream.at(0), 0) && shows(0));
            for (int i = 1; i < 10; ++i) {
                const bool isHit = random() % 4 == 0 || i == 9 - int(seed);
                if (!isHit)
                    decode(stream.at(i), i);
                else if (fault != Drop)
                    decode(damaged(stream.at(i), fault, codec, &random), i);
                // Half of the time, what the decoder complains about is heard in between.
                if (seed % 2)
                    shows(i, 10);
            }
            for (int i = 10; i < 13; ++i) {
                const QByteArray context = QByteArray::number(seed) + ' ' + QByteArray::number(i);
                QVERIFY2(decode(stream.at(i), i) && shows(i), context);
                QCOMPARE(surface.times().last(), qint64(i));
                QVERIFY2(averageDifference(pixels(surface.frames.last()), m_pictures.at(i)) < 1,
                         context);
            }
            QVERIFY(errors.count() <= 1);
            QVERIFY(errors.isEmpty()
                    || receiver.errorString().startsWith(QLatin1String("The data is no ")));
            receiver.setVideoSurface(nullptr);
        }
    }

private:
    QByteArray damaged(QByteArray data, int fault, const QString &codec, std::mt19937 *random) const
    {
        auto &next = *random;
        const auto scramble = [&](int from) {
            for (int i = from; i < data.size(); ++i)
                data[i] = char(next());
        };
        if (fault == Flip) {
            for (int i = 0; i < 4; ++i)
                data[int(next() % uint(data.size()))] = char(next());
        } else if (fault == Truncate) {
            data.truncate(1 + int(next() % uint(data.size())));
        } else if (fault == Garbage) {
            scramble(next() % 2 ? 0 : 20);
        } else if (fault == Empty) {
            data.clear();
        } else {
            data = m_smallStreams[codec].at(int(next() % 5));
        }
        return data;
    }

    Stream m_pictures;
    QMap<QString, Stream> m_streams;
    QMap<QString, Stream> m_smallStreams;
};

QTEST_GUILESS_MAIN(tst_Faults)

#include "tst_faults.moc"
