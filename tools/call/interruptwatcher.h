// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Turns Ctrl-C and the request to terminate into a signal of the event loop.

#ifndef INTERRUPTWATCHER_H
#define INTERRUPTWATCHER_H

#include <QtCore/qobject.h>

class InterruptWatcher : public QObject
{
    Q_OBJECT

public:
    explicit InterruptWatcher(QObject *parent = nullptr);
    ~InterruptWatcher() override;

Q_SIGNALS:
    void interrupted();

private:
    void readPipe();
};

#endif
