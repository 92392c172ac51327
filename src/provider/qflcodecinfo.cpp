// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-3.0-or-later
// The description of one encoder or decoder implementation.

#include "qflcodecinfo.h"
#include "qflcodecinfo_p.h"

#include "qflmediaservicecodecinfointerface.h"

#include <private/qmediaserviceprovider_p.h>

/*!
    \class QFLCodecInfo
    \brief Describes one encoder or decoder implementation of the installed backends.

    Copies share one record, which never changes: they may be read on several threads. The
    constructor and the listing functions ask the backends on the caller's thread.
*/

/*!
    Describes the implementation with the id \a codecId. The description is null if the default
    service provider doesn't describe codecs; an id that no backend knows gives neutral values.
*/
QFLCodecInfo::QFLCodecInfo(const QByteArray &codecId) : d(new QFLCodecInfoPrivate)
{
    auto *information = qobject_cast<QFLMediaServiceCodecInfoInterface *>(
            QMediaServiceProvider::defaultServiceProvider());
    if (!information)
        return;

    d->isNull = false;
    d->codecId = codecId;
    d->isEncoder = information->isEncoder(codecId);
    d->codec = information->codec(codecId);
    d->maxInstances = information->maxInstances(codecId);
    d->isHardwareAccelerated = information->isHardwareAccelerated(codecId);
}

QFLCodecInfo::QFLCodecInfo(const QFLCodecInfo &other) = default;

QFLCodecInfo &QFLCodecInfo::operator=(const QFLCodecInfo &other) = default;

QFLCodecInfo::~QFLCodecInfo() = default;

/*!
    Returns whether there was no provider to describe the implementation.
*/
bool QFLCodecInfo::isNull() const
{
    return d->isNull;
}

QByteArray QFLCodecInfo::codecId() const
{
    return d->codecId;
}

/*!
    Returns the name of the codec, its RTP encoding name with the backend of this project ("H264").
*/
QString QFLCodecInfo::codec() const
{
    return d->codec;
}

bool QFLCodecInfo::isEncoder() const
{
    return d->isEncoder;
}

bool QFLCodecInfo::isHardwareAccelerated() const
{
    return d->isHardwareAccelerated;
}

/*!
    Returns how many instances can be used at once, as the backend reports it; 0 if it does not.
*/
int QFLCodecInfo::maxInstances() const
{
    return d->maxInstances;
}

static QList<QFLCodecInfo> availableCodecs(const QByteArray &serviceType, const QString &codec,
                                           bool hardwareOnly)
{
    QList<QFLCodecInfo> result;
    QMediaServiceProvider *provider = QMediaServiceProvider::defaultServiceProvider();
    if (!provider)
        return result;

    const QList<QByteArray> codecIds = provider->devices(serviceType);
    for (const QByteArray &codecId : codecIds) {
        const QFLCodecInfo info(codecId);
        const bool isWantedCodec = codec.isEmpty() || info.codec() == codec;
        if (isWantedCodec && (!hardwareOnly || info.isHardwareAccelerated()))
            result.append(info);
    }
    return result;
}

/*!
    Returns the encoders for \a codec, or all of them if it is empty, in the backends' order; only
    those in hardware if \a hardwareOnly is true. Names are compared case-sensitively.
*/
QList<QFLCodecInfo> QFLCodecInfo::availableEncoders(const QString &codec, bool hardwareOnly)
{
    return availableCodecs(QByteArrayLiteral("facelink.encoder"), codec, hardwareOnly);
}

/*!
    Returns the decoders for \a codec, as availableEncoders() does the encoders.
*/
QList<QFLCodecInfo> QFLCodecInfo::availableDecoders(const QString &codec, bool hardwareOnly)
{
    return availableCodecs(QByteArrayLiteral("facelink.decoder"), codec, hardwareOnly);
}

/*!
    Returns whether both describe the same codec id; the other values are not compared.
*/
bool QFLCodecInfo::operator==(const QFLCodecInfo &other) const
{
    return d == other.d || d->codecId == other.d->codecId;
}

bool QFLCodecInfo::operator!=(const QFLCodecInfo &other) const
{
    return !(*this == other);
}
