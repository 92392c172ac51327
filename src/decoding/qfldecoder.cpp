// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-3.0-or-later
// The media object that decodes encoded video frames.

#include "qfldecoder.h"
#include "qfldecoder_p.h"

#include "qfldecodecontrol.h"
#include "qfldecodingvideosink.h"
#include "qfldefaultservice_p.h"
#include "qflencodedvideosourcecontrol.h"

#include <QtCore/qdebug.h>
#include <QtCore/qpointer.h>
#include <QtMultimedia/qabstractvideosurface.h>
#include <QtMultimedia/qmediaservice.h>

Q_LOGGING_CATEGORY(lcFaceLinkDecoder, "facelink.decoder")

namespace {

[[maybe_unused]] const int metaTypes[]
        = {qRegisterMetaType<QFLDecoder::Status>(), qRegisterMetaType<QFLDecoder::Error>()};

}

// The renderer control goes back after the service: the output is a member, destroyed later.
QFLDecoderPrivate::~QFLDecoderPrivate()
{
    if (!service)
        return;

    if (decodeControl)
        service->releaseControl(decodeControl);
    QFLDefaultService::release(service);
}

void QFLDecoderPrivate::acquireControl()
{
    Q_Q(QFLDecoder);

    if (!service)
        return;

    decodeControl = qobject_cast<QFLDecodeControl *>(service->requestControl(QFLDecodeControl_iid));
    if (!decodeControl)
        return;

    QObject::connect(decodeControl, &QFLDecodeControl::statusChanged, q,
                     &QFLDecoder::statusChanged);
    // The private slots are known by name only.
    QObject::connect(decodeControl, SIGNAL(error(QFLDecoder::Error, QString)), q,
                     SLOT(_q_error(QFLDecoder::Error, QString)));
    QObject::connect(decodeControl, SIGNAL(outputFormatChanged(QVideoSurfaceFormat)), q,
                     SLOT(_q_outputFormatChanged(QVideoSurfaceFormat)));
    QObject::connect(decodeControl, &QFLDecodeControl::endOfStream, q, &QFLDecoder::endOfStream);
}

bool QFLDecoderPrivate::linkTo(QFLEncodedVideoSourceControl *control)
{
    // The sink records a source that refuses it, too, and must not ask it once it is gone.
    QObject::disconnect(sourceDestroyed);
    sourceDestroyed = QObject::connect(control, &QObject::destroyed, decodingSink,
                                       [this, control] { forgetSource(control); });
    return decodingSink->link(control);
}

void QFLDecoderPrivate::bindTo(QMediaObject *object, QFLEncodedVideoSourceControl *control)
{
    Q_Q(QFLDecoder);

    boundMediaObject = object;
    sourceControl = control;
    mediaObjectDestroyed
            = QObject::connect(object, &QObject::destroyed, q, [this] { forgetMediaObject(); });
}

void QFLDecoderPrivate::unbind()
{
    if (!boundMediaObject)
        return;

    // The decoder is stopped on the way, and what the application does upon that may unbind it
    // again or delete the object.
    const QPointer<QMediaService> boundService = boundMediaObject->service();
    const QPointer<QFLEncodedVideoSourceControl> control = sourceControl;
    if (!boundService || !control) {
        forgetMediaObject();
        return;
    }

    QObject::disconnect(mediaObjectDestroyed);
    boundMediaObject = nullptr;
    sourceControl = nullptr;
    decodingSink->unlink();
    if (boundService && control)
        boundService->releaseControl(control);
}

void QFLDecoderPrivate::forgetMediaObject()
{
    QObject::disconnect(mediaObjectDestroyed);
    boundMediaObject = nullptr;
    if (sourceControl)
        forgetSource(sourceControl);
}

void QFLDecoderPrivate::forgetSource(QFLEncodedVideoSourceControl *control)
{
    decodingSink->unlink(control);
    if (sourceControl == control)
        sourceControl = nullptr;
}

void QFLDecoderPrivate::_q_error(QFLDecoder::Error code, const QString &description)
{
    Q_Q(QFLDecoder);

    if (error == code && errorString == description)
        return;

    error = code;
    errorString = description;
    emit q->errorChanged(code);
}

