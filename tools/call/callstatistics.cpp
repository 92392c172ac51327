// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// What the call counts, and how it is told.

#include "callstatistics.h"

#include <QtCore/qstringlist.h>

#include <cmath>
#include <utility>

namespace {

const qint64 latencyStepMicroseconds = 100;

QString kilobits(quint64 bytes, qreal seconds)
{
    const qreal bits = qreal(bytes) * 8;
    return QString::number(seconds > 0 ? qRound64(bits / seconds / 1000) : 0);
}

} // namespace

/*!
    \class CallStatistics

    The time from capture to present, and so the frames lost between the ends, are known in the
    loopback only: a peer has a clock and a count of its own.
*/

CallStatistics::CallStatistics(bool isLoopback) : m_isLoopback(isLoopback) { }

/*! Begins the time over which rates are taken. */
void CallStatistics::start()
{
    m_timer.start();
}

/*! Ends the time over which rates are taken. */
void CallStatistics::stop()
{
    if (m_timer.isValid() && m_duration < 0)
        m_duration = m_timer.elapsed();
}

/*! Takes the time from capture to present of one frame. */
void CallStatistics::addLatency(qint64 microseconds)
{
    ++m_latencies[microseconds / latencyStepMicroseconds];
    ++m_latencyCount;
}

/*! Takes the counts as they are now. The bit rates of the lines are those since the time before. */
void CallStatistics::takeCounts(const CallCounts &counts)
{
    m_countsBefore = std::exchange(m_counts, counts);
    m_secondsBefore = std::exchange(m_seconds, elapsedSeconds());
}

/*! What a user wants to know of the call while it lasts. */
QString CallStatistics::statusLine() const
{
    const qreal interval = m_seconds - m_secondsBefore;
    return tr("sending %1 kbit/s, receiving %2 kbit/s, median latency %3")
            .arg(kilobits(m_counts.bytesSent - m_countsBefore.bytesSent, interval),
                 kilobits(m_counts.bytesReceived - m_countsBefore.bytesReceived, interval),
                 percentile(0.5));
}

/*! The status line, with the counts so far before it. */
QString CallStatistics::progressLine() const
{
    return tr("%1 s: captured %2, sent %3, received %4, presented %5, packets lost %6, %7")
            .arg(qRound(m_seconds))
            .arg(m_counts.captured)
            .arg(m_counts.sent)
            .arg(m_counts.received)
            .arg(m_counts.presented)
            .arg(m_counts.packetsLost)
            .arg(statusLine());
}

/*! What the whole call came to, a value a line. */
QString CallStatistics::summary() const
{
    const quint64 lost = m_counts.sent - qMin(m_counts.sent, m_counts.presented);
    const QStringList lines = {
            tr("duration: %1 s").arg(m_seconds, 0, 'f', 1),
            tr("frames captured: %1").arg(m_counts.captured),
            tr("frames encoded: %1").arg(m_counts.encoded),
            tr("frames sent: %1").arg(m_counts.sent),
            tr("frames received: %1").arg(m_counts.received),
            tr("frames decoded: %1").arg(m_counts.decoded),
            tr("frames presented: %1").arg(m_counts.presented),
            tr("frames lost: %1").arg(m_isLoopback ? QString::number(lost) : tr("n/a")),
            tr("packets lost: %1").arg(m_counts.packetsLost),
            tr("bit rate sent: %1 kbit/s").arg(kilobits(m_counts.bytesSent, m_seconds)),
            tr("bit rate received: %1 kbit/s").arg(kilobits(m_counts.bytesReceived, m_seconds)),
            tr("capture to present, median: %1").arg(percentile(0.5)),
            tr("capture to present, 95th percentile: %1").arg(percentile(0.95)),
    };
    return lines.join(QLatin1Char('\n'));
}

qreal CallStatistics::elapsedSeconds() const
{
    if (!m_timer.isValid())
        return 0;
    return qreal(m_duration < 0 ? m_timer.elapsed() : m_duration) / 1000;
}

QString CallStatistics::percentile(qreal fraction) const
{
    if (m_latencyCount == 0)
        return tr("n/a");
    const quint64 rank = qMax<quint64>(1, quint64(std::ceil(fraction * qreal(m_latencyCount))));
    quint64 seen = 0;
    for (auto it = m_latencies.cbegin(); it != m_latencies.cend(); ++it) {
        seen += it.value();
        if (seen >= rank)
            return tr("%1 ms").arg(qreal(it.key() * latencyStepMicroseconds) / 1000, 0, 'f', 1);
    }
    return tr("n/a");
}
