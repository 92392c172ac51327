// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// What the call counts, and how it is told.

#ifndef CALLSTATISTICS_H
#define CALLSTATISTICS_H

#include <QtCore/qcoreapplication.h>
#include <QtCore/qelapsedtimer.h>
#include <QtCore/qmap.h>
#include <QtCore/qstring.h>

struct CallCounts
{
    quint64 captured = 0;
    quint64 encoded = 0;
    quint64 sent = 0;
    quint64 received = 0;
    quint64 decoded = 0;
    quint64 presented = 0;
    quint64 packetsLost = 0;
    quint64 bytesSent = 0;
    quint64 bytesReceived = 0;
};

class CallStatistics
{
    Q_DECLARE_TR_FUNCTIONS(CallStatistics)

public:
    explicit CallStatistics(bool isLoopback);

    void start();
    void stop();

    void addLatency(qint64 microseconds);

    void takeCounts(const CallCounts &counts);

    QString statusLine() const;
    QString progressLine() const;
    QString summary() const;

private:
    qreal elapsedSeconds() const;
    QString percentile(qreal fraction) const;

    bool m_isLoopback;
    QElapsedTimer m_timer;
    qint64 m_duration = -1;
    QMap<qint64, quint64> m_latencies;
    quint64 m_latencyCount = 0;
    CallCounts m_counts;
    CallCounts m_countsBefore;
    qreal m_seconds = 0;
    qreal m_secondsBefore = 0;
};

#endif
