// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-3.0-or-later
// Tests of the binary interface: layouts, tables of virtual functions, meta-objects, symbols.

#include "fakebackend.h"
#include "fakecodeccontrols.h"

#include <qflcamera.h>
#include <qflcodecqueuecontrol.h>
#include <qfldecodingvideosink.h>
#include <qflencodervideosurface.h>
#include <qflmediaserviceprovider.h>

#include <private/qmediaobject_p.h>
#include <private/qmediapluginloader_p.h>

#include <QtMultimedia/qcamerainfo.h>
#include <QtMultimedia/qmediaavailabilitycontrol.h>
#include <QtMultimedia/qmediaplayer.h>
#include <QtMultimedia/qmetadatareadercontrol.h>
#include <QtTest/QtTest>

class FakeMetaData : public QMetaDataReaderControl
{
public:
    bool isMetaDataAvailable() const override { return true; }
    QVariant metaData(const QString &key) const override { return key; }
    QStringList availableMetaData() const override { return {QStringLiteral("key")}; }
};

class FakeAvailability : public QMediaAvailabilityControl
{
public:
    QMultimedia::AvailabilityStatus availability() const override { return QMultimedia::Busy; }
};

/*! A media object whose private data Qt makes. */
class QtObject : public QMediaObject
{
public:
    explicit QtObject(QMediaService *service) : QMediaObject(nullptr, service)
    {
        addPropertyWatch("notifyInterval");
    }
    const QMediaObjectPrivate *record()
    {
        return static_cast<QMediaObjectPrivate *>(QObjectPrivate::get(this));
    }
};

/*! The place of a virtual function in its table, after the convention of the C++ ABI. */
template<typename Function> static int slotOf(Function function)
{
    quintptr offset = 0;
    memcpy(&offset, &function, sizeof offset);
    return int((offset & ~quintptr(1)) / sizeof(void *));
}

/*! Whether the virtual functions stand in this order, from the slot called \a first on. */
template<typename... Functions> static bool areSlotsFrom(int first, Functions... functions)
{
    return ((slotOf(functions) == first++) && ...);
}

/*! The members in their order; a star marks a signal, a minus sign a private function. */
static QByteArray membersOf(const QMetaObject &meta)
{
    QByteArrayList members;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        const QMetaMethod method = meta.method(i);
        members += QByteArray(method.access() == QMetaMethod::Private ? "-" : "")
                + (method.methodType() == QMetaMethod::Signal ? "*" : "")
                + method.methodSignature();
    }
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i) {
        const QMetaProperty property = meta.property(i);
        members += QByteArray(property.typeName()) + ' ' + property.name()
                + (property.isWritable() ? " writable " : " ") + property.notifySignal().name();
    }
    for (int i = meta.enumeratorOffset(); i < meta.enumeratorCount(); ++i) {
        const QMetaEnum values = meta.enumerator(i);
        members += values.name();
        for (int k = 0; k < values.keyCount(); ++k)
            members.last() += ' ' + QByteArray::number(values.value(k)) + values.key(k);
    }
    return members.join("; ");
}

struct MetaObject
{
    const QMetaObject &meta;
    const char *members;
};

