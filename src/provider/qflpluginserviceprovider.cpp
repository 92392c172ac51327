// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The service provider that the library installs in Qt Multimedia.

#include "qflpluginserviceprovider_p.h"

#include "qflglobal.h"

#include <private/qmediapluginloader_p.h>

#include <QtCore/qdebug.h>
#include <QtMultimedia/qmediaplayer.h>

#include <algorithm>

namespace {

using Plugins = QList<QMediaServiceProviderPlugin *>;

// Never destroyed: media objects with static life time may outlive everything else. The library isn't
// unloaded either.
QFLPluginServiceProvider *pluginServiceProvider()
{
    static auto *const provider = new QFLPluginServiceProvider;
    return provider;
}

Q_GLOBAL_STATIC_WITH_ARGS(QMediaPluginLoader, pluginLoader,
                          (QMediaServiceProviderFactoryInterface_iid, QLatin1String("mediaservice"),
                           Qt::CaseInsensitive))

// Media objects that are made late in the process's exit get Qt's own provider.
class ProviderInstallation
{
public:
    ProviderInstallation()
    {
        QMediaServiceProvider::setDefaultServiceProvider(pluginServiceProvider());
    }

    ~ProviderInstallation()
    {
        if (QMediaServiceProvider::defaultServiceProvider() == pluginServiceProvider())
            QMediaServiceProvider::setDefaultServiceProvider(nullptr);
    }
};

const ProviderInstallation providerInstallation;

QString loaderKey(const QByteArray &type)
{
    return QString::fromLatin1(type);
}

// The loader goes late in the process's exit, and takes the plugins with it.
bool arePluginsLoaded()
{
    return !pluginLoader.isDestroyed();
}

QObjectList pluginObjects(const QByteArray &type)
{
    QObjectList objects
            = arePluginsLoaded() ? pluginLoader()->instances(loaderKey(type)) : QObjectList();
    objects.removeAll(nullptr);
    return objects;
}

template<typename Interface> QList<Interface *> pluginInterfaces(const QByteArray &type)
{
    QList<Interface *> interfaces;
    const QObjectList objects = pluginObjects(type);
    for (QObject *object : objects) {
        if (auto *interface = qobject_cast<Interface *>(object))
            interfaces.append(interface);
    }
    return interfaces;
}

bool hasDevice(QObject *plugin, const QByteArray &type, const QByteArray &device)
{
    auto *devices = qobject_cast<QMediaServiceSupportedDevicesInterface *>(plugin);
    return devices && devices->devices(type).contains(device);
}

bool hasFeatures(QObject *plugin, const QByteArray &type,
                 QMediaServiceProviderHint::Features wanted)
{
    auto *features = qobject_cast<QMediaServiceFeaturesInterface *>(plugin);
    return features && (features->supportedFeatures(type) & wanted) == wanted;
}

bool hasCameraAt(QObject *plugin, const QByteArray &type, QCamera::Position position)
{
    auto *devices = qobject_cast<QMediaServiceSupportedDevicesInterface *>(plugin);
    auto *cameras = qobject_cast<QMediaServiceCameraInfoInterface *>(plugin);
    if (!devices || !cameras)
        return false;

    const QList<QByteArray> names = devices->devices(type);
    return std::any_of(names.begin(), names.end(), [=](const QByteArray &name) {
        return cameras->cameraPosition(name) == position;
    });
}

template<typename Predicate>
QMediaServiceProviderPlugin *firstOrDefault(const Plugins &candidates, Predicate matches)
{
    const auto found = std::find_if(candidates.begin(), candidates.end(), matches);
    return found != candidates.end() ? *found : candidates.first();
}

QMediaServiceProviderPlugin *choose(const Plugins &candidates, const QByteArray &type)
{
    if (type != Q_MEDIASERVICE_MEDIAPLAYER)
        return candidates.first();
    return firstOrDefault(candidates, [&](QObject *plugin) {
        return !hasFeatures(plugin, type, QMediaServiceProviderHint::LowLatencyPlayback);
    });
}

QMediaServiceProviderPlugin *chooseByContent(const Plugins &candidates, const QString &mimeType,
                                             const QStringList &codecs)
{
    QMediaServiceProviderPlugin *choice = nullptr;
    QMultimedia::SupportEstimate best = QMultimedia::NotSupported;
    for (QMediaServiceProviderPlugin *plugin : candidates) {
        auto *formats = qobject_cast<QMediaServiceSupportedFormatsInterface *>(plugin);
        const QMultimedia::SupportEstimate estimate
                = formats ? formats->hasSupport(mimeType, codecs) : QMultimedia::MaybeSupported;
        if (estimate <= best)
            continue;
        choice = plugin;
        best = estimate;
        if (estimate == QMultimedia::PreferredService)
            break;
    }
    return choice;
}

QMediaServiceProviderPlugin *chooseByPosition(const Plugins &candidates, const QByteArray &type,
                                              QCamera::Position position)
{
    QMediaServiceProviderPlugin *choice = candidates.first();
    if (type != Q_MEDIASERVICE_CAMERA || position == QCamera::UnspecifiedPosition)
        return choice;

    for (QMediaServiceProviderPlugin *plugin : candidates) {
        if (hasCameraAt(plugin, type, position))
            choice = plugin;
    }
    return choice;
}

QMediaServiceProviderPlugin *choose(const Plugins &candidates, const QByteArray &type,
                                    const QMediaServiceProviderHint &hint)
{
    if (candidates.isEmpty())
        return nullptr;

    switch (hint.type()) {
    case QMediaServiceProviderHint::Null:
        return choose(candidates, type);
    case QMediaServiceProviderHint::ContentType:
        return chooseByContent(candidates, hint.mimeType(), hint.codecs());
    case QMediaServiceProviderHint::Device:
        return firstOrDefault(candidates, [&](QObject *plugin) {
            return hasDevice(plugin, type, hint.device());
        });
    case QMediaServiceProviderHint::SupportedFeatures:
        return firstOrDefault(candidates, [&](QObject *plugin) {
            return hasFeatures(plugin, type, hint.features());
        });
    case QMediaServiceProviderHint::CameraPosition:
        return chooseByPosition(candidates, type, hint.cameraPosition());
    }
    return nullptr;
}

// What a media player asks for by its flags, and the feature that answers it.
struct FlagFeature
{
    QMediaPlayer::Flag flag;
    QMediaServiceProviderHint::Feature feature;
};

constexpr FlagFeature playbackFlags[] = {
        {QMediaPlayer::LowLatency, QMediaServiceProviderHint::LowLatencyPlayback},
        {QMediaPlayer::StreamPlayback, QMediaServiceProviderHint::StreamPlayback},
};
constexpr FlagFeature surfaceFlag
        = {QMediaPlayer::VideoSurface, QMediaServiceProviderHint::VideoSurface};

bool lacksFeature(QMediaServiceProviderHint::Features features, const FlagFeature &wanted,
                  int flags)
{
    return (flags & wanted.flag) && !features.testFlag(wanted.feature);
}

bool isExcluded(QObject *plugin, const QByteArray &type, int flags, bool withSurface)
{
    auto *interface = qobject_cast<QMediaServiceFeaturesInterface *>(plugin);
    if (flags == 0 || !interface)
        return false;

    const QMediaServiceProviderHint::Features features = interface->supportedFeatures(type);
    return std::any_of(
                   std::begin(playbackFlags), std::end(playbackFlags),
                   [&](const FlagFeature &wanted) { return lacksFeature(features, wanted, flags); })
            || (withSurface && lacksFeature(features, surfaceFlag, flags));
}

QMediaServiceCameraInfoInterface *cameraInfoFor(const QByteArray &device)
{
    const QByteArray type(Q_MEDIASERVICE_CAMERA);
    const QObjectList objects = pluginObjects(type);
    for (QObject *object : objects) {
        auto *cameras = qobject_cast<QMediaServiceCameraInfoInterface *>(object);
        auto *devices = qobject_cast<QMediaServiceSupportedDevicesInterface *>(object);
        if (cameras && (!devices || devices->devices(type).contains(device)))
            return cameras;
    }
    return nullptr;
}

QFLMediaServiceCodecInfoInterface *codecInfo()
{
    return pluginInterfaces<QFLMediaServiceCodecInfoInterface>(QFL_MEDIASERVICE_ENCODER).value(0);
}

} // namespace

