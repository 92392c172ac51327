// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Tests the plugin of the GStreamer backend through the library, as an application uses it.

#include "qflcamera.h"
#include "qflcodecinfo.h"
#include "qflencoder.h"
#include "qflmediaserviceprovider.h"
#include "testmedia.h"

#include <QtMultimedia/qcameracontrol.h>
#include <QtMultimedia/qvideorenderercontrol.h>

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
        // Qt's own cameras are what they are without the backend.
        QVERIFY(!provider->devices(Q_MEDIASERVICE_CAMERA).contains(camera));
    }

    void sharesFrames()
    {
        QFLCamera camera("videotestsrc");
        QFLEncoder encoder;
        QSignalSpy encoded(&encoder, &QFLEncoder::encodedVideoFrame);
        RecordingSurface viewfinder;
        RecordingSurface other;
        RecordingSurface rgb({QVideoFrame::Format_RGB32});
        RecordingSurface otherRgb({QVideoFrame::Format_RGB32});
        QVERIFY(camera.bind(&encoder));
        camera.setViewfinder(&viewfinder);
        for (RecordingSurface *surface : {&other, &rgb, &otherRgb})
            camera.service()->requestControl<QVideoRendererControl *>()->setSurface(surface);
        const auto *control = camera.service()->requestControl<QCameraControl *>();
        camera.start();
        QTRY_VERIFY(encoded.size() >= 5);
        // The same memory for all that take the captured format, one conversion for the others.
        QVERIFY(viewfinder.frames == other.frames && rgb.frames == otherRgb.frames);
        const int count = viewfinder.frames.size();
        QCOMPARE(control->property("capturedFrames").toInt(), count);
        QCOMPARE(control->property("presentedFrames").toInt(), 5 * count);
        QCOMPARE(control->property("convertedFrames").toInt(), count);
    }
};

QTEST_GUILESS_MAIN(tst_GStreamerPlugin)

#include "tst_gstreamerplugin.moc"
