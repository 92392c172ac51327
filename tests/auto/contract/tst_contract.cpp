// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Tests of the binary contract: the library against contract.txt, and what it shares with Qt.

#include "fakebackend.h"
#include "fakecodeccontrols.h"

#include <qflcodecqueuecontrol.h>
#include <qfldecodingvideosink.h>
#include <qflmediaserviceprovider.h>

#include <private/qmediaobject_p.h>
#include <private/qmediapluginloader_p.h>

#include <QtMultimedia/qcamerainfo.h>
#include <QtMultimedia/qmediaavailabilitycontrol.h>
#include <QtMultimedia/qmediaplayer.h>
#include <QtMultimedia/qmetadatareadercontrol.h>
#include <QtTest/QtTest>

#include <dlfcn.h>
#include <set>

/*! The lines that contract.sh writes. QProcess doesn't work in every emulator. */
static QByteArrayList script(const QByteArray &arguments)
{
    FILE *const pipe = popen(SCRIPT + arguments, "r");
    QFile output;
    output.open(pipe, QFile::ReadOnly);
    const QByteArray lines = output.readAll();
    pclose(pipe);
    return lines.trimmed().split('\n');
}

/*! The exported symbol at the address; empty if there is none. */
static QByteArray symbolAt(const void *address)
{
    Dl_info info;
    return dladdr(address, &info) && info.dli_saddr == address ? info.dli_sname : "";
}

// What QObject implements is left out, as its empty functions share an address. The destructors of
// an abstract class are there with some compilers, and null with others.
static void writeVirtualFunctions(QTextStream &out, const QByteArray &symbol)
{
    const auto *const ofObject = static_cast<void *const *>(dlsym(RTLD_DEFAULT, "_ZTV7QObject"));
    const auto *const table = static_cast<void *const *>(dlsym(RTLD_DEFAULT, symbol));
    out << symbol << '\n';
    Dl_info info;
    int slot = 0;
    for (auto *word = table; dladdr(word, &info) && info.dli_saddr == table; ++word, ++slot) {
        const QByteArray name = symbolAt(*word);
        if (symbolAt(word[1]).startsWith("_ZTI"))
            out << "  part at " << -qintptr(*word++) << '\n', slot = -1;
        else if (!*word || QByteArrayList {"D0Ev", "D1Ev", "D2Ev"}.contains(name.right(4)))
            out << "    " << slot << " destructor\n";
        else if (word - table >= 14 || *word != ofObject[word - table])
            out << "    " << slot << ' ' << name << '\n';
    }
}

static void writePureVirtualFunctions(QTextStream &out)
{
    const auto write = [&](const char *name, auto function) {
        out << name << ' ' << qFromUnaligned<quintptr>(&function) / sizeof(void *) << '\n';
    };
#define WRITE(Function) write(#Function, &Function)
    using Info = QFLMediaServiceCodecInfoInterface;
    using Encode = QFLEncodeControl;
    using Decode = QFLDecodeControl;
    WRITE(QMediaServiceProvider::requestService), WRITE(QMediaServiceProvider::releaseService),
            WRITE(Info::codec), WRITE(Info::isEncoder), WRITE(Info::isHardwareAccelerated),
            WRITE(Info::maxInstances), WRITE(Encode::supportedCodecs),
            WRITE(Encode::supportedPixelFormats), WRITE(Encode::status), WRITE(Encode::start),
            WRITE(Encode::drain), WRITE(Encode::flush), WRITE(Encode::stop), WRITE(Encode::encode),
            WRITE(Decode::supportedCodecs), WRITE(Decode::isFormatSupported), WRITE(Decode::start),
            WRITE(Decode::videoSettings), WRITE(Decode::outputFormat), WRITE(Decode::decode),
            WRITE(Decode::drain), WRITE(Decode::flush), WRITE(Decode::stop), WRITE(Decode::status),
            WRITE(QFLCodecQueueControl::capacity), WRITE(QFLCodecQueueControl::pending),
            WRITE(QFLCodecQueueControl::lowWatermark), WRITE(QFLCodecQueueControl::setLowWatermark);
}

static void writeMembers(QTextStream &out, const QMetaObject &meta)
{
    static const char *const kinds[] = {"method ", "signal ", "slot "};
    out << meta.className() << " : " << symbolAt(meta.superClass())
        << (meta.classInfoCount() ? " with information\n" : "\n");
    for (auto *related = meta.d.relatedMetaObjects; related && *related; ++related)
        out << "  related to " << symbolAt(*related) << '\n';
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        const QMetaMethod method = meta.method(i);
        out << "  "
            << "-#+"[method.access()] << kinds[method.methodType()] << method.typeName() << ' '
            << method.methodSignature() << '\n';
    }
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i) {
        const QMetaProperty property = meta.property(i);
        out << (property.isWritable() ? "  writable " : "  readable ") << property.typeName() << ' '
            << property.name() << ' ' << property.notifySignal().methodSignature() << '\n';
    }
    for (int i = meta.enumeratorOffset(); i < meta.enumeratorCount(); ++i) {
        const QMetaEnum values = meta.enumerator(i);
        out << (values.isFlag() ? "  flags " : "  enum ") << values.name() << '\n';
        for (int k = 0; k < values.keyCount(); ++k)
            out << "    " << values.value(k) << ' ' << values.key(k) << '\n';
    }
}

#define ID(Class) #Class " " Class##_iid
static const QByteArrayList identifiers = QByteArrayList()
        << ID(QMediaBindableInterface) << ID(QFLSource) << ID(QFLSink) << ID(QFLEncodedVideoSink)
        << ID(QFLMediaServiceCodecInfoInterface) << ID(QFLEncodeControl) << ID(QFLDecodeControl)
        << ID(QFLCodecQueueControl) << ID(QFLEncodedVideoSourceControl)
        << ID(QFLRawVideoSourceControl);

