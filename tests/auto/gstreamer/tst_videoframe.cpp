// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-3.0-or-later
// Tests that raw frames pass between Qt and GStreamer without a copy.

#include "videoformat.h"
#include "videoframe.h"

#include <QtTest/QtTest>

static GstVideoInfo videoInfo(QVideoFrame::PixelFormat format)
{
    GstVideoInfo info;
    VideoFormat::toGst(QVideoSurfaceFormat(QSize(320, 240), format), &info);
    return info;
}

class tst_VideoFrame : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QVERIFY(gst_init_check(nullptr, nullptr, nullptr)); }

    void frameOfABuffer()
    {
        const GstVideoInfo info = videoInfo(QVideoFrame::Format_YUV420P);
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
            const QVideoFrame frame(bytesPerLine * 360, QSize(320, 240), bytesPerLine, format);
            const GstVideoInfo info = videoInfo(format);
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
};

QTEST_GUILESS_MAIN(tst_VideoFrame)

#include "tst_videoframe.moc"
