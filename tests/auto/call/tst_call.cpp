// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Tests the call from the outside: real calls, their pictures, and how each failure ends.

#include <QtCore/qprocess.h>
#include <QtCore/qregularexpression.h>
#include <QtCore/qtemporarydir.h>
#include <QtGui/qimage.h>
#include <QtNetwork/qudpsocket.h>
#include <QtTest/QtTest>

#include <cmath>
#include <csignal>

namespace {

const QString clip = QStringLiteral(
        "/usr/share/forensics-samples/original-files/movie1/VID_20191220_170832.mp4");
const QSize comparedSize(320, 180);
const double similarDecibels = 27;
const int jitterBufferMilliseconds = 60;

// Sanitizers make decoding and encoding of such pictures too slow for two cores to keep up.
#if defined(FACELINK_SANITIZE)
const double leastShare = 0.7;
const int longestMilliseconds = 1000;
#else
const double leastShare = 0.95;
const int longestMilliseconds = 60;
#endif

// How alike two pictures are, as the peak signal-to-noise ratio over all colours.
double decibels(const QImage &left, const QImage &right)
{
    double squares = 0;
    for (int y = 0; y < left.height(); ++y) {
        const uchar *a = left.constScanLine(y);
        const uchar *b = right.constScanLine(y);
        for (int x = 0; x < left.width() * 3; ++x)
            squares += (a[x] - b[x]) * (a[x] - b[x]);
    }
    const double mean = squares / (3.0 * left.width() * left.height());
    return 10 * std::log10(255.0 * 255.0 / qMax(mean, 1e-9));
}

QImage comparable(const QImage &picture)
{
    return picture.scaled(comparedSize, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
            .convertToFormat(QImage::Format_RGB888);
}

double bestDecibels(const QImage &picture, const QVector<QImage> &references)
{
    const QImage compared = comparable(picture);
    double best = 0;
    for (const QImage &reference : references)
        best = qMax(best, decibels(compared, reference));
    return best;
}

// A port that is free, as is the one after it.
quint16 freePort()
{
    forever {
        QUdpSocket first;
        QUdpSocket second;
        first.bind(QHostAddress::LocalHost, 0, QUdpSocket::DontShareAddress);
        const quint16 next = first.localPort() + 1;
        if (second.bind(QHostAddress::LocalHost, next, QUdpSocket::DontShareAddress))
            return first.localPort();
    }
}

const QString headlessCall = QStringLiteral("\"" FACELINK_CALL "\" --headless ");

// A program that is ended with the test that started it.
class Program : public QProcess
{
public:
    explicit Program(const QString &command)
    {
        QStringList words = splitCommand(command);
        start(words.takeFirst(), words);
    }
    ~Program() override
    {
        kill();
        waitForFinished();
    }
};

} // namespace

class tst_Call : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void loopback_data();
    void loopback();
    void peers_data();
    void peers();
    void failures_data();
    void failures();
    void interrupt();

private:
    void call(const QString &command);
    void compareWithClip(const QImage &picture);
    double value(const char *label) const;
    QString path(const QString &fileName) const { return m_folder.filePath(fileName); }

    QTemporaryDir m_folder;
    QVector<QImage> m_clipPictures;
    int m_exitCode = -1;
    QString m_output;
    QStringList m_errorLines;
};

void tst_Call::initTestCase()
{
    for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        qunsetenv(name);
    QVERIFY2(QFile::exists(clip), "The clip of the package forensics-samples-files is missing.");
    Program decoder(QStringLiteral("ffmpeg -i %1 -vf scale=320:180:flags=area %2")
                            .arg(clip, path(QStringLiteral("%d.png"))));
    QVERIFY(decoder.waitForFinished());
    for (const QFileInfo &file : QDir(m_folder.path()).entryInfoList(QDir::Files))
        m_clipPictures.append(comparable(QImage(file.filePath())));
    QVERIFY(m_clipPictures.size() > 40);
}

void tst_Call::loopback_data()
{
    QTest::addColumn<QString>("codec");
    QTest::newRow("H264") << QStringLiteral("H264");
    QTest::newRow("VP8") << QStringLiteral("VP8");
}