/*! Writes the names that the object answers in a meta-cast, and where in it the answers are. */
static void writeCasts(QTextStream &out, QObject *object)
{
    const auto names = (identifiers.join(' ') + ' ' + object->metaObject()->className()).split(' ');
    out << object->metaObject()->className() << '\n';
    for (const QByteArray &name : std::set<QByteArray>(names.begin(), names.end())) {
        if (const auto *part = static_cast<char *>(object->qt_metacast(name)))
            out << "  " << name << ' ' << part - reinterpret_cast<char *>(object) << '\n';
    }
}

static const QByteArrayList typesBeforeMain = [] {
    QMap<QByteArray, QByteArray> types;
    for (int id = QMetaType::User; QMetaType::isRegistered(id); ++id) {
        const QByteArray name = QMetaType::typeName(id);
        if (name.contains("QFL"))
            types[name] = name + " is " + QMetaType::typeName(QMetaType::type(name));
    }
    return types.values();
}();

struct FakeMetaData : public QMetaDataReaderControl
{
    bool isMetaDataAvailable() const override { return true; }
    QVariant metaData(const QString &key) const override { return key; }
    QStringList availableMetaData() const override { return {QStringLiteral("key")}; }
};

struct FakeAvailability : public QMediaAvailabilityControl
{
    QMultimedia::AvailabilityStatus availability() const override { return QMultimedia::Busy; }
};

class tst_Contract : public QObject
{
    Q_OBJECT

private slots:
    void list()
    {
        QByteArray text;
        QTextStream out(&text);
        out << "Virtual functions by slot\n";
        for (const QByteArray &name : script("names '_ZTV.*'"))
            writeVirtualFunctions(out, name);
        writePureVirtualFunctions(out);
        out << "\nMeta-objects\n";
        for (const QByteArray &name : script("names '_ZN.*16staticMetaObjectE'"))
            writeMembers(out, *static_cast<QMetaObject *>(dlsym(RTLD_DEFAULT, name)));
        out << "\nIdentifiers\n" << identifiers.join('\n') << "\n\nMeta-casts\n";
        QFLEncoder encoder;
        QFLDecoder decoder;
        QFLDecodingVideoSink sink(&decoder);
        FakeEncodedSource source;
        QObject *provider = QMediaServiceProvider::defaultServiceProvider();
        for (QObject *object : QObjectList {&encoder, &decoder, &sink, &source, provider})
            writeCasts(out, object);
        out << "\nSizes of Qt's records\n"
            << sizeof(QMediaObjectPrivate) << ' ' << sizeof(QMediaPluginLoader) << ' '
            << sizeof(QMediaServiceProvider) << '\n';
        out << "\nTypes registered before main\n" << typesBeforeMain.join('\n') << Qt::endl;
        QTemporaryFile file;
        QVERIFY(file.open() && file.write(text) == text.size() && file.flush());
        const QByteArray difference
                = script("compare <" + QFile::encodeName(file.fileName())).join('\n');
        QVERIFY2(difference == "none", difference);
    }

    void recordsMadeByQtAndByUs()
    {
        struct Watching : QMediaObject
        {
            using QMediaObject::addPropertyWatch;
        };
        FakeBackend backend;
        FakeService service("s");
        backend.services["facelink.encoder"] = &service;
        auto *metaData = service.add<FakeMetaData>(QMetaDataReaderControl_iid);
        auto *availability = service.add<FakeAvailability>(QMediaAvailabilityControl_iid);
        FakeMediaObject madeByQt(&service);
        QFLEncoder madeByUs;
        for (QMediaObject *object : QList<QMediaObject *> {&madeByQt, &madeByUs}) {
            object->setNotifyInterval(123);
            (object->*&Watching::addPropertyWatch)("notifyInterval");
            const auto *record = static_cast<QMediaObjectPrivate *>(QObjectPrivate::get(object));
            QCOMPARE(record->service, &service);
            QCOMPARE(record->metaDataControl, metaData);
            QCOMPARE(record->availabilityControl, availability);
            QCOMPARE(record->notifyTimer->interval(), 123);
            QCOMPARE(record->notifyProperties, QSet<int>({1}));
        }
    }

    void providerCalledByQt()
    {
        FakeBackend backend;
        FakeService service("qt");
        backend.services[Q_MEDIASERVICE_CAMERA] = &service;
        backend.deviceNames = {"x"};
        backend.deviceMap["x"] = {"One", QCamera::FrontFace, 270};
        backend.defaultDeviceName = "x";
        QCOMPARE(QCamera().service(), &service);
        QVERIFY(FakeLog::take().endsWith(", p-qt"));
        const QCameraInfo info = QCameraInfo::defaultCamera();
        QVERIFY(FakeLog::take().contains("p defaultDevice " Q_MEDIASERVICE_CAMERA));
        QCOMPARE(info.deviceName() + info.description(), QStringLiteral("xOne"));
        QCOMPARE(info.position(), QCamera::FrontFace);
        QCOMPARE(info.orientation(), 270);
        QCOMPARE(QMediaPlayer::hasSupport(QStringLiteral("x")), QMultimedia::ProbablySupported);
        QCOMPARE(QMediaPlayer::supportedMimeTypes(), QStringList(QStringLiteral("video/fake")));
        COMPARE_LOG("p hasSupport " Q_MEDIASERVICE_MEDIAPLAYER
                    ", p supportedMimeTypes " Q_MEDIASERVICE_MEDIAPLAYER);
    }
};

QTEST_GUILESS_MAIN(tst_Contract)

#include "tst_contract.moc"
