// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Two UDP sockets on neighbouring ports, one for RTP and one for RTCP.

#ifndef RTPSOCKETPAIR_H
#define RTPSOCKETPAIR_H

#include "rtpendpoint.h"

#include <gio/gio.h>

#include <memory>

struct SocketUnref
{
    void operator()(GSocket *socket) const { g_object_unref(socket); }
};

class RtpSocketPair
{
public:
    bool bind(const RtpEndpoint &local, QString *errorText);

    RtpEndpoint endpoint() const;
    GSocket *rtpSocket() const;
    GSocket *rtcpSocket() const;

private:
    bool bindBoth(const RtpEndpoint &local, QString *errorText);

    std::unique_ptr<GSocket, SocketUnref> m_rtpSocket;
    std::unique_ptr<GSocket, SocketUnref> m_rtcpSocket;
    RtpEndpoint m_endpoint;
};

#endif
