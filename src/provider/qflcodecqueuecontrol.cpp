// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-3.0-or-later
// The control by which a service asks for more input.

#include "qflcodecqueuecontrol.h"

/*!
    \class QFLCodecQueueControl
    \brief Paces an application that feeds an encoder or decoder service by itself.

    The media objects never use this control: an application requests it from a service that has
    one.
*/

/*!
    \fn int QFLCodecQueueControl::capacity() const

    Returns the largest number of input buffers that the service holds.
*/

/*!
    \fn int QFLCodecQueueControl::pending() const

    Returns the number of input buffers that the service holds now.
*/

/*!
    \fn int QFLCodecQueueControl::lowWatermark() const

    Returns the number of pending buffers at which needData() is emitted.
*/

/*!
    \fn void QFLCodecQueueControl::setLowWatermark(int count)

    Has needData() emitted when pending() falls to \a count.
*/

/*!
    \fn void QFLCodecQueueControl::needData(int bufferCountHint)

    Emitted when pending() falls to the low watermark; \a bufferCountHint more buffers fit.
*/

QFLCodecQueueControl::QFLCodecQueueControl(QObject *parent) : QMediaControl(parent) { }

QFLCodecQueueControl::~QFLCodecQueueControl() = default;
