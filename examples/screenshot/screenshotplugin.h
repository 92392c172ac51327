// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The plugin that takes a screenshot of the program that loads it.

#ifndef SCREENSHOTPLUGIN_H
#define SCREENSHOTPLUGIN_H

#include <QtGui/qgenericplugin.h>

class ScreenshotPlugin : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "screenshotplugin.json")

public:
    QObject *create(const QString &name, const QString &fileName) override;
};

#endif
