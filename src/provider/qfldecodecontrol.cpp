// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The control of a decoder service that turns encoded frames into raw ones.

#include "qfldecodecontrol.h"

/*!
    \class QFLDecodeControl qfldecodecontrol.h
    \brief The main control of a decoder service, implemented by a backend.

    A decoder requests it from its service once, by QFLDecodeControl_iid,
    "facelink.decodecontrol/1.0", when it is made, and gives it back when it is destroyed; the
    service owns it. QFLDecoder calls the operations on its own thread, and passes on what the
    application asks for without a look at the status: every operation may come in every status, and
    from within a slot that is connected to one of the signals. None of them waits for the decoding
    of a frame.

    The signals may be emitted from any thread; the decoder receives them in its own. The pictures
    go to the surface of the service's QVideoRendererControl.
*/

/*!
    \fn QStringList QFLDecodeControl::supportedCodecs(bool hardwareOnly) const

    Returns the names of the codecs, as QFLCodecInfo::codec() gives them; only those with an
    implementation in hardware if \a hardwareOnly is true. Called by QFLDecoder::supportedCodecs();
    changes nothing.
*/

/*!
    \fn bool QFLDecodeControl::isFormatSupported(const QVideoEncoderSettings &settings) const

    Returns whether start() accepts a stream with these \a settings. Called by
    QFLDecoder::isFormatSupported(), and so by the decoder's sink before it starts; changes nothing.
*/

/*!
    \fn bool QFLDecodeControl::start(const QVideoEncoderSettings &settings)

    Starts to decode a stream that was encoded with these \a settings. Called by
    QFLDecoder::start(), which has just forgotten the last run's error and output format. A run that
    is under way ends first.

    Leaves a run that takes frames from the next key frame on, in StartingStatus or StartedStatus,
    and returns true. If decoding can't start it leaves no run and a status from which start() is
    possible, reports why by error() and returns false.
*/

/*!
    \fn QVideoEncoderSettings QFLDecodeControl::videoSettings() const

    Returns the settings of the stream being decoded, default-constructed outside a run. The decoder
    doesn't call this; an application may, that requests the control itself.
*/

/*!
    \fn QVideoSurfaceFormat QFLDecodeControl::outputFormat() const

    Returns the format that outputFormatChanged() reported last, an invalid one before. The decoder
    keeps a copy of its own and doesn't call this; an application may, that requests the control
    itself.
*/

/*!
    \fn bool QFLDecodeControl::decode(const QFLEncodedVideoFrame &frame)

    Takes one encoded \a frame, whose timestamp becomes the start time of the picture, in
    microseconds. Called by QFLDecoder::decode(), once a frame and in the stream's order. The frame
    may be kept: its bytes are shared.

    Returns false if the frame is not taken: outside a run, while the run is drained, in front of
    the first key frame, or because it is damaged or too many wait. The caller then goes on with a
    key frame. Only a failure is reported by error() as well.
*/

/*!
    \fn void QFLDecodeControl::drain()

    Decodes and shows what has been taken, then changes to EndOfStreamStatus and emits
    endOfStream(). Called by QFLDecoder::drain(). Returns at once; no frame is taken from then on.
    Does nothing outside a run.
*/

/*!
    \fn void QFLDecodeControl::flush()

    Drops what has been taken and not been shown; decoding goes on at the next key frame, in
    StartedStatus again where the stream was drained. Called by QFLDecoder::flush(). Does nothing
    outside a run.
*/

/*!
    \fn void QFLDecodeControl::stop()

    Ends decoding at once and leaves a status from which start() is possible. No picture is shown
    after it has returned. Called by QFLDecoder::stop(), and by the destructor of a decoder that is
    started. Does nothing outside a run.
*/

/*!
    \fn QFLDecoder::Status QFLDecodeControl::status() const

    Returns the current status. Called by QFLDecoder::status() each time that it is asked, since the
    decoder keeps no status itself; while statusChanged() is emitted this is the new one already.
*/

/*!
    \fn void QFLDecodeControl::statusChanged(QFLDecoder::Status status)

    Emitted when the \a status has changed. The decoder emits its own QFLDecoder::statusChanged().
*/

/*!
    \fn void QFLDecodeControl::error(QFLDecoder::Error code, const QString &error)

    Reports a failure: its \a code and in \a error a text for the user, translated. The decoder
    stores both and emits QFLDecoder::errorChanged() if they differ from what it has stored. A
    failure that ends the run is reported once the run has ended.
*/

/*!
    \fn void QFLDecodeControl::outputFormatChanged(const QVideoSurfaceFormat &format)

    Emitted when the \a format of the decoded pictures is known or has changed, before the first
    picture of that format is shown.
*/

/*!
    \fn void QFLDecodeControl::endOfStream()

    Emitted when the last picture of a drained stream has been shown. The decoder emits its own
    QFLDecoder::endOfStream().
*/

/*!
    Makes a control as a child of \a parent, mostly the service that offers it.
*/
QFLDecodeControl::QFLDecodeControl(QObject *parent) : QMediaControl(parent) { }

QFLDecodeControl::~QFLDecodeControl() = default;