void tst_Call::loopback()
{
    QFETCH(QString, codec);
    const QString snapshot = path(codec + QStringLiteral(".png"));
    call(headlessCall
         + QStringLiteral("--camera-file %1 --codec %2 --duration 8 --snapshot %3")
                   .arg(clip, codec, snapshot));
    QVERIFY2(m_errorLines.isEmpty(), qPrintable(m_errorLines.join(QLatin1Char('\n'))));
    QCOMPARE(m_exitCode, 0);

    QVERIFY(value("frames captured") > 20);
    QVERIFY(value("frames presented") >= leastShare * value("frames captured"));
    QVERIFY(value("frames presented") <= value("frames received"));
    const double median = value("capture to present, median");
    QVERIFY(median > 0 && median < jitterBufferMilliseconds + longestMilliseconds);
    QVERIFY(value("capture to present, 95th percentile") >= median);

    const QImage picture(snapshot);
    QCOMPARE(picture.size(), QSize(1280, 720));
    compareWithClip(picture);
}

// The data tag is the codec.
void tst_Call::peers_data()
{
    QTest::addColumn<QString>("sending");
    QTest::addColumn<QString>("receiving");

    QTest::newRow("H264")
            << QStringLiteral("ffmpeg -re -stream_loop -1 -i CLIP -an -vf hflip,scale=640:360"
                              " -c:v libx264 -preset superfast -tune zerolatency -g 30"
                              " -f rtp rtp://127.0.0.1:TO_CALL")
            << QStringLiteral("gst-launch-1.0 udpsrc port=FROM_CALL"
                              " caps=application/x-rtp,media=video,clock-rate=90000,"
                              "encoding-name=H264,payload=96"
                              " ! rtph264depay wait-for-keyframe=true ! avdec_h264"
                              " ! videoconvert ! pngenc snapshot=true ! filesink location=PICTURE");
    QTest::newRow("VP8") << QStringLiteral(
            "gst-launch-1.0 filesrc location=CLIP ! decodebin3 ! videoconvertscale"
            " ! video/x-raw,width=640,height=360 ! videoflip video-direction=horiz"
            " ! imagefreeze is-live=true"
            " ! vp8enc deadline=1 cpu-used=8 keyframe-max-dist=10 target-bitrate=2000000"
            " ! rtpvp8pay ! udpsink host=127.0.0.1 port=TO_CALL")
                         << QStringLiteral("ffmpeg -y -protocol_whitelist file,udp,rtp -i SDP"
                                           " -frames:v 1 PICTURE");
}

void tst_Call::peers()
{
    const QString codec = QString::fromLatin1(QTest::currentDataTag());
    QFETCH(QString, sending);
    QFETCH(QString, receiving);
    const QString toCall = QString::number(freePort());
    const QString fromCall = QString::number(freePort());
    const QString received = path(codec + QStringLiteral("-received.png"));
    const QString snapshot = path(codec + QStringLiteral("-snapshot.png"));
    QFile description(path(codec + QStringLiteral(".sdp")));
    QVERIFY(description.open(QFile::WriteOnly));
    description.write("v=0\no=- 0 0 IN IP4 127.0.0.1\ns=call\nc=IN IP4 127.0.0.1\nt=0 0\nm=video "
                      + fromCall.toLatin1() + " RTP/AVP 96\na=rtpmap:96 " + codec.toLatin1()
                      + "/90000\n");
    description.close();

    for (QString *command : {&sending, &receiving}) {
        command->replace(QLatin1String("CLIP"), clip)
                .replace(QLatin1String("TO_CALL"), toCall)
                .replace(QLatin1String("FROM_CALL"), fromCall)
                .replace(QLatin1String("PICTURE"), received)
                .replace(QLatin1String("SDP"), description.fileName());
    }
    const Program sender(sending);
    Program receiver(receiving);
    call(headlessCall
         + QStringLiteral("--camera-file %1 --codec %2 --listen %3 --peer 127.0.0.1:%4"
                          " --duration 8 --snapshot %5")
                   .arg(clip, codec, toCall, fromCall, snapshot));
    QVERIFY2(m_errorLines.isEmpty(), qPrintable(m_errorLines.join(QLatin1Char('\n'))));
    QCOMPARE(m_exitCode, 0);
    QVERIFY(m_output.contains(QLatin1String("capture to present, median: n/a")));

    QVERIFY(receiver.state() == QProcess::NotRunning || receiver.waitForFinished());
    compareWithClip(QImage(received));
    const QImage turnedBack = QImage(snapshot).mirrored(true, false);
    QCOMPARE(turnedBack.size(), QSize(640, 360));
    compareWithClip(turnedBack);
}

