// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The media object that decodes encoded video frames.

#include "qfldecoder.h"
#include "qfldecoder_p.h"

#include "qfldecodecontrol.h"
#include "qfldecodingvideosink.h"
#include "qflencodedvideosourcecontrol.h"
#include "qflserviceaccess_p.h"
#include "qvideosurfaceoutput_p.h"

#include <QtCore/qdebug.h>
#include <QtCore/qpointer.h>
#include <QtMultimedia/qabstractvideosurface.h>

#include <utility>

Q_LOGGING_CATEGORY(lcFaceLinkDecoder, "facelink.decoder")

namespace {

[[maybe_unused]] const int metaTypes[]
        = {qRegisterMetaType<QFLDecoder::Status>(), qRegisterMetaType<QFLDecoder::Error>()};

}

QFLDecoderPrivate::QFLDecoderPrivate() : videoOutput(new QVideoSurfaceOutput) { }

// The renderer control goes back after the service: the output is a member, destroyed later.
QFLDecoderPrivate::~QFLDecoderPrivate()
{
    if (!service)
        return;

    QFLServiceAccess::releaseControls(service, decodeControl);
    QFLServiceAccess::releaseService(service);
}

void QFLDecoderPrivate::acquireControl()
{
    Q_Q(QFLDecoder);

    if (!service)
        return;

    decodeControl = QFLServiceAccess::requestControl<QFLDecodeControl>(service);
    if (!decodeControl)
        return;

    QObject::connect(decodeControl, &QFLDecodeControl::statusChanged, q,
                     &QFLDecoder::statusChanged);
    QObjectPrivate::connect(decodeControl, &QFLDecodeControl::error, this,
                            &QFLDecoderPrivate::_q_error);
    QObjectPrivate::connect(decodeControl, &QFLDecodeControl::outputFormatChanged, this,
                            &QFLDecoderPrivate::_q_outputFormatChanged);
    QObject::connect(decodeControl, &QFLDecodeControl::endOfStream, q, &QFLDecoder::endOfStream);
}

// The decoder is stopped and started on the way, and what the application does upon that may delete
// it or the object, or bind it to another one; the last request counts.
bool QFLDecoderPrivate::rebind(QMediaObject *object)
{
    Q_Q(QFLDecoder);

    const QPointer<QFLDecoder> self(q);
    const QPointer<QMediaObject> target(object);
    const int request = ++bindRequest;
    unbind();
    if (!self)
        return false;
    if (!target || request != bindRequest)
        return boundMediaObject == object;

    if (!decodingSink)
        decodingSink = new QFLDecodingVideoSink(q);
    auto *control = QFLServiceAccess::requestControl<QFLEncodedVideoSourceControl>(
            target->service(), QFLServiceAccess::WrongClass::Release);
    return control && linkTo(target, control);
}

void QFLDecoderPrivate::unbind()
{
    if (!boundMediaObject)
        return;

    const QPointer<QMediaService> boundService = boundMediaObject->service();
    QPointer<QFLEncodedVideoSourceControl> control = std::exchange(sourceControl, nullptr);
    QObject::disconnect(mediaObjectDestroyed);
    boundMediaObject = nullptr;
    if (boundService && control)
        decodingSink->unlink();
    else
        decodingSink->unlink(control);
    QFLServiceAccess::releaseControls(boundService, control);
}

bool QFLDecoderPrivate::linkTo(QMediaObject *object, QFLEncodedVideoSourceControl *control)
{
    Q_Q(QFLDecoder);

    // On record before the source is asked, so that it can be unbound meanwhile.
    watch(object, control);
    boundMediaObject = object;
    sourceControl = control;
    const QPointer<QFLDecoder> self(q);
    const QPointer<QFLEncodedVideoSourceControl> source(control);
    const int request = bindRequest;
    // A source that has refused the sink earlier is left first.
    decodingSink->unlink();
    const bool isLinked = self && request == bindRequest && decodingSink->link(source);
    if (!self)
        return false;
    if (isLinked || request != bindRequest)
        return boundMediaObject == object;

    QObject::disconnect(mediaObjectDestroyed);
    boundMediaObject = nullptr;
    sourceControl = nullptr;
    return false;
}

void QFLDecoderPrivate::watch(QMediaObject *object, QFLEncodedVideoSourceControl *control)
{
    Q_Q(QFLDecoder);

    mediaObjectDestroyed
            = QObject::connect(object, &QObject::destroyed, q, [this] { forgetMediaObject(); });
    // The sink records a source that refuses it, too, and must not ask it once it is gone.
    QObject::disconnect(sourceDestroyed);
    sourceDestroyed = QObject::connect(control, &QObject::destroyed, decodingSink,
                                       [this, control] { forgetSource(control); });
}

