// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// The raw frames on their way into an encoder's pipeline.

#include "rawframequeue.h"

#include "encoderconfiguration.h"
#include "frametally.h"
#include "videoframe.h"

#include <algorithm>
#include <numeric>

namespace {

constexpr qint64 longestGap = qint64(10) * G_USEC_PER_SEC;
constexpr std::size_t rememberedTimes = 16;

GstAppSrc *appSource(const GstElementPointer &source)
{
    return GST_APP_SRC(source.get());
}

} // namespace

/*!
    \class RawFrameQueue

    Holds at most three raw frames, one of them in the encoder and two waiting for it, and fewer
    when the encoder is slow, which then refuses frames instead of falling behind. Whoever goes by
    pendingFell() never has a frame refused. An encoder that takes several frames in before the
    first comes out is given them.

    Any thread may call append() and pending(); feed() and takeTimestamp() belong to the
    streaming thread, the other functions to the thread that changes the pipeline's state.
*/

/*!
    \fn void RawFrameQueue::pendingFell(int from, int to)

    Emitted by whatever thread made the number of held frames smaller.
*/

/*! Counts the frames that it drops or leaves out in \a tally, which must outlive it. */
RawFrameQueue::RawFrameQueue(FrameTally *tally, QObject *parent) : QObject(parent), m_tally(tally)
{
}

RawFrameQueue::~RawFrameQueue()
{
    close();
}

/*!
    Begins a run: frames that fit \a configuration are accepted for \a source, at most its largest
    frame rate a second. The source's pipeline must not be running yet.
*/
void RawFrameQueue::open(GstElementPointer source, const EncoderConfiguration &configuration)
{
    const QMutexLocker locker(&m_mutex);
    m_source = std::move(source);
    m_info = configuration.inputInfo();
    m_period = configuration.largestFrameRate() > 0
            ? qint64(G_USEC_PER_SEC / configuration.largestFrameRate())
            : 0;
    m_inputInterval = qint64(G_USEC_PER_SEC * 1000 / configuration.frameRate());
    m_isBehind = false;
    m_encodingTimes.clear();
    m_lastPresentationTime = GST_CLOCK_TIME_NONE;
    m_errorReported = false;
    m_sourceIsHungry = false;
    m_isEncoding = false;
    m_isFinishing = false;
}

/*! Goes on after finish(), with the source's pipeline stopped in between. */
void RawFrameQueue::reopen()
{
    const QMutexLocker locker(&m_mutex);
    dropUnanswered();
    m_sourceIsHungry = false;
    m_isEncoding = false;
    m_isFinishing = false;
}

/*! Ends the run, with the rest of the pipeline stopped: frames are refused from now on. */
void RawFrameQueue::close()
{
    // Freed without the lock: the application's buffers may ask for the number of frames.
    std::deque<GstBufferPointer> dropped;
    const QMutexLocker locker(&m_mutex);
    m_source.reset();
    dropped.swap(m_buffers);
    dropUnanswered();
    m_isEncoding = false;
}

/*!
    Passes \a frame on without copying it. False when there is no run, the queue is full or the
    frame doesn't fit; the first frame of a run that doesn't fit also gives an \a errorText.

    A frame without a time (-1) gets the time of the monotonic clock. A frame that comes too early
    for the frame rate is accepted and left out.
*/
bool RawFrameQueue::append(const QVideoFrame &frame, QString *errorText)
{
    // Freed without the lock, as in close().
    GstBufferPointer buffer;
    QMutexLocker locker(&m_mutex);
    if (!m_source || m_isFinishing || !hasRoom())
        return false;

    QString problem;
    buffer = VideoFrame::toGst(frame, m_info, &problem);
    if (!buffer) {
        if (!m_errorReported)
            *errorText = problem;
        m_errorReported = true;
        return false;
    }

    const qint64 time = frame.startTime() >= 0 ? frame.startTime() : g_get_monotonic_time();
    if (isTooEarly(time)) {
        // It was held for a moment, after which another one is wanted.
        ++m_tally->skipped;
        const int now = held();
        locker.unlock();
        Q_EMIT pendingFell(now + 1, now);
        return true;
    }
    m_buffers.push_back(stamped(std::move(buffer), time));
    if (m_sourceIsHungry)
        pushNext();
    return true;
}

/*!
    Drops the frames that the pipeline hasn't taken yet. Returns the running time of the frame that
    was accepted last, GST_CLOCK_TIME_NONE when there was none in this run.
*/
GstClockTime RawFrameQueue::clear()
{
    std::deque<GstBufferPointer> dropped;
    QMutexLocker locker(&m_mutex);
    const int before = held();
    dropped.swap(m_buffers);
    for (const GstBufferPointer &buffer : dropped)
        m_timestamps.remove(GST_BUFFER_PTS(buffer.get()));
    m_tally->dropped += dropped.size();
    const GstClockTime last = m_lastPresentationTime;
    reportFall(before, &locker);
    return last;
}

/*! Refuses frames and ends the stream after those that are already here. */
void RawFrameQueue::finish()
{
    const QMutexLocker locker(&m_mutex);
    if (!m_source || m_isFinishing)
        return;
    m_isFinishing = true;
    if (m_buffers.empty())
        gst_app_src_end_of_stream(appSource(m_source));
}

