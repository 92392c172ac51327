// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The description of one encoder or decoder implementation.

#include "qflcodecinfo.h"
#include "qflcodecinfo_p.h"

#include "qflmediaservicecodecinfointerface.h"
#include "qflserviceaccess_p.h"

/*!
    \class QFLCodecInfo qflcodecinfo.h
    \brief Describes one encoder or decoder implementation of the installed backends.

    A codec id is a byte string that a backend chose for one of its implementations: a device name
    of its encoder or decoder service. availableEncoders() and availableDecoders() find out which
    there are.

    Copies share one record, which never changes: they may be read on several threads. The
    constructor and the listing functions ask the backends on the caller's thread, on which services
    are requested too. Nothing reports a failure: what is not known has a neutral value.
*/

/*!
    Describes the implementation with the id \a codecId, as the backend describes it now. The
    description is null, and without the id, if the default service provider doesn't describe
    codecs. The first backend with encoders that describes codecs answers for every id, known to it or
    not; without such a backend the values are neutral, and the description isn't null. For an id
    that it doesn't know the GStreamer backend answers with an empty codec(), false and 0.
*/
QFLCodecInfo::QFLCodecInfo(const QByteArray &codecId) : d(new QFLCodecInfoPrivate)
{
    auto *information
            = qobject_cast<QFLMediaServiceCodecInfoInterface *>(QFLServiceAccess::provider());
    if (!information)
        return;

    d->isNull = false;
    d->codecId = codecId;
    d->isEncoder = information->isEncoder(codecId);
    d->codec = information->codec(codecId);
    d->maxInstances = information->maxInstances(codecId);
    d->isHardwareAccelerated = information->isHardwareAccelerated(codecId);
}

/*!
    Makes a description that shares the record of \a other.
*/
QFLCodecInfo::QFLCodecInfo(const QFLCodecInfo &other) = default;

/*!
    Shares the record of \a other.
*/
QFLCodecInfo &QFLCodecInfo::operator=(const QFLCodecInfo &other) = default;

/*!
    Gives up the record, which goes with its last description.
*/
QFLCodecInfo::~QFLCodecInfo() = default;

/*!
    Returns whether there was no provider to describe the implementation. False doesn't say that a
    backend knows it: a default-constructed description, of the empty id, isn't null either.
*/
bool QFLCodecInfo::isNull() const
{
    return d->isNull;
}

/*!
    Returns the id that was asked for, empty in a null description.
*/
QByteArray QFLCodecInfo::codecId() const
{
    return d->codecId;
}

/*!
    Returns the name of the codec, its RTP encoding name with the GStreamer backend ("H264");
    empty if no backend describes codecs.
*/
QString QFLCodecInfo::codec() const
{
    return d->codec;
}

/*!
    Returns true for an encoder, false for a decoder or if no backend describes codecs.
*/
bool QFLCodecInfo::isEncoder() const
{
    return d->isEncoder;
}

/*!
    Returns whether the implementation runs in hardware, false if no backend describes codecs.
*/
bool QFLCodecInfo::isHardwareAccelerated() const
{
    return d->isHardwareAccelerated;
}

/*!
    Returns how many instances can be used at once, as the backend reports it; 0 if it does not or
    no backend describes codecs. The library enforces nothing.
*/
int QFLCodecInfo::maxInstances() const
{
    return d->maxInstances;
}

static QList<QFLCodecInfo> availableCodecs(const QByteArray &serviceType, const QString &codec,
                                           bool hardwareOnly)
{
    QList<QFLCodecInfo> result;
    QMediaServiceProvider *provider = QFLServiceAccess::provider();
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
    those in hardware if \a hardwareOnly is true. Names are compared case-sensitively. The list is
    empty without a backend; an id that two backends list is in it twice.
*/
QList<QFLCodecInfo> QFLCodecInfo::availableEncoders(const QString &codec, bool hardwareOnly)
{
    return availableCodecs(QFL_MEDIASERVICE_ENCODER, codec, hardwareOnly);
}

/*!
    Returns the decoders for \a codec, those in hardware if \a hardwareOnly is true, as
    availableEncoders() does the encoders. They are described by the plugin that serves encoders.
*/
QList<QFLCodecInfo> QFLCodecInfo::availableDecoders(const QString &codec, bool hardwareOnly)
{
    return availableCodecs(QFL_MEDIASERVICE_DECODER, codec, hardwareOnly);
}

/*!
    Returns whether this description and \a other are of the same codec id; the other values are not
    compared.
*/
bool QFLCodecInfo::operator==(const QFLCodecInfo &other) const
{
    return d == other.d || d->codecId == other.d->codecId;
}

/*!
    Returns whether this description and \a other are of different codec ids.
*/
bool QFLCodecInfo::operator!=(const QFLCodecInfo &other) const
{
    return !(*this == other);
}
