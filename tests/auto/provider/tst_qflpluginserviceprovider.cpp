// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-3.0-or-later
// Tests of the provider that chooses among the plugins, and of the codec descriptions.

#include "fakeplugin.h"

#include <qflcodecinfo.h>
#include <private/qmediaserviceprovider_p.h>

#include <QtCore/qplugin.h>
#include <QtTest/QtTest>

Q_IMPORT_PLUGIN(FirstPlugin)
Q_IMPORT_PLUGIN(PlainPlugin)
Q_IMPORT_PLUGIN(SecondPlugin)
Q_IMPORT_PLUGIN(ThirdPlugin)

using Hint = QMediaServiceProviderHint;
Q_DECLARE_METATYPE(QMediaServiceProviderHint)

static const QByteArray features = QMediaServiceFeaturesInterface_iid;
static const QByteArray formats = QMediaServiceSupportedFormatsInterface_iid;
static const QByteArray devices = QMediaServiceSupportedDevicesInterface_iid;
static const QByteArray defaultDevice = QMediaServiceDefaultDeviceInterface_iid;
static const QByteArray cameraInfo = QMediaServiceCameraInfoInterface_iid;
static const QByteArray codecInfo = QFLMediaServiceCodecInfoInterface_iid;

static const QByteArray camera = Q_MEDIASERVICE_CAMERA;
static const QByteArray player = Q_MEDIASERVICE_MEDIAPLAYER;

static const QByteArray warning
        = "warning default: defaultServiceProvider::requestService(): no service found for - ";

static FakePluginScript &plugin(const QByteArray &name)
{
    return fakePluginScripts()[name];
}

static QMediaServiceProvider *provider()
{
    return QMediaServiceProvider::defaultServiceProvider();
}

/*! Each plugin of the list has the interfaces; the others have none. */
static void offer(const QByteArrayList &plugins, const QByteArrayList &interfaces)
{
    for (const QByteArray &name : plugins)
        plugin(name).interfaces = interfaces;
}

class tst_QFLPluginServiceProvider : public QObject
{
    Q_OBJECT

private slots:
    void init() { fakePluginScripts().clear(); }

    void choice_data()
    {
        QTest::addColumn<QByteArray>("key");
        QTest::addColumn<Hint>("hint");
        QTest::addColumn<QByteArrayList>("plugins");
        QTest::addColumn<QByteArrayList>("interfaces");
        QTest::addColumn<QByteArray>("chosen");

        const QByteArray any = "test.all";
        const QByteArray ours = "facelink.camera";
        const QByteArrayList all = {"first", "second", "third"};
        const Hint mime(QStringLiteral("video/x"), {});
        const Hint back(QCamera::BackFace);
        const auto row = [](const char *name, const QByteArray &key, const Hint &hint,
                            const QByteArrayList &plugins, const QByteArrayList &interfaces,
                            const char *chosen) {
            QTest::newRow(name) << key << hint << plugins << interfaces << QByteArray(chosen);
        };
        const QByteArrayList facts = {devices, cameraInfo};
        row("null", any, Hint(), all, {features}, "first");
        row("null, player", player, Hint(), all, {features}, "third");
        row("null, player without features", player, Hint(), {"first"}, {features}, "second");
        row("device", any, Hint(QByteArray("xy")), all, {devices}, "second");
        row("device, ours", ours, Hint(QByteArray("xy")), all, {devices}, "second");
        row("device that nobody has", any, Hint(QByteArray("none")), all, {devices}, "first");
        row("device, hidden interface", any, Hint(QByteArray("xy")), {"third"}, {devices}, "third");
        row("empty device", any, Hint(QByteArray("")), all, {devices}, "third");
        row("features", any, Hint(Hint::RecordingSupport), all, {features}, "third");
        row("several features", any, Hint(Hint::LowLatencyPlayback | Hint::StreamPlayback), all,
            {features}, "second");
        row("features that nobody has", any, Hint(Hint::VideoSurface), all, {features}, "first");
        row("no features", any, Hint(Hint::Features()), {"second"}, {features}, "second");
        row("no features, no interface", any, Hint(Hint::Features()), {}, {}, "first");
        row("content", any, mime, all, {formats}, "second");
        row("content, no interfaces", any, mime, {}, {}, "first");
        row("content, equal to no interface", any, mime, {"first"}, {formats}, "first");
        row("position", camera, back, all, facts, "third");
        row("position, one without", camera, back, {"first", "second"}, facts, "second");
        row("position, no devices", camera, back, all, {cameraInfo}, "first");
        row("position, no facts", camera, back, all, {devices}, "first");
        row("no position", camera, Hint(QCamera::UnspecifiedPosition), all, facts, "first");
        row("position, ours", ours, back, all, facts, "first");
        row("position that nobody has", camera, Hint(QCamera::FrontFace), {"second", "third"},
            facts, "first");
    }