/*! Called on the streaming thread when the source has nothing left to send. */
void RawFrameQueue::feed()
{
    QMutexLocker locker(&m_mutex);
    if (!m_source)
        return;
    const int before = held();
    finishEncoding();
    if (!m_buffers.empty())
        pushNext();
    else if (m_isFinishing)
        gst_app_src_end_of_stream(appSource(m_source));
    else
        m_sourceIsHungry = true;
    reportFall(before, &locker);
}

/*! How many frames are held. */
int RawFrameQueue::pending()
{
    const QMutexLocker locker(&m_mutex);
    return held();
}

/*! How many frames were accepted of which nothing has come out of the encoder. */
int RawFrameQueue::unanswered()
{
    const QMutexLocker locker(&m_mutex);
    return m_timestamps.size();
}

/*!
    The time in microseconds of the raw frame that became the encoded frame at \a runningTime; it
    and the earlier ones, which the encoder has dropped, are forgotten.
*/
quint64 RawFrameQueue::takeTimestamp(GstClockTime runningTime)
{
    QMutexLocker locker(&m_mutex);
    quint64 timestamp = 0;
    int taken = 0;
    for (; !m_timestamps.isEmpty() && m_timestamps.firstKey() <= runningTime; ++taken)
        timestamp = m_timestamps.take(m_timestamps.firstKey());
    m_tally->dropped += quint64(qMax(0, taken - 1));
    const int before = held();
    finishEncoding();
    reportFall(before, &locker);
    return timestamp;
}

// Gives the lock back first: whoever listens may ask for the number of frames.
void RawFrameQueue::reportFall(int before, QMutexLocker *locker)
{
    const int now = held();
    locker->unlock();
    if (now < before)
        Q_EMIT pendingFell(before, now);
}

// Once the encoder has fallen behind, a frame is accepted only if its turn comes before the next
// frame does: an earlier one would be older by then, and not one more be encoded. With an encoder
// that is too slow for the frame rate there is no time to make up for a wrong guess, so the present
// frame is expected to take as long as the longest of late.
bool RawFrameQueue::hasRoom()
{
    if (held() >= capacity) {
        m_isBehind = true;
        return false;
    }
    if (!m_isBehind || !m_isEncoding || m_encodingTimes.size() < 2)
        return true;
    const qint64 elapsed = m_encodingSince.nsecsElapsed();
    const auto end = m_encodingTimes.end();
    const qint64 sum = std::accumulate(m_encodingTimes.begin(), end, qint64(0));
    if (sum <= m_inputInterval * qint64(m_encodingTimes.size())) {
        const qint64 expected = (end[-1] + end[-2]) / 2;
        return held() * expected - elapsed <= m_inputInterval;
    }
    const qint64 longest = *std::max_element(m_encodingTimes.begin(), end);
    return held() == 1 && elapsed <= longest && longest - elapsed <= m_inputInterval;
}

void RawFrameQueue::dropUnanswered()
{
    m_tally->dropped += quint64(m_timestamps.size());
    m_timestamps.clear();
}

void RawFrameQueue::finishEncoding()
{
    if (m_isEncoding)
        m_encodingTimes.push_back(m_encodingSince.nsecsElapsed());
    if (m_encodingTimes.size() > rememberedTimes)
        m_encodingTimes.pop_front();
    m_isEncoding = false;
}

int RawFrameQueue::held() const
{
    return int(m_buffers.size()) + (m_isEncoding ? 1 : 0);
}

GstBufferPointer RawFrameQueue::stamped(GstBufferPointer buffer, qint64 time)
{
    // The pixels stay shared when somebody else holds the buffer too, only its times are our own.
    GstBufferPointer result(gst_buffer_make_writable(buffer.release()));
    GST_BUFFER_PTS(result.get()) = nextPresentationTime(time);
    GST_BUFFER_DTS(result.get()) = GST_CLOCK_TIME_NONE;
    GST_BUFFER_DURATION(result.get()) = GST_CLOCK_TIME_NONE;
    m_timestamps.insert(GST_BUFFER_PTS(result.get()), quint64(time));
    return result;
}

void RawFrameQueue::pushNext()
{
    m_sourceIsHungry = false;
    m_isEncoding = true;
    m_encodingSince.start();
    GstBufferPointer buffer = std::move(m_buffers.front());
    m_buffers.pop_front();
    gst_app_src_push_buffer(appSource(m_source), buffer.release());
}

bool RawFrameQueue::isTooEarly(qint64 time)
{
    if (m_period == 0)
        return false;
    const bool isFirst = m_lastPresentationTime == GST_CLOCK_TIME_NONE || time < m_lastTime;
    if (isFirst)
        m_nextDue = time;
    // Cameras jitter: a frame that is a little early must not be lost.
    if (time + m_period / 4 < m_nextDue)
        return true;
    m_nextDue = qMax(m_nextDue + m_period, time);
    return false;
}

// Encoders drop frames whose time doesn't rise and control their bit rate by it, so a clock that
// jumps must not show.
GstClockTime RawFrameQueue::nextPresentationTime(qint64 time)
{
    const bool isFirst = m_lastPresentationTime == GST_CLOCK_TIME_NONE;
    const qint64 elapsed = time - m_lastTime;
    const bool isPlausible = elapsed > 0 && elapsed <= longestGap;
    const qint64 step = isPlausible ? elapsed : G_USEC_PER_SEC / 30;
    m_lastPresentationTime
            = isFirst ? 0 : m_lastPresentationTime + GstClockTime(step) * GST_USECOND;
    m_lastTime = time;
    return m_lastPresentationTime;
}