static const MetaObject metaObjectTable[] = {
        {QFLEncodedVideoSourceControl::staticMetaObject, ""},
        {QFLRawVideoSourceControl::staticMetaObject, ""},
        {QFLMediaServiceProvider::staticMetaObject, ""},
        {QFLEncoderVideoSurface::staticMetaObject, ""},
        {QFLCodecQueueControl::staticMetaObject, "*needData(int)"},
        {QFLDecodingVideoSink::staticMetaObject,
         "-_q_error(QFLDecoder::Error); -_q_statusChanged(QFLDecoder::Status)"},
        {QFLEncodeControl::staticMetaObject,
         "*encodedVideoFrame(QFLEncodedVideoFrame); *statusChanged(QFLEncoder::Status); "
         "*error(QFLEncoder::Error,QString); *endOfStream(); encode(QVideoFrame)"},
        {QFLDecodeControl::staticMetaObject,
         "*statusChanged(QFLDecoder::Status); *error(QFLDecoder::Error,QString); "
         "*outputFormatChanged(QVideoSurfaceFormat); *endOfStream()"},
        {QFLEncoder::staticMetaObject,
         "*encodedVideoFrame(QFLEncodedVideoFrame); *statusChanged(QFLEncoder::Status); "
         "*errorChanged(QFLEncoder::Error); -_q_error(QFLEncoder::Error,QString); "
         "QFLEncoder::Status status statusChanged; QFLEncoder::Error error errorChanged; "
         "Status 0UnavailableStatus 1UnloadedStatus 2LoadingStatus 3LoadedStatus 4StoppingStatus "
         "5StartingStatus 6StartedStatus; "
         "Error 0NoError 1ResourceError 2FormatError 3ConsumerError 4HardwareError"},
        {QFLDecoder::staticMetaObject,
         "*statusChanged(QFLDecoder::Status); *errorChanged(QFLDecoder::Error); "
         "*outputFormatChanged(QVideoSurfaceFormat); *endOfStream(); "
         "-_q_error(QFLDecoder::Error,QString); -_q_outputFormatChanged(QVideoSurfaceFormat); "
         "QFLDecoder::Status status statusChanged; QFLDecoder::Error error errorChanged; "
         "Status 0UnavailableStatus 1UnloadedStatus 2LoadingStatus 3UnloadingStatus 4LoadedStatus "
         "5EndOfStreamStatus 6StoppingStatus 7StartingStatus 8StartedStatus; "
         "Error 0NoError 1ResourceError 2FormatError 3HardwareError"},
        {QFLCamera::staticMetaObject,
         "*stateChanged(QCamera::State); *captureModeChanged(QCamera::CaptureModes); "
         "*statusChanged(QCamera::Status); *locked(); *lockFailed(); "
         "*lockStatusChanged(QCamera::LockStatus,QCamera::LockChangeReason); *lockStatusChanged("
         "QCamera::LockType,QCamera::LockStatus,QCamera::LockChangeReason); "
         "*error(QCamera::Error); setCaptureMode(QCamera::CaptureModes); load(); unload(); "
         "start(); stop(); searchAndLock(); unlock(); searchAndLock(QCamera::LockTypes); "
         "unlock(QCamera::LockTypes); -_q_preparePropertyChange(int); -_q_restartCamera(); "
         "-_q_error(int,QString); -_q_updateLockStatus("
         "QCamera::LockType,QCamera::LockStatus,QCamera::LockChangeReason); "
         "-_q_updateState(QCamera::State); QCamera::State state stateChanged; "
         "QCamera::Status status statusChanged; "
         "QCamera::CaptureModes captureMode writable captureModeChanged; "
         "QCamera::LockStatus lockStatus lockStatusChanged"},
};

static QByteArray run(const char *command)
{
    QStringList words = QProcess::splitCommand(QString::fromLocal8Bit(command));
    QProcess process;
    process.start(words.takeFirst(), words);
    return process.waitForFinished() ? process.readAllStandardOutput() : QByteArray();
}

/*! Whether the meta-cast to each of the names gives this part of the object. */
static bool answers(QObject *object, void *part, const QByteArrayList &names)
{
    return std::all_of(names.begin(), names.end(), [=](const QByteArray &name) {
        return object->qt_metacast(name) == part && part;
    });
}

static const char exportedNames[]
        = "QFLCamera QFLCameraExposure QFLCameraFocus QFLCameraInfo QFLCodecInfo "
          "QFLCodecQueueControl QFLDecodeControl QFLDecoder QFLDecodingVideoSink QFLEncodeControl "
          "QFLEncodedVideoFrame QFLEncodedVideoSink QFLEncodedVideoSourceControl QFLEncoder "
          "QFLEncoderVideoSurface QFLMediaServiceCodecInfoInterface_PRIVATE_API "
          "QFLMediaServiceProvider_PRIVATE_API QFLRawVideoSourceControl QFLSink QFLSource operator";

