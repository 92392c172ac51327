// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Tests the minimal backend, the only one that is found, through the library.

#include "framesurface.h"

#include <qfldecoder.h>
#include <qflencodedvideosink.h>
#include <qflencoder.h>
#include <qflencodervideosurface.h>

#include <QtTest/QtTest>

#include <thread>

struct RefusingSink : QFLEncodedVideoSink
{
    bool isFormatSupported(const QVideoEncoderSettings &) const override { return true; }
    bool encodedVideoFrame(const QFLEncodedVideoFrame &frame) override
    {
        types.append(thread == QThread::currentThread() ? int(frame.meta().type) : -1);
        return types.size() != 2;
    }
    QList<int> types;
    QThread *const thread = QThread::currentThread();
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
        QCOMPARE(decoder.error(), QFLDecoder::FormatError);
        sink.unlink();
    }
};

QTEST_GUILESS_MAIN(tst_MinimalBackend)

#include "tst_minimalbackend.moc"