void QFLDecoderPrivate::_q_outputFormatChanged(const QVideoSurfaceFormat &format)
{
    Q_Q(QFLDecoder);

    if (outputFormat == format)
        return;

    outputFormat = format;
    emit q->outputFormatChanged(format);
}

/*!
    \class QFLDecoder
    \brief The media object that decodes encoded video frames onto a surface.

    The decoder drives the decode control of a "facelink.decoder" service, which it holds from its
    construction to its destruction. Encoded frames come from the application, through decode() or
    a QFLDecodingVideoSink that is linked to a source, or from a media object that the decoder is
    bound to with QMediaObject::bind(). The backend shows the pictures on the surface that was set
    with setVideoSurface().

    The status is the backend's, read at every call:

    \code
        Unloaded -> Loading -> Loaded -> Starting -> Started -> EndOfStream
            ^                   |  ^                    |            |
            +---- Unloading <---+  +----- Stopping <----+------------+
    \endcode

    Unloaded: the backend holds no resources. Loading and Unloading: it acquires or gives them up.
    Loaded: it can start. Starting: start() was accepted and no picture has been decoded yet.
    Started: pictures are decoded. EndOfStream: the stream was drained and its last picture shown.
    Stopping: the run is being ended. Unavailable: there is no backend; every operation then does
    nothing or returns the neutral value that is named with it.

    The decoder is used from the thread that it lives in, in which its signals are emitted too.
*/

/*!
    \enum QFLDecoder::Error

    \value NoError No failure has been reported since the last start().
    \value ResourceError A codec, a device or memory is missing.
    \value FormatError The stream or the pictures' format can't be handled.
    \value HardwareError The hardware decoder failed.
*/

/*!
    \fn void QFLDecoder::statusChanged(QFLDecoder::Status status)

    Emitted when the backend's \a status has changed.
*/

/*!
    \fn void QFLDecoder::errorChanged(QFLDecoder::Error error)

    Emitted when the backend has reported an \a error whose code or text differs from the last one.
*/

/*!
    \fn void QFLDecoder::outputFormatChanged(const QVideoSurfaceFormat &format)

    Emitted when the \a format of the decoded pictures is known or has changed.
*/

/*!
    \fn void QFLDecoder::endOfStream()

    Emitted when the last picture of a drained stream has been shown.
*/

/*!
    Makes a decoder, with the first backend that offers a decoder service.
*/
QFLDecoder::QFLDecoder(QObject *parent) : QFLDecoder(*new QFLDecoderPrivate, parent) { }

/*!
    Makes a decoder with the private data \a dd, which it owns from then on.
*/
QFLDecoder::QFLDecoder(QFLDecoderPrivate &dd, QObject *parent)
    : QMediaObject(dd, parent, QFLDefaultService::request(QByteArrayLiteral("facelink.decoder")))
{
    Q_D(QFLDecoder);
    d->acquireControl();
}

/*!
    Stops a started decoder, unbinds it and gives the service back.
*/
QFLDecoder::~QFLDecoder()
{
    Q_D(QFLDecoder);

    if (status() > StartingStatus)
        stop();
    d->unbind();
    delete d->decodingSink;
}

/*!
    Returns the media object whose encoded frames are decoded, null if there is none.
*/
QMediaObject *QFLDecoder::mediaObject() const
{
    Q_D(const QFLDecoder);
    return d->boundMediaObject;
}

/*!
    Has the encoded frames of \a object decoded, in place of those of the object bound before; null
    only unbinds. The decoder does not own the object and forgets it when it is destroyed. Returns
    false, and leaves the decoder unbound, if the object's service offers no encoded frames or
    refuses to deliver them. Called by QMediaObject::bind() and QMediaObject::unbind().
*/
bool QFLDecoder::setMediaObject(QMediaObject *object)
{
    Q_D(QFLDecoder);

    if (object == d->boundMediaObject)
        return true;

    d->unbind();
    // The application may have bound the decoder anew meanwhile.
    if (d->boundMediaObject || !object)
        return d->boundMediaObject == object;

    if (!d->decodingSink)
        d->decodingSink = new QFLDecodingVideoSink(this);

    QMediaService *boundService = object->service();
    auto *control = boundService ? boundService->requestControl<QFLEncodedVideoSourceControl *>()
                                 : nullptr;
    if (!control || !d->linkTo(control))
        return false;

    d->bindTo(object, control);
    return true;
}

