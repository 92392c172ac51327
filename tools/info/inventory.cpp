// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// What the installed backends offer.

#include "inventory.h"

#include <qflcamera.h>
#include <qflcamerainfo.h>
#include <qflcodecinfo.h>
#include <qfldecoder.h>
#include <qflencoder.h>

#include <private/qmediaserviceprovider_p.h>

#include <QtCore/qdebug.h>
#include <QtCore/qjsonarray.h>

namespace {

QString pixelFormatName(QVideoFrame::PixelFormat format)
{
    QString name;
    QDebug(&name).nospace() << format;
    return name.mid(QStringLiteral("Format_").size());
}

QString positionName(QCamera::Position position)
{
    switch (position) {
    case QCamera::BackFace:
        return QStringLiteral("back");
    case QCamera::FrontFace:
        return QStringLiteral("front");
    case QCamera::UnspecifiedPosition:
        break;
    }
    return QStringLiteral("unspecified");
}

QJsonArray viewfinderSettings(const QFLCameraInfo &info)
{
    QFLCamera camera(info);
    camera.load();
    QJsonArray result;
    const auto offers = camera.supportedViewfinderSettings();
    for (const QCameraViewfinderSettings &offer : offers) {
        result.append(QJsonObject {
                {QStringLiteral("width"), offer.resolution().width()},
                {QStringLiteral("height"), offer.resolution().height()},
                {QStringLiteral("minimumFrameRate"), offer.minimumFrameRate()},
                {QStringLiteral("maximumFrameRate"), offer.maximumFrameRate()},
                {QStringLiteral("pixelFormat"), pixelFormatName(offer.pixelFormat())},
        });
    }
    return result;
}

QJsonArray cameras(bool withViewfinderSettings)
{
    QJsonArray result;
    const QList<QFLCameraInfo> available = QFLCameraInfo::availableCameras();
    const QFLCameraInfo defaultCamera = QFLCameraInfo::defaultCamera();
    for (const QFLCameraInfo &camera : available) {
        QJsonObject object {
                {QStringLiteral("name"), camera.deviceName()},
                {QStringLiteral("description"), camera.description()},
                {QStringLiteral("position"), positionName(camera.position())},
                {QStringLiteral("orientation"), camera.orientation()},
                {QStringLiteral("default"), camera == defaultCamera},
        };
        if (withViewfinderSettings)
            object.insert(QStringLiteral("viewfinderSettings"), viewfinderSettings(camera));
        result.append(object);
    }
    return result;
}

// Only the service provider knows the descriptions.
QJsonArray codecs(const QList<QFLCodecInfo> &available, const QByteArray &service)
{
    QMediaServiceProvider *provider = QMediaServiceProvider::defaultServiceProvider();
    QJsonArray result;
    for (const QFLCodecInfo &codec : available) {
        result.append(QJsonObject {
                {QStringLiteral("id"), QString::fromLatin1(codec.codecId())},
                {QStringLiteral("codec"), codec.codec()},
                {QStringLiteral("description"),
                 provider->deviceDescription(service, codec.codecId())},
                {QStringLiteral("hardware"), codec.isHardwareAccelerated()},
                {QStringLiteral("maxInstances"), codec.maxInstances()},
        });
    }
    return result;
}

} // namespace

/*! Whether any service of the library can be had, even if there is no device for it. */
bool Inventory::hasBackend()
{
    return QFLCamera().availability() != QMultimedia::ServiceMissing
            || QFLEncoder().availability() != QMultimedia::ServiceMissing
            || QFLDecoder().availability() != QMultimedia::ServiceMissing;
}

/*!
    The arrays "cameras", "encoders" and "decoders". \a withViewfinderSettings opens each camera, to ask
    which sizes, frame rates and pixel formats it has; frame rates are in frames a second, and the
    orientation in degrees clockwise.
*/
QJsonObject Inventory::collect(bool withViewfinderSettings)
{
    return {
            {QStringLiteral("cameras"), cameras(withViewfinderSettings)},
            {QStringLiteral("encoders"),
             codecs(QFLCodecInfo::availableEncoders(), "facelink.encoder")},
            {QStringLiteral("decoders"),
             codecs(QFLCodecInfo::availableDecoders(), "facelink.decoder")},
    };
}
