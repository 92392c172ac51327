// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The media object that encodes raw video frames.

#include "qflencoder.h"
#include "qflencoder_p.h"

#include "qflencodecontrol.h"
#include "qflencodedvideosourcecontrol.h"
#include "qflencodervideosurface.h"
#include "qflserviceaccess_p.h"

#include <QtMultimedia/qvideoencodersettingscontrol.h>

#include <utility>

Q_LOGGING_CATEGORY(lcFaceLinkEncoder, "facelink.encoder")

namespace {

[[maybe_unused]] const int metaTypes[]
        = {qRegisterMetaType<QFLEncoder::Status>(), qRegisterMetaType<QFLEncoder::Error>()};

}

void QFLEncoderPrivate::acquireControls()
{
    Q_Q(QFLEncoder);

    const auto wrongClass = QFLServiceAccess::WrongClass::Release;
    encodeControl = QFLServiceAccess::requestControl<QFLEncodeControl>(service, wrongClass);
    if (encodeControl) {
        QObjectPrivate::connect(encodeControl, &QFLEncodeControl::error, this,
                                &QFLEncoderPrivate::_q_error);
        QObject::connect(encodeControl, &QFLEncodeControl::statusChanged, q,
                         &QFLEncoder::statusChanged);
        QObject::connect(encodeControl, &QFLEncodeControl::encodedVideoFrame, q,
                         &QFLEncoder::encodedVideoFrame);
    }
    settingsControl
            = QFLServiceAccess::requestControl<QVideoEncoderSettingsControl>(service, wrongClass);
    encodedVideoSourceControl
            = QFLServiceAccess::requestControl<QFLEncodedVideoSourceControl>(service, wrongClass);
}

void QFLEncoderPrivate::releaseControls()
{
    if (!service)
        return;

    QFLServiceAccess::releaseControls(service, settingsControl, encodeControl,
                                      encodedVideoSourceControl);
    QFLServiceAccess::releaseService(service);
    service = nullptr;
}

// The surface is started and stopped on the way, and what the application does upon that may delete
// the encoder or the object, or bind the encoder to another one; the last request counts.
bool QFLEncoderPrivate::rebind(QMediaObject *object)
{
    Q_Q(QFLEncoder);

    const QPointer<QFLEncoder> self(q);
    const QPointer<QMediaObject> target(object);
    const int request = ++bindRequest;
    unbind();
    if (!self)
        return false;
    if (!target || request != bindRequest)
        return mediaObject == object;

    bindTo(target);
    QMediaService *boundService = target->service();
    if (!boundService) {
        unbind();
        return false;
    }

    attachSurface(boundService);
    return self && mediaObject == object;
}

void QFLEncoderPrivate::unbind()
{
    if (mediaObject)
        detachSurface();
}

void QFLEncoderPrivate::bindTo(QMediaObject *object)
{
    Q_Q(QFLEncoder);

    mediaObject = object;
    // The controls are still there if their service outlives the object, and must not keep the
    // surface.
    mediaObjectDestroyed = QObject::connect(object, &QObject::destroyed, q, [this] {
        mediaObject = nullptr;
        detachSurface();
    });
    if (!surface)
        surface = new QFLEncoderVideoSurface(q);
}

void QFLEncoderPrivate::attachSurface(QMediaService *boundService)
{
    Q_Q(QFLEncoder);

    const QPointer<QFLEncoder> self(q);
    const QPointer<QMediaService> service(boundService);
    const int request = bindRequest;
    rawVideoSourceControl
            = QFLServiceAccess::requestControl<QFLRawVideoSourceControl>(boundService);
    if (rawVideoSourceControl) {
        qCDebug(lcFaceLinkEncoder) << "raw video source control acquired";
        rawVideoSourceControl->setSurface(surface);
    }

    if (!self || !service || !mediaObject || request != bindRequest)
        return;

    rendererControl = QFLServiceAccess::requestControl<QVideoRendererControl>(boundService);
    if (rendererControl) {
        qCDebug(lcFaceLinkEncoder) << "video renderer control acquired";
        rendererControl->setSurface(surface);
    }
}