/*!
    Returns the backend's status, UnavailableStatus without a decode control.
*/
QFLDecoder::Status QFLDecoder::status() const
{
    Q_D(const QFLDecoder);
    return d->decodeControl ? d->decodeControl->status() : UnavailableStatus;
}

/*!
    Returns the last error that the backend has reported, NoError again from start() on.
*/
QFLDecoder::Error QFLDecoder::error() const
{
    Q_D(const QFLDecoder);
    return d->error;
}

/*!
    Returns the description of error(), empty if there was none.
*/
QString QFLDecoder::errorString() const
{
    Q_D(const QFLDecoder);
    return d->errorString;
}

/*!
    Returns the format of the decoded pictures, an invalid one as long as it isn't known.
*/
QVideoSurfaceFormat QFLDecoder::outputFormat()
{
    Q_D(QFLDecoder);
    return d->outputFormat;
}

/*!
    Returns the names of the codecs, as QFLCodecInfo::codec() gives them; only those with a decoder
    in hardware if \a hardwareOnly is true. Empty without a decode control.
*/
QStringList QFLDecoder::supportedCodecs(bool hardwareOnly) const
{
    Q_D(const QFLDecoder);
    return d->decodeControl ? d->decodeControl->supportedCodecs(hardwareOnly) : QStringList();
}

/*!
    Returns whether a stream with these \a settings can be decoded; false without a decode control.
*/
bool QFLDecoder::isFormatSupported(const QVideoEncoderSettings &settings) const
{
    Q_D(const QFLDecoder);
    return d->decodeControl && d->decodeControl->isFormatSupported(settings);
}

/*!
    Shows the decoded pictures on \a surface, which is not owned; null shows them nowhere. A decoder
    without a renderer control keeps the surface and shows nothing.
*/
void QFLDecoder::setVideoSurface(QAbstractVideoSurface *surface)
{
    Q_D(QFLDecoder);

    qCDebug(lcFaceLinkDecoder) << surface;
    d->videoOutput.routeTo(this, d->boundVideoOutput, surface);
}

/*!
    Forgets error, error text and output format of the last run, without a signal, and starts to
    decode a stream that was encoded with these \a settings. Returns false if decoding doesn't
    start, or without a decode control; errorChanged() reports why.
*/
bool QFLDecoder::start(const QVideoEncoderSettings &settings)
{
    Q_D(QFLDecoder);

    d->error = NoError;
    d->errorString.clear();
    d->outputFormat = QVideoSurfaceFormat();
    return d->decodeControl && d->decodeControl->start(settings);
}

/*!
    Passes one encoded \a frame to the backend; its timestamp in microseconds becomes the start time
    of the picture. Returns false if the frame is not taken, or without a decode control.
*/
bool QFLDecoder::decode(const QFLEncodedVideoFrame &frame)
{
    Q_D(QFLDecoder);
    return d->decodeControl && d->decodeControl->decode(frame);
}

/*!
    Has the backend decode and show what it holds; endOfStream() tells that it has.
*/
void QFLDecoder::drain()
{
    Q_D(QFLDecoder);

    if (d->decodeControl)
        d->decodeControl->drain();
}

/*!
    Has the backend drop what it holds; decoding goes on at the next key frame.
*/
void QFLDecoder::flush()
{
    Q_D(QFLDecoder);

    qCDebug(lcFaceLinkDecoder);
    if (d->decodeControl)
        d->decodeControl->flush();
}

/*!
    Ends decoding.
*/
void QFLDecoder::stop()
{
    Q_D(QFLDecoder);

    qCDebug(lcFaceLinkDecoder);
    if (d->decodeControl)
        d->decodeControl->stop();
}

#include "moc_qfldecoder.cpp"
