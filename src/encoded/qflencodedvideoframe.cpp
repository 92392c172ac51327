// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The value that carries one compressed video frame.

#include "qflencodedvideoframe.h"
#include "qflencodedvideoframe_p.h"

#include <QtCore/qdebug.h>

#include <limits>

namespace {

// A QByteArray allocates its header and a terminating zero byte together with the bytes.
constexpr unsigned long largestSize = std::numeric_limits<int>::max() - sizeof(QByteArrayData) - 1;

// Queued connections look the types up by the names in the signatures, which have no leading "::".
template<typename T> bool registerUnderBothNames(const char *plainName)
{
    qRegisterMetaType<T>();
    qRegisterMetaType<T>(plainName);
    return true;
}

[[maybe_unused]] const bool metaTypesRegistered
        = registerUnderBothNames<QFLEncodedVideoFrame>("QFLEncodedVideoFrame")
        && registerUnderBothNames<QFLEncodedVideoFrame::Type>("QFLEncodedVideoFrame::Type")
        && registerUnderBothNames<QFLEncodedVideoFrame::MetaData>("QFLEncodedVideoFrame::MetaData");

} // namespace

/*!
    \class QFLEncodedVideoFrame qflencodedvideoframe.h
    \brief One compressed video frame with its kind and its timestamp.

    Copies share one record explicitly: nothing ever detaches, a new timestamp shows in every copy,
    and two frames are equal only if they share their record. Copies may be made and destroyed on
    any thread; setTimestamp() must not run while another thread reads a copy.

    The library doesn't look into the bytes: what they mean is between the codec that made them and
    the one that reads them. The types are registered with Qt's meta-type system while the library
    is loaded, so that frames can travel in queued signals.
*/

/*!
    \enum QFLEncodedVideoFrame::Type

    What a frame is good for, as its encoder labelled it.

    \value Type_Invalid There is no frame.
    \value Type_Key A frame at which decoding can start.
    \value Type_Intra Any frame that is not a key frame.
*/

/*!
    \struct QFLEncodedVideoFrame::MetaData
    \brief What is known of a frame without a look into its bytes.
*/

/*!
    \var QFLEncodedVideoFrame::MetaData::type

    Type_Invalid unless it is set.
*/

/*!
    \var QFLEncodedVideoFrame::MetaData::timestamp

    The presentation time in microseconds, on the clock of the raw frames' start times; 0 unless it
    is set.
*/

/*!
    Makes an invalid frame without bytes.
*/
QFLEncodedVideoFrame::QFLEncodedVideoFrame() : d(new QFLEncodedVideoFramePrivate) { }

/*!
    Makes a frame that shares the bytes of \a data, which is left unchanged, and has a copy of \a
    meta. Bytes of QByteArray::fromRawData() are shared as well: they must stay as they are for as
    long as anyone has the frame or its data().
*/
QFLEncodedVideoFrame::QFLEncodedVideoFrame(QByteArray &data, const MetaData &meta)
    : QFLEncodedVideoFrame()
{
    d->data = data;
    d->meta = meta;
}

/*!
    Makes a frame with a copy of the \a size bytes at \a data and of \a meta. More bytes than a
    QByteArray holds, which is a little less than 2 GiB, give an invalid frame without bytes, and a
    warning.
*/
QFLEncodedVideoFrame::QFLEncodedVideoFrame(const char *data, unsigned long size,
                                           const MetaData &meta)
    : QFLEncodedVideoFrame()
{
    if (size > largestSize) {
        qWarning("QFLEncodedVideoFrame: %lu bytes are too many for one frame", size);
        return;
    }

    d->data = QByteArray(data, static_cast<int>(size));
    d->meta = meta;
}

/*!
    Makes a frame that shares the record of \a other.
*/
QFLEncodedVideoFrame::QFLEncodedVideoFrame(const QFLEncodedVideoFrame &other) = default;

/*!
    Shares the record of \a other and gives up the one that was shared before.
*/
QFLEncodedVideoFrame &QFLEncodedVideoFrame::operator=(const QFLEncodedVideoFrame &other) = default;

/*!
    Gives up the record. The last frame that shares it deletes it with its bytes.
*/
QFLEncodedVideoFrame::~QFLEncodedVideoFrame() = default;

/*!
    Returns whether the frame has a type other than Type_Invalid; a frame without bytes can be
    valid.
*/
bool QFLEncodedVideoFrame::isValid() const
{
    return d->meta.type != Type_Invalid;
}

/*!
    Returns the encoded bytes, implicitly shared.
*/
QByteArray QFLEncodedVideoFrame::data() const
{
    return d->data;
}

/*!
    Returns a copy: a change to it doesn't change the frame.
*/
QFLEncodedVideoFrame::MetaData QFLEncodedVideoFrame::meta() const
{
    return d->meta;
}

/*!
    Sets the presentation time of this frame and of all its copies to \a timestamp microseconds.
*/
void QFLEncodedVideoFrame::setTimestamp(unsigned long long timestamp)
{
    d->meta.timestamp = timestamp;
}

/*!
    Returns whether this frame and \a other share one record; the contents are not compared.
*/
bool QFLEncodedVideoFrame::operator==(const QFLEncodedVideoFrame &other) const
{
    return d == other.d;
}

/*!
    Returns whether this frame and \a other have different records, be their contents equal or not.
*/
bool QFLEncodedVideoFrame::operator!=(const QFLEncodedVideoFrame &other) const
{
    return d != other.d;
}

#ifndef QT_NO_DEBUG_STREAM

static const char *typeName(QFLEncodedVideoFrame::Type type)
{
    switch (type) {
    case QFLEncodedVideoFrame::Type_Invalid:
        return "Type_Invalid";
    case QFLEncodedVideoFrame::Type_Key:
        return "Type_Key";
    case QFLEncodedVideoFrame::Type_Intra:
        return "Type_Intra";
    }
    return "";
}

static QString timeText(quint64 microseconds)
{
    const QChar zero = QLatin1Char('0');
    const quint64 seconds = microseconds / 1000000;
    return QStringLiteral("%1:%2:%3.%4 - forever")
            .arg(seconds / 3600, 1, 10, zero)
            .arg(seconds / 60 % 60, 2, 10, zero)
            .arg(seconds % 60, 2, 10, zero)
            .arg(microseconds % 1000000, 6, 10, zero);
}

static void print(QDebug &debug, const QFLEncodedVideoFrame::MetaData &meta)
{
    debug << typeName(meta.type) << ", " << timeText(meta.timestamp);
}

/*!
    \relates QFLEncodedVideoFrame

    Prints the number of bytes, the type and the time of \a frame to \a debug, as in
    `QFLEncodedVideoFrame(1200, Type_Key, "1:02:03.000042 - forever")`, and restores the settings of
    the stream.
*/
QDebug operator<<(QDebug debug, const QFLEncodedVideoFrame &frame)
{
    const QDebugStateSaver saver(debug);
    // The stream may be writing numbers in another base.
    debug.nospace() << "QFLEncodedVideoFrame(" << qPrintable(QString::number(frame.data().size()))
                    << ", ";
    print(debug, frame.meta());
    debug << ")";
    return debug;
}

#endif