/*!
    \class QFLPluginServiceProvider
    \brief Gives every media object of the process its service from a backend plugin.

    The library installs the one instance as Qt Multimedia's default provider while it is loaded;
    the plugins are looked up at the first operation, in Qt's loader order. The provider owns
    neither plugins nor services, and remembers which plugin made which service. It takes no lock:
    services must not be requested or released on several threads at once.
*/

QFLPluginServiceProvider::QFLPluginServiceProvider() = default;

QFLPluginServiceProvider::~QFLPluginServiceProvider() = default;

QMediaService *QFLPluginServiceProvider::requestService(const QByteArray &type,
                                                        const QMediaServiceProviderHint &hint)
{
    QMediaServiceProviderPlugin *plugin
            = choose(pluginInterfaces<QMediaServiceProviderPlugin>(type), type, hint);
    if (!plugin) {
        qWarning() << "defaultServiceProvider::requestService(): no service found for -"
                   << loaderKey(type);
        return nullptr;
    }

    QMediaService *service = plugin->create(loaderKey(type));
    if (service)
        serviceEntries.insert(service, {type, plugin});
    return service;
}

void QFLPluginServiceProvider::releaseService(QMediaService *service)
{
    if (!service)
        return;

    // The entry goes first: the plugin deletes the service, whose address can then come back.
    const ServiceEntry entry = serviceEntries.take(service);
    if (entry.plugin && arePluginsLoaded())
        entry.plugin->release(service);
}

