// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Lets a program speak the user's language.

#include "tooltranslation.h"

#include <QtCore/qcoreapplication.h>
#include <QtCore/qlibraryinfo.h>
#include <QtCore/qlocale.h>
#include <QtCore/qtranslator.h>

namespace {

void installCatalogue(const QString &name, const QString &folder)
{
    auto *translator = new QTranslator(QCoreApplication::instance());
    if (translator->load(QLocale(), name, QStringLiteral("_"), folder))
        QCoreApplication::installTranslator(translator);
    else
        delete translator;
}

} // namespace

/*!
    Installs the texts of Qt and of Qt FaceLink in the language of the system's locale, as far as there
    are translations. Needs an application object, which owns them. Those of Qt FaceLink lie where the
    program's own prefix, or its build, has them.
*/
void ToolTranslation::install()
{
    installCatalogue(QStringLiteral("qtbase"),
                     QLibraryInfo::location(QLibraryInfo::TranslationsPath));
    installCatalogue(QStringLiteral("qtfacelink"),
                     QCoreApplication::applicationDirPath()
                             + QStringLiteral("/" FACELINK_TRANSLATIONS_FOLDER));
}
