// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The coding of pictures that the backend demonstrates.

#include "runlengthcodec.h"

#include <QtCore/qdatastream.h>
#include <QtCore/qiodevice.h>

#include <cstring>

namespace {

const int bytesPerPixel = 4;

void writeRuns(QDataStream *stream, const QVector<quint32> &values)
{
    for (int begin = 0, end = 0; begin < values.size(); begin = end) {
        while (end < values.size() && end - begin < 255 && values.at(end) == values.at(begin))
            ++end;
        *stream << quint8(end - begin) << values.at(begin);
    }
}

// Empty unless exactly the count is there: the data may come from a network.
QVector<quint32> readRuns(QDataStream *stream, int count)
{
    QVector<quint32> values;
    while (values.size() < count) {
        quint8 length = 0;
        quint32 value = 0;
        *stream >> length >> value;
        if (stream->status() != QDataStream::Ok || length == 0 || values.size() + length > count)
            return {};
        values.insert(values.end(), length, value);
    }
    return stream->atEnd() ? values : QVector<quint32>();
}

} // namespace

/*!
    \class RunLengthCodec

    Codes RGB32 pictures without loss: a key frame as runs of equal pixels, any other frame as runs
    of equal differences from the picture before. It is here to show a backend, not to save bytes:
    on pictures of a camera it makes more of them than it takes.

    An object codes one stream in one direction.
*/

/*! What follows on a picture of another size is a key frame in any case. */
QByteArray RunLengthCodec::encode(QVideoFrame picture, bool asKeyFrame)
{
    if (!picture.map(QAbstractVideoBuffer::ReadOnly))
        return QByteArray();
    const QSize size = picture.size();
    const bool isKeyFrame = asKeyFrame || size != m_size;
    Pixels pixels(size.width() * size.height());
    const uchar *row = picture.bits();
    for (quint32 *pixel = pixels.begin(); pixel != pixels.end(); pixel += size.width()) {
        std::memcpy(pixel, row, size_t(size.width()) * bytesPerPixel);
        row += picture.bytesPerLine();
    }
    picture.unmap();

    Pixels difference = pixels;
    for (int i = 0; !isKeyFrame && i < difference.size(); ++i)
        difference[i] ^= m_pixels.at(i);
    m_pixels = pixels;
    m_size = size;

    QByteArray data;
    QDataStream stream(&data, QIODevice::WriteOnly);
    stream << isKeyFrame << quint16(size.width()) << quint16(size.height());
    writeRuns(&stream, difference);
    return data;
}

/*! An invalid frame if the data is damaged, or builds on a picture that hasn't been decoded. */
QVideoFrame RunLengthCodec::decode(const QByteArray &data)
{
    QDataStream stream(data);
    bool isKeyFrame = false;
    quint16 width = 0;
    quint16 height = 0;
    stream >> isKeyFrame >> width >> height;
    const QSize size(width, height);
    if (qMax(width, height) > longestSide || (!isKeyFrame && size != m_size))
        return QVideoFrame();
    const Pixels difference = readRuns(&stream, width * height);
    if (difference.isEmpty())
        return QVideoFrame();
    applyDifference(difference, size, isKeyFrame);

    const int bytes = m_pixels.size() * bytesPerPixel;
    QVideoFrame picture(bytes, size, width * bytesPerPixel, QVideoFrame::Format_RGB32);
    if (picture.map(QAbstractVideoBuffer::WriteOnly))
        std::memcpy(picture.bits(), m_pixels.constData(), size_t(bytes));
    picture.unmap();
    return picture;
}

void RunLengthCodec::applyDifference(const Pixels &difference, const QSize &size, bool isKeyFrame)
{
    const Pixels previous = m_pixels;
    m_pixels = difference;
    m_size = size;
    for (int i = 0; !isKeyFrame && i < m_pixels.size(); ++i)
        m_pixels[i] ^= previous.at(i);
}
