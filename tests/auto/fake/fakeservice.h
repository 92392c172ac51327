// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// A media service: a map from identifiers to controls.

#ifndef FAKESERVICE_H
#define FAKESERVICE_H

#include "fakelog.h"

#include <QtCore/qmap.h>
#include <QtMultimedia/qmediacontrol.h>
#include <QtMultimedia/qmediaobject.h>
#include <QtMultimedia/qmediaservice.h>

class FakeService : public QMediaService
{
public:
    explicit FakeService(const char *name, QObject *parent = nullptr) : QMediaService(parent)
    {
        setObjectName(QLatin1String(name));
    }

    template<typename Control> Control *add(const char *identifier)
    {
        auto *control = new Control;
        control->setParent(this);
        control->setObjectName(
                QString::fromLatin1(objectName().toLatin1() + '.' + shortName(identifier) + ' '));
        controls.insert(identifier, control);
        return control;
    }

    QMediaControl *requestControl(const char *identifier) override
    {
        if (isLogged(identifier))
            FakeLog::addQuestion(entry('+', identifier));
        return controls.value(identifier);
    }
    void releaseControl(QMediaControl *control) override
    {
        FakeLog::add(entry('-', controls.key(control)));
    }

    QMap<QByteArray, QMediaControl *> controls;

    // Qt's base class asks for these.
    QByteArrayList unlogged = {"mediaavailability", "metadatareader"};

private:
    static QByteArray shortName(const QByteArray &identifier)
    {
        const QByteArray name = identifier.left(identifier.indexOf('/'));
        return name.mid(name.lastIndexOf('.') + 1).replace("control", "");
    }
    bool isLogged(const QByteArray &identifier) const
    {
        return !unlogged.contains(shortName(identifier));
    }
    QByteArray entry(char sign, const QByteArray &identifier) const
    {
        return objectName().toLatin1() + sign + shortName(identifier);
    }
};

class FakeMediaObject : public QMediaObject
{
public:
    explicit FakeMediaObject(QMediaService *service) : QMediaObject(nullptr, service) { }
};

#endif
