// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The call: a video call over RTP, of this machine with itself or with a peer.

#include "call.h"
#include "callwindow.h"
#include "cameraselection.h"
#include "interruptwatcher.h"
#include "tooltranslation.h"

#include <qflcamerainfo.h>
#include <qflcodecinfo.h>

#include <QtCore/qdir.h>
#include <QtCore/qfileinfo.h>
#include <QtCore/qloggingcategory.h>
#include <QtCore/qtextstream.h>
#include <QtWidgets/qapplication.h>

namespace {

struct FaceLinkCall
{
    Q_DECLARE_TR_FUNCTIONS(FaceLinkCall)
};

void print(const QString &text)
{
    QTextStream(stdout) << text << Qt::endl;
}

int report(const CallError &error)
{
    QTextStream(stderr) << QLatin1String("facelink-call: ") << error.text << Qt::endl;
    return error.code;
}

bool hasDisplay()
{
    return qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY")
            || qEnvironmentVariableIsSet("QT_QPA_PLATFORM");
}

// Qt aborts where the display can't be opened, unless it may fall back to a platform without one.
std::unique_ptr<QApplication> openDisplay(int &argc, char *argv[])
{
    const bool isPlatformChosen = qEnvironmentVariableIsSet("QT_QPA_PLATFORM");
    if (!isPlatformChosen) {
        const bool hasWayland = qEnvironmentVariableIsSet("WAYLAND_DISPLAY");
        qputenv("QT_QPA_PLATFORM", hasWayland ? "wayland;xcb;offscreen" : "xcb;offscreen");
    }
    auto application = std::make_unique<QApplication>(argc, argv);
    const bool isFallback = QGuiApplication::platformName() == QLatin1String("offscreen");
    return isPlatformChosen || !isFallback ? std::move(application) : nullptr;
}

// Lets the program find the backend in its build tree too, where no plugin is installed.
void addBuildTreePlugins()
{
    const QString folder = QCoreApplication::applicationDirPath() + QStringLiteral("/../plugins");
    if (QFileInfo(folder + QStringLiteral("/mediaservice")).isDir())
        QCoreApplication::addLibraryPath(QDir::cleanPath(folder));
}

int listCameras(const CallSettings &settings)
{
    const CallError error = CameraSelection::announceFile(settings);
    if (error.code != CallError::NoError)
        return report(error);
    const QList<QFLCameraInfo> cameras = QFLCameraInfo::availableCameras();
    for (const QFLCameraInfo &camera : cameras)
        print(camera.deviceName() + QLatin1Char('\t') + camera.description());
    if (!cameras.isEmpty())
        return CallError::NoError;
    return report(
            {CallError::NoCamera, FaceLinkCall::tr("there is no camera, or no camera backend")});
}

int listCodecs()
{
    const QList<QFLCodecInfo> codecs
            = QFLCodecInfo::availableEncoders() + QFLCodecInfo::availableDecoders();
    for (const QFLCodecInfo &codec : codecs) {
        print(codec.codec() + QLatin1Char('\t') + QString::fromLatin1(codec.codecId())
              + QLatin1Char('\t')
              + (codec.isEncoder() ? FaceLinkCall::tr("encoder") : FaceLinkCall::tr("decoder"))
              + (codec.isHardwareAccelerated() ? QLatin1Char('\t') + FaceLinkCall::tr("hardware")
                                               : QString()));
    }
    if (!codecs.isEmpty())
        return CallError::NoError;
    return report({CallError::NoCodec, FaceLinkCall::tr("there is no codec, or no codec backend")});
}

// Found out before the call rather than after it.
bool canWriteSnapshot(const QString &fileName)
{
    const QFileInfo file(fileName);
    return fileName.isEmpty()
            || (!file.isDir() && QFileInfo(file.absolutePath()).isWritable()
                && (!file.exists() || file.isWritable()));
}

CallError snapshotError(const QString &fileName)
{
    return {CallError::SnapshotError,
            FaceLinkCall::tr("cannot write the snapshot '%1'").arg(fileName)};
}

// That the disk is full shows only when the file is flushed.
bool saveSnapshot(const QImage &image, const QString &fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::WriteOnly) && image.save(&file, "PNG") && file.flush();
}

