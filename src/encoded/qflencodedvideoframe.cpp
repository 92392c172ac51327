// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-3.0-or-later
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
    \class QFLEncodedVideoFrame
    \brief One compressed video frame with its kind and its timestamp.

    Copies share one record explicitly: nothing ever detaches, a new timestamp shows in every copy,
    and two frames are equal only if they share their record. Copies may be made and destroyed on
    any thread; setTimestamp() must not run while another thread reads a copy.
*/

/*!
    \enum QFLEncodedVideoFrame::Type

    \value Type_Invalid There is no frame.
    \value Type_Key A frame at which decoding can start.
    \value Type_Intra Every other frame.
*/

/*!
    \class QFLEncodedVideoFrame::MetaData
    \brief The kind of a frame, and its presentation time in microseconds.
*/

/*!
    Makes an invalid frame without bytes.
*/
QFLEncodedVideoFrame::QFLEncodedVideoFrame() : d(new QFLEncodedVideoFramePrivate) { }

/*!
    Makes a frame that shares the bytes of \a data, which is left unchanged.
*/
QFLEncodedVideoFrame::QFLEncodedVideoFrame(QByteArray &data, const MetaData &meta)
    : QFLEncodedVideoFrame()
{
    d->data = data;
    d->meta = meta;
}

/*!
    Makes a frame with a copy of the \a size bytes at \a data. More bytes than a QByteArray holds,
    which is a little less than 2 GiB, give an invalid frame without bytes, and a warning.
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

QFLEncodedVideoFrame::QFLEncodedVideoFrame(const QFLEncodedVideoFrame &other) = default;

QFLEncodedVideoFrame &QFLEncodedVideoFrame::operator=(const QFLEncodedVideoFrame &other) = default;

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
    Prints the number of bytes, the type and the time of \a frame, as in
    \c{QFLEncodedVideoFrame(1200, Type_Key, "1:02:03.000042 - forever")}.
*/
QDebug operator<<(QDebug debug, const QFLEncodedVideoFrame &frame)
{
    const QDebugStateSaver saver(debug);
    debug.nospace() << "QFLEncodedVideoFrame(" << frame.data().size() << ", ";
    print(debug, frame.meta());
    debug << ")";
    return debug;
}

#endif
