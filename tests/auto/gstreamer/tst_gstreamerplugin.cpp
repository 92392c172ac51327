// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Tests the plugin of the GStreamer backend through the library, as an application uses it.

#include "qflcodecinfo.h"
#include "qflmediaserviceprovider.h"

#include <QtTest/QtTest>

class tst_GStreamerPlugin : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void devices()
    {
        QMediaServiceProvider *provider = QMediaServiceProvider::defaultServiceProvider();
        for (const QString &codec : {QStringLiteral("H264"), QStringLiteral("VP8")}) {
            const QFLCodecInfo encoder = QFLCodecInfo::availableEncoders(codec).value(0);
            const QFLCodecInfo decoder = QFLCodecInfo::availableDecoders(codec).value(0);
            QVERIFY(encoder.isEncoder() && encoder.maxInstances() > 0);
            QVERIFY(!decoder.isEncoder() && decoder.maxInstances() > 0);
            QVERIFY(!provider->deviceDescription("facelink.encoder", encoder.codecId()).isEmpty());
            QVERIFY(provider->deviceDescription("facelink.decoder", encoder.codecId()).isEmpty());
        }
        const QFLCodecInfo chosen(provider->defaultDevice("facelink.encoder"));
        QCOMPARE(chosen.codec(), QStringLiteral("H264"));
        QCOMPARE(QFLCodecInfo("nosuchenc").codec(), QString());
        QVERIFY(!provider->deviceDescription("facelink.camera", "videotestsrc").isEmpty());
        const QByteArray camera = provider->defaultDevice("facelink.camera");
        QVERIFY(provider->devices("facelink.camera").contains(camera));
    }
};

QTEST_GUILESS_MAIN(tst_GStreamerPlugin)

#include "tst_gstreamerplugin.moc"
