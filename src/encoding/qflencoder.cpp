// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-3.0-or-later
// The media object that encodes raw video frames.

#include "qflencoder.h"
#include "qflencoder_p.h"

#include "qfldefaultservice_p.h"
#include "qflencodecontrol.h"
#include "qflencodedvideosourcecontrol.h"
#include "qflencodervideosurface.h"
#include "qflrawvideosourcecontrol.h"

#include <QtCore/qpointer.h>
#include <QtMultimedia/qmediaservice.h>
#include <QtMultimedia/qvideoencodersettingscontrol.h>

Q_LOGGING_CATEGORY(lcFaceLinkEncoder, "facelink.encoder")

namespace {

[[maybe_unused]] const int metaTypes[]
        = {qRegisterMetaType<QFLEncoder::Status>(), qRegisterMetaType<QFLEncoder::Error>()};

// A control of the wrong class is not handed back: only the owner of the service does that.
template<typename Control> Control *requestBorrowedControl(QMediaService *service)
{
    return qobject_cast<Control *>(service->requestControl(qmediacontrol_iid<Control *>()));
}

} // namespace

void QFLEncoderPrivate::acquireControls()
{
    Q_Q(QFLEncoder);

    if (!service)
        return;

    encodeControl = service->requestControl<QFLEncodeControl *>();
    if (encodeControl) {
        // The private slot is known by name only.
        QObject::connect(encodeControl, SIGNAL(error(QFLEncoder::Error, QString)), q,
                         SLOT(_q_error(QFLEncoder::Error, QString)));
        QObject::connect(encodeControl, &QFLEncodeControl::statusChanged, q,
                         &QFLEncoder::statusChanged);
        QObject::connect(encodeControl, &QFLEncodeControl::encodedVideoFrame, q,
                         &QFLEncoder::encodedVideoFrame);
    }
    settingsControl = service->requestControl<QVideoEncoderSettingsControl *>();
    encodedVideoSourceControl = service->requestControl<QFLEncodedVideoSourceControl *>();
}

void QFLEncoderPrivate::releaseControls()
{
    if (!service)
        return;

    if (settingsControl)
        service->releaseControl(settingsControl);
    if (encodeControl)
        service->releaseControl(encodeControl);
    if (encodedVideoSourceControl)
        service->releaseControl(encodedVideoSourceControl);
    settingsControl = nullptr;
    encodeControl = nullptr;
    encodedVideoSourceControl = nullptr;

    QFLDefaultService::release(service);
    service = nullptr;
}

void QFLEncoderPrivate::bindTo(QMediaObject *object)
{
    Q_Q(QFLEncoder);

    mediaObject = object;
    mediaObjectDestroyed
            = QObject::connect(object, &QObject::destroyed, q, [this] { forgetMediaObject(); });
    if (!surface)
        surface = new QFLEncoderVideoSurface(q);
}

void QFLEncoderPrivate::attachSurface(QMediaService *boundService)
{
    const QMediaObject *object = mediaObject;

    rawVideoSourceControl = requestBorrowedControl<QFLRawVideoSourceControl>(boundService);
    if (rawVideoSourceControl) {
        qCDebug(lcFaceLinkEncoder) << "raw video source control acquired";
        rawVideoSourceControl->setSurface(surface);
    }

    // The surface may have been started, and the application have unbound the encoder upon that.
    if (mediaObject != object)
        return;

    rendererControl = requestBorrowedControl<QVideoRendererControl>(boundService);
    if (rendererControl) {
        qCDebug(lcFaceLinkEncoder) << "video renderer control acquired";
        rendererControl->setSurface(surface);
    }
}

void QFLEncoderPrivate::detachSurface()
{
    if (!mediaObject)
        return;

    // The surface is stopped on the way, and what the application does upon that may unbind the
    // encoder again or delete the object.
    const QPointer<QMediaObject> object = mediaObject;
    const QPointer<QFLRawVideoSourceControl> rawControl = rawVideoSourceControl;
    const QPointer<QVideoRendererControl> renderer = rendererControl;
    forgetMediaObject();

    if (rawControl)
        rawControl->setSurface(nullptr);
    if (renderer)
        renderer->setSurface(nullptr);

    QMediaService *boundService = object ? object->service() : nullptr;
    if (!boundService)
        return;
    if (rawControl)
        boundService->releaseControl(rawControl);
    if (renderer)
        boundService->releaseControl(renderer);
}

void QFLEncoderPrivate::forgetMediaObject()
{
    QObject::disconnect(mediaObjectDestroyed);
    mediaObject = nullptr;
    rawVideoSourceControl = nullptr;
    rendererControl = nullptr;
}

