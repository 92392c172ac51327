// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Plugin objects that answer whatever interfaces a test tells them to.

#ifndef FAKEPLUGIN_H
#define FAKEPLUGIN_H

#include "fakelog.h"
#include "fakeservice.h"

#include <qflmediaservicecodecinfointerface.h>

#include <QtMultimedia/qmediaserviceproviderplugin.h>

#include <functional>

struct FakePluginScript
{
    QMediaServiceProviderHint::Features features {};
    QMultimedia::SupportEstimate support = QMultimedia::NotSupported;
    QByteArrayList devices {};
    QMap<QByteArray, QCamera::Position> positions {};
    QStringList mimeTypes {};
    QByteArray defaultDevice {};
    std::function<void(QMediaService *)> onRelease {};
    bool creates = true;
    QByteArrayList interfaces {};
};

inline QMap<QByteArray, FakePluginScript> &fakePluginScripts()
{
    static QMap<QByteArray, FakePluginScript> scripts;
    return scripts;
}

/*!
    Inherits every interface, but answers in meta-casts only those of its script, so that a cast
    by the language finds interfaces that are not there.
*/
template<typename Base, typename... Interfaces>
class FakeScripted : public Base, public Interfaces...
{
public:
    explicit FakeScripted(const QByteArray &name) : m_name(name) { }

    void *qt_metacast(const char *identifier) override
    {
        void *part = nullptr;
        const QByteArray name(identifier);
        if (!script().interfaces.contains(name))
            return Base::qt_metacast(identifier);
        ((name == qobject_interface_iid<Interfaces *>() ? part = static_cast<Interfaces *>(this)
                                                        : part),
         ...);
        return part;
    }

    QMediaServiceProviderHint::Features supportedFeatures(const QByteArray &type) const override
    {
        FakeLog::add(m_name + " supportedFeatures " + type);
        return script().features;
    }
    QMultimedia::SupportEstimate hasSupport(const QString &, const QStringList &) const override
    {
        FakeLog::add(m_name + " hasSupport");
        return script().support;
    }
    QStringList supportedMimeTypes() const override { return script().mimeTypes; }
    QByteArrayList devices(const QByteArray &) const override { return script().devices; }
    QString deviceDescription(const QByteArray &, const QByteArray &device) override
    {
        FakeLog::add(m_name + " deviceDescription");
        return QString::fromLatin1(m_name + ' ' + device);
    }
    QByteArray defaultDevice(const QByteArray &) const override { return script().defaultDevice; }
    QCamera::Position cameraPosition(const QByteArray &device) const override
    {
        return script().positions.value(device);
    }
    int cameraOrientation(const QByteArray &device) const override
    {
        return 90 * script().positions.value(device);
    }
    QString codec(const QByteArray &id) override
    {
        return ask("codec"), QString::fromLatin1(m_name + ' ' + id);
    }
    bool isEncoder(const QByteArray &id) override { return ask("isEncoder"), id.endsWith("enc"); }
    bool isHardwareAccelerated(const QByteArray &id) override
    {
        return ask("isHardware"), id.startsWith("hw");
    }
    int maxInstances(const QByteArray &id) override { return ask("maxInstances"), id.size(); }

protected:
    void ask(const QByteArray &question) const { FakeLog::addQuestion(m_name + ' ' + question); }
    FakePluginScript &script() const { return fakePluginScripts()[m_name]; }

    QByteArray m_name;
};

template<typename Base>
using FakeFor
        = FakeScripted<Base, QMediaServiceFeaturesInterface, QMediaServiceSupportedFormatsInterface,
                       QMediaServiceSupportedDevicesInterface, QMediaServiceDefaultDeviceInterface,
                       QMediaServiceCameraInfoInterface, QFLMediaServiceCodecInfoInterface>;

using FakeObject = FakeFor<QObject>;

class FakePlugin : public FakeFor<QMediaServiceProviderPlugin>
{
public:
    using FakeScripted::FakeScripted;

    QMediaService *create(const QString &key) override
    {
        FakeLog::add(m_name + " create " + key.toLatin1());
        return script().creates ? new FakeService(m_name) : nullptr;
    }
    void release(QMediaService *service) override
    {
        FakeLog::add(m_name + " release");
        if (script().onRelease)
            script().onRelease(service);
        delete service;
    }
};

#endif