void QFLEncoderPrivate::detachSurface()
{
    Q_Q(QFLEncoder);

    const QPointer<QFLEncoder> self(q);
    const QPointer<QMediaObject> object(std::exchange(mediaObject, nullptr));
    QPointer<QFLRawVideoSourceControl> rawControl;
    QPointer<QVideoRendererControl> renderer;
    rawControl.swap(rawVideoSourceControl);
    renderer.swap(rendererControl);
    QObject::disconnect(mediaObjectDestroyed);

    if (rawControl)
        rawControl->setSurface(nullptr);
    // Bound again upon that, the encoder may use the very control anew.
    if (renderer && (!self || rendererControl != renderer))
        renderer->setSurface(nullptr);

    QFLServiceAccess::releaseControls(object ? object->service() : nullptr, rawControl, renderer);
}

void QFLEncoderPrivate::_q_error(QFLEncoder::Error code, const QString &description)
{
    Q_Q(QFLEncoder);

    error = code;
    errorString = description;
    emit q->errorChanged(code);
}

/*!
    \class QFLEncoder qflencoder.h
    \brief The media object that encodes raw video frames.

    The encoder drives the encode control of a "facelink.encoder" service, which it holds from its
    construction to its destruction. Raw frames come from the application, through encode(), or from
    a media object that the encoder is bound to with QMediaObject::bind(), a QFLCamera say, which
    then starts and stops the encoder as well. Encoded frames leave by encodedVideoFrame() and go to
    the sinks that are linked to the encoder with QFLSink::link(). The application owns the encoder,
    the object that it is bound to and the sinks; only the sinks have to be taken off before the
    encoder is destroyed.

    An encoder has one sink on record, the one that was linked last, and takes off only this one: an
    earlier sink, unlinked, goes on getting frames until it or the encoder's service is destroyed.
    For several sinks link each to the QFLEncodedVideoSourceControl of service() instead, which
    knows them all.

    The encoder is used from the thread that it lives in, in which its signals are emitted too; this
    needs a running event loop if the backend works in threads of its own. Failures of the backend
    arrive by errorChanged(), never as exceptions.

    The status is the backend's, read at every call, and statusChanged() announces its changes:

    \verbatim
    Unloaded --> Loading --> Loaded --start()--> Starting --> Started
                               ^                     |           |
                               +------ failure ------+-----------+
                               |                                 |
                               +------ Stopping <--- stop() -----+
    \endverbatim

    \b UnloadedStatus: the backend holds no resources. A backend that has them for as long as its
    service lives starts out in LoadedStatus.

    \b LoadingStatus: the backend acquires its resources.

    \b LoadedStatus: there is no run. start() begins one with the videoSettings() then in force;
    encode() returns false, and drain(), flush() and stop() have no effect.

    \b StartingStatus: start() has accepted the format and the backend sets up the run.

    \b StartedStatus: the run is on. encode() takes raw frames and encodedVideoFrame() hands out
    encoded ones; drain() and flush() don't end the run. stop() does, and so does a failure of the
    backend, which errorChanged() reports.

    \b StoppingStatus: the run is being ended. What has not been handed out is dropped.

    \b UnavailableStatus, not in the picture: there is no encoder service, the service has no encode
    control, or the backend can't encode on this machine. Without service or control this never
    changes; every operation then does nothing or returns the neutral value that is named with it.

    \par In slots, sinks and surfaces
    Starting, stopping, binding and unbinding an encoder, or linking and unlinking a sink, leads to
    slots and to the sink's start() and stop(). All of these may do anything: start or stop the
    encoder, bind it to another object or unbind it, link and unlink sinks, and delete the encoder,
    the object or the sink. The call that led there then leaves everything alone and returns; of
    calls within each other the last one counts.

    \par
    There are three exceptions. QMediaObject::bind() of an encoder that is bound to another object
    unbinds it first, and Qt then goes on with the encoder and the new object: don't delete either
    meanwhile, or call QMediaObject::unbind() yourself before. A sink that still has the encoder on
    record must forget it when the encoder is deleted: QFLSink::unlink(QFLSource *) does that at any
    time. And the destructor of a started encoder still emits signals, in whose slots the encoder
    can't be deleted a second time; QObject::deleteLater() does no harm there.
*/

/*!
    \enum QFLEncoder::Status

    What the backend is doing; the description of the class says what leads from one to the other.

    \value UnavailableStatus There is no backend that can encode.
    \value UnloadedStatus The backend holds no resources.
    \value LoadingStatus The backend acquires its resources.
    \value LoadedStatus The backend is ready to start.
    \value StoppingStatus A run is being ended.
    \value StartingStatus A run is being set up.
    \value StartedStatus Raw frames are being encoded.
*/

