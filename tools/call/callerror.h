// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The kinds of failure of a call, which are the exit codes of the program.

#ifndef CALLERROR_H
#define CALLERROR_H

#include <QtCore/qmetatype.h>
#include <QtCore/qstring.h>

struct CallError
{
    enum Code : int {
        NoError = 0,
        BadOption = 1,
        NoCamera = 2,
        NoCodec = 3,
        PortUnavailable = 4,
        NetworkError = 5,
        NoPicture = 6,
        SnapshotError = 7,
        NoDisplay = 8
    };

    Code code = NoError;
    QString text;
};

Q_DECLARE_METATYPE(CallError)

#endif