class tst_Layout : public QObject
{
    Q_OBJECT

private slots:
    void recordMadeByQt()
    {
        QCOMPARE(sizeof(QMediaObjectPrivate), size_t(128));
        QCOMPARE(sizeof(QMediaPluginLoader), size_t(32));
        QCOMPARE(sizeof(QMediaServiceProvider), size_t(16));
        FakeService service("s");
        auto *metaData = service.add<FakeMetaData>(QMetaDataReaderControl_iid);
        auto *availability = service.add<FakeAvailability>(QMediaAvailabilityControl_iid);
        QtObject object(&service);
        object.setNotifyInterval(123);
        const QMediaObjectPrivate *record = object.record();
        QCOMPARE(record->service, &service);
        QCOMPARE(record->metaDataControl, metaData);
        QCOMPARE(record->availabilityControl, availability);
        QCOMPARE(record->notifyTimer->interval(), 123);
        QCOMPARE(record->notifyProperties,
                 QSet<int>({QMediaObject::staticMetaObject.indexOfProperty("notifyInterval")}));
    }

    void recordMadeByUs()
    {
        FakeBackend backend;
        FakeService service("e");
        backend.services["facelink.encoder"] = &service;
        service.add<FakeMetaData>(QMetaDataReaderControl_iid);
        service.add<FakeAvailability>(QMediaAvailabilityControl_iid);
        QFLEncoder encoder;
        QCOMPARE(encoder.service(), &service);
        QCOMPARE(encoder.metaData(QStringLiteral("key")).toString(), QStringLiteral("key"));
        QCOMPARE(encoder.availability(), QMultimedia::Busy);
        encoder.setNotifyInterval(123);
        QCOMPARE(encoder.notifyInterval(), 123);
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
        QCOMPARE(info.deviceName(), QStringLiteral("x"));
        QCOMPARE(info.description(), QStringLiteral("One"));
        QCOMPARE(info.position(), QCamera::FrontFace);
        QCOMPARE(info.orientation(), 270);
        FakeLog::take();
        QCOMPARE(QMediaPlayer::hasSupport(QStringLiteral("x")), QMultimedia::ProbablySupported);
        QCOMPARE(QMediaPlayer::supportedMimeTypes(), QStringList(QStringLiteral("video/fake")));
        COMPARE_LOG("p hasSupport " Q_MEDIASERVICE_MEDIAPLAYER
                    ", p supportedMimeTypes " Q_MEDIASERVICE_MEDIAPLAYER);
    }

    void virtualFunctions()
    {
        using P = QMediaServiceProvider;
        QVERIFY(areSlotsFrom(12, &P::requestService, &P::releaseService, &P::supportedFeatures,
                             &P::hasSupport, &P::supportedMimeTypes, &P::defaultDevice, &P::devices,
                             &P::deviceDescription, &P::cameraPosition, &P::cameraOrientation));
        using I = QFLMediaServiceCodecInfoInterface;
        QVERIFY(areSlotsFrom(2, &I::codec, &I::isEncoder, &I::isHardwareAccelerated,
                             &I::maxInstances));
        using E = QFLEncodeControl;
        QVERIFY(areSlotsFrom(12, &E::supportedCodecs, &E::supportedPixelFormats, &E::status,
                             &E::start, &E::drain, &E::flush, &E::stop, &E::encode));
        using D = QFLDecodeControl;
        QVERIFY(areSlotsFrom(12, &D::supportedCodecs, &D::isFormatSupported, &D::start,
                             &D::videoSettings, &D::outputFormat, &D::decode, &D::drain, &D::flush,
                             &D::stop, &D::status));
        using Q = QFLCodecQueueControl;
        QVERIFY(areSlotsFrom(12, &Q::capacity, &Q::pending, &Q::lowWatermark, &Q::setLowWatermark));
        using S = QFLSource;
        QVERIFY(areSlotsFrom(2, &S::addSink, &S::removeSink, &S::sinkActiveChanged,
                             &S::sinkErrorChanged));
        using V = QFLEncodedVideoSink;
        QVERIFY(areSlotsFrom(2, &V::link, qOverload<QFLSource *>(&V::unlink),
                             qOverload<>(&V::unlink), &V::isActive, &V::isFormatSupported,
                             &V::start, &V::encodedVideoFrame, &V::drain, &V::stop));
    }

    void metaObjects()
    {
        for (const MetaObject &row : metaObjectTable) {
            QCOMPARE(membersOf(row.meta), QByteArray(row.members));
            QCOMPARE(row.meta.classInfoCount(), 0);
        }
    }