    void choice()
    {
        QFETCH(QByteArray, key);
        QFETCH(Hint, hint);
        QFETCH(QByteArrayList, plugins);
        QFETCH(QByteArrayList, interfaces);
        QFETCH(QByteArray, chosen);
        offer(plugins, interfaces);
        plugin("first").features = Hint::LowLatencyPlayback;
        plugin("second").features = Hint::LowLatencyPlayback | Hint::StreamPlayback;
        plugin("third").features = Hint::RecordingSupport;
        plugin("first").support = QMultimedia::MaybeSupported;
        plugin("second").support = QMultimedia::ProbablySupported;
        plugin("third").support = QMultimedia::ProbablySupported;
        plugin("first").devices = {"xx"};
        plugin("second").devices = {"yy", "xy"};
        plugin("third").devices = {"xy", ""};
        plugin("first").positions["xx"] = QCamera::FrontFace;
        plugin("second").positions["xy"] = QCamera::BackFace;
        plugin("third").positions[""] = QCamera::BackFace;

        const FakeLog log;
        QMediaService *service = provider()->requestService(key, hint);
        QVERIFY(service);
        QCOMPARE(service->objectName(), QString::fromLatin1(chosen));
        QVERIFY(FakeLog::take().endsWith(chosen + " create " + key));
        provider()->releaseService(service);
        COMPARE_LOG(chosen + " release");
    }

    void formatsEndTheSearch()
    {
        offer({"first", "second", "third"}, {formats});
        plugin("first").support = QMultimedia::MaybeSupported;
        plugin("second").support = QMultimedia::PreferredService;
        plugin("third").support = QMultimedia::PreferredService;
        const FakeLog log;
        const Hint hint(QStringLiteral("video/x"), {});
        provider()->releaseService(provider()->requestService("test.all", hint));
        COMPARE_LOG("first hasSupport, second hasSupport, second create test.all, second release");

        for (const char *name : {"first", "second", "third"})
            plugin(name).support = QMultimedia::NotSupported;
        QCOMPARE(provider()->requestService("test.all", hint), nullptr);
        QVERIFY(FakeLog::take().endsWith(warning + "\"test.all\""));
        offer({"second"}, {});
        QMediaService *service = provider()->requestService("test.all", hint);
        QVERIFY(service);
        QCOMPARE(service->objectName(), QStringLiteral("second"));
        provider()->releaseService(service);
    }

    void noService()
    {
        const FakeLog log;
        for (const QByteArray key : {"test.nobody", "test.plain"}) {
            QCOMPARE(provider()->requestService(key, Hint()), nullptr);
            COMPARE_LOG(warning + '"' + key + '"');
        }
        plugin("first").creates = false;
        QCOMPARE(provider()->requestService("test.all", Hint()), nullptr);
        COMPARE_LOG("first create test.all");
    }

    // The loader gets the key up to its first zero byte, the record the caller's bytes.
    void keysAreBytes()
    {
        const FakeLog log;
        QMediaService *service = provider()->requestService(QByteArray("test.all\0x", 10), Hint());
        QVERIFY(service);
        COMPARE_LOG("first create test.all");
        offer({"first"}, {features});
        provider()->supportedFeatures(service);
        COMPARE_LOG(QByteArray("first supportedFeatures test.all\0x", 34));
        provider()->releaseService(service);
    }

    // The service is forgotten before its plugin takes it back.
    void release()
    {
        const FakeLog log;
        plugin("first").features = Hint::StreamPlayback;
        plugin("first").onRelease = [](QMediaService *service) {
            provider()->releaseService(service);
            FakeLog::add("known " + QByteArray::number(provider()->supportedFeatures(service)));
        };
        FakeService foreign("foreign");
        provider()->releaseService(nullptr);
        provider()->releaseService(&foreign);
        COMPARE_LOG("");
        QMediaService *service = provider()->requestService("test.all", Hint());
        QCOMPARE(provider()->supportedFeatures(service), Hint::Features());
        offer({"first"}, {features});
        QCOMPARE(provider()->supportedFeatures(service), Hint::Features(Hint::StreamPlayback));
        QCOMPARE(provider()->supportedFeatures(&foreign), Hint::Features());
        QCOMPARE(provider()->supportedFeatures(nullptr), Hint::Features());
        FakeLog::take();
        provider()->releaseService(service);
        provider()->releaseService(service);
        COMPARE_LOG("first release, known 0");
    }

