// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// What the command line asks for.

#include "callsettings.h"

#include <QtCore/qcommandlineparser.h>
#include <QtCore/qregularexpression.h>

namespace {

const int minimumBitRate = 10000;
const int maximumBitRate = 200000000;
const int minimumSide = 16;
const int maximumSide = 4096;
const qreal maximumFrameRate = 240;
const qreal maximumDuration = 1000000;

void addCallOptions(QCommandLineParser *parser)
{
    parser->addOptions({
            {QStringLiteral("loopback"),
             CallSettings::tr("Calls itself over UDP on 127.0.0.1. This is the default.")},
            {QStringLiteral("listen"),
             CallSettings::tr(
                     "The UDP port that the peer's pictures come to, 5004 with a peer and any free one in "
                     "the loopback; RTCP uses the port after it. Listens on 127.0.0.1, or with a peer on "
                     "another machine on the address from which that one is reached, unless an address "
                     "is given."),
             CallSettings::tr("[ADDRESS:]PORT")},
            {QStringLiteral("peer"), CallSettings::tr("Sends to this peer instead of to itself."),
             CallSettings::tr("HOST:PORT")},
            {QStringLiteral("duration"), CallSettings::tr("Ends the call after so many seconds."),
             CallSettings::tr("SECONDS")},
            {QStringLiteral("headless"), CallSettings::tr("Shows no window and needs no display.")},
            {QStringLiteral("snapshot"),
             CallSettings::tr("Saves the last remote picture as a PNG when the call ends."),
             CallSettings::tr("FILE")},
    });
}

void addPictureOptions(QCommandLineParser *parser)
{
    parser->addOptions({
            {QStringLiteral("camera"),
             CallSettings::tr(
                     "The camera, by device name or description; else the default camera."),
             CallSettings::tr("NAME")},
            {QStringLiteral("camera-file"),
             CallSettings::tr("Plays this video file as the camera, in a loop."),
             CallSettings::tr("FILE")},
            {QStringLiteral("codec"),
             CallSettings::tr(
                     "The codec, H264, VP8, VP9 or H265, or the id of an encoder; else the first there is."),
             CallSettings::tr("NAME")},
            {QStringLiteral("bitrate"),
             CallSettings::tr(
                     "Bits per second, also as 800k or 2M; by default as the size needs, 2M at 1280x720."),
             CallSettings::tr("BITS")},
            {QStringLiteral("size"),
             CallSettings::tr("The size of the picture; by default the camera's, up to 1280x720."),
             CallSettings::tr("WxH")},
            {QStringLiteral("fps"), CallSettings::tr("Frames per second, by default 30."),
             CallSettings::tr("RATE")},
    });
}

void addOptions(QCommandLineParser *parser)
{
    parser->setApplicationDescription(
            CallSettings::tr("Makes a video call, by default of the machine with itself."));
    addCallOptions(parser);
    addPictureOptions(parser);
    parser->addOptions({
            {QStringLiteral("list-cameras"), CallSettings::tr("Lists the cameras.")},
            {QStringLiteral("list-codecs"), CallSettings::tr("Lists the encoders and decoders.")},
            {{QStringLiteral("h"), QStringLiteral("help")}, CallSettings::tr("Shows this help.")},
            {{QStringLiteral("v"), QStringLiteral("version")},
             CallSettings::tr("Shows the version.")},
    });
}

RtpEndpoint defaultListenEndpoint(bool isLoopback)
{
    return {QString(), quint16(isLoopback ? 0 : 5004)};
}

} // namespace

/*!
    Reads the command line, program name first. Returns false, with errorText() set, if it is not
    one that the program understands.
*/
bool CallSettings::parse(const QStringList &arguments)
{
    QCommandLineParser parser;
    addOptions(&parser);
    if (!parser.parse(arguments))
        return fail(parser.errorText());
    if (!parser.positionalArguments().isEmpty())
        return fail(tr("unexpected argument '%1'").arg(parser.positionalArguments().constFirst()));

    const QList<QPair<QString, Action>> actions = {
            {QStringLiteral("help"), ShowHelp},
            {QStringLiteral("version"), ShowVersion},
            {QStringLiteral("list-cameras"), ListCameras},
            {QStringLiteral("list-codecs"), ListCodecs},
    };
    for (const auto &[option, requested] : actions) {
        if (action == MakeCall && parser.isSet(option))
            action = requested;
    }
    if (action == ShowHelp || action == ShowVersion)
        return true;
    codec = parser.value(QStringLiteral("codec"));
    return parseEndpoints(parser) && parseCamera(parser) && parseBitRate(parser)
            && parseSize(parser)
            && parseNumber(parser, QStringLiteral("fps"), maximumFrameRate, &frameRate)
            && parseNumber(parser, QStringLiteral("duration"), maximumDuration, &duration)
            && parseOutput(parser);
}

