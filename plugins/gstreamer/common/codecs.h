// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The encoder and decoder elements that the backend offers.

#ifndef CODECS_H
#define CODECS_H

#include <QtCore/qbytearray.h>
#include <QtCore/qstringlist.h>
#include <QtCore/qvector.h>

struct CodecElement
{
    QByteArray factoryName;
    QString codec;
    bool isEncoder = false;
    bool isHardwareAccelerated = false;
};

namespace Codecs {

QVector<CodecElement> encoders();
QVector<CodecElement> decoders();

QStringList names(const QVector<CodecElement> &elements, bool hardwareOnly);
QString description(const QByteArray &factoryName);
CodecElement find(const QVector<CodecElement> &elements, const QString &codecOrFactory);
QVector<CodecElement> findAll(const QVector<CodecElement> &elements, const QString &codecOrFactory);

} // namespace Codecs

#endif
