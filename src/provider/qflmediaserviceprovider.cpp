// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// A service provider that also describes codecs.

#include "qflmediaserviceprovider.h"

/*!
    \class QFLMediaServiceCodecInfoInterface qflmediaservicecodecinfointerface.h
    \brief The plugin interface through which a backend describes its codec implementations.

    A backend lists codec ids, byte strings that it chooses, as the devices of its encoder and
    decoder services. Its plugin object lists this interface with Q_INTERFACES; the identifier is
    QFLMediaServiceCodecInfoInterface_iid, "facelink.mediaservicecodecinfo/1.0". The provider asks
    the first plugin for "facelink.encoder" that has the interface about every id, decoders'
    included.

    Each operation is called while a QFLCodecInfo is made, on the thread of whoever makes it, at any
    time and without a service having been created. It answers at once, without a codec being
    opened, and has to expect ids that it doesn't know, for which QFLCodecInfo promises the values
    named below.
*/

/*!
    \fn QString QFLMediaServiceCodecInfoInterface::codec(const QByteArray &codecId)

    Returns the name of the codec that \a codecId implements, by which applications choose, and
    QFLCodecInfo::availableEncoders() filters; empty for an unknown id.
*/

/*!
    \fn bool QFLMediaServiceCodecInfoInterface::isEncoder(const QByteArray &codecId)

    Returns true if \a codecId is an encoder, false if it is a decoder or unknown.
*/

/*!
    \fn bool QFLMediaServiceCodecInfoInterface::isHardwareAccelerated(const QByteArray &codecId)

    Returns whether \a codecId runs in hardware, false for an unknown id.
*/

/*!
    \fn int QFLMediaServiceCodecInfoInterface::maxInstances(const QByteArray &codecId)

    Returns how many instances of \a codecId can be used at once, as far as the backend knows; 0 if
    it doesn't, or for an unknown id.
*/

/*!
    \class QFLMediaServiceProvider qflmediaserviceprovider.h
    \brief A media service provider that also describes codecs.

    The library installs one as Qt Multimedia's default provider while it is loaded, for the media
    objects of Qt as well as its own, and it stays until the process ends. It gives out services of
    the backend plugins, which stay owned by the plugins that made them, lists their devices, and
    passes questions about codecs on to them. It takes no lock: services must not be requested or
    released on several threads at once.

    qobject_cast finds the QFLMediaServiceCodecInfoInterface of whatever provider is installed. Like
    QMediaServiceProvider the class belongs to the private interface, which may change from version
    to version; the public way to what it knows are QFLCodecInfo and QFLCameraInfo.
*/

/*!
    Makes a provider that is not installed.
*/
QFLMediaServiceProvider::QFLMediaServiceProvider() = default;

/*!
    Releases no service.
*/
QFLMediaServiceProvider::~QFLMediaServiceProvider() = default;
