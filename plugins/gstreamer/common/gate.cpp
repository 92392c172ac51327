// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Lets streaming threads call an object until it closes the way in.

#include "gate.h"

/*!
    \class Gate

    GStreamer goes on calling what it was given, for as long as one of its threads hangs. So it is
    given a GatedCall, which it destroys when it has done with it, and the object that is called
    closes the gate when it is no longer to be. Calls through one gate come one at a time. They must
    not wait for the thread that closes it.
*/

/*! Makes \a call unless the gate is closed, which the result tells. Any thread may do that. */
bool Gate::pass(const std::function<void()> &call)
{
    const QMutexLocker locker(&m_mutex);
    if (m_isOpen)
        call();
    return m_isOpen;
}

/*! A barrier: no call goes on any more, or is made, once this has returned. */
void Gate::close()
{
    const QMutexLocker locker(&m_mutex);
    m_isOpen = false;
}
