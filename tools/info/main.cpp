// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The tool that lists cameras, encoders and decoders, facelink-info.

#include "inventory.h"
#include "textreport.h"
#include "tooltranslation.h"

#include <qflglobal.h>

#include <QtCore/qcommandlineparser.h>
#include <QtCore/qjsondocument.h>
#include <QtCore/qtextstream.h>

namespace {

enum ExitCode { Listed = 0, BadOption = 1, NoBackend = 2 };

class FaceLinkInfo
{
    Q_DECLARE_TR_FUNCTIONS(FaceLinkInfo)

public:
    static void addOptions(QCommandLineParser *parser);
    static ExitCode list(const QCommandLineParser &parser);

private:
    static ExitCode fail(ExitCode code, const QString &text);
};

void FaceLinkInfo::addOptions(QCommandLineParser *parser)
{
    parser->setApplicationDescription(
            tr("Lists the cameras, encoders and decoders that Qt FaceLink's backends offer."));
    parser->addHelpOption();
    parser->addVersionOption();
    parser->addOptions({
            {QStringLiteral("json"), tr("Writes JSON, for other programs.")},
            {QStringLiteral("viewfinder-settings"),
             tr("Opens each camera, and lists its picture sizes, frame rates and pixel formats.")},
    });
}

ExitCode FaceLinkInfo::list(const QCommandLineParser &parser)
{
    if (!parser.positionalArguments().isEmpty()) {
        return fail(BadOption,
                    tr("unexpected argument '%1'").arg(parser.positionalArguments().constFirst()));
    }
    if (!Inventory::hasBackend()) {
        const QString folders
                = QCoreApplication::libraryPaths().join(QLatin1String("/mediaservice\n  "));
        return fail(
                NoBackend,
                tr("there is no backend. QT_PLUGIN_PATH adds to where backends are looked for:\n"
                   "  %1/mediaservice")
                        .arg(folders));
    }
    const QJsonObject inventory
            = Inventory::collect(parser.isSet(QStringLiteral("viewfinder-settings")));
    if (parser.isSet(QStringLiteral("json")))
        QTextStream(stdout) << QJsonDocument(inventory).toJson();
    else
        QTextStream(stdout) << TextReport(inventory).text() << Qt::endl;
    return Listed;
}

ExitCode FaceLinkInfo::fail(ExitCode code, const QString &text)
{
    QTextStream(stderr) << QLatin1String("facelink-info: ") << text << Qt::endl;
    return code;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("facelink-info"));
    QCoreApplication::setApplicationVersion(QStringLiteral(QTFACELINK_VERSION_STR));
    ToolTranslation::install();

    QCommandLineParser parser;
    FaceLinkInfo::addOptions(&parser);
    parser.process(application);
    return FaceLinkInfo::list(parser);
}
