// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Our declaration of the plugin loader of Qt Multimedia 5.15, for Qt installations without its
// private headers.

#ifndef QMEDIAPLUGINLOADER_P_H
#define QMEDIAPLUGINLOADER_P_H

#include <QtMultimedia/qtmultimediaglobal.h>

#include <QtCore/qjsonobject.h>
#include <QtCore/qmap.h>
#include <QtCore/qobject.h>
#include <QtCore/qstringlist.h>

QT_BEGIN_NAMESPACE

class QFactoryLoader;

// The members stand here for the size of the object only, which its users allocate.
class Q_MULTIMEDIA_EXPORT QMediaPluginLoader
{
public:
    QMediaPluginLoader(const char *interfaceId, const QString &location = QString(),
                       Qt::CaseSensitivity keySensitivity = Qt::CaseSensitive);
    ~QMediaPluginLoader();

    QStringList keys() const;
    QObject *instance(const QString &key);
    QList<QObject *> instances(const QString &key);

private:
    QByteArray m_interfaceId;
    QString m_location;
    QMap<QString, QList<QJsonObject>> m_metaData;
    QFactoryLoader *m_loader;
};

QT_END_NAMESPACE

#endif