int concludeCall(Call *call, const CallSettings &settings)
{
    print(call->updatedStatistics().summary());
    if (call->error().code != CallError::NoError)
        return report(call->error());
    if (call->remoteSurface()->framesPresented() == 0)
        return report({CallError::NoPicture, FaceLinkCall::tr("no picture was received")});
    if (!settings.snapshot.isEmpty()
        && !saveSnapshot(call->remoteSurface()->image(), settings.snapshot))
        return report(snapshotError(settings.snapshot));
    return CallError::NoError;
}

void showProgress(Call *call, CallWindow *window)
{
    const CallStatistics &statistics = call->updatedStatistics();
    print(statistics.progressLine());
    if (window)
        window->showStatus(statistics.statusLine());
}

int makeCall(const CallSettings &settings)
{
    if (!canWriteSnapshot(settings.snapshot))
        return report(snapshotError(settings.snapshot));
    InterruptWatcher interrupts;
    Call call(settings);
    std::unique_ptr<CallWindow> window;
    if (!settings.headless) {
        window = std::make_unique<CallWindow>(&call);
        QObject::connect(window.get(), &CallWindow::closed, &call, &Call::finish);
        window->show();
    }
    const CallError error = call.start();
    if (error.code != CallError::NoError)
        return report(error);

    QTimer progress;
    QObject::connect(&progress, &QTimer::timeout, &call,
                     [&] { showProgress(&call, window.get()); });
    progress.start(1000);
    if (settings.duration > 0)
        QTimer::singleShot(qRound64(settings.duration * 1000), &call, &Call::finish);
    QObject::connect(&interrupts, &InterruptWatcher::interrupted, &call, &Call::finish);
    QObject::connect(&call, &Call::finished, QCoreApplication::instance(), &QCoreApplication::quit);
    QCoreApplication::exec();
    return concludeCall(&call, settings);
}

// Texts are translated only where there is an application, and the options say of which kind.
bool parse(int argc, char *argv[], CallSettings *settings)
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    QCoreApplication application(argc, argv);
    ToolTranslation::install();
    return settings->parse(arguments);
}

int run(const CallSettings &settings)
{
    switch (settings.action) {
    case CallSettings::ShowHelp:
        print(CallSettings::helpText());
        return CallError::NoError;
    case CallSettings::ShowVersion:
        print(QStringLiteral("facelink-call " QTFACELINK_VERSION_STR));
        return CallError::NoError;
    case CallSettings::ListCameras:
        return listCameras(settings);
    case CallSettings::ListCodecs:
        return listCodecs();
    case CallSettings::MakeCall:
        break;
    }
    return makeCall(settings);
}

} // namespace

int main(int argc, char *argv[])
{
    CallSettings settings;
    if (!parse(argc, argv, &settings))
        return report({CallError::BadOption, settings.errorText()});
    QLoggingCategory::setFilterRules(QStringLiteral("facelink.*.debug=false\nqt.qpa.*=false"));

    // Nothing but the window needs a display, or the windowing system at all.
    std::unique_ptr<QCoreApplication> application;
    if (!settings.needsDisplay())
        application = std::make_unique<QCoreApplication>(argc, argv);
    else if (hasDisplay())
        application = openDisplay(argc, argv);
    if (!application)
        return report({CallError::NoDisplay,
                       FaceLinkCall::tr("there is no display; --headless needs none")});
    ToolTranslation::install();
    QCoreApplication::setApplicationName(QStringLiteral("facelink-call"));
    QGuiApplication::setQuitOnLastWindowClosed(false);
    addBuildTreePlugins();
    return run(settings);
}
