// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The default service provider of a test, with services and devices of the test's choice.

#ifndef FAKEBACKEND_H
#define FAKEBACKEND_H

#include "fakeservice.h"

#include <private/qmediaserviceprovider_p.h>

/*! Is the default provider, and keeps the log, for as long as it lives. */
class FakeBackend : public QMediaServiceProvider
{
public:
    struct Device
    {
        const char *description;
        QCamera::Position position;
        int orientation;
    };

    explicit FakeBackend(const char *name = "p") : m_previous(defaultServiceProvider())
    {
        setObjectName(QLatin1String(name));
        setDefaultServiceProvider(this);
    }
    ~FakeBackend() override { setDefaultServiceProvider(m_previous); }

    QMediaService *requestService(const QByteArray &type,
                                  const QMediaServiceProviderHint &hint) override
    {
        log('+' + type);
        lastHint = hint;
        return services.value(type);
    }
    void releaseService(QMediaService *s) override { log('-' + s->objectName().toLatin1()); }
    QMultimedia::SupportEstimate hasSupport(const QByteArray &type, const QString &,
                                            const QStringList &, int) const override
    {
        log(" hasSupport " + type);
        return QMultimedia::ProbablySupported;
    }
    QStringList supportedMimeTypes(const QByteArray &type, int) const override
    {
        log(" supportedMimeTypes " + type);
        return {QStringLiteral("video/fake")};
    }
    QByteArray defaultDevice(const QByteArray &type) const override
    {
        log(" defaultDevice " + type);
        return defaultDeviceName;
    }
    QByteArrayList devices(const QByteArray &type) const override
    {
        log(" devices " + type);
        return deviceNames;
    }
    QString deviceDescription(const QByteArray &type, const QByteArray &device) override
    {
        log(" deviceDescription " + type + ' ' + device);
        return QString::fromLatin1(deviceMap.value(device).description);
    }
    QCamera::Position cameraPosition(const QByteArray &device) const override
    {
        log(" cameraPosition " + device);
        return deviceMap.value(device).position;
    }
    int cameraOrientation(const QByteArray &device) const override
    {
        log(" cameraOrientation " + device);
        return deviceMap.value(device).orientation;
    }

    QMap<QByteArray, QMediaService *> services;
    QByteArrayList deviceNames;
    QMap<QByteArray, Device> deviceMap;
    QByteArray defaultDeviceName;
    QMediaServiceProviderHint lastHint;

private:
    void log(const QByteArray &call) const { FakeLog::add(this, call); }

    FakeLog m_log;
    QMediaServiceProvider *m_previous;
};

/*! The default provider with one service. */
struct FakeWorld : FakeBackend
{
    FakeWorld(const char *type, const char *name) : service(name) { services[type] = &service; }

    FakeService service;
};

#endif