QString CallSettings::errorText() const
{
    return m_errorText;
}

/*! Needs an application object. */
QString CallSettings::helpText()
{
    QCommandLineParser parser;
    addOptions(&parser);
    return parser.helpText()
            + tr("\nExit codes: 0 pictures came through, 1 bad option, 2 no camera or it failed,\n"
                 "3 no codec or it failed, 4 port in use, 5 network failure, 6 no picture received,\n"
                 "7 snapshot not written, 8 no display.\n");
}

bool CallSettings::needsDisplay() const
{
    return action == MakeCall && !headless;
}

bool CallSettings::isLoopback() const
{
    return peer.isNull();
}

bool CallSettings::parseEndpoints(const QCommandLineParser &parser)
{
    if (parser.isSet(QStringLiteral("peer"))) {
        const QString text = parser.value(QStringLiteral("peer"));
        if (parser.isSet(QStringLiteral("loopback")))
            return fail(tr("--loopback and --peer exclude each other"));
        peer = RtpEndpoint::fromString(text);
        if (peer.isNull() || peer.host.isEmpty())
            return fail(tr("--peer needs HOST:PORT, not '%1'").arg(text));
    }
    listen = defaultListenEndpoint(isLoopback());
    if (!parser.isSet(QStringLiteral("listen")))
        return true;
    const QString text = parser.value(QStringLiteral("listen"));
    listen = RtpEndpoint::fromString(text);
    if (listen.isNull())
        return fail(tr("--listen needs a port from 1 to 65534, not '%1'").arg(text));
    return true;
}

bool CallSettings::parseCamera(const QCommandLineParser &parser)
{
    for (const QString &option : {QStringLiteral("camera"), QStringLiteral("camera-file")}) {
        if (parser.isSet(option) && parser.value(option).isEmpty())
            return fail(tr("--%1 needs a name").arg(option));
    }
    camera = parser.value(QStringLiteral("camera"));
    cameraFile = parser.value(QStringLiteral("camera-file"));
    if (!camera.isEmpty() && !cameraFile.isEmpty())
        return fail(tr("--camera and --camera-file exclude each other"));
    return true;
}

bool CallSettings::parseBitRate(const QCommandLineParser &parser)
{
    if (!parser.isSet(QStringLiteral("bitrate")))
        return true;
    const QString text = parser.value(QStringLiteral("bitrate"));
    static const QRegularExpression pattern(QStringLiteral("^(\\d{1,9}(?:\\.\\d+)?)([kKmM]?)$"));
    const QRegularExpressionMatch match = pattern.match(text);
    const QString unit = match.captured(2).toLower();
    const int factor = unit == QLatin1String("m") ? 1000000 : unit == QLatin1String("k") ? 1000 : 1;
    const qint64 value = qRound64(match.captured(1).toDouble() * factor);
    if (value < minimumBitRate || value > maximumBitRate)
        return fail(tr("--bitrate needs 10k to 200M, not '%1'").arg(text));
    bitRate = int(value);
    return true;
}

bool CallSettings::parseSize(const QCommandLineParser &parser)
{
    if (!parser.isSet(QStringLiteral("size")))
        return true;
    const QString text = parser.value(QStringLiteral("size"));
    static const QRegularExpression pattern(QStringLiteral("^(\\d{1,4})x(\\d{1,4})$"));
    const QRegularExpressionMatch match = pattern.match(text);
    size = QSize(match.captured(1).toInt(), match.captured(2).toInt());
    const QSize bounded = size.boundedTo({maximumSide, maximumSide});
    if (size != bounded.expandedTo({minimumSide, minimumSide}) || size.width() % 2 != 0
        || size.height() % 2 != 0) {
        return fail(tr("--size needs two even numbers from %1 to %2 such as 640x360, not '%3'")
                            .arg(minimumSide)
                            .arg(maximumSide)
                            .arg(text));
    }
    return true;
}

bool CallSettings::parseNumber(const QCommandLineParser &parser, const QString &option,
                               qreal maximum, qreal *value)
{
    if (!parser.isSet(option))
        return true;
    const QString text = parser.value(option);
    *value = text.toDouble();
    if (*value > 0 && *value <= maximum)
        return true;
    return fail(tr("--%1 needs a number above 0 and up to %2, not '%3'")
                        .arg(option, QString::number(qint64(maximum)), text));
}

bool CallSettings::parseOutput(const QCommandLineParser &parser)
{
    headless = parser.isSet(QStringLiteral("headless"));
    snapshot = parser.value(QStringLiteral("snapshot"));
    if (parser.isSet(QStringLiteral("snapshot")) && snapshot.isEmpty())
        return fail(tr("--snapshot needs the name of a file"));
    return true;
}

bool CallSettings::fail(const QString &text)
{
    m_errorText = text;
    return false;
}
