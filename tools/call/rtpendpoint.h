// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// An address and a port that RTP goes to or arrives at; RTCP uses the port after it.

#ifndef RTPENDPOINT_H
#define RTPENDPOINT_H

#include <QtCore/qstring.h>

struct RtpEndpoint
{
    QString host;
    quint16 port = 0;

    static RtpEndpoint fromString(const QString &text);

    bool isNull() const { return port == 0; }
    QString toString() const;

    RtpEndpoint resolved(QString *errorText) const;
    QString localHostTowards(QString *errorText) const;
};

#endif
