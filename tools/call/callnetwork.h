// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The network side of a call: to a peer, or from one end to the other on this machine.

#ifndef CALLNETWORK_H
#define CALLNETWORK_H

#include "callerror.h"
#include "callsettings.h"
#include "rtpreceiver.h"
#include "rtpsender.h"
#include "rtptransport.h"

#include <QtCore/qtimer.h>

#include <memory>

class CallNetwork : public QObject
{
    Q_OBJECT

public:
    explicit CallNetwork(const CallSettings &settings, QObject *parent = nullptr);
    ~CallNetwork() override;

    CallError open(const RtpPayload &payload);

    RtpSender *sender() const;
    RtpReceiver *receiver() const;
    quint64 packetsLost() const;

Q_SIGNALS:
    void keyFrameRequested();
    void failed(const QString &text);

private:
    CallError openLoopback(const RtpPayload &payload);
    CallError openPeer(const RtpPayload &payload);
    void connectTransport(RtpTransport *transport);
    void requestKeyFrame();

    CallSettings m_settings;
    QTimer m_keyFrameTimer;
    bool m_keyFramePending = false;

    RtpTransport m_transport;
    RtpTransport m_farEnd;
    std::unique_ptr<RtpSender> m_sender;
    std::unique_ptr<RtpReceiver> m_receiver;
};

#endif