QMediaServiceProviderHint::Features QFLPluginServiceProvider::supportedFeatures(
        const QMediaService *service) const
{
    const ServiceEntry entry = serviceEntries.value(service);
    if (!arePluginsLoaded())
        return QMediaServiceProviderHint::Features();

    auto *features = qobject_cast<QMediaServiceFeaturesInterface *>(entry.plugin);
    return features ? features->supportedFeatures(entry.type)
                    : QMediaServiceProviderHint::Features();
}

QMultimedia::SupportEstimate QFLPluginServiceProvider::hasSupport(const QByteArray &serviceType,
                                                                  const QString &mimeType,
                                                                  const QStringList &codecs,
                                                                  int flags) const
{
    const QObjectList objects = pluginObjects(serviceType);
    QMultimedia::SupportEstimate estimate = QMultimedia::NotSupported;
    bool allHaveFormats = true;
    for (QObject *object : objects) {
        if (isExcluded(object, serviceType, flags, false))
            continue;
        if (auto *formats = qobject_cast<QMediaServiceSupportedFormatsInterface *>(object))
            estimate = qMax(estimate, formats->hasSupport(mimeType, codecs));
        else
            allHaveFormats = false;
    }

    // A plugin may be preferred over others, but nothing is certain before the media is played.
    estimate = qMin(estimate, QMultimedia::ProbablySupported);
    return allHaveFormats ? estimate : qMax(estimate, QMultimedia::MaybeSupported);
}

QStringList QFLPluginServiceProvider::supportedMimeTypes(const QByteArray &serviceType,
                                                         int flags) const
{
    QStringList mimeTypes;
    const QObjectList objects = pluginObjects(serviceType);
    for (QObject *object : objects) {
        auto *formats = qobject_cast<QMediaServiceSupportedFormatsInterface *>(object);
        if (formats && !isExcluded(object, serviceType, flags, true))
            mimeTypes += formats->supportedMimeTypes();
    }
    mimeTypes.removeDuplicates();
    return mimeTypes;
}

QByteArray QFLPluginServiceProvider::defaultDevice(const QByteArray &serviceType) const
{
    const auto interfaces = pluginInterfaces<QMediaServiceDefaultDeviceInterface>(serviceType);
    return interfaces.isEmpty() ? devices(serviceType).value(0)
                                : interfaces.first()->defaultDevice(serviceType);
}

QList<QByteArray> QFLPluginServiceProvider::devices(const QByteArray &serviceType) const
{
    QList<QByteArray> names;
    const auto interfaces = pluginInterfaces<QMediaServiceSupportedDevicesInterface>(serviceType);
    for (QMediaServiceSupportedDevicesInterface *interface : interfaces)
        names += interface->devices(serviceType);
    return names;
}

QString QFLPluginServiceProvider::deviceDescription(const QByteArray &serviceType,
                                                    const QByteArray &device)
{
    const auto interfaces = pluginInterfaces<QMediaServiceSupportedDevicesInterface>(serviceType);
    for (QMediaServiceSupportedDevicesInterface *interface : interfaces) {
        if (interface->devices(serviceType).contains(device))
            return interface->deviceDescription(serviceType, device);
    }
    return QString();
}

QCamera::Position QFLPluginServiceProvider::cameraPosition(const QByteArray &device) const
{
    QMediaServiceCameraInfoInterface *cameras = cameraInfoFor(device);
    return cameras ? cameras->cameraPosition(device) : QCamera::UnspecifiedPosition;
}

int QFLPluginServiceProvider::cameraOrientation(const QByteArray &device) const
{
    QMediaServiceCameraInfoInterface *cameras = cameraInfoFor(device);
    return cameras ? cameras->cameraOrientation(device) : 0;
}

QString QFLPluginServiceProvider::codec(const QByteArray &codecId)
{
    QFLMediaServiceCodecInfoInterface *information = codecInfo();
    return information ? information->codec(codecId) : QString();
}

bool QFLPluginServiceProvider::isEncoder(const QByteArray &codecId)
{
    QFLMediaServiceCodecInfoInterface *information = codecInfo();
    return information && information->isEncoder(codecId);
}

bool QFLPluginServiceProvider::isHardwareAccelerated(const QByteArray &codecId)
{
    QFLMediaServiceCodecInfoInterface *information = codecInfo();
    return information && information->isHardwareAccelerated(codecId);
}

int QFLPluginServiceProvider::maxInstances(const QByteArray &codecId)
{
    QFLMediaServiceCodecInfoInterface *information = codecInfo();
    return information ? information->maxInstances(codecId) : 0;
}
