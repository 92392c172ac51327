// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-3.0-or-later
// The control of an encoder service that turns raw frames into encoded ones.

#include "qflencodecontrol.h"

/*!
    \class QFLEncodeControl
    \brief The main control of an encoder service, implemented by a backend.

    QFLEncoder and its surface call the operations, from whatever thread they are used on: frames
    of a bound camera can come from the camera's thread. The signals may be emitted from any
    thread; the encoder receives them in its own.
*/

/*!
    \fn QStringList QFLEncodeControl::supportedCodecs(bool hardwareOnly) const

    Returns the names of the codecs, as QFLCodecInfo::codec() gives them; only those with an
    implementation in hardware if \a hardwareOnly is true.
*/

/*!
    \fn QList<QVideoFrame::PixelFormat> QFLEncodeControl::supportedPixelFormats() const

    Returns the pixel formats that start() accepts, the cheapest first.
*/

/*!
    \fn QFLEncoder::Status QFLEncodeControl::status() const

    Returns the current status, at any time; statusChanged() announces each change.
*/

/*!
    \fn bool QFLEncodeControl::start(const QVideoSurfaceFormat &format)

    Starts to encode raw frames of this \a format with the settings then in force. Returns false,
    and reports why by error(), if encoding can't start.
*/

/*!
    \fn void QFLEncodeControl::drain()

    Encodes what has been taken, hands it all out and emits endOfStream(). No frame is taken before
    that.
*/

/*!
    \fn void QFLEncodeControl::flush()

    Drops the frames that wait to be encoded and makes the next encoded frame a key frame.
*/

/*!
    \fn void QFLEncodeControl::stop()

    Ends encoding at once. No frame is handed out after it has returned.
*/

/*!
    \fn bool QFLEncodeControl::encode(const QVideoFrame &frame)

    Takes one raw \a frame, whose start time in microseconds becomes the timestamp of the encoded
    one. Returns false if the frame is not taken.
*/

/*!
    \fn void QFLEncodeControl::encodedVideoFrame(QFLEncodedVideoFrame frame)

    Emitted once for each encoded \a frame, in order.
*/

/*!
    \fn void QFLEncodeControl::statusChanged(QFLEncoder::Status status)

    Emitted when the \a status has changed.
*/

/*!
    \fn void QFLEncodeControl::error(QFLEncoder::Error error, const QString &errorDescription)

    Reports a failure: its code and a text for the user.
*/

/*!
    \fn void QFLEncodeControl::endOfStream()

    Emitted when the last frame of a drained stream has been handed out.
*/

QFLEncodeControl::QFLEncodeControl(QObject *parent) : QMediaControl(parent) { }

QFLEncodeControl::~QFLEncodeControl() = default;
