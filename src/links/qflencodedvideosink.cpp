// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-3.0-or-later
// The base of the sinks that receive a stream of encoded video frames.

#include "qflencodedvideosink.h"
#include "qflencodedvideosink_p.h"

/*!
    \class QFLEncodedVideoSink
    \brief The base of the sinks that receive encoded video frames.

    The source calls start() before the first frame of a stream, encodedVideoFrame() once a frame,
    and stop() at the end of the stream, drain() before it where the stream comes to its end by
    itself; all on the thread on which the sink was linked.
*/

/*!
    \fn bool QFLEncodedVideoSink::isFormatSupported(const QVideoEncoderSettings &settings) const

    Returns whether the sink can take a stream with these \a settings.
*/

/*!
    \fn bool QFLEncodedVideoSink::encodedVideoFrame(const QFLEncodedVideoFrame &frame)

    Takes one \a frame. A sink that returns false has not taken it, and is offered the next key
    frame.
*/

/*!
    Makes a sink without stream.
*/
QFLEncodedVideoSink::QFLEncodedVideoSink() : d_ptr(new QFLEncodedVideoSinkPrivate) { }

/*!
    Makes a sink with the record \a dd, which it owns from then on.
*/
QFLEncodedVideoSink::QFLEncodedVideoSink(QFLEncodedVideoSinkPrivate &dd) : d_ptr(&dd) { }

QFLEncodedVideoSink::~QFLEncodedVideoSink() = default;

/*!
    Returns the settings of the stream being received, default-constructed outside a stream.
*/
QVideoEncoderSettings QFLEncodedVideoSink::videoEncoderSettings() const
{
    return d_ptr->settings;
}

/*!
    Prepares for a stream with these \a settings: stores them and makes the sink active. Overrides
    call this once they are ready and return false if they can't take the stream.
*/
bool QFLEncodedVideoSink::start(const QVideoEncoderSettings &settings)
{
    d_ptr->settings = settings;
    setActive(true);
    return true;
}

/*!
    Finishes what the sink still holds of the stream. Does nothing here.
*/
void QFLEncodedVideoSink::drain() { }

/*!
    Ends the stream: forgets its settings and makes the sink inactive. Overrides call this.
*/
void QFLEncodedVideoSink::stop()
{
    d_ptr->settings = QVideoEncoderSettings();
    setActive(false);
}
