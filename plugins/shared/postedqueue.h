// SPDX-FileCopyrightText: 2026 The Qt FaceLink authors
// SPDX-License-Identifier: LGPL-2.1-or-later
// Carries what streaming threads make to the thread of an object.

#ifndef POSTEDQUEUE_H
#define POSTEDQUEUE_H

#include "run.h"

#include <QtCore/qmutex.h>
#include <QtCore/qobject.h>

#include <chrono>
#include <deque>
#include <functional>
#include <limits>
#include <utility>

/*!
    \class PostedQueue

    A member of the object that receives. Entries come out one by one and in order, each once, from
    events that are posted to the owner; a receiver may run an event loop, or delete the owner. What
    arrives meanwhile has an event of its own, so that a slow receiver doesn't keep the thread from
    its other events. Nothing waits for anything here.

    Entries are dropped in favour of newer ones: the oldest when there are more than the capacity,
    and on their way out those that have waited too long, but never the newest.
*/
template<typename T> class PostedQueue
{
public:
    using Receiver = std::function<void(const T &)>;
    using Clock = std::chrono::steady_clock;

    PostedQueue(QObject *owner, const Receiver &receive,
                std::size_t capacity = std::numeric_limits<std::size_t>::max())
        : m_owner(owner), m_receive(receive), m_capacity(capacity)
    {
    }

    void setLongestWait(std::chrono::milliseconds wait);
    void append(const T &entry);
    int size() const;
    int clear();
    bool deliver();

private:
    Q_DISABLE_COPY(PostedQueue)

    struct Entry
    {
        T value;
        Clock::time_point arrival;
    };

    bool take(T *value);

    QObject *const m_owner;
    const Receiver m_receive;
    const std::size_t m_capacity;
    Run m_run;

    mutable QMutex m_mutex;
    std::deque<Entry> m_entries;
    std::chrono::milliseconds m_longestWait = std::chrono::milliseconds::zero();
    bool m_isPosted = false;
};

/*! How long an entry may wait that isn't the newest; 0, as at first, for any time. */
template<typename T> void PostedQueue<T>::setLongestWait(std::chrono::milliseconds wait)
{
    const QMutexLocker locker(&m_mutex);
    m_longestWait = wait;
}

/*! Any thread may call this, as long as the owner is there. */
template<typename T> void PostedQueue<T>::append(const T &entry)
{
    const QMutexLocker locker(&m_mutex);
    if (m_entries.size() == m_capacity)
        m_entries.pop_front();
    m_entries.push_back({entry, Clock::now()});
    if (!std::exchange(m_isPosted, true))
        QMetaObject::invokeMethod(
                m_owner, [this] { deliver(); }, Qt::QueuedConnection);
}

/*! How many entries wait; any thread may ask. */
template<typename T> int PostedQueue<T>::size() const
{
    const QMutexLocker locker(&m_mutex);
    return int(m_entries.size());
}

/*! Drops all that wait and returns how many they were. A barrier, unless more is appended. */
template<typename T> int PostedQueue<T>::clear()
{
    std::deque<Entry> dropped;
    const QMutexLocker locker(&m_mutex);
    dropped.swap(m_entries);
    return int(dropped.size());
}

/*! Hands out what waits now, without waiting for the event. False if the owner is gone after that. */
template<typename T> bool PostedQueue<T>::deliver()
{
    const Run::Watch isAlive = m_run.watchOwner();
    const Receiver receive = m_receive;
    int count = 0;
    {
        const QMutexLocker locker(&m_mutex);
        m_isPosted = false;
        count = int(m_entries.size());
    }
    T value;
    while (isAlive() && count-- > 0 && take(&value))
        receive(value);
    return isAlive();
}

template<typename T> bool PostedQueue<T>::take(T *value)
{
    const QMutexLocker locker(&m_mutex);
    const bool isLimited = m_longestWait != std::chrono::milliseconds::zero();
    const Clock::time_point deadline = Clock::now() - m_longestWait;
    while (isLimited && m_entries.size() > 1 && m_entries.front().arrival < deadline)
        m_entries.pop_front();
    if (m_entries.empty())
        return false;
    *value = std::move(m_entries.front().value);
    m_entries.pop_front();
    return true;
}

#endif