    void hasSupport_data()
    {
        using S = QMultimedia::SupportEstimate;
        QTest::addColumn<QByteArrayList>("interfaces");
        QTest::addColumn<int>("offered");
        QTest::addColumn<QList<S>>("estimates");
        QTest::addColumn<int>("flags");
        QTest::addColumn<S>("expected");

        const S no = QMultimedia::NotSupported;
        const S maybe = QMultimedia::MaybeSupported;
        const S probably = QMultimedia::ProbablySupported;
        const S preferred = QMultimedia::PreferredService;
        const QByteArrayList both = {formats, features};
        const auto row = [](const char *name, const QByteArrayList &interfaces, int offered,
                            const QList<S> &estimates, int flags, S expected) {
            QTest::newRow(name) << interfaces << offered << estimates << flags << expected;
        };
        row("best", {formats}, 0, {maybe, probably, no}, 0, probably);
        row("capped", {formats}, 0, {no, preferred, no}, 0, probably);
        row("none", {formats}, 0, {no, no, no}, 0, no);
        row("no formats", {features}, 0, {no, no, no}, 0, maybe);
        row("skipped counts for nothing", both, 0, {probably, probably, probably}, 1, no);
        row("skipped leaves formats alone", {features}, 0, {no, no, no}, 1, no);
        row("not skipped without flags", both, 0, {maybe, no, no}, 0, maybe);
        row("low latency", both, 1, {maybe, no, no}, 1, maybe);
        row("stream", both, 4, {maybe, no, no}, 2, maybe);
        row("recording is no stream", both, 2, {maybe, no, no}, 2, no);
        row("video surface is not tested", both, 0, {maybe, no, no}, 4, maybe);
        row("one flag of two", both, 1, {maybe, no, no}, 3, no);
    }

    void hasSupport()
    {
        QFETCH(QByteArrayList, interfaces);
        QFETCH(int, offered);
        QFETCH(QList<QMultimedia::SupportEstimate>, estimates);
        QFETCH(int, flags);
        const FakeLog log;
        const QByteArrayList plugins = {"first", "second", "third"};
        offer(plugins, interfaces);
        for (int i = 0; i < 3; ++i) {
            plugin(plugins.at(i)).features = Hint::Features(offered);
            plugin(plugins.at(i)).support = estimates.at(i);
        }
        QTEST(provider()->hasSupport(camera, QStringLiteral("video/x"), {}, flags), "expected");
        QCOMPARE(provider()->hasSupport("test.nobody", QStringLiteral("video/x"), {}, flags),
                 QMultimedia::NotSupported);
    }

    void mimeTypes_data()
    {
        QTest::addColumn<QByteArrayList>("interfaces");
        QTest::addColumn<int>("flags");
        QTest::addColumn<QString>("expected");
        const QByteArrayList both = {formats, features};
        QTest::newRow("all") << both << 0 << QStringLiteral("a,b,c,d");
        QTest::newRow("low latency") << both << 1 << QStringLiteral("a,b");
        QTest::newRow("stream") << both << 2 << QStringLiteral("b,c");
        QTest::newRow("video surface") << both << 4 << QStringLiteral("d,a");
        QTest::newRow("two flags") << both << 3 << QString();
        QTest::newRow("no features interface")
                << QByteArrayList({formats}) << 7 << QStringLiteral("a,b,c,d");
        QTest::newRow("no formats interface") << QByteArrayList({features}) << 0 << QString();
    }

    void mimeTypes()
    {
        QFETCH(QByteArrayList, interfaces);
        QFETCH(int, flags);
        const FakeLog log;
        const auto list = [](const char *text) {
            return QString::fromLatin1(text).split(QLatin1Char(','));
        };
        offer({"first", "second", "third"}, interfaces);
        plugin("first").mimeTypes = list("a,b,a");
        plugin("first").features = Hint::LowLatencyPlayback;
        plugin("second").mimeTypes = list("b,c");
        plugin("second").features = Hint::StreamPlayback;
        plugin("third").mimeTypes = list("d,a");
        plugin("third").features = Hint::VideoSurface | Hint::RecordingSupport;
        QTEST(provider()->supportedMimeTypes(camera, flags).join(QLatin1Char(',')), "expected");
        QCOMPARE(provider()->supportedMimeTypes("test.nobody", flags), QStringList());
    }

