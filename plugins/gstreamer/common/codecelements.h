// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The encoder and decoder elements that the backend offers.

#ifndef CODECELEMENTS_H
#define CODECELEMENTS_H

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

namespace CodecElements {

QVector<CodecElement> encoders();
QVector<CodecElement> decoders();

QStringList names(const QVector<CodecElement> &elements, bool hardwareOnly);
QString description(const QByteArray &factoryName);
CodecElement find(const QVector<CodecElement> &elements, const QString &codecOrFactory);
QVector<CodecElement> findAll(const QVector<CodecElement> &elements, const QString &codecOrFactory);

} // namespace CodecElements

#endif
