// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The plugin object: services, codec ids and their descriptions.

#include "minimalplugin.h"

#include "minimaldecoderservice.h"
#include "minimalencoderservice.h"
#include "runlengthcodec.h"

#include <limits>

namespace {

bool isKnown(const QByteArray &codecId)
{
    return codecId == RunLengthCodec::encoderId || codecId == RunLengthCodec::decoderId;
}

} // namespace

//! [services]
QMediaService *MinimalPlugin::create(const QString &key)
{
    if (key == QLatin1String(QFL_MEDIASERVICE_ENCODER))
        return new MinimalEncoderService;
    if (key == QLatin1String(QFL_MEDIASERVICE_DECODER))
        return new MinimalDecoderService;
    return nullptr;
}

void MinimalPlugin::release(QMediaService *service)
{
    delete service;
}
//! [services]

//! [devices]
QList<QByteArray> MinimalPlugin::devices(const QByteArray &service) const
{
    if (service == QFL_MEDIASERVICE_ENCODER)
        return {RunLengthCodec::encoderId};
    if (service == QFL_MEDIASERVICE_DECODER)
        return {RunLengthCodec::decoderId};
    return {};
}

QString MinimalPlugin::deviceDescription(const QByteArray &service, const QByteArray &device)
{
    return devices(service).contains(device) ? tr("Run lengths, for demonstration") : QString();
}
//! [devices]

//! [codecs]
QString MinimalPlugin::codec(const QByteArray &codecId)
{
    return isKnown(codecId) ? QString::fromLatin1(RunLengthCodec::name) : QString();
}

bool MinimalPlugin::isEncoder(const QByteArray &codecId)
{
    return codecId == RunLengthCodec::encoderId;
}

bool MinimalPlugin::isHardwareAccelerated(const QByteArray &)
{
    return false;
}

int MinimalPlugin::maxInstances(const QByteArray &codecId)
{
    return isKnown(codecId) ? std::numeric_limits<int>::max() : 0;
}
//! [codecs]
