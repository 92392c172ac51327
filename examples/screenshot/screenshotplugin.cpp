// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The plugin that takes a screenshot of the program that loads it.

#include "screenshotplugin.h"

#include "screenshot.h"

/*!
    Qt loads the plugin into a program that runs with QT_QPA_GENERIC_PLUGINS=screenshot:FILE, and
    calls this with FILE as \a fileName.
*/
QObject *ScreenshotPlugin::create(const QString &, const QString &fileName)
{
    return new Screenshot(fileName);
}
