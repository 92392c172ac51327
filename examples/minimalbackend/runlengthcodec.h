// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The coding of pictures that the backend demonstrates.

#ifndef RUNLENGTHCODEC_H
#define RUNLENGTHCODEC_H

#include <QtCore/qsize.h>
#include <QtCore/qvector.h>
#include <QtMultimedia/qvideoframe.h>

class RunLengthCodec
{
public:
    static constexpr char name[] = "RLE";
    static constexpr char encoderId[] = "minimal-rle-encoder";
    static constexpr char decoderId[] = "minimal-rle-decoder";
    static constexpr int longestSide = 4096;

    QByteArray encode(QVideoFrame picture, bool asKeyFrame);
    QVideoFrame decode(const QByteArray &data);

private:
    using Pixels = QVector<quint32>;

    void applyDifference(const Pixels &difference, const QSize &size, bool isKeyFrame);

    Pixels m_pixels;
    QSize m_size;
};

#endif
