// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// What the other controls of an encoder service need to know of the encode control.

#include "streamingencodecontrol.h"

/*!
    \class StreamingEncodeControl

    Signals are emitted in the thread of the control. A stream is a run from the point where frames
    come out.

    \fn QVideoEncoderSettings StreamingEncodeControl::streamSettings() const

    The complete settings of the present run's stream, default-constructed outside a run.

    \fn void StreamingEncodeControl::requestKeyFrame()

    Asks for a key frame soon, on behalf of a sink; requests are merged and limited in rate.

    \fn int StreamingEncodeControl::capacity() const

    The most raw frames that are held.

    \fn int StreamingEncodeControl::pending()

    How many raw frames wait for the encoder or are in it; any thread may ask.

    \fn int StreamingEncodeControl::undelivered()

    How many encoded frames wait for their turn in the thread of the control.

    \fn void StreamingEncodeControl::pendingFell(int from, int to)

    Fewer raw frames are held than before.
*/

StreamingEncodeControl::StreamingEncodeControl(QObject *parent) : QFLEncodeControl(parent) { }

void StreamingEncodeControl::reportError(QFLEncoder::Error code, const QString &text)
{
    Q_EMIT error(code, text);
}
