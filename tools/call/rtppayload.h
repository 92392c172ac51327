// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// How a codec's frames travel in RTP packets.

#ifndef RTPPAYLOAD_H
#define RTPPAYLOAD_H

#include <QtCore/qbytearray.h>
#include <QtCore/qstring.h>

struct RtpPayload
{
    QString codec;
    QByteArray frameCaps;
    QByteArray payloader;
    QByteArray depayloader;

    static RtpPayload forCodec(const QString &codec);

    bool isNull() const { return codec.isEmpty(); }
    QByteArray packetCaps() const;
};

#endif
