// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Tells how full the encoder's input is.

#include "codecqueuecontrol.h"

#include "streamingencodecontrol.h"

/*!
    \class CodecQueueControl

    Watches the encode control, which must outlive this control. needData() is emitted in its thread,
    in a run only; a run begins with an empty queue and without needData().
*/

/*! \a encodeControl is borrowed and must outlive the control. */
CodecQueueControl::CodecQueueControl(StreamingEncodeControl *encodeControl, QObject *parent)
    : QFLCodecQueueControl(parent), m_encodeControl(encodeControl)
{
    connect(encodeControl, &StreamingEncodeControl::pendingFell, this,
            &CodecQueueControl::handleFall);
}

int CodecQueueControl::capacity() const
{
    return m_encodeControl->capacity();
}

/*!
    How many raw frames are held now; encode() refuses the next when that is capacity(), and with
    fewer once it has refused one, if the next would have to wait too long.
*/
int CodecQueueControl::pending() const
{
    return m_encodeControl->pending();
}

/*! Initially 0: more is asked for when everything is encoded. */
int CodecQueueControl::lowWatermark() const
{
    return m_lowWatermark;
}

/*! Below 0 is as 0; from capacity() on nothing is ever asked for. */
void CodecQueueControl::setLowWatermark(int count)
{
    m_lowWatermark = qMax(0, count);
}

void CodecQueueControl::handleFall(int from, int to)
{
    const bool isInRun = m_encodeControl->status() == QFLEncoder::StartedStatus;
    // The report may be older than the frames that are held by now.
    const int now = pending();
    if (isInRun && from > m_lowWatermark && qMax(to, now) <= m_lowWatermark)
        Q_EMIT needData(capacity() - now);
}
