// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The control through which a service hands out encoded frames to sinks.

#include "qflencodedvideosourcecontrol.h"

/*!
    \class QFLEncodedVideoSourceControl qflencodedvideosourcecontrol.h
    \brief The control through which a service delivers its encoded video stream to sinks.

    The service owns it; the identifier is QFLEncodedVideoSourceControl_iid,
    "facelink.encodedvideosourcecontrol/1.0". A QFLEncoder requests it from its own service and
    holds it as long as it lives; a QFLDecoder requests it from the service of the media object that
    it is bound to and releases it when it is unbound.

    A backend implements QFLSource's operations, which are called on the thread that the control
    lives in, with or without a run:

    \li QFLSource::addSink() by QFLEncoder::addSink() and, when a decoder is bound, by the link() of
    the decoder's sink. A run that is under way is started in the sink at once. What is no
    QFLEncodedVideoSink is refused, and so is a sink that doesn't support the stream's format.
    \li QFLSource::removeSink() by QFLEncoder::removeSink(), for the sink that was added last, and by
    the unlink() of sinks that are linked to the control itself, a decoder's for instance. It may
    come from within any call to a sink, which may also destroy the sink or the service.

    The backend asks an accepted sink QFLEncodedVideoSink::isFormatSupported(), calls its
    QFLEncodedVideoSink::start(), then QFLEncodedVideoSink::encodedVideoFrame() once a frame, from a
    key frame on, and QFLEncodedVideoSink::stop() at the end, all on the thread that the control
    lives in. It may override QFLSource::sinkActiveChanged() and QFLSource::sinkErrorChanged() to
    hear how its sinks fare.
*/

/*!
    Makes a control as a child of \a parent, mostly the service that offers it.
*/
QFLEncodedVideoSourceControl::QFLEncodedVideoSourceControl(QObject *parent) : QMediaControl(parent)
{
}

QFLEncodedVideoSourceControl::~QFLEncodedVideoSourceControl() = default;
