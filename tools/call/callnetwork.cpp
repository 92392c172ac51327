// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The network side of a call: to a peer, or from one end to the other on this machine.

#include "callnetwork.h"

namespace {

const int keyFrameIntervalMilliseconds = 200;

CallError networkError(const QString &text)
{
    return {CallError::NetworkError, text};
}

CallError bindSockets(const RtpEndpoint &local, RtpSocketPair *sockets)
{
    QString text;
    if (sockets->bind(local, &text))
        return CallError();
    return {CallError::PortUnavailable,
            CallNetwork::tr("cannot listen on %1 and the port after it: %2")
                    .arg(local.toString(), text)};
}

} // namespace

/*!
    \class CallNetwork

    With a peer there is one transport, which sends and receives. In the loopback the transport
    sends to a second one, the far end, which receives.
*/

/*!
    \fn void CallNetwork::keyFrameRequested()

    Emitted when the far end of the outgoing stream needs a key frame. Requests that come close
    together are emitted as one.
*/

/*!
    \fn void CallNetwork::failed(const QString &text)

    Emitted when a transport fails, which ends the call.
*/

CallNetwork::CallNetwork(const CallSettings &settings, QObject *parent)
    : QObject(parent), m_settings(settings)
{
    m_keyFrameTimer.setSingleShot(true);
    m_keyFrameTimer.setInterval(keyFrameIntervalMilliseconds);
    connect(&m_keyFrameTimer, &QTimer::timeout, this, [this] {
        if (std::exchange(m_keyFramePending, false))
            requestKeyFrame();
    });
}

CallNetwork::~CallNetwork() = default;

/*! Binds the sockets and starts to receive. To be called once. */
CallError CallNetwork::open(const RtpPayload &payload)
{
    CallError error = m_settings.isLoopback() ? openLoopback(payload) : openPeer(payload);
    if (error.code != CallError::NoError)
        return error;
    RtpTransport *incoming = m_settings.isLoopback() ? &m_farEnd : &m_transport;
    m_sender = std::make_unique<RtpSender>(&m_transport, payload.codec);
    m_receiver = std::make_unique<RtpReceiver>(incoming, payload.codec);
    connectTransport(&m_transport);
    connectTransport(&m_farEnd);
    return CallError();
}

/*! Null before open() has succeeded. */
RtpSender *CallNetwork::sender() const
{
    return m_sender.get();
}

/*! Null before open() has succeeded. */
RtpReceiver *CallNetwork::receiver() const
{
    return m_receiver.get();
}

/*! How many packets of the incoming stream never came, or came too late. */
quint64 CallNetwork::packetsLost() const
{
    return m_settings.isLoopback() ? m_farEnd.packetsLost() : m_transport.packetsLost();
}

CallError CallNetwork::openLoopback(const RtpPayload &payload)
{
    const QString localHost = QStringLiteral("127.0.0.1");
    RtpEndpoint farEndpoint = m_settings.listen;
    if (farEndpoint.host.isEmpty())
        farEndpoint.host = localHost;
    RtpSocketPair nearSockets;
    RtpSocketPair farSockets;
    CallError error = bindSockets(farEndpoint, &farSockets);
    if (error.code == CallError::NoError)
        error = bindSockets({localHost, 0}, &nearSockets);
    if (error.code != CallError::NoError)
        return error;
    QString text;
    if (!m_farEnd.open(payload, farSockets, nearSockets.endpoint(), RtpTransport::OwnClock, &text)
        || !m_transport.open(payload, nearSockets, farSockets.endpoint(), RtpTransport::OwnClock,
                             &text))
        return networkError(text);
    return CallError();
}

CallError CallNetwork::openPeer(const RtpPayload &payload)
{
    QString text;
    const RtpEndpoint peer = m_settings.peer.resolved(&text);
    if (peer.isNull())
        return networkError(tr("cannot call %1: %2").arg(m_settings.peer.toString(), text));
    RtpEndpoint local = m_settings.listen;
    if (local.host.isEmpty())
        local.host = peer.localHostTowards(&text);
    if (local.host.isEmpty())
        return networkError(tr("cannot reach %1: %2").arg(m_settings.peer.toString(), text));
    RtpSocketPair sockets;
    CallError error = bindSockets(local, &sockets);
    if (error.code != CallError::NoError)
        return error;
    if (!m_transport.open(payload, sockets, peer, RtpTransport::ForeignClock, &text))
        return networkError(text);
    return CallError();
}

void CallNetwork::connectTransport(RtpTransport *transport)
{
    connect(transport, &RtpTransport::keyFrameRequested, this, [this] {
        if (m_keyFrameTimer.isActive())
            m_keyFramePending = true;
        else
            requestKeyFrame();
    });
    connect(transport, &RtpTransport::failed, this, &CallNetwork::failed);
}

void CallNetwork::requestKeyFrame()
{
    m_keyFrameTimer.start();
    Q_EMIT keyFrameRequested();
}