/*!
    \enum QFLEncoder::Error

    What the backend reported last.

    \value NoError No failure has been reported.
    \value ResourceError A codec, a device or memory is missing.
    \value FormatError The raw frames' format can't be encoded.
    \value ConsumerError A consumer of the encoded frames failed.
    \value HardwareError The hardware encoder failed.
*/

/*!
    \property QFLEncoder::status

    The backend's status, UnavailableStatus without an encode control.
*/

/*!
    \property QFLEncoder::error

    The last error that the backend reported, NoError at first; errorString() describes it.
*/

/*!
    \fn void QFLEncoder::encodedVideoFrame(QFLEncodedVideoFrame frame)

    Emitted once for each encoded \a frame, in order, whether or not there are sinks. Its timestamp
    is the start time of its raw frame, in microseconds.
*/

/*!
    \fn void QFLEncoder::statusChanged(QFLEncoder::Status status)

    Emitted when the backend's \a status has changed. A backend that works in threads of its own may
    be a step further by then: status() tells.
*/

/*!
    \fn void QFLEncoder::errorChanged(QFLEncoder::Error error)

    Emitted each time the backend reports an \a error, also a repeated one; error() and
    errorString() have been set by then.
*/

/*!
    Makes an encoder as a child of \a parent, with the first backend that offers an encoder service.
    Without one the encoder stays in UnavailableStatus, and no error is reported.
*/
QFLEncoder::QFLEncoder(QObject *parent)
    : QMediaObject(*new QFLEncoderPrivate, parent,
                   QFLServiceAccess::requestService(QFL_MEDIASERVICE_ENCODER))
{
    Q_D(QFLEncoder);
    d->acquireControls();
}

