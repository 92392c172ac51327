// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The control of an encoder service that turns raw frames into encoded ones.

#include "qflencodecontrol.h"

/*!
    \class QFLEncodeControl qflencodecontrol.h
    \brief The main control of an encoder service, implemented by a backend.

    It is requested by QFLEncodeControl_iid, "facelink.encodecontrol/1.0": by the encoder when it is
    made, and by the encoder's surface when the encoder is bound for the first time. The encoder
    gives its reference back when it is destroyed, the surface never does, so a service has one
    control and owns it to its end.

    The encoder calls the operations on its own thread. Its surface calls supportedPixelFormats(),
    start(), stop() and encode() on whatever thread the bound object's backend renders from: frames
    of a camera can come from the camera's thread. Both pass on what they are asked for without a
    look at the status: every operation may come in every status, and from within a slot that is
    connected to one of the signals. None of them waits for the encoding of a frame.

    The signals may be emitted from any thread; the encoder receives them in its own.
*/

/*!
    \fn QStringList QFLEncodeControl::supportedCodecs(bool hardwareOnly) const

    Returns the names of the codecs, as QFLCodecInfo::codec() gives them; only those with an
    implementation in hardware if \a hardwareOnly is true. Called by QFLEncoder::supportedCodecs();
    changes nothing.
*/

/*!
    \fn QList<QVideoFrame::PixelFormat> QFLEncodeControl::supportedPixelFormats() const

    Returns the pixel formats that start() accepts, the cheapest first. Called by
    QFLEncoder::supportedPixelFormats() and, before start(), by a bound backend that looks for a
    format through QFLEncoderVideoSurface::supportedPixelFormats(); changes nothing.
*/

/*!
    \fn QFLEncoder::Status QFLEncodeControl::status() const

    Returns the current status. Called by QFLEncoder::status() each time that it is asked, since the
    encoder keeps no status itself; while statusChanged() is emitted this is the new one already.
*/

/*!
    \fn bool QFLEncodeControl::start(const QVideoSurfaceFormat &format)

    Starts to encode raw frames of this \a format with the settings then in force. Called by
    QFLEncoder::start() and, with the format in which a bound backend renders, by
    QFLEncoderVideoSurface::start(). A run that is under way ends first.

    Leaves a run that takes frames, in StartingStatus or StartedStatus, and returns true; called on
    another thread than the control's, it may return before the run begins. If
    encoding can't start it leaves no run, reports why by error() and returns false.
*/

/*!
    \fn void QFLEncodeControl::drain()

    Encodes what has been taken, hands it all out, drains the sinks and emits endOfStream(). Called
    by QFLEncoder::drain(). Returns at once; no frame is taken before that signal. The run goes on
    afterwards, with a key frame. Does nothing outside a run.
*/

/*!
    \fn void QFLEncodeControl::flush()

    Drops the frames that wait to be encoded and makes the next encoded frame a key frame. Called by
    QFLEncoder::flush(), by applications above all when the far end asks for a key frame. Does
    nothing outside a run.
*/

/*!
    \fn void QFLEncodeControl::stop()

    Ends encoding at once and leaves a status from which start() is possible. No frame is handed out
    after it has returned, and the sinks are stopped; called on another thread than the control's, it
    may return before that. Called by QFLEncoder::stop() and
    QFLEncoderVideoSurface::stop(), also without a start() before; does nothing outside a run.
*/

/*!
    \fn bool QFLEncodeControl::encode(const QVideoFrame &frame)

    Takes one raw \a frame, whose start time in microseconds becomes the timestamp of the encoded
    one. Called by QFLEncoder::encode() and QFLEncoderVideoSurface::present(), once a frame and in
    order, on any thread; as a slot it can be invoked by a queued call, too. The frame may be kept:
    a QVideoFrame is shared.

    Returns false if the frame is not taken: outside a run, while the run is drained, because too
    many frames wait, or because it isn't of the format that start() was given. Only the last is
    reported by error() as well.
*/

/*!
    \fn void QFLEncodeControl::encodedVideoFrame(QFLEncodedVideoFrame frame)

    Emitted once for each encoded \a frame, in order. The encoder emits its own
    QFLEncoder::encodedVideoFrame(). The sinks get their frames from the service's
    QFLEncodedVideoSourceControl, not from this signal.
*/

/*!
    \fn void QFLEncodeControl::statusChanged(QFLEncoder::Status status)

    Emitted when the \a status has changed. The encoder emits its own QFLEncoder::statusChanged().
*/

/*!
    \fn void QFLEncodeControl::error(QFLEncoder::Error error, const QString &errorDescription)

    Reports a failure: \a error is its code, \a errorDescription a text for the user, translated.
    The encoder stores both and emits QFLEncoder::errorChanged(), also for a repeated one. A failure
    that ends the run is reported once the run has ended.
*/

/*!
    \fn void QFLEncodeControl::endOfStream()

    Emitted when the last frame of a drained stream has been handed out. The encoder doesn't pass it
    on.
*/

/*!
    Makes a control as a child of \a parent, mostly the service that offers it.
*/
QFLEncodeControl::QFLEncodeControl(QObject *parent) : QMediaControl(parent) { }

QFLEncodeControl::~QFLEncodeControl() = default;
