// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The plugin that offers the services of the GStreamer backend.

#include "gstreamerplugin.h"

#include "cameradevices.h"
#include "cameraservice.h"
#include "codecelements.h"
#include "decoderservice.h"
#include "encoderservice.h"

#include <limits>

namespace {

const char cameraKey[] = "facelink.camera";
const char encoderKey[] = "facelink.encoder";
const char decoderKey[] = "facelink.decoder";

QVector<CodecElement> codecElements(const QByteArray &service)
{
    if (service == encoderKey)
        return CodecElements::encoders();
    if (service == decoderKey)
        return CodecElements::decoders();
    return QVector<CodecElement>();
}

CodecElement findById(const QVector<CodecElement> &elements, const QByteArray &codecId)
{
    for (const CodecElement &element : elements) {
        if (element.factoryName == codecId)
            return element;
    }
    return CodecElement();
}

CodecElement findById(const QByteArray &codecId)
{
    const CodecElement encoder = findById(CodecElements::encoders(), codecId);
    return encoder.factoryName.isEmpty() ? findById(CodecElements::decoders(), codecId) : encoder;
}

} // namespace

/*!
    \class GStreamerPlugin

    Makes the services, lists cameras and codecs, and describes them. What is listed is looked for
    at the first question.
*/

/*! A new service, which release() takes back; null for a key that isn't one of the backend's. */
QMediaService *GStreamerPlugin::create(const QString &key)
{
    if (key == QLatin1String(cameraKey))
        return new CameraService;
    if (key == QLatin1String(encoderKey))
        return new EncoderService;
    if (key == QLatin1String(decoderKey))
        return new DecoderService;
    return nullptr;
}

void GStreamerPlugin::release(QMediaService *service)
{
    delete service;
}

/*! The names of cameras, and the names of GStreamer's elements as ids of encoders and decoders. */
QList<QByteArray> GStreamerPlugin::devices(const QByteArray &service) const
{
    if (service == cameraKey)
        return CameraDevices().names();
    QList<QByteArray> result;
    const QVector<CodecElement> elements = codecElements(service);
    for (const CodecElement &element : elements)
        result.append(element.factoryName);
    return result;
}

QString GStreamerPlugin::deviceDescription(const QByteArray &service, const QByteArray &device)
{
    if (service == cameraKey)
        return CameraDevices().description(device);
    return CodecElements::description(findById(codecElements(service), device).factoryName);
}

/*! Of the codecs the one that is used when the application doesn't choose. */
QByteArray GStreamerPlugin::defaultDevice(const QByteArray &service) const
{
    if (service == cameraKey)
        return CameraDevices().defaultName();
    return CodecElements::find(codecElements(service), QString()).factoryName;
}

QString GStreamerPlugin::codec(const QByteArray &codecId)
{
    return findById(codecId).codec;
}

bool GStreamerPlugin::isEncoder(const QByteArray &codecId)
{
    return findById(codecId).isEncoder;
}

bool GStreamerPlugin::isHardwareAccelerated(const QByteArray &codecId)
{
    return findById(codecId).isHardwareAccelerated;
}

/*!
    Software has no limit of its own. Of hardware one stream is all that can be relied on: how many
    sessions it takes depends on the driver, on the sizes and on other programs, and no element of
    GStreamer tells. More may well be possible; the start of one too many fails with an error.
*/
int GStreamerPlugin::maxInstances(const QByteArray &codecId)
{
    const CodecElement element = findById(codecId);
    if (element.factoryName.isEmpty())
        return 0;
    return element.isHardwareAccelerated ? 1 : std::numeric_limits<int>::max();
}