/*!
    Has the backend give up the sink that was added last, unbinds the encoder and gives the service
    back. Sinks must have been unlinked before: they would go on recording the encoder as their
    source.
*/
QFLEncoder::~QFLEncoder()
{
    Q_D(QFLEncoder);

    d->isEnding = true;
    if (d->sink)
        QFLEncoder::removeSink(d->sink.data());
    d->unbind();

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
    and leaves the encoder unbound, if the object has no service; true otherwise, also if the
    service delivers no frames. False, too, if a slot or a sink has bound the encoder to something
    else meanwhile, which then stays. Called by QMediaObject::bind() and QMediaObject::unbind(), which
    applications use.
*/
bool QFLEncoder::setMediaObject(QMediaObject *object)
{
    Q_D(QFLEncoder);

    if (object == d->mediaObject)
        return true;

    return !d->isEnding && d->rebind(object);
}

/*!
    Has the backend deliver the encoded frames to \a sink, which is not owned, beside the sinks that
    it delivers to already; removeSink() can take off only the one that was added last. Returns
    false if the backend does not accept it, because the sink has removed itself in its start() for
    instance, or can't deliver to sinks. Called by QFLSink::link(), which applications use. What the sink reports of its activity and its
    errors has no effect on the encoder.
*/
bool QFLEncoder::addSink(QFLSink *sink)
{
    Q_D(QFLEncoder);

    if (!d->encodedVideoSourceControl || d->isEnding)
        return false;

    // On record before the control starts the sink, which may remove itself or delete the encoder.
    const QPointer<QFLEncoder> self(this);
    const QFLSinkPointer added(sink);
    const QFLSinkPointer sinkBefore = std::exchange(d->sink, added);
    const bool isAccepted = d->encodedVideoSourceControl->addSink(sink);
    if (!isAccepted && self && (!d->sink || d->sink == added))
        d->sink = sinkBefore;
    return isAccepted;
}

/*!
    Ends the delivery to \a sink: nothing of it is called after this has returned true. Returns
    false, and ends nothing, if it is not the sink that was added last, or if the backend refuses. Called by
    QFLSink::unlink(), which applications use.
*/
bool QFLEncoder::removeSink(QFLSink *sink)
{
    Q_D(QFLEncoder);

    if (!sink || sink != d->sink.data() || !d->encodedVideoSourceControl)
        return false;

    // Off the record before the control stops the sink, which may add itself again or delete the
    // encoder.
    const QPointer<QFLEncoder> self(this);
    const QFLSinkPointer sinkBefore = std::exchange(d->sink, QFLSinkPointer());
    const bool isRemoved = d->encodedVideoSourceControl->removeSink(sink);
    if (!isRemoved && self && !d->sink)
        d->sink = sinkBefore;
    return isRemoved;
}

/*!
    Returns the backend's status, asked at each call, UnavailableStatus without an encode control.
*/
QFLEncoder::Status QFLEncoder::status() const
{
    Q_D(const QFLEncoder);
    return d->encodeControl ? d->encodeControl->status() : UnavailableStatus;
}

/*!
    Returns the last error that the backend reported, NoError if there was none. Nothing clears it,
    neither start() nor success.
*/
QFLEncoder::Error QFLEncoder::error() const
{
    Q_D(const QFLEncoder);
    return d->error;
}

/*!
    Returns the backend's description of error(), for the user; empty if there was none.
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
    Returns the pixel formats that start() accepts, the cheapest first; none without an encode
    control.
*/
QList<QVideoFrame::PixelFormat> QFLEncoder::supportedPixelFormats() const
{
    Q_D(const QFLEncoder);
    return d->encodeControl ? d->encodeControl->supportedPixelFormats()
                            : QList<QVideoFrame::PixelFormat>();
}

/*!
    Returns the frame rates, in frames a second, that can be used with \a settings;
    default-constructed ones ask for all rates. \a continuous, which may be null, tells whether all
    rates between them can be used, too. Empty and false without a settings control.
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
    Returns the resolutions, in pixels, that can be used with \a settings; default-constructed ones
    ask for all sizes. \a continuous, which may be null, tells whether all sizes between them can be
    used, too. Empty and false without a settings control.
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
    Returns the settings for the next start(), default-constructed ones without a settings control.
*/
QVideoEncoderSettings QFLEncoder::videoSettings() const
{
    Q_D(const QFLEncoder);
    return d->settingsControl ? d->settingsControl->videoSettings() : QVideoEncoderSettings();
}

/*!
    Sets the codec, by its name or its codec id, the bit rate (bits per second), the frame rate
    (frames a second), the size (pixels) and the quality to encode with. What \a settings leave
    unset the backend chooses. They hold from the next start() on; whether a part of them applies to
    a run that is on is the backend's business (with the GStreamer backend the bit rate does).
    Does nothing without a settings control. Settings that can't be used are reported by start().
*/
void QFLEncoder::setVideoSettings(const QVideoEncoderSettings &settings)
{
    Q_D(QFLEncoder);

    if (d->settingsControl)
        d->settingsControl->setVideoSettings(settings);
}

/*!
    Starts to encode raw frames of this \a format with the videoSettings() in force; a run that is
    on ends first. A bound media object does this by itself. Returns false if encoding doesn't
    start, for which errorChanged() gives the reason, or, without a signal, if there is no encode
    control.
*/
bool QFLEncoder::start(const QVideoSurfaceFormat &format)
{
    Q_D(QFLEncoder);
    return d->encodeControl && d->encodeControl->start(format);
}

/*!
    Passes one raw \a frame to the backend; its start time in microseconds becomes the timestamp of
    the encoded frame. Returns false if the frame is not taken, because there is no run or it can't
    keep up for instance, or without an encode control; this alone is no error.
*/
bool QFLEncoder::encode(const QVideoFrame &frame)
{
    Q_D(QFLEncoder);
    return d->encodeControl && d->encodeControl->encode(frame);
}

/*!
    Has the backend encode and hand out what it holds, and drain its sinks. Returns at once. Until
    that is done encode() takes no frames; then the run goes on with a key frame. The end shows in
    QFLEncodedVideoSink::drain() of the sinks, and in QFLEncodeControl::endOfStream() of the control
    that service() gives. Does nothing without an encode control.
*/
void QFLEncoder::drain()
{
    Q_D(QFLEncoder);

    if (d->encodeControl)
        d->encodeControl->drain();
}

/*!
    Has the backend drop the raw frames that it holds and encode the next one as a key frame, which
    is also how to answer a far end that asks for one. Does nothing without an encode control.
*/
void QFLEncoder::flush()
{
    Q_D(QFLEncoder);

    if (d->encodeControl)
        d->encodeControl->flush();
}

/*!
    Ends the run at once: what has not been handed out is dropped, drain() before it keeps it. Does
    nothing without an encode control.
*/
void QFLEncoder::stop()
{
    Q_D(QFLEncoder);

    if (d->encodeControl)
        d->encodeControl->stop();
}

#include "moc_qflencoder.cpp"