void tst_Call::failures_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("text");

    const auto row = [](const char *name, const char *arguments, int exitCode, const char *text) {
        QTest::newRow(name) << headlessCall + QLatin1String(arguments) << exitCode
                            << QString::fromLatin1(text);
    };
    row("unknown option", "--colour", 1, "colour");
    row("bad size", "--size 1280", 1, "--size");
    row("bad bit rate", "--bitrate fast", 1, "--bitrate");
    row("two ways to call", "--loopback --peer 127.0.0.1:5004", 1, "--peer");
    row("unknown camera", "--camera nobody", 2, "'nobody'");
    row("no camera file", "--camera-file FOLDER/none.mp4", 2, "none.mp4");
    row("camera file is no video", "--camera-file /etc/hosts", 2, "/etc/hosts");
    row("unknown codec", "--codec MPEG1", 3, "'MPEG1'");
    row("port in use", "--listen PORT", 4, "PORT");
    row("impossible peer", "--peer not..a..host:5004", 5, "not..a..host");
    row("silent peer", "--listen FREE --peer 127.0.0.1:9 --duration 1", 6, "picture");
    row("snapshot without folder", "--snapshot FOLDER/none/call.png", 7, "call.png");
    QTest::newRow("no display") << QStringLiteral("\"" FACELINK_CALL "\"") << 8
                                << QStringLiteral("--headless");
}

void tst_Call::failures()
{
    QFETCH(QString, command);
    QFETCH(int, exitCode);
    QFETCH(QString, text);
    QUdpSocket occupied;
    QVERIFY(occupied.bind(QHostAddress::LocalHost, 0, QUdpSocket::DontShareAddress));

    const QString port = QString::number(occupied.localPort());
    command.replace(QLatin1String("FOLDER"), m_folder.path())
            .replace(QLatin1String("PORT"), port)
            .replace(QLatin1String("FREE"), QString::number(freePort()));
    call(command);
    QCOMPARE(m_exitCode, exitCode);
    QCOMPARE(m_errorLines.size(), 1);
    QVERIFY(m_errorLines.constFirst().startsWith(QLatin1String("facelink-call: ")));
    QVERIFY2(m_errorLines.constFirst().contains(text.replace(QLatin1String("PORT"), port)),
             qPrintable(m_errorLines.constFirst()));
}

void tst_Call::interrupt()
{
    for (int signal : {SIGINT, SIGTERM}) {
        Program program(headlessCall + QStringLiteral("--camera videotestsrc --size 320x240"));
        QByteArray output;
        while (!output.contains("2 s: ") && program.waitForReadyRead())
            output += program.readAllStandardOutput();
        QVERIFY(!output.contains("frames presented"));
        QCOMPARE(program.state(), QProcess::Running);
        QCOMPARE(::kill(pid_t(program.processId()), signal), 0);
        QVERIFY(program.waitForFinished());
        QCOMPARE(program.exitStatus(), QProcess::NormalExit);
        QCOMPARE(program.exitCode(), 0);
        m_output = QString::fromLocal8Bit(program.readAllStandardOutput());
        QVERIFY(value("frames presented") > 20);
    }
}

void tst_Call::call(const QString &command)
{
    Program program(command);
    QVERIFY(program.waitForFinished());
    QCOMPARE(program.exitStatus(), QProcess::NormalExit);
    m_exitCode = program.exitCode();
    m_output = QString::fromLocal8Bit(program.readAllStandardOutput());
    m_errorLines = QString::fromLocal8Bit(program.readAllStandardError())
                           .split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

// The picture has to be one of the clip's; turned left to right it must not pass for one.
void tst_Call::compareWithClip(const QImage &picture)
{
    const double likeness = bestDecibels(picture, m_clipPictures);
    QVERIFY2(likeness > similarDecibels, qPrintable(QString::number(likeness)));
    const double mirroredLikeness = bestDecibels(picture.mirrored(true, false), m_clipPictures);
    QVERIFY2(mirroredLikeness < similarDecibels - 5, qPrintable(QString::number(mirroredLikeness)));
}

// The number that the summary of the last call gives for a label; -1 if it gives none.
double tst_Call::value(const char *label) const
{
    const QRegularExpression line(QStringLiteral("^%1: ([0-9.]+)").arg(QLatin1String(label)),
                                  QRegularExpression::MultilineOption);
    const QRegularExpressionMatch match = line.match(m_output);
    return match.hasMatch() ? match.captured(1).toDouble() : -1;
}

QTEST_GUILESS_MAIN(tst_Call)
#include "tst_call.moc"
