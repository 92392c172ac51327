// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Tests of the provider that chooses among the plugins, and of the codec descriptions.

#include "fakebackend.h"
#include "fakeplugin.h"

#include <qflcodecinfo.h>

#include <QtCore/qplugin.h>
#include <QtTest/QtTest>

Q_IMPORT_PLUGIN(FirstPlugin)
Q_IMPORT_PLUGIN(PlainPlugin)
Q_IMPORT_PLUGIN(SecondPlugin)
Q_IMPORT_PLUGIN(ThirdPlugin)
Q_IMPORT_PLUGIN(DecodingPlugin)

using Hint = QMediaServiceProviderHint;

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

static const QByteArray any = "test.all";
static const QByteArray ours = "facelink.camera";
static const QByteArrayList all = {"first", "second", "third"};
static const QByteArrayList facts = {devices, cameraInfo};
static const Hint mime(QStringLiteral("video/x"), {});
static const Hint several(Hint::LowLatencyPlayback | Hint::StreamPlayback);
static const Hint front(QCamera::FrontFace);
static const Hint back(QCamera::BackFace);

struct Choice
{
    const char *name;
    QByteArray key;
    Hint hint;
    QByteArrayList plugins;
    QByteArrayList interfaces;
    QByteArray chosen;
};
Q_DECLARE_METATYPE(const Choice *)

static const Choice choices[] = {
        {"null", any, Hint(), all, {features}, "first"},
        {"null, player", player, Hint(), all, {features}, "third"},
        {"null, player without features", player, Hint(), {"first"}, {features}, "second"},
        {"device", any, Hint(QByteArray("xy")), all, {devices}, "second"},
        {"device, ours", ours, Hint(QByteArray("xy")), all, {devices}, "second"},
        {"device that nobody has", any, Hint(QByteArray("none")), all, {devices}, "first"},
        {"device, hidden interface", any, Hint(QByteArray("xy")), {"third"}, {devices}, "third"},
        {"empty device", any, Hint(QByteArray("")), all, {devices}, "third"},
        {"features", any, Hint(Hint::RecordingSupport), all, {features}, "third"},
        {"several features", any, several, all, {features}, "second"},
        {"features that nobody has", any, Hint(Hint::VideoSurface), all, {features}, "first"},
        {"no features", any, Hint(Hint::Features()), {"second"}, {features}, "second"},
        {"no features, no interface", any, Hint(Hint::Features()), {}, {}, "first"},
        {"content", any, mime, all, {formats}, "second"},
        {"content, no interfaces", any, mime, {}, {}, "first"},
        {"content, equal to no interface", any, mime, {"first"}, {formats}, "first"},
        {"position", camera, back, all, facts, "third"},
        {"position, one without", camera, back, {"first", "second"}, facts, "second"},
        {"position, no devices", camera, back, all, {cameraInfo}, "first"},
        {"position, no facts", camera, back, all, {devices}, "first"},
        {"no position", camera, Hint(QCamera::UnspecifiedPosition), all, facts, "first"},
        {"position, ours", ours, back, all, facts, "first"},
        {"position nobody has", camera, front, {"second", "third"}, facts, "first"},
};

static QByteArrayList idsOf(const QList<QFLCodecInfo> &codecs)
{
    QByteArrayList ids;
    for (const QFLCodecInfo &info : codecs)
        ids += info.codecId();
    return ids;
}

class tst_QFLPluginServiceProvider : public QObject
{
    Q_OBJECT

private slots:
    void init() { fakePluginScripts().clear(); }

    void choice_data()
    {
        QTest::addColumn<const Choice *>("choice");
        for (const Choice &row : choices)
            QTest::newRow(row.name) << &row;
    }

    void choice()
    {
        QFETCH(const Choice *, choice);
        const auto probably = QMultimedia::ProbablySupported;
        plugin("first") = {Hint::LowLatencyPlayback,
                           QMultimedia::MaybeSupported,
                           {"xx"},
                           {{"xx", QCamera::FrontFace}}};
        plugin("second")
                = {several.features(), probably, {"yy", "xy"}, {{"xy", QCamera::BackFace}}};
        plugin("third") = {Hint::RecordingSupport, probably, {"xy", ""}, {{"", QCamera::BackFace}}};
        offer(choice->plugins, choice->interfaces);
        const FakeLog log;
        QMediaService *service = provider()->requestService(choice->key, choice->hint);
        QVERIFY(FakeLog::take().endsWith(choice->chosen + " create " + choice->key));
        provider()->releaseService(service);
        COMPARE_LOG(choice->chosen + " release");
    }

