// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Two UDP sockets on neighbouring ports, one for RTP and one for RTCP.

#include "rtpsocketpair.h"

#include <sys/socket.h>

namespace {

// A key frame leaves as a burst of packets, more than the default buffer of a socket holds.
const int receiveBufferBytes = 1 << 20;
const int freePairAttempts = 100;

GSocket *boundSocket(const QString &host, quint16 port, QString *errorText)
{
    g_autoptr(GError) error = nullptr;
    g_autoptr(GSocketAddress) address
            = g_inet_socket_address_new_from_string(host.toLatin1().constData(), port);
    g_autoptr(GSocket) socket = g_socket_new(G_SOCKET_FAMILY_IPV4, G_SOCKET_TYPE_DATAGRAM,
                                             G_SOCKET_PROTOCOL_UDP, &error);
    if (!socket || !g_socket_bind(socket, address, FALSE, &error)) {
        *errorText = QString::fromUtf8(error->message);
        return nullptr;
    }
    g_socket_set_option(socket, SOL_SOCKET, SO_RCVBUF, receiveBufferBytes, nullptr);
    return static_cast<GSocket *>(g_steal_pointer(&socket));
}

quint16 portOf(GSocket *socket)
{
    g_autoptr(GSocketAddress) address = g_socket_get_local_address(socket, nullptr);
    return g_inet_socket_address_get_port(G_INET_SOCKET_ADDRESS(address));
}

} // namespace

/*!
    Binds the sockets to the address of \a local, to its port and the one after it; with port 0, to
    any two such ports that are free. On failure returns false, and \a errorText says why.
*/
bool RtpSocketPair::bind(const RtpEndpoint &local, QString *errorText)
{
    if (local.port != 0)
        return bindBoth(local, errorText);
    for (int attempt = 0; attempt < freePairAttempts; ++attempt) {
        if (bindBoth(local, errorText))
            return true;
    }
    return false;
}

RtpEndpoint RtpSocketPair::endpoint() const
{
    return m_endpoint;
}

/*! Belongs to the pair; null before a successful bind(). */
GSocket *RtpSocketPair::rtpSocket() const
{
    return m_rtpSocket.get();
}

/*! Belongs to the pair; null before a successful bind(). */
GSocket *RtpSocketPair::rtcpSocket() const
{
    return m_rtcpSocket.get();
}

bool RtpSocketPair::bindBoth(const RtpEndpoint &local, QString *errorText)
{
    m_rtcpSocket.reset();
    m_rtpSocket.reset(boundSocket(local.host, local.port, errorText));
    if (!m_rtpSocket)
        return false;
    const quint16 port = portOf(m_rtpSocket.get());
    m_rtcpSocket.reset(boundSocket(local.host, port + 1, errorText));
    m_endpoint = {local.host, port};
    return m_rtcpSocket != nullptr;
}