void QFLEncoderPrivate::_q_error(QFLEncoder::Error code, const QString &description)
{
    Q_Q(QFLEncoder);

    error = code;
    errorString = description;
    emit q->errorChanged(code);
}

/*!
    \class QFLEncoder
    \brief The media object that encodes raw video frames.

    The encoder drives the encode control of a "facelink.encoder" service, which it holds from its
    construction to its destruction. Raw frames come from the application, through encode(), or
    from a media object that the encoder is bound to with QMediaObject::bind(), a QFLCamera say.
    Encoded frames leave by encodedVideoFrame() and go to the sinks that are linked to the encoder.

    The status is the backend's, read at every call:

    \code
        Unloaded -> Loading -> Loaded -> Starting -> Started
                                  ^                     |
                                  +----- Stopping <-----+
    \endcode

    Unloaded: the backend holds no resources. Loading: it acquires them. Loaded: it can start.
    Starting: start() was accepted and no frame has been encoded yet. Started: frames are encoded.
    Stopping: the run is being ended. Unavailable: there is no backend; every operation then does
    nothing or returns the neutral value that is named with it.

    The encoder is used from the thread that it lives in, in which its signals are emitted too.
*/

/*!
    \enum QFLEncoder::Error

    \value NoError No failure has been reported.
    \value ResourceError A codec, a device or memory is missing.
    \value FormatError The raw frames' format can't be encoded.
    \value ConsumerError A consumer of the encoded frames failed.
    \value HardwareError The hardware encoder failed.
*/

/*!
    \fn void QFLEncoder::encodedVideoFrame(QFLEncodedVideoFrame frame)

    Emitted once for each encoded \a frame, in order, whether or not there are sinks.
*/

/*!
    \fn void QFLEncoder::statusChanged(QFLEncoder::Status status)

    Emitted when the backend's \a status has changed.
*/

/*!
    \fn void QFLEncoder::errorChanged(QFLEncoder::Error error)

    Emitted each time the backend reports an \a error, also a repeated one.
*/

/*!
    Makes an encoder, with the first backend that offers an encoder service.
*/
QFLEncoder::QFLEncoder(QObject *parent)
    : QMediaObject(*new QFLEncoderPrivate, parent,
                   QFLDefaultService::request(QByteArrayLiteral("facelink.encoder")))
{
    Q_D(QFLEncoder);
    d->acquireControls();
}

/*!
    Removes the sink on record, unbinds and gives the service back. Sinks must have been unlinked
    before.
*/
QFLEncoder::~QFLEncoder()
{
    Q_D(QFLEncoder);

    if (d->sink)
        QFLEncoder::removeSink(d->sink);
    d->detachSurface();

    // Qt deletes the children, the surface among them, before the private data.
    d->releaseControls();
}

/*!
    Returns the media object whose frames are encoded, null if there is none.
*/
QMediaObject *QFLEncoder::mediaObject() const
{
    Q_D(const QFLEncoder);
    return d->mediaObject;
}

/*!
    Has the frames of \a object encoded, in place of those of the object bound before; null only
    unbinds. The encoder does not own the object and forgets it when it is destroyed. Returns false,
    and leaves the encoder unbound, if the object has no service. Called by QMediaObject::bind() and
    QMediaObject::unbind().
*/
bool QFLEncoder::setMediaObject(QMediaObject *object)
{
    Q_D(QFLEncoder);

    if (object == d->mediaObject)
        return true;

    d->detachSurface();
    // The application may have bound the encoder anew meanwhile.
    if (d->mediaObject || !object)
        return d->mediaObject == object;

    d->bindTo(object);
    QMediaService *boundService = object->service();
    if (!boundService) {
        d->forgetMediaObject();
        return false;
    }

    d->attachSurface(boundService);
    return d->mediaObject == object;
}

/*!
    Has the backend deliver the encoded frames to \a sink, which is not owned. Returns false if it
    does not accept it, or can't deliver to sinks. Called by QFLSink::link().
*/
bool QFLEncoder::addSink(QFLSink *sink)
{
    Q_D(QFLEncoder);

    if (!d->encodedVideoSourceControl || !d->encodedVideoSourceControl->addSink(sink))
        return false;

    d->sink = sink;
    return true;
}

/*!
    Ends the delivery to \a sink. Returns false if it is not the sink that was added last, or if
    the backend refuses. Called by QFLSink::unlink().
*/
bool QFLEncoder::removeSink(QFLSink *sink)
{
    Q_D(QFLEncoder);

    if (!sink || sink != d->sink || !d->encodedVideoSourceControl
        || !d->encodedVideoSourceControl->removeSink(sink)) {
        return false;
    }

    d->sink = nullptr;
    return true;
}

