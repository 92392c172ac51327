// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Tests of the encoded video frame.

#include "fakelog.h"

#include <qflencodedvideoframe.h>

#include <QtCore/qdebug.h>
#include <QtTest/QtTest>

#include <limits>

using Frame = QFLEncodedVideoFrame;

class tst_QFLEncodedVideoFrame : public QObject
{
    Q_OBJECT

private slots:
    void values_data()
    {
        QTest::addColumn<QByteArray>("data");
        QTest::addColumn<int>("type");
        QTest::addColumn<quint64>("timestamp");
        QTest::addColumn<QString>("text");
        const auto row = [](int size, int type, quint64 timestamp, const char *text) {
            QTest::newRow(text) << QByteArray(size, 'x') << type << timestamp
                                << QString::fromLatin1(text);
        };
        row(0, 0, 0, R"(QFLEncodedVideoFrame(0, Type_Invalid, "0:00:00.000000 - forever"))");
        row(3, 0, 0, R"(QFLEncodedVideoFrame(3, Type_Invalid, "0:00:00.000000 - forever"))");
        row(1200, 1, 3723000042,
            R"(QFLEncodedVideoFrame(1200, Type_Key, "1:02:03.000042 - forever"))");
        row(1, 2, 59999999, R"(QFLEncodedVideoFrame(1, Type_Intra, "0:00:59.999999 - forever"))");
        row(10, 7, 0, R"(QFLEncodedVideoFrame(10, , "0:00:00.000000 - forever"))");
        row(0, 1, 360000000000,
            R"(QFLEncodedVideoFrame(0, Type_Key, "100:00:00.000000 - forever"))");
        row(0, 1, std::numeric_limits<quint64>::max(),
            R"(QFLEncodedVideoFrame(0, Type_Key, "5124095576:01:49.551615 - forever"))");
    }

    void values()
    {
        QFETCH(QByteArray, data);
        QFETCH(int, type);
        QFETCH(quint64, timestamp);
        QFETCH(QString, text);
        const Frame frame(data, {Frame::Type(type), timestamp});
        QCOMPARE(frame.isValid(), type != 0);
        QCOMPARE(frame.data(), data);
        QCOMPARE(frame.data().constData(), std::as_const(data).constData());
        QCOMPARE(int(frame.meta().type), type);
        QCOMPARE(frame.meta().timestamp, timestamp);

        QString plain, unquoted, spaced;
        QDebug(&plain).nospace() << frame;
        QCOMPARE(plain, text);
        QDebug(&unquoted).nospace().noquote() << frame;
        QCOMPARE(unquoted, text.remove(QLatin1Char('"')));
        QDebug(&spaced) << frame << 1 << 2;
        QVERIFY2(spaced.endsWith(QStringLiteral(") 1 2 ")), qPrintable(spaced));
        QString hexadecimal;
        QDebug(&hexadecimal).nospace() << Qt::hex << frame << 255;
        QCOMPARE(hexadecimal, plain + QStringLiteral("ff"));
    }

    void copiedBytes()
    {
        const FakeLog log;
        char source[] = "abc";
        const Frame frame(source, 3, {Frame::Type_Key, 1});
        source[0] = 'X';
        QCOMPARE(frame.data(), QByteArray("abc"));
        QVERIFY(frame.isValid());
        COMPARE_LOG("");

        const auto most = static_cast<unsigned long>(std::numeric_limits<int>::max());
        for (unsigned long size : {most + 1, 2 * most + 5, ~0ul}) {
            const Frame tooLong(source, size, {Frame::Type_Key, 1});
            QVERIFY(!tooLong.isValid());
            QCOMPARE(tooLong.data(), QByteArray());
            const QByteArray message = FakeLog::take();
            QVERIFY2(message.startsWith("warning default: "), message);
            QCOMPARE(message.count("warning default"), 1);
        }
    }

    // The most bytes that an array refers to, shared like any others.
    void largestArray()
    {
        const char byte = 'x';
        QByteArray most = QByteArray::fromRawData(&byte, std::numeric_limits<int>::max());
        const Frame frame(most, {Frame::Type_Key, 1});
        QCOMPARE(frame.data().constData(), &byte);
        QCOMPARE(frame.data().size(), std::numeric_limits<int>::max());
        QString text;
        QDebug(&text) << frame;
        QVERIFY2(text.startsWith(QStringLiteral("QFLEncodedVideoFrame(2147483647, ")),
                 qPrintable(text));
    }

    void sharing()
    {
        Frame frame("same", 4, {Frame::Type_Key, 1});
        const Frame copy(frame);
        const Frame separate("same", 4, {Frame::Type_Key, 1});
        Frame assigned;
        QVERIFY(!assigned.isValid() && assigned.data().isEmpty());
        QCOMPARE(assigned.meta().timestamp, quint64(0));
        assigned = frame;
        const Frame &itself = frame;
        frame = itself;
        QVERIFY(copy == frame && !(copy != frame) && assigned == frame);
        QVERIFY(separate != frame && !(separate == frame) && Frame() != Frame());

        frame.setTimestamp(42);
        QCOMPARE(copy.meta().timestamp, quint64(42));
        QCOMPARE(assigned.meta().timestamp, quint64(42));
        QCOMPARE(separate.meta().timestamp, quint64(1));
    }

    void metaTypes()
    {
        for (const QByteArray name : {"QFLEncodedVideoFrame", "QFLEncodedVideoFrame::Type",
                                      "QFLEncodedVideoFrame::MetaData"}) {
            QVERIFY2(QMetaType::type(name) != QMetaType::UnknownType, name);
            QCOMPARE(QMetaType::type("::" + name), QMetaType::type(name));
        }
    }
};

QTEST_APPLESS_MAIN(tst_QFLEncodedVideoFrame)

#include "tst_qflencodedvideoframe.moc"
