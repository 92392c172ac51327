// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The base of the sinks that receive a stream of encoded video frames.

#include "qflencodedvideosink.h"
#include "qflencodedvideosink_p.h"

#include "qflsink_p.h"

/*!
    \class QFLEncodedVideoSink qflencodedvideosink.h
    \brief The base of the sinks that receive encoded video frames.

    An application derives the receiving end of its transport from this class, and owns it. The
    source asks isFormatSupported() and calls start() before the first frame of a stream, then
    encodedVideoFrame() once a frame, and stop() at the end of the stream, drain() before it where
    the stream comes to its end by itself; all on the thread on which the sink was linked, and
    without a wait for what the sink does in threads of its own. A sink that fails reports it with
    setError().

    From within each of these functions the sink may unlink itself, be linked elsewhere or be
    destroyed, and the source be stopped, started or destroyed.

    A QObject class that is such a sink lists it together with its base, as
    \c {Q_INTERFACES(QFLEncodedVideoSink : QFLSink)}; the identifier is
    QFLEncodedVideoSink_iid, "facelink.encodedvideosink/1.0".
*/

/*!
    \fn bool QFLEncodedVideoSink::isFormatSupported(const QVideoEncoderSettings &settings) const

    Returns whether the sink can take a stream with these \a settings. Called by the source before
    start(), and perhaps for streams that never come, so it must leave the sink as it is.
*/

/*!
    \fn bool QFLEncodedVideoSink::encodedVideoFrame(const QFLEncodedVideoFrame &frame)

    Takes one \a frame of the stream that start() has announced; the first one is a key frame. The
    source calls this for each frame, in order. The frame may be kept: its bytes are shared, and stay
    unless the source made them with QByteArray::fromRawData(), which it then must document. A sink
    that returns false has not taken it, and is offered the next key frame.
*/

/*!
    Makes a sink that is unlinked, without stream and inactive.
*/
QFLEncodedVideoSink::QFLEncodedVideoSink()
    : QFLEncodedVideoSink(*new QFLEncodedVideoSinkPrivate) { }

/*!
    Makes a sink with the record \a dd, which it owns from then on.
*/
QFLEncodedVideoSink::QFLEncodedVideoSink(QFLEncodedVideoSinkPrivate &dd) : d_ptr(&dd)
{
    QFLSink::d_ptr->videoSink = this;
}

/*!
    Calls nobody: the sink must have been unlinked before.
*/
QFLEncodedVideoSink::~QFLEncodedVideoSink() = default;

/*!
    Returns \a sink as what it is if it receives encoded video frames, null if it doesn't or is null.
    Unlike a cast of the language this works for sinks that are built without run-time type
    information; sources use it in QFLSource::addSink().
*/
QFLEncodedVideoSink *QFLEncodedVideoSink::fromSink(QFLSink *sink)
{
    return sink ? sink->d_ptr->videoSink : nullptr;
}

/*!
    Returns the settings of the stream being received, default-constructed outside a stream.
*/
QVideoEncoderSettings QFLEncodedVideoSink::videoEncoderSettings() const
{
    return d_ptr->settings;
}

/*!
    Prepares for a stream with these \a settings: stores them and makes the sink active, which its
    source is told. Overrides call this once they are ready, and return false without it if they
    can't take the stream; the source then delivers nothing.
*/
bool QFLEncodedVideoSink::start(const QVideoEncoderSettings &settings)
{
    d_ptr->settings = settings;
    setActive(true);
    return true;
}

/*!
    Finishes what the sink still holds of the stream, after the last frame. The sink stays started
    until stop(). Frames that follow are those of another stream, for which the sink is stopped and
    started again. Does nothing here.
*/
void QFLEncodedVideoSink::drain() { }

/*!
    Ends the stream: forgets its settings and makes the sink inactive, which its source is told.
    Overrides call this. It may be called without a stream.
*/
void QFLEncodedVideoSink::stop()
{
    d_ptr->settings = QVideoEncoderSettings();
    setActive(false);
}