    void formatsEndTheSearch()
    {
        offer(all, {formats});
        plugin("first").support = QMultimedia::MaybeSupported;
        plugin("second").support = QMultimedia::PreferredService;
        plugin("third").support = QMultimedia::PreferredService;
        const FakeLog log;
        provider()->releaseService(provider()->requestService(any, mime));
        COMPARE_LOG("first hasSupport, second hasSupport, second create test.all, second release");

        for (const QByteArray &name : all)
            plugin(name).support = QMultimedia::NotSupported;
        QCOMPARE(provider()->requestService(any, mime), nullptr);
        QVERIFY(FakeLog::take().endsWith(warning + "\"test.all\""));
        offer({"second"}, {});
        provider()->releaseService(provider()->requestService(any, mime));
        QVERIFY(FakeLog::take().endsWith("second create test.all, second release"));
    }

    // The loader gets the key up to its first zero byte, the record the caller's bytes.
    void keys()
    {
        const FakeLog log;
        for (const QByteArray key : {"test.nobody", "test.plain"}) {
            QCOMPARE(provider()->requestService(key, Hint()), nullptr);
            COMPARE_LOG(warning + '"' + key + '"');
        }
        QMediaService *service = provider()->requestService(QByteArray("test.all\0x", 10), Hint());
        QVERIFY(service);
        COMPARE_LOG("first create test.all");
        offer({"first"}, {features});
        provider()->supportedFeatures(service);
        COMPARE_LOG(QByteArray("first supportedFeatures test.all\0x", 34));
        provider()->releaseService(service);
        offer({"first"}, {});
        plugin("first").creates = false;
        FakeLog::take();
        QCOMPARE(provider()->requestService(any, Hint()), nullptr);
        COMPARE_LOG("first create test.all");
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

    // A plugin may use the provider itself while it makes a service or takes one back.
    void requestsWithinEachOther()
    {
        const FakeLog log;
        QMediaService *inner = nullptr;
        callOnce([&] { inner = provider()->requestService("test.all", Hint()); });
        QMediaService *outer = provider()->requestService("test.all", Hint());
        QVERIFY(inner && outer && inner != outer);
        callOnce([&] { provider()->releaseService(inner); });
        provider()->releaseService(outer);
        provider()->releaseService(inner);
        provider()->releaseService(outer);
        COMPARE_LOG("first create test.all, first create test.all, first release, first release");
    }

    // Lists are read on several threads while services come and go on one.
    void queriesBesideRequests()
    {
        offer({"second", "third", "plain", "decoding"}, {});
        offer({"first"}, {devices});
        plugin("first").devices = {"x"};
        std::atomic<int> right {0};
        QVector<QThread *> threads;
        for (int i = 0; i < 3; ++i) {
            threads.append(QThread::create([&] {
                for (int j = 0; j < 200; ++j)
                    right += provider()->devices("test.all") == QByteArrayList({"x"});
            }));
            threads.last()->start();
        }
        for (int j = 0; j < 200; ++j) {
            QMediaService *service = provider()->requestService("facelink.camera", Hint());
            provider()->releaseService(service);
        }
        for (QThread *thread : qAsConst(threads))
            thread->wait();
        qDeleteAll(threads);
        QCOMPARE(int(right), 600);
    }

    // Estimates and types count only those plugins that have the features behind the flags.
    void formatQueries_data()
    {
        QTest::addColumn<QByteArrayList>("interfaces");
        QTest::addColumn<int>("flags");
        QTest::addColumn<int>("estimate");
        QTest::addColumn<QString>("types");
        const auto row = [](const char *name, const QByteArrayList &interfaces, int flags,
                            int estimate, const char *types) {
            QTest::newRow(name) << interfaces << flags << estimate << QString::fromLatin1(types);
        };
        const QByteArrayList both = {formats, features};
        row("best, capped", both, 0, QMultimedia::ProbablySupported, "a,b,c,d");
        row("low latency", both, 1, QMultimedia::MaybeSupported, "a,b");
        row("stream", both, 2, QMultimedia::MaybeSupported, "d,a");
        row("video surface, no matter for estimates", both, 4, QMultimedia::ProbablySupported,
            "d,a");
        row("two flags", both, 3, QMultimedia::NotSupported, "");
        row("no features interface", {formats}, 7, QMultimedia::ProbablySupported, "a,b,c,d");
        row("no formats interface", {features}, 0, QMultimedia::MaybeSupported, "");
        row("no formats interface, skipped", {features}, 3, QMultimedia::NotSupported, "");
    }

    void formatQueries()
    {
        QFETCH(QByteArrayList, interfaces);
        QFETCH(int, flags);
        const FakeLog log;
        const auto list = [](const char *text) {
            return QString::fromLatin1(text).split(QLatin1Char(','));
        };
        const auto maybe = QMultimedia::MaybeSupported;
        plugin("first") = {Hint::LowLatencyPlayback, maybe, {}, {}, list("a,b,a")};
        plugin("second")
                = {Hint::RecordingSupport, QMultimedia::PreferredService, {}, {}, list("b,c")};
        plugin("third") = {Hint::StreamPlayback | Hint::VideoSurface, maybe, {}, {}, list("d,a")};
        offer(all, interfaces);
        const QString type = QStringLiteral("video/x");
        QTEST(int(provider()->hasSupport(camera, type, {}, flags)), "estimate");
        QCOMPARE(provider()->hasSupport("test.nobody", type, {}, flags), QMultimedia::NotSupported);
        QTEST(provider()->supportedMimeTypes(camera, flags).join(QLatin1Char(',')), "types");
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

    void cameraFacts()
    {
        const FakeLog log;
        offer({"first", "second"}, facts);
        plugin("first").devices = {"x"};
        plugin("first").positions = {{"x", QCamera::BackFace}, {"z", QCamera::FrontFace}};
        plugin("second").devices = {"y"};
        plugin("second").positions = {{"y", QCamera::FrontFace}, {"z", QCamera::BackFace}};
        const auto areFacts = [](const QByteArray &device, QCamera::Position position) {
            return provider()->cameraPosition(device) == position
                    && provider()->cameraOrientation(device) == 90 * position;
        };
        QVERIFY(areFacts("x", QCamera::BackFace));
        QVERIFY(areFacts("y", QCamera::FrontFace));
        QVERIFY(areFacts("z", QCamera::UnspecifiedPosition));
        offer({"first"}, {cameraInfo});
        QVERIFY(areFacts("z", QCamera::FrontFace));
        offer({"first"}, {devices});
        QVERIFY(areFacts("x", QCamera::UnspecifiedPosition));
    }

    // The first plugin with the interface answers for every id.
    void codecs()
    {
        const QFLCodecInfo bare("hwenc");
        QVERIFY(!bare.isNull());
        QCOMPARE(bare.codec(), QString());
        QVERIFY(!bare.isEncoder() && !bare.isHardwareAccelerated());
        QCOMPARE(bare.maxInstances(), 0);

        offer({"second", "third"}, {codecInfo});
        const FakeLog log;
        const QFLCodecInfo info("hwenc");
        COMPARE_LOG("second isEncoder, second codec, second maxInstances, second isHardware");
        QCOMPARE(info.codecId(), QByteArray("hwenc"));
        QCOMPARE(info.codec(), QStringLiteral("second hwenc"));
        QVERIFY(info.isEncoder() && info.isHardwareAccelerated());
        QCOMPARE(info.maxInstances(), 5);
        QVERIFY(info == bare && !(info != bare));
        QVERIFY(info != QFLCodecInfo("hwdec"));

        // A provider of another kind describes them only if its meta-cast says so.
        const FakeFor<FakeBackend> foreign("foreign");
        const QFLCodecInfo null("x");
        QVERIFY(null.isNull() && null.codecId().isEmpty() && null == QFLCodecInfo("y"));
        offer({"foreign"}, {codecInfo});
        QCOMPARE(QFLCodecInfo("x").codec(), QStringLiteral("foreign x"));
    }

    // Ids come from the service's own plugins, their descriptions from those of the encoder key.
    void codecLists()
    {
        using I = QFLCodecInfo;
        offer({"decoding"}, {devices, codecInfo});
        plugin("decoding").devices = {"hwdec"};
        QCOMPARE(idsOf(I::availableDecoders()), QByteArrayList({"hwdec"}));
        QCOMPARE(I::availableDecoders().first().maxInstances(), 0);
        QVERIFY(I::availableDecoders(QString(), true).isEmpty());
        QVERIFY(I::availableEncoders().isEmpty());

        offer({"first"}, {devices, codecInfo});
        plugin("first").devices = {"hwenc", "enc", "hwenc"};
        QCOMPARE(idsOf(I::availableEncoders()), QByteArrayList({"hwenc", "enc", "hwenc"}));
        QCOMPARE(idsOf(I::availableDecoders()).last(), QByteArray("hwdec"));
        QCOMPARE(idsOf(I::availableEncoders(QString(), true)), QByteArrayList({"hwenc", "hwenc"}));
        QCOMPARE(idsOf(I::availableDecoders(QStringLiteral("first enc"))), QByteArrayList({"enc"}));
        QVERIFY(I::availableEncoders(QStringLiteral("first enc"), true).isEmpty());
        QVERIFY(I::availableEncoders(QStringLiteral("First enc")).isEmpty());
    }
};

/*! Only the static plugins of this program count; one of them fails to load. */
int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    QCoreApplication::setLibraryPaths({});
    QStaticPlugin broken = qt_static_plugin_FirstPlugin();
    broken.instance = []() -> QObject * { return nullptr; };
    qRegisterStaticPluginFunction(broken);
    tst_QFLPluginServiceProvider test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_qflpluginserviceprovider.moc"
