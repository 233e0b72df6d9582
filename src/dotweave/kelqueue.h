#pragma once

#include "schedulepoint.h"

#include <boost/lockfree/queue.hpp>
#include <kelcommon/customconditionvariable.h>

#include <atomic>
#include <cstdint>
#include <memory>

/// Longest time that a push waits for room, in milliseconds.
inline constexpr unsigned int QUEUE_PUSH_WAIT_MS = 100;

template <typename TPointer>
class CKelQueue;

/// A bounded queue of pointers for any number of producers and consumers.
/// The lock-free queue is the truth; the two events are hints to sleep on. A waiter therefore always tries
/// the queue again after waking, and every wait has a limit. docs/threads.md argues why the events end up
/// right. Does not own what its pointers point to; see CKelPtrQueue.
template <typename T>
class CKelQueue<T*> {
public:
    /// @param capacity  most items, 1 to 65534
    /// @throws std::runtime_error for a capacity of 65535 or more: the nodes are numbered with 16 bits
    explicit CKelQueue(int capacity);
    CKelQueue(const CKelQueue&) = delete;
    CKelQueue& operator=(const CKelQueue&) = delete;
    /// Sets both events so that no waiter stays asleep.
    virtual ~CKelQueue();

    /// Takes an item without waiting. @return false when the queue is empty; the item is then unspecified
    virtual bool TryPop(T*& item);
    /// Takes an item, sleeping once for at most this time. @return false when none could be taken
    virtual bool Pop(T*& item, unsigned int milliseconds);
    /// Takes out all items. @return true
    virtual bool Clear();
    /// Puts an item in, waiting once for room. @return false when the queue stayed full
    bool Push(T* item);
    /// Puts an item in if there is room now, with the bookkeeping of Push.
    bool TryPush(T* item);

    /// Announces that nothing more will be pushed, and wakes whoever waits for it.
    void AddFinished_Set();
    /// Whether the producer has announced its end. A flag seen before a pop that found nothing proves that
    /// the queue stays empty.
    bool AddFinished_Get() const { return m_isAddFinished->load() != 0; }
    /// Sets the not-empty event once more, for sleepers that the last one did not wake.
    void NotEmpty_Set() { m_event_NotEmpty.Set(); }
    /// Tests the not-empty event. A hint, see above.
    bool NotEmpty_Test() { return m_event_NotEmpty.WaitOne(0); }
    /// Brings the not-empty event in line with the items, after somebody has set it for another reason.
    void NotEmpty_Correct();
    /// Items in the queue at this moment.
    unsigned int Count() const { return m_count->load(); }

private:
    void NotFull_Correct();

    using CItemQueue = boost::lockfree::queue<T*, boost::lockfree::fixed_sized<true>>;

    std::int32_t m_capacity;
    std::unique_ptr<std::atomic<std::uint32_t>> m_count;
    std::unique_ptr<CItemQueue> m_queue; // adds one node of its own to the capacity
    std::unique_ptr<std::atomic<std::uint8_t>> m_isAddFinished;
    CustomConditionVariable_Manual m_event_NotEmpty;
    CustomConditionVariable_Manual m_event_NotFull;
};

template <typename T>
CKelQueue<T*>::CKelQueue(int capacity)
    : m_capacity(capacity), m_count(std::make_unique<std::atomic<std::uint32_t>>(0U)),
      m_queue(std::make_unique<CItemQueue>(static_cast<typename CItemQueue::size_type>(capacity))),
      m_isAddFinished(std::make_unique<std::atomic<std::uint8_t>>(std::uint8_t{0}))
{
    m_event_NotEmpty.Reset();
    m_event_NotFull.Set();
}

template <typename T>
CKelQueue<T*>::~CKelQueue()
{
    m_event_NotFull.Set();
    m_event_NotEmpty.Set();
}

template <typename T>
bool CKelQueue<T*>::TryPush(T* item)
{
    if (!m_queue->bounded_push(item))
        return false;
    dotweave::SchedulePoint();
    // The value that fetch_add itself returns tells who crossed a bound; a second read could miss it.
    const auto count = static_cast<std::int32_t>(m_count->fetch_add(1U) + 1U);
    dotweave::SchedulePoint();
    if (count == 1)
        NotEmpty_Correct();
    if (count == m_capacity)
        NotFull_Correct();
    return true;
}

template <typename T>
bool CKelQueue<T*>::Push(T* item)
{
    if (TryPush(item))
        return true;
    m_event_NotFull.WaitOne(QUEUE_PUSH_WAIT_MS);
    return TryPush(item);
}

template <typename T>
bool CKelQueue<T*>::TryPop(T*& item)
{
    if (!m_queue->pop(item))
        return false;
    dotweave::SchedulePoint();
    const auto count = static_cast<std::int32_t>(m_count->fetch_sub(1U) - 1U);
    dotweave::SchedulePoint();
    if (count == 0)
        NotEmpty_Correct();
    if (count == m_capacity - 1)
        NotFull_Correct();
    return true;
}

template <typename T>
bool CKelQueue<T*>::Pop(T*& item, unsigned int milliseconds)
{
    if (TryPop(item))
        return true;
    dotweave::SchedulePoint();
    if (!m_event_NotEmpty.WaitOne(milliseconds) && milliseconds > 0U)
        dotweave::SchedulePoint_WaitExpired(static_cast<std::int32_t>(Count()) > 0 || AddFinished_Get());
    dotweave::SchedulePoint();
    return TryPop(item);
}

template <typename T>
bool CKelQueue<T*>::Clear()
{
    for (T* item = nullptr; TryPop(item);) {
    }
    return true;
}

template <typename T>
void CKelQueue<T*>::AddFinished_Set()
{
    m_isAddFinished->exchange(std::uint8_t{1});
    dotweave::SchedulePoint();
    m_event_NotEmpty.Set();
}

/// Brings the not-empty event in line with the count. Another thread may cross the bound between the read and
/// the write, so the count is read again until both agree; the last writer then has set the event right.
/// The count may be negative for a moment, when a pop overtakes the counting of its own push.
template <typename T>
void CKelQueue<T*>::NotEmpty_Correct()
{
    const auto hasItems = [this] { return static_cast<std::int32_t>(m_count->load()) > 0; };
    for (bool isNotEmpty = hasItems();; isNotEmpty = !isNotEmpty) {
        dotweave::SchedulePoint();
        if (isNotEmpty)
            m_event_NotEmpty.Set();
        else
            m_event_NotEmpty.Reset();
        dotweave::SchedulePoint();
        if (hasItems() == isNotEmpty)
            return;
    }
}

/// Brings the not-full event in line with the count; as NotEmpty_Correct.
template <typename T>
void CKelQueue<T*>::NotFull_Correct()
{
    const auto hasRoom = [this] { return static_cast<std::int32_t>(m_count->load()) < m_capacity; };
    for (bool isNotFull = hasRoom();; isNotFull = !isNotFull) {
        dotweave::SchedulePoint();
        if (isNotFull)
            m_event_NotFull.Set();
        else
            m_event_NotFull.Reset();
        dotweave::SchedulePoint();
        if (hasRoom() == isNotFull)
            return;
    }
}
