// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Tests an application that is built without run-time type information.

#include <qflencodedvideosink.h>
#include <qflencoder.h>

#include <QtMultimedia/qabstractvideobuffer.h>
#include <QtTest/QtTest>

#ifdef __cpp_rtti
#error "This test must be built without run-time type information."
#endif

namespace {

class Sink : public QFLEncodedVideoSink
{
public:
    ~Sink() override { unlink(); }

    bool isFormatSupported(const QVideoEncoderSettings &) const override { return true; }
    bool encodedVideoFrame(const QFLEncodedVideoFrame &) override { return ++frames > 0; }

    int frames = 0;
};

/*! A grey picture in memory of the application's own. */
class Buffer : public QAbstractVideoBuffer
{
public:
    Buffer() : QAbstractVideoBuffer(NoHandle), m_bytes(160 * 120 * 3 / 2, char(128)) { }

    MapMode mapMode() const override { return m_mode; }
    uchar *map(MapMode mode, int *byteCount, int *bytesPerLine) override
    {
        m_mode = mode;
        *byteCount = m_bytes.size();
        *bytesPerLine = 160;
        return reinterpret_cast<uchar *>(m_bytes.data());
    }
    void unmap() override { m_mode = NotMapped; }

private:
    QByteArray m_bytes;
    MapMode m_mode = NotMapped;
};

} // namespace

class tst_WithoutRtti : public QObject
{
    Q_OBJECT

private slots:
    void sinkAndBuffer();
};

void tst_WithoutRtti::sinkAndBuffer()
{
    const QSize size(160, 120);
    QFLEncoder encoder;
    Sink sink;
    QVERIFY(sink.link(&encoder));
    QVERIFY(encoder.start(QVideoSurfaceFormat(size, QVideoFrame::Format_YUV420P)));
    for (int i = 0; i < 3; ++i) {
        QVideoFrame frame(new Buffer, size, QVideoFrame::Format_YUV420P);
        frame.setStartTime(i * 33333);
        bool isTaken = false;
        QTRY_VERIFY(isTaken || (isTaken = encoder.encode(frame)));
    }
    QTRY_COMPARE(sink.frames, 3);
}

QTEST_GUILESS_MAIN(tst_WithoutRtti)

#include "tst_withoutrtti.moc"
