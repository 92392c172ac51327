// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The control by which a service asks for more input.

#include "qflcodecqueuecontrol.h"

/*!
    \class QFLCodecQueueControl qflcodecqueuecontrol.h
    \brief Paces an application that feeds an encoder or decoder service by itself.

    The media objects never use this control: an application requests it from a service that has
    one, by QFLCodecQueueControl_iid, "facelink.codecqueuecontrol/1.0", and gives it back with
    QMediaService::releaseControl(). The service owns it. The application calls the operations on
    the thread that the control lives in, at any time, in a run or not; none of them waits.
*/

/*!
    \fn int QFLCodecQueueControl::capacity() const

    Returns the largest number of input buffers that the service holds.
*/

/*!
    \fn int QFLCodecQueueControl::pending() const

    Returns the number of input buffers that the service holds now, from 0 to capacity().
*/

/*!
    \fn int QFLCodecQueueControl::lowWatermark() const

    Returns the number of pending buffers at which needData() is emitted; the backend chooses it
    until setLowWatermark() is called.
*/

/*!
    \fn void QFLCodecQueueControl::setLowWatermark(int count)

    Has needData() emitted when pending() falls to \a count, from 0 to one less than capacity().
*/

/*!
    \fn void QFLCodecQueueControl::needData(int bufferCountHint)

    Emitted when pending() falls to the low watermark; \a bufferCountHint more buffers fit. It may
    be emitted from any thread.
*/

/*!
    Makes a control as a child of \a parent, mostly the service that offers it.
*/
QFLCodecQueueControl::QFLCodecQueueControl(QObject *parent) : QMediaControl(parent) { }

QFLCodecQueueControl::~QFLCodecQueueControl() = default;
