// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Turns Ctrl-C and the request to terminate into a signal of the event loop.

#include "interruptwatcher.h"

#include <QtCore/qsocketnotifier.h>

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace {

int pipeEnds[2] = {-1, -1};

// Of the little that a signal handler may do, writing to a pipe is what an event loop can wait for.
void writePipe(int)
{
    const char byte = 1;
    const ssize_t written = write(pipeEnds[1], &byte, 1);
    static_cast<void>(written);
}

void handleSignal(int number)
{
    struct sigaction action = {};
    action.sa_handler = writePipe;
    // The second interrupt ends a program that does not answer to the first.
    action.sa_flags = int(SA_RESTART | SA_RESETHAND);
    sigaction(number, &action, nullptr);
}

} // namespace

/*!
    \class InterruptWatcher

    There can be one in a process at a time.
*/

/*!
    \fn void InterruptWatcher::interrupted()

    Emitted in the object's thread when the process was asked to end.
*/

InterruptWatcher::InterruptWatcher(QObject *parent) : QObject(parent)
{
    if (pipe2(pipeEnds, O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    auto *notifier = new QSocketNotifier(pipeEnds[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, &InterruptWatcher::readPipe);
    handleSignal(SIGHUP);
    handleSignal(SIGINT);
    handleSignal(SIGTERM);
}

InterruptWatcher::~InterruptWatcher()
{
    std::signal(SIGHUP, SIG_DFL);
    std::signal(SIGINT, SIG_DFL);
    std::signal(SIGTERM, SIG_DFL);
    for (int &end : pipeEnds) {
        close(end);
        end = -1;
    }
}

void InterruptWatcher::readPipe()
{
    char byte = 0;
    if (read(pipeEnds[0], &byte, 1) == 1)
        Q_EMIT interrupted();
}
