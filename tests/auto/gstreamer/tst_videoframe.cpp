// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-3.0-or-later
// Tests that raw frames pass between Qt and GStreamer without a copy.

#include "gstreamersetup.h"
#include "videoformat.h"
#include "videoframe.h"

#include <QtTest/qtest.h>

namespace {

constexpr QSize size(320, 240);

GstVideoInfo videoInfo(QVideoFrame::PixelFormat format, const QSize &frameSize = size)
{
    GstVideoInfo info;
    VideoFormat::toGst(QVideoSurfaceFormat(frameSize, format), &info);
    return info;
}

} // namespace

class tst_VideoFrame : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void surfaceFormats();
    void frameOfABuffer();
    void bufferOfAFrame_data();
    void bufferOfAFrame();
    void unfitFrames();
};

void tst_VideoFrame::initTestCase()
{
    QVERIFY(GStreamerSetup::initialize());
}

void tst_VideoFrame::surfaceFormats()
{
    QVideoSurfaceFormat format(size, QVideoFrame::Format_NV12);
    format.setFrameRate(30000 / 1001.0);
    format.setPixelAspectRatio(4, 3);
    format.setYCbCrColorSpace(QVideoSurfaceFormat::YCbCr_BT709);
    GstVideoInfo info;
    QVERIFY(VideoFormat::toGst(format, &info));
    QCOMPARE(info.fps_n, 30000);
    QCOMPARE(info.fps_d, 1001);
    QCOMPARE(VideoFormat::fromGst(info), format);

    QVERIFY(!VideoFormat::toGst(QVideoSurfaceFormat(size, QVideoFrame::Format_Jpeg), &info));
    QVERIFY(!VideoFormat::toGst(QVideoSurfaceFormat(QSize(), QVideoFrame::Format_NV12), &info));
}

void tst_VideoFrame::frameOfABuffer()
{
    const GstVideoInfo info = videoInfo(QVideoFrame::Format_YUV420P);
    GstBufferPointer buffer(gst_buffer_new_allocate(nullptr, info.size, nullptr));
    GstBuffer *const address = buffer.get();
    GstMapInfo map;
    QVERIFY(gst_buffer_map(buffer.get(), &map, GST_MAP_WRITE));
    map.data[info.offset[2]] = 77;
    const quint8 *const pixels = map.data;
    gst_buffer_unmap(buffer.get(), &map);

    QVideoFrame frame = VideoFrame::fromGst(buffer.get(), info, 4711);
    QCOMPARE(frame.startTime(), 4711);
    QCOMPARE(frame.handleType(), QAbstractVideoBuffer::NoHandle);
    QVERIFY(!frame.map(QAbstractVideoBuffer::ReadWrite));
    buffer.reset();
    QVERIFY(frame.map(QAbstractVideoBuffer::ReadWrite));
    QCOMPARE(static_cast<const quint8 *>(frame.bits(0)), pixels);
    QCOMPARE(int(*frame.bits(2)), 77);
    frame.unmap();

    QString errorText;
    QCOMPARE(VideoFrame::toGst(frame, info, &errorText).get(), address);
    QCOMPARE(errorText, QString());
}

void tst_VideoFrame::bufferOfAFrame_data()
{
    QTest::addColumn<QVideoFrame::PixelFormat>("format");
    QTest::addColumn<int>("bytesPerLine");
    QTest::addColumn<int>("bytes");

    QTest::newRow("I420") << QVideoFrame::Format_YUV420P << 384 << 384 * 240 * 3 / 2;
    QTest::newRow("NV12") << QVideoFrame::Format_NV12 << 320 << 320 * 240 * 3 / 2;
    QTest::newRow("RGB32") << QVideoFrame::Format_RGB32 << 1344 << 1344 * 240;
}

void tst_VideoFrame::bufferOfAFrame()
{
    QFETCH(QVideoFrame::PixelFormat, format);
    QFETCH(int, bytesPerLine);
    QFETCH(int, bytes);
    QVideoFrame frame(bytes, size, bytesPerLine, format);
    const GstVideoInfo info = videoInfo(format);
    QString errorText;
    GstBufferPointer buffer = VideoFrame::toGst(frame, info, &errorText);
    QVERIFY2(buffer, qPrintable(errorText));
    QVERIFY(frame.isMapped());

    GstVideoFrame mapped;
    QVERIFY(gst_video_frame_map(&mapped, &info, buffer.get(), GST_MAP_READ));
    for (int plane = 0; plane < frame.planeCount(); ++plane) {
        QCOMPARE(static_cast<uchar *>(mapped.data[plane]), frame.bits(plane));
        QCOMPARE(GST_VIDEO_FRAME_PLANE_STRIDE(&mapped, plane), frame.bytesPerLine(plane));
    }
    gst_video_frame_unmap(&mapped);
    buffer.reset();
    QVERIFY(!frame.isMapped());
}

void tst_VideoFrame::unfitFrames()
{
    const GstVideoInfo info = videoInfo(QVideoFrame::Format_YUV420P);
    const QVideoFrame fitting(115200, size, 320, QVideoFrame::Format_YUV420P);
    QString errorText;
    QVERIFY(VideoFrame::toGst(fitting, info, &errorText));

    const QVideoFrame wide(115200, QSize(480, 160), 480, QVideoFrame::Format_YUV420P);
    QVERIFY(!VideoFrame::toGst(wide, info, &errorText));
    QVERIFY(errorText.contains(QLatin1String("480x160 Format_YUV420P")));
    QVERIFY(errorText.contains(QLatin1String("320x240 Format_YUV420P")));
    const QVideoFrame other(115200, size, 320, QVideoFrame::Format_YV12);
    QVERIFY(!VideoFrame::toGst(other, info, &errorText));
    QVERIFY(errorText.contains(QLatin1String("Format_YV12")));

    const QVideoFrame narrow(320 * 240 * 4, size, 1276, QVideoFrame::Format_RGB32);
    QVERIFY(!VideoFrame::toGst(narrow, videoInfo(QVideoFrame::Format_RGB32), &errorText));
    QVERIFY(errorText.contains(QLatin1String("1276")));
    const QVideoFrame truncated(320 * 239 * 4, size, 1280, QVideoFrame::Format_RGB32);
    QVERIFY(!VideoFrame::toGst(truncated, videoInfo(QVideoFrame::Format_RGB32), &errorText));
    QVERIFY(errorText.contains(QLatin1String("305920")));
    QVERIFY(errorText.contains(QLatin1String("307200")));
    QVERIFY(!VideoFrame::toGst(QVideoFrame(), info, &errorText));
}

QTEST_GUILESS_MAIN(tst_VideoFrame)

#include "tst_videoframe.moc"