    // Device queries are answered by plain objects as well as by plugins.
    void deviceLists()
    {
        const FakeLog log;
        QCOMPARE(provider()->devices("test.all"), QByteArrayList());
        QCOMPARE(provider()->defaultDevice("test.all"), QByteArray());
        QCOMPARE(provider()->deviceDescription("test.all", "x"), QString());

        offer({"first", "plain", "second"}, {devices});
        plugin("first").devices = {"x", "y"};
        plugin("plain").devices = {"y", ""};
        plugin("second").devices = {"y", "z"};
        QCOMPARE(provider()->devices("test.all"), QByteArrayList({"x", "y", "y", "", "y", "z"}));
        QCOMPARE(provider()->devices(camera), QByteArrayList({"x", "y", "y", "z"}));
        QCOMPARE(provider()->devices("test.plain"), QByteArrayList({"y", ""}));
        QCOMPARE(provider()->devices("test.nobody"), QByteArrayList());
        QCOMPARE(provider()->defaultDevice("test.all"), QByteArray("x"));

        QCOMPARE(provider()->deviceDescription("test.all", "z"), QStringLiteral("second z"));
        COMPARE_LOG("second deviceDescription");
        QCOMPARE(provider()->deviceDescription("test.all", "y"), QStringLiteral("first y"));
        QCOMPARE(provider()->deviceDescription("test.all", "none"), QString());

        offer({"third"}, {defaultDevice});
        plugin("third").defaultDevice = "mine";
        QCOMPARE(provider()->defaultDevice("test.all"), QByteArray("mine"));
        offer({"second"}, {defaultDevice});
        QCOMPARE(provider()->defaultDevice("test.all"), QByteArray());
    }

    void cameraFacts_data()
    {
        QTest::addColumn<QByteArrayList>("first");
        QTest::addColumn<QByteArray>("device");
        QTest::addColumn<QCamera::Position>("position");
        const QByteArrayList both = {devices, cameraInfo};
        QTest::newRow("first") << both << QByteArray("x") << QCamera::BackFace;
        QTest::newRow("second") << both << QByteArray("y") << QCamera::FrontFace;
        QTest::newRow("unlisted") << both << QByteArray("z") << QCamera::UnspecifiedPosition;
        QTest::newRow("any name") << QByteArrayList({cameraInfo}) << QByteArray("z")
                                  << QCamera::FrontFace;
        QTest::newRow("no facts") << QByteArrayList({devices}) << QByteArray("x")
                                  << QCamera::UnspecifiedPosition;
    }

    void cameraFacts()
    {
        QFETCH(QByteArrayList, first);
        QFETCH(QByteArray, device);
        QFETCH(QCamera::Position, position);
        const FakeLog log;
        offer({"first"}, first);
        offer({"second"}, {devices, cameraInfo});
        plugin("first").devices = {"x"};
        plugin("first").positions = {{"x", QCamera::BackFace}, {"z", QCamera::FrontFace}};
        plugin("second").devices = {"y"};
        plugin("second").positions = {{"y", QCamera::FrontFace}, {"z", QCamera::BackFace}};
        QCOMPARE(provider()->cameraPosition(device), position);
        QCOMPARE(provider()->cameraOrientation(device), 90 * position);
    }

    // The first plugin with the interface answers for every id.
    void codecs()
    {
        const FakeLog log;
        const QFLCodecInfo bare("hwenc");
        QVERIFY(!bare.isNull());
        QCOMPARE(bare.codec(), QString());
        QVERIFY(!bare.isEncoder() && !bare.isHardwareAccelerated());
        QCOMPARE(bare.maxInstances(), 0);

        offer({"second", "third"}, {codecInfo});
        const QFLCodecInfo info("hwenc");
        QCOMPARE(info.codecId(), QByteArray("hwenc"));
        QCOMPARE(info.codec(), QStringLiteral("second"));
        QVERIFY(info.isEncoder() && info.isHardwareAccelerated());
        QCOMPARE(info.maxInstances(), 5);
        QVERIFY(info == bare && !(info != bare));
        QVERIFY(info != QFLCodecInfo("hwdec"));
    }
};

/*! Only the static plugins of this program count. */
int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    QCoreApplication::setLibraryPaths({});
    tst_QFLPluginServiceProvider test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_qflpluginserviceprovider.moc"
