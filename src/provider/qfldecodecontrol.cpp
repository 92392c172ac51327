// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-3.0-or-later
// The control of a decoder service that turns encoded frames into raw ones.

#include "qfldecodecontrol.h"

/*!
    \class QFLDecodeControl
    \brief The main control of a decoder service, implemented by a backend.

    QFLDecoder calls the operations on its own thread. The signals may be emitted from any thread;
    the decoder receives them in its own. The pictures go to the surface of the service's
    QVideoRendererControl.
*/

/*!
    \fn QStringList QFLDecodeControl::supportedCodecs(bool hardwareOnly) const

    Returns the names of the codecs, as QFLCodecInfo::codec() gives them; only those with an
    implementation in hardware if \a hardwareOnly is true.
*/

/*!
    \fn bool QFLDecodeControl::isFormatSupported(const QVideoEncoderSettings &settings) const

    Returns whether start() accepts a stream with these \a settings.
*/

/*!
    \fn bool QFLDecodeControl::start(const QVideoEncoderSettings &settings)

    Starts to decode a stream that was encoded with these \a settings. Returns false, and reports
    why by error(), if decoding can't start.
*/

/*!
    \fn QVideoEncoderSettings QFLDecodeControl::videoSettings() const

    Returns the settings of the stream being decoded, default-constructed outside a run.
*/

/*!
    \fn QVideoSurfaceFormat QFLDecodeControl::outputFormat() const

    Returns the format that outputFormatChanged() reported last, an invalid one before.
*/

/*!
    \fn bool QFLDecodeControl::decode(const QFLEncodedVideoFrame &frame)

    Takes one encoded \a frame, whose timestamp becomes the start time of the picture, in
    microseconds. Returns false if the frame is not taken.
*/

/*!
    \fn void QFLDecodeControl::drain()

    Decodes and shows what has been taken and emits endOfStream().
*/

/*!
    \fn void QFLDecodeControl::flush()

    Drops what has been taken and not been shown; decoding goes on at the next key frame.
*/

/*!
    \fn void QFLDecodeControl::stop()

    Ends decoding at once. No picture is shown after it has returned.
*/

/*!
    \fn QFLDecoder::Status QFLDecodeControl::status() const

    Returns the current status, at any time; statusChanged() announces each change.
*/

/*!
    \fn void QFLDecodeControl::statusChanged(QFLDecoder::Status status)

    Emitted when the \a status has changed.
*/

/*!
    \fn void QFLDecodeControl::error(QFLDecoder::Error code, const QString &error)

    Reports a failure: its \a code and a text for the user.
*/

/*!
    \fn void QFLDecodeControl::outputFormatChanged(const QVideoSurfaceFormat &format)

    Emitted when the \a format of the decoded pictures is known or has changed.
*/

/*!
    \fn void QFLDecodeControl::endOfStream()

    Emitted when the last picture of a drained stream has been shown.
*/

QFLDecodeControl::QFLDecodeControl(QObject *parent) : QMediaControl(parent) { }

QFLDecodeControl::~QFLDecodeControl() = default;
