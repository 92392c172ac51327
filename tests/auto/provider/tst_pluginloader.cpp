// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Tests of when the plugin loader is made, and of what the provider does without it.

#include <qflcodecinfo.h>

#include <private/qmediaserviceprovider_p.h>

#include <QtMultimedia/qmediaservice.h>
#include <QtTest/QtTest>

#include <cstdlib>

namespace {

QMediaService *outstandingService = nullptr;

/*! What is made before main() begins is destroyed when the loader, made later, is gone already. */
struct AfterTheLoader
{
    ~AfterTheLoader()
    {
        QMediaServiceProvider *provider = QMediaServiceProvider::defaultServiceProvider();
        const bool silent = provider->devices("test.file").isEmpty()
                && provider->defaultDevice("test.file").isEmpty()
                && provider->deviceDescription("test.file", "x").isEmpty()
                && provider->supportedMimeTypes("test.file").isEmpty()
                && provider->hasSupport("test.file", QString(), {}) == QMultimedia::NotSupported
                && !provider->requestService("test.file") && QFLCodecInfo("x").codec().isEmpty()
                && !provider->supportedFeatures(outstandingService);
        // The plugin that made the service is gone too.
        provider->releaseService(outstandingService);
        if (!silent) {
            fputs("The provider used the plugin loader after its end.\n", stderr);
            std::_Exit(EXIT_FAILURE);
        }
    }
} afterTheLoader;

} // namespace

class tst_PluginLoader : public QObject
{
    Q_OBJECT

private slots:
    void pathSetInMain();
};

// The path was set when the library had long been loaded.
void tst_PluginLoader::pathSetInMain()
{
    QMediaServiceProvider *provider = QMediaServiceProvider::defaultServiceProvider();
    QMediaService *service = provider->requestService("test.file");
    QVERIFY(service);
    QCOMPARE(service->objectName(), QStringLiteral("file"));
    QCOMPARE(provider->hasSupport("test.file", QString(), {}), QMultimedia::MaybeSupported);
    QCOMPARE(QFLCodecInfo("x").codec(), QString());
    provider->releaseService(service);
    outstandingService = provider->requestService("test.file");
    QVERIFY(outstandingService);
}

int main(int argc, char *argv[])
{
    qputenv("QT_PLUGIN_PATH", FAKE_PLUGIN_PATH);
    QCoreApplication application(argc, argv);
    tst_PluginLoader test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_pluginloader.moc"
