// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-3.0-or-later
// The control through which a service hands out encoded frames to sinks.

#include "qflencodedvideosourcecontrol.h"

/*!
    \class QFLEncodedVideoSourceControl
    \brief The control through which a service delivers its encoded video stream to sinks.

    A backend implements QFLSource's operations: it calls an accepted sink's
    QFLEncodedVideoSink::start(), then QFLEncodedVideoSink::encodedVideoFrame() once a frame, and
    QFLEncodedVideoSink::stop() at the end, all on the thread that the control lives in.
*/

QFLEncodedVideoSourceControl::QFLEncodedVideoSourceControl(QObject *parent) : QMediaControl(parent)
{
}

QFLEncodedVideoSourceControl::~QFLEncodedVideoSourceControl() = default;
