// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// An address and a port that RTP goes to or arrives at; RTCP uses the port after it.

#include "rtpendpoint.h"

#include <gio/gio.h>

#include <QtCore/qstringlist.h>

/*!
    Reads "HOST:PORT" or "PORT", which leaves the host empty. The result is null if the text is
    neither, or if the port leaves no room for the RTCP port after it.
*/
RtpEndpoint RtpEndpoint::fromString(const QString &text)
{
    const int colon = text.lastIndexOf(QLatin1Char(':'));
    bool isNumber = false;
    const uint port = text.midRef(colon + 1).toUInt(&isNumber);
    if (!isNumber || port == 0 || port >= 65535)
        return RtpEndpoint();
    return {text.left(qMax(0, colon)), quint16(port)};
}

QString RtpEndpoint::toString() const
{
    return QStringLiteral("%1:%2").arg(host).arg(port);
}

/*!
    The same endpoint with an IPv4 address for its host. On failure the result is null and
    \a errorText says why.
*/
RtpEndpoint RtpEndpoint::resolved(QString *errorText) const
{
    g_autoptr(GResolver) resolver = g_resolver_get_default();
    g_autoptr(GError) error = nullptr;
    GList *addresses = g_resolver_lookup_by_name_with_flags(resolver, host.toUtf8().constData(),
                                                            G_RESOLVER_NAME_LOOKUP_FLAGS_IPV4_ONLY,
                                                            nullptr, &error);
    if (!addresses) {
        *errorText = QString::fromUtf8(error->message);
        return RtpEndpoint();
    }
    g_autofree gchar *address = g_inet_address_to_string(G_INET_ADDRESS(addresses->data));
    g_resolver_free_addresses(addresses);
    return {QString::fromLatin1(address), port};
}

/*!
    The address of this machine from which the endpoint, which has to be resolved, is reached. On
    failure the result is empty and \a errorText says why. Nothing is sent to find out.
*/
QString RtpEndpoint::localHostTowards(QString *errorText) const
{
    g_autoptr(GError) error = nullptr;
    g_autoptr(GSocketAddress) peer
            = g_inet_socket_address_new_from_string(host.toLatin1().constData(), port);
    g_autoptr(GSocket) socket = g_socket_new(G_SOCKET_FAMILY_IPV4, G_SOCKET_TYPE_DATAGRAM,
                                             G_SOCKET_PROTOCOL_UDP, &error);
    if (!socket || !g_socket_connect(socket, peer, nullptr, &error)) {
        *errorText = QString::fromUtf8(error->message);
        return QString();
    }
    g_autoptr(GSocketAddress) local = g_socket_get_local_address(socket, nullptr);
    g_autofree gchar *address = g_inet_address_to_string(
            g_inet_socket_address_get_address(G_INET_SOCKET_ADDRESS(local)));
    return QString::fromLatin1(address);
}