/*!
    Returns the backend's status, UnavailableStatus without an encode control.
*/
QFLEncoder::Status QFLEncoder::status() const
{
    Q_D(const QFLEncoder);
    return d->encodeControl ? d->encodeControl->status() : UnavailableStatus;
}

/*!
    Returns the last error that the backend reported. Nothing clears it.
*/
QFLEncoder::Error QFLEncoder::error() const
{
    Q_D(const QFLEncoder);
    return d->error;
}

/*!
    Returns the description of error(), empty if there was none.
*/
QString QFLEncoder::errorString() const
{
    Q_D(const QFLEncoder);
    return d->errorString;
}

/*!
    Returns the names of the codecs, as QFLCodecInfo::codec() gives them; only those with an encoder
    in hardware if \a hardwareOnly is true. Empty without an encode control.
*/
QStringList QFLEncoder::supportedCodecs(bool hardwareOnly) const
{
    Q_D(const QFLEncoder);
    return d->encodeControl ? d->encodeControl->supportedCodecs(hardwareOnly) : QStringList();
}

/*!
    Returns the pixel formats that start() accepts, none without an encode control.
*/
QList<QVideoFrame::PixelFormat> QFLEncoder::supportedPixelFormats() const
{
    Q_D(const QFLEncoder);
    return d->encodeControl ? d->encodeControl->supportedPixelFormats()
                            : QList<QVideoFrame::PixelFormat>();
}

/*!
    Returns the frame rates, in frames a second, that can be used with \a settings. \a continuous,
    which may be null, tells whether all rates between them can be, too. Empty and false without a
    settings control.
*/
QList<qreal> QFLEncoder::supportedFrameRates(const QVideoEncoderSettings &settings,
                                             bool *continuous) const
{
    Q_D(const QFLEncoder);

    if (continuous)
        *continuous = false;
    return d->settingsControl ? d->settingsControl->supportedFrameRates(settings, continuous)
                              : QList<qreal>();
}

/*!
    Returns the resolutions that can be used with \a settings, as supportedFrameRates() does the
    rates.
*/
QList<QSize> QFLEncoder::supportedResolutions(const QVideoEncoderSettings &settings,
                                              bool *continuous) const
{
    Q_D(const QFLEncoder);

    if (continuous)
        *continuous = false;
    return d->settingsControl ? d->settingsControl->supportedResolutions(settings, continuous)
                              : QList<QSize>();
}

/*!
    Returns the settings in force, default-constructed ones without a settings control.
*/
QVideoEncoderSettings QFLEncoder::videoSettings() const
{
    Q_D(const QFLEncoder);
    return d->settingsControl ? d->settingsControl->videoSettings() : QVideoEncoderSettings();
}

/*!
    Sets the codec, the bit rate (bits per second), the frame rate and the size to encode with.
    Does nothing without a settings control.
*/
void QFLEncoder::setVideoSettings(const QVideoEncoderSettings &settings)
{
    Q_D(QFLEncoder);

    if (d->settingsControl)
        d->settingsControl->setVideoSettings(settings);
}

/*!
    Starts to encode raw frames of this \a format. Returns false if encoding doesn't start, or
    without an encode control; errorChanged() reports why.
*/
bool QFLEncoder::start(const QVideoSurfaceFormat &format)
{
    Q_D(QFLEncoder);
    return d->encodeControl && d->encodeControl->start(format);
}

/*!
    Passes one raw \a frame to the backend; its start time in microseconds becomes the timestamp of
    the encoded frame. Returns false if the frame is not taken, or without an encode control.
*/
bool QFLEncoder::encode(const QVideoFrame &frame)
{
    Q_D(QFLEncoder);
    return d->encodeControl && d->encodeControl->encode(frame);
}

/*!
    Has the backend encode and hand out what it holds.
*/
void QFLEncoder::drain()
{
    Q_D(QFLEncoder);

    if (d->encodeControl)
        d->encodeControl->drain();
}

/*!
    Has the backend drop the raw frames that it holds and encode the next one as a key frame.
*/
void QFLEncoder::flush()
{
    Q_D(QFLEncoder);

    if (d->encodeControl)
        d->encodeControl->flush();
}

/*!
    Ends encoding.
*/
void QFLEncoder::stop()
{
    Q_D(QFLEncoder);

    if (d->encodeControl)
        d->encodeControl->stop();
}

#include "moc_qflencoder.cpp"
