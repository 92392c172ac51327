// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// One end of an RTP session: sends encoded frames to a peer and receives the peer's.

#ifndef RTPTRANSPORT_H
#define RTPTRANSPORT_H

#include "rtppayload.h"
#include "rtpsocketpair.h"

#include <qflencodedvideoframe.h>

#include <QtCore/qobject.h>

#include <gst/app/gstappsink.h>
#include <gst/gst.h>

class RtpTransport : public QObject
{
    Q_OBJECT

public:
    enum PeerClock { ForeignClock, OwnClock };

    explicit RtpTransport(QObject *parent = nullptr);
    ~RtpTransport() override;

    bool open(const RtpPayload &payload, const RtpSocketPair &sockets, const RtpEndpoint &peer,
              PeerClock peerClock, QString *errorText);

    bool send(const QFLEncodedVideoFrame &frame);
    void requestKeyFrame();
    quint64 packetsLost() const;

Q_SIGNALS:
    void frameReceived(const QFLEncodedVideoFrame &frame);
    void keyFrameRequested();
    void failed(const QString &text);

private:
    bool build(const RtpPayload &payload, QString *errorText);
    void setSockets(const RtpSocketPair &sockets, const RtpEndpoint &peer);
    void connectCallbacks(PeerClock peerClock);
    void useMonotonicClock();

    static void padAdded(GstElement *bin, GstPad *pad, gpointer self);
    static GstFlowReturn sampleReceived(GstAppSink *sink, gpointer self);
    static GstPadProbeReturn eventAtPayloader(GstPad *pad, GstPadProbeInfo *info, gpointer self);
    static GstBusSyncReply handleMessage(GstBus *bus, GstMessage *message, gpointer self);

    GstElement *m_pipeline = nullptr;
    GstElement *m_source = nullptr;
    GstElement *m_depayloader = nullptr;
};

#endif