// The control is still there if its service outlives the object, and must not keep the sink.
void QFLDecoderPrivate::forgetMediaObject()
{
    boundMediaObject = nullptr;
    if (std::exchange(sourceControl, nullptr))
        decodingSink->unlink();
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
    \class QFLDecoder qfldecoder.h
    \brief The media object that decodes encoded video frames onto a surface.

    The decoder drives the decode control of a "facelink.decoder" service, which it holds from its
    construction to its destruction. Encoded frames come from the application, through decode() or a
    QFLDecodingVideoSink that is linked to a source, or from a media object that the decoder is
    bound to with QMediaObject::bind(); source and media object then start and stop the decoder as
    well. The backend shows the pictures on the surface that was set with setVideoSurface(). The
    application owns the decoder, the surface and the object that it is bound to.

    The decoder is used from the thread that it lives in, in which its signals are emitted too; this
    needs a running event loop if the backend works in threads of its own. Failures of the backend
    arrive by errorChanged(), never as exceptions.

    The status is the backend's, read at every call, and statusChanged() announces its changes. A
    backend may load only when it is started, and unload when it is stopped:

    \verbatim
    Unloaded --> Loading --> Loaded --> Starting --> Started --drain()--> EndOfStream
       ^            |         |  ^         |          |   ^                 |   |
       |         failure      |  |      failure       |   +---- flush() ----+   |
       |            v         |  |         v          v                         |
       +-------- Unloading <--+  +------------- Stopping <------ stop() --------+
    \endverbatim

    \b UnloadedStatus: the backend holds no resources. start() loads it.

    \b LoadingStatus: the backend acquires its resources.

    \b LoadedStatus: the backend can start. decode() returns false, and drain() and flush() have no
    effect.

    \b StartingStatus: start() has accepted the settings and the backend sets up the run.

    \b StartedStatus: the run is on. decode() takes frames, from a key frame on, and their pictures
    are shown. stop() ends the run, and so does a failure that the backend can't get over, which
    errorChanged() reports.

    \b EndOfStreamStatus: the stream was drained, its last picture has been shown, and endOfStream()
    was emitted. The picture stays on the surface; flush() takes the run up again.

    \b StoppingStatus: the run is being ended. What has not been shown is dropped.

    \b UnloadingStatus: the backend gives up its resources.

    \b UnavailableStatus, not in the picture: there is no decoder service, or it has no decode
    control. This never changes; every operation then does nothing or returns the neutral value that
    is named with it.

    \par In slots, sinks and surfaces
    Starting, stopping, binding and unbinding a decoder, or giving it another surface, leads to
    slots, to sources and sinks, and to the surface's start() and stop(). All of these may do
    anything: start or stop the decoder, bind it to another object or unbind it, set another
    surface, and delete the decoder, the object or the surface. The call that led there then leaves
    everything alone and returns; of calls within each other the last one counts.

    \par
    There are two exceptions. QMediaObject::bind() of a decoder that is bound to another object
    unbinds it first, and Qt then goes on with the decoder and the new object: don't delete either
    meanwhile, or call QMediaObject::unbind() yourself before. And the destructor of a started
    decoder still emits signals, in whose slots the decoder can't be deleted a second time;
    QObject::deleteLater() does no harm there.
*/

/*!
    \enum QFLDecoder::Status

    What the backend is doing; the description of the class says what leads from one to the other.
    The numbers differ from those of QFLEncoder::Status.

    \value UnavailableStatus There is no backend that can decode.
    \value UnloadedStatus The backend holds no resources.
    \value LoadingStatus The backend acquires its resources.
    \value UnloadingStatus The backend gives up its resources.
    \value LoadedStatus The backend is ready to start.
    \value EndOfStreamStatus A drained stream has been shown to its end.
    \value StoppingStatus A run is being ended.
    \value StartingStatus A run is being set up.
    \value StartedStatus Encoded frames are being decoded.
*/

/*!
    \enum QFLDecoder::Error

    What the backend reported last.

    \value NoError No failure has been reported since the last start().
    \value ResourceError A codec, a device or memory is missing.
    \value FormatError The stream or the pictures' format can't be handled.
    \value HardwareError The hardware decoder failed.
*/

/*!
    \property QFLDecoder::status

    The backend's status, UnavailableStatus without a decode control.
*/

/*!
    \property QFLDecoder::error

    The last error that the backend has reported, NoError again from start() on; errorString()
    describes it.
*/

/*!
    \fn void QFLDecoder::statusChanged(QFLDecoder::Status status)

    Emitted when the backend's \a status has changed. A backend that works in threads of its own may
    be a step further by then: status() tells.
*/

/*!
    \fn void QFLDecoder::errorChanged(QFLDecoder::Error error)

    Emitted when the backend has reported an \a error whose code or text differs from the last one;
    error() and errorString() have been set by then. start() clears both without this signal.
*/

/*!
    \fn void QFLDecoder::outputFormatChanged(const QVideoSurfaceFormat &format)

    Emitted when the \a format of the decoded pictures is known or has changed, and outputFormat()
    returns it. start() forgets the format without this signal.
*/

/*!
    \fn void QFLDecoder::endOfStream()

    Emitted when the last picture of a drained stream has been shown; drain() leads to it.
*/

/*!
    Makes a decoder as a child of \a parent, with the first backend that offers a decoder service.
    Without one the decoder stays in UnavailableStatus, and no error is reported.
*/
QFLDecoder::QFLDecoder(QObject *parent) : QFLDecoder(*new QFLDecoderPrivate, parent) { }

/*!
    Makes a decoder as a child of \a parent with the private data \a dd, which it owns from then on.
*/
QFLDecoder::QFLDecoder(QFLDecoderPrivate &dd, QObject *parent)
    : QMediaObject(dd, parent, QFLServiceAccess::requestService(QFL_MEDIASERVICE_DECODER))
{
    Q_D(QFLDecoder);
    d->acquireControl();
}

/*!
    Stops a started decoder, unbinds it and gives the service back, which ends the use of the surface.
*/
QFLDecoder::~QFLDecoder()
{
    Q_D(QFLDecoder);

    d->isEnding = true;
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
    refuses to deliver them; or if a slot, a source or a surface has bound the decoder to something
    else meanwhile, which then stays. Called by QMediaObject::bind() and QMediaObject::unbind(), which
    applications use.
*/
bool QFLDecoder::setMediaObject(QMediaObject *object)
{
    Q_D(QFLDecoder);

    if (object == d->boundMediaObject)
        return true;

    return !d->isEnding && d->rebind(object);
}

/*!
    Returns the backend's status, asked at each call, UnavailableStatus without a decode control.
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
    Returns the backend's description of error(), for the user; empty if there was none.
*/
QString QFLDecoder::errorString() const
{
    Q_D(const QFLDecoder);
    return d->errorString;
}

/*!
    Returns the format of the decoded pictures that outputFormatChanged() reported last, an invalid
    one from start() until the first report of the run.
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
    Returns whether a stream that was encoded with these \a settings can be decoded; false without a
    decode control.
*/
bool QFLDecoder::isFormatSupported(const QVideoEncoderSettings &settings) const
{
    Q_D(const QFLDecoder);
    return d->decodeControl && d->decodeControl->isFormatSupported(settings);
}

/*!
    Shows the decoded pictures on \a surface, which is not owned, lives in the decoder's thread and
    may be destroyed first; null shows them nowhere. It may be changed during a run, also from
    within the surface's own start() and stop(). A decoder
    without a renderer control keeps the surface and shows nothing, which no signal reports.
*/
void QFLDecoder::setVideoSurface(QAbstractVideoSurface *surface)
{
    Q_D(QFLDecoder);

    qCDebug(lcFaceLinkDecoder) << surface;
    d->videoOutput->routeTo(this, d->boundVideoOutput, surface);
}

/*!
    Forgets error, error text and output format of the last run, without a signal, and starts to
    decode a stream that was encoded with these \a settings, of which the codec, by its name or its
    codec id, matters most; a run that is on ends first. Returns false if decoding doesn't start,
    for which errorChanged() gives the reason, or, without a signal, if there is no decode control.
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
    of the picture. Returns false if the frame is not taken, or without a decode control. A frame
    that is not taken is lost to those that follow it: the sender should be asked for a key frame,
    in front of which no frame is taken at the beginning either.
*/
bool QFLDecoder::decode(const QFLEncodedVideoFrame &frame)
{
    Q_D(QFLDecoder);
    return d->decodeControl && d->decodeControl->decode(frame);
}

/*!
    Has the backend decode and show what it holds; endOfStream() tells that it has. Returns at once.
    decode() takes no frames from then on, until flush(). Does nothing without a decode control.
*/
void QFLDecoder::drain()
{
    Q_D(QFLDecoder);

    if (d->decodeControl)
        d->decodeControl->drain();
}

/*!
    Has the backend drop what it holds; decoding goes on at the next key frame, also after drain().
    Does nothing without a decode control.
*/
void QFLDecoder::flush()
{
    Q_D(QFLDecoder);

    qCDebug(lcFaceLinkDecoder);
    if (d->decodeControl)
        d->decodeControl->flush();
}

/*!
    Ends the run at once: no picture is shown after this has returned. error(), errorString() and
    outputFormat() are kept until start(). Does nothing without a decode control.
*/
void QFLDecoder::stop()
{
    Q_D(QFLDecoder);

    qCDebug(lcFaceLinkDecoder);
    if (d->decodeControl)
        d->decodeControl->stop();
}

#include "moc_qfldecoder.cpp"
