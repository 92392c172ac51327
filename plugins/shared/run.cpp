// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Tells after a call to others whether what made it still goes on.

#include "run.h"

/*!
    \class Run

    A member of whatever calls others: slots, sinks, surfaces. They may end or restart what is going
    on, or delete the owner, so the caller gets a watch first and asks it after the call:

    \code
    const Run::Watch isOn = m_run.watch();
    Q_EMIT statusChanged(status);
    if (isOn())
        ...
    \endcode

    Any thread may get a watch and ask it, but only in the thread of the owner the answer lasts until
    the next call to others.
*/

Run::Run() : m_token(std::make_shared<char>()), m_ownerToken(std::make_shared<char>()) { }

Run::~Run() = default;

/*! What went on until now has ended; so say its watches from now on. */
void Run::begin()
{
    std::atomic_store(&m_token, std::shared_ptr<const char>(std::make_shared<char>()));
}

/*! True until the next begin() or the end of the owner. */
Run::Watch Run::watch() const
{
    Watch watch;
    watch.m_token = std::atomic_load(&m_token);
    return watch;
}

/*! True until the end of the owner, whatever runs begin. */
Run::Watch Run::watchOwner() const
{
    Watch watch;
    watch.m_token = m_ownerToken;
    return watch;
}
