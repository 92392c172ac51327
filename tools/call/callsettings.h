// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// What the command line asks for.

#ifndef CALLSETTINGS_H
#define CALLSETTINGS_H

#include "rtpendpoint.h"

#include <QtCore/qcoreapplication.h>
#include <QtCore/qsize.h>
#include <QtCore/qstringlist.h>

class QCommandLineParser;

class CallSettings
{
    Q_DECLARE_TR_FUNCTIONS(CallSettings)

public:
    enum Action { MakeCall, ListCameras, ListCodecs, ShowHelp, ShowVersion };

    bool parse(const QStringList &arguments);
    QString errorText() const;
    static QString helpText();

    bool needsDisplay() const;
    bool isLoopback() const;

    Action action = MakeCall;
    RtpEndpoint listen;
    RtpEndpoint peer;
    QString camera;
    QString cameraFile;
    QString codec;
    int bitRate = 0;
    QSize size;
    qreal frameRate = 30;
    qreal duration = 0;
    bool headless = false;
    QString snapshot;

private:
    bool parseEndpoints(const QCommandLineParser &parser);
    bool parseCamera(const QCommandLineParser &parser);
    bool parseBitRate(const QCommandLineParser &parser);
    bool parseSize(const QCommandLineParser &parser);
    bool parseNumber(const QCommandLineParser &parser, const QString &option, qreal maximum,
                     qreal *value);
    bool parseOutput(const QCommandLineParser &parser);
    bool fail(const QString &text);

    QString m_errorText;
};

#endif
