// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-3.0-or-later
// Tests the plugin of the GStreamer backend through the library, as an application uses it.

#include "qflcodecinfo.h"
#include "qflencodedvideosink.h"
#include "qflencoder.h"
#include "qflmediaserviceprovider.h"

#include <QtTest/qtest.h>

namespace {

class CountingSink : public QFLEncodedVideoSink
{
public:
    bool isFormatSupported(const QVideoEncoderSettings &) const override { return true; }
    bool encodedVideoFrame(const QFLEncodedVideoFrame &) override { return ++frameCount > 0; }

    int frameCount = 0;
};

} // namespace

class tst_GStreamerPlugin : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void codecs();
    void cameras();
    void unknownNames();
    void sinkOfTheApplication();
};

void tst_GStreamerPlugin::codecs()
{
    QMediaServiceProvider *provider = QMediaServiceProvider::defaultServiceProvider();
    for (const char *codec : {"H264", "VP8"}) {
        const QList<QFLCodecInfo> encoders
                = QFLCodecInfo::availableEncoders(QString::fromLatin1(codec));
        const QList<QFLCodecInfo> decoders
                = QFLCodecInfo::availableDecoders(QString::fromLatin1(codec));
        QVERIFY(!encoders.isEmpty() && !decoders.isEmpty());
        QVERIFY(encoders.first().isEncoder());
        QVERIFY(!decoders.first().isEncoder());
        QVERIFY(encoders.first().maxInstances() > 0);
        QVERIFY(!provider->deviceDescription("facelink.encoder", encoders.first().codecId())
                         .isEmpty());
        QVERIFY(provider->deviceDescription("facelink.decoder", encoders.first().codecId())
                        .isEmpty());
    }
    const QByteArray chosen = provider->defaultDevice("facelink.encoder");
    QCOMPARE(QFLCodecInfo(chosen).codec(), QStringLiteral("H264"));
}

void tst_GStreamerPlugin::cameras()
{
    QMediaServiceProvider *provider = QMediaServiceProvider::defaultServiceProvider();
    QVERIFY(provider->devices("facelink.camera").contains("videotestsrc"));
    QVERIFY(provider->devices("facelink.camera")
                    .contains(provider->defaultDevice("facelink.camera")));
    QVERIFY(!provider->deviceDescription("facelink.camera", "videotestsrc").isEmpty());
}

void tst_GStreamerPlugin::unknownNames()
{
    const QFLCodecInfo unknown("nosuchenc");
    QVERIFY(!unknown.isNull());
    QCOMPARE(unknown.codec(), QString());
    QVERIFY(!unknown.isEncoder());
    QVERIFY(!unknown.isHardwareAccelerated());
    QCOMPARE(unknown.maxInstances(), 0);
}

void tst_GStreamerPlugin::sinkOfTheApplication()
{
    const QSize size(320, 240);
    QVideoFrame raw(size.width() * size.height() * 3 / 2, size, size.width(),
                    QVideoFrame::Format_YUV420P);
    QFLEncoder encoder;
    CountingSink sink;
    QVERIFY(sink.link(&encoder));
    QVERIFY(encoder.start(QVideoSurfaceFormat(size, QVideoFrame::Format_YUV420P)));
    QVERIFY(sink.isActive());
    QVERIFY(encoder.encode(raw));
    QTRY_COMPARE(sink.frameCount, 1);
    sink.unlink();
    QVERIFY(!sink.isActive());
}

QTEST_GUILESS_MAIN(tst_GStreamerPlugin)

#include "tst_gstreamerplugin.moc"