    void inheritance()
    {
        const QMetaObject &camera = QFLCamera::staticMetaObject;
        QCOMPARE(QFLMediaServiceProvider::staticMetaObject.superClass(),
                 &QMediaServiceProvider::staticMetaObject);
        QCOMPARE(installedProvider->metaObject(), &QFLMediaServiceProvider::staticMetaObject);
        QVERIFY(camera.d.relatedMetaObjects);
        QVERIFY(camera.d.relatedMetaObjects[0] == &QCamera::staticMetaObject);
        const QMetaProperty lock = camera.property(camera.indexOfProperty("lockStatus"));
        QCOMPARE(lock.notifySignal().parameterCount(), 2);
    }

    void casts()
    {
        const FakeBackend backend;
        QFLEncoder encoder;
        QFLDecoder decoder;
        QFLDecodingVideoSink sink(&decoder);
        FakeEncodedSource source;
        auto *provider = qobject_cast<QFLMediaServiceProvider *>(installedProvider);
        const QByteArrayList bindable = {"QMediaBindableInterface", QMediaBindableInterface_iid};
        const QByteArrayList sourceNames = {"QFLSource", "facelink.source/1.0"};
        QVERIFY(answers(&encoder, &encoder, {"QFLEncoder"}));
        QVERIFY(answers(&encoder, static_cast<QMediaBindableInterface *>(&encoder), bindable));
        QVERIFY(answers(&encoder, static_cast<QFLSource *>(&encoder), sourceNames));
        QVERIFY(answers(&decoder, &decoder, {"QFLDecoder"}));
        QVERIFY(answers(&decoder, static_cast<QMediaBindableInterface *>(&decoder), bindable));
        QVERIFY(!decoder.qt_metacast("facelink.source/1.0"));
        QVERIFY(answers(&source, static_cast<QFLSource *>(&source), sourceNames));
        QVERIFY(answers(&sink, &sink, {"QFLDecodingVideoSink"}));
        QVERIFY(answers(
                &sink, static_cast<QFLEncodedVideoSink *>(&sink),
                {"QFLEncodedVideoSink", "facelink.encodedvideosink/1.0", "facelink.sink/1.0"}));
        QVERIFY(provider && answers(provider, provider, {"QFLMediaServiceProvider"}));
        QVERIFY(answers(
                provider, static_cast<QFLMediaServiceCodecInfoInterface *>(provider),
                {"QFLMediaServiceCodecInfoInterface", "facelink.mediaservicecodecinfo/1.0"}));
    }

    // Exactly the public classes are exported, each under the version that fits it.
    void symbols()
    {
        const QByteArray output
                = run(NM " -DC --defined-only --with-symbol-versions \"" FACELINK_LIBRARY "\"");
        const QRegularExpression pattern(QStringLiteral(
                "^\\w+ [^A] (?:(?:vtable|VTT|typeinfo|typeinfo name) for |non-virtual thunk to )?"
                "(\\w+).*@@Qt_5(\\w*)$"));
        QMap<QString, bool> names;
        for (const QByteArray &symbol : output.trimmed().split('\n')) {
            if (symbol.contains(" A "))
                continue;
            const auto match = pattern.match(QString::fromUtf8(symbol));
            QVERIFY2(match.hasMatch(), symbol);
            names[match.captured(1) + match.captured(2)] = true;
        }
        QCOMPARE(QStringList(names.keys()).join(QLatin1Char(' ')), QLatin1String(exportedNames));
        QVERIFY(output.contains("operator<<(QDebug, QFLEncodedVideoFrame const&)@@Qt_5"));
        QVERIFY(output.contains("operator<<(QDebug, QFLCameraInfo const&)@@Qt_5"));
        const QByteArray section = run(READELF " -dW \"" FACELINK_LIBRARY "\"");
        QVERIFY2(section.contains("Library soname: [libQt5FaceLink.so.0]"), section);
        QVERIFY2(section.contains("NODELETE"), section);
    }

private:
    QMediaServiceProvider *installedProvider = QMediaServiceProvider::defaultServiceProvider();
};

QTEST_GUILESS_MAIN(tst_Layout)

#include "tst_layout.moc"
