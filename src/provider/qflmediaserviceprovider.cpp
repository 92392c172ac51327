// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-3.0-or-later
// A service provider that also describes codecs.

#include "qflmediaserviceprovider.h"

/*!
    \class QFLMediaServiceCodecInfoInterface
    \brief The plugin interface through which a backend describes its codec implementations.

    A backend lists codec ids, byte strings that it chooses, as the devices of its encoder and
    decoder services. The provider asks the first plugin for "facelink.encoder" that has this
    interface about every id, decoders' included.
*/

/*!
    \fn QString QFLMediaServiceCodecInfoInterface::codec(const QByteArray &codecId)

    Returns the name of the codec that \a codecId implements.
*/

/*!
    \fn bool QFLMediaServiceCodecInfoInterface::isEncoder(const QByteArray &codecId)

    Returns true for an encoder, false for a decoder.
*/

/*!
    \fn bool QFLMediaServiceCodecInfoInterface::isHardwareAccelerated(const QByteArray &codecId)

    Returns whether \a codecId runs in hardware.
*/

/*!
    \fn int QFLMediaServiceCodecInfoInterface::maxInstances(const QByteArray &codecId)

    Returns how many instances of \a codecId can be used at once, as far as the backend knows.
*/

/*!
    \class QFLMediaServiceProvider
    \brief A media service provider that also describes codecs.

    The library installs one as Qt Multimedia's default provider. qobject_cast finds its
    QFLMediaServiceCodecInfoInterface.
*/

QFLMediaServiceProvider::QFLMediaServiceProvider() = default;

QFLMediaServiceProvider::~QFLMediaServiceProvider() = default;
