#pragma once

#include "kelptrqueue.h"

#include <memory>
#include <string>
#include <vector>

/// A fixed pool of work items that go round between a free queue and a work queue.
/// Deleted by its owner; the queues take the items that are still inside with them.
template <typename T>
class CKelPtrQueueBuffer final {
public:
    CKelPtrQueueBuffer() = default;
    CKelPtrQueueBuffer(const CKelPtrQueueBuffer&) = delete;
    CKelPtrQueueBuffer& operator=(const CKelPtrQueueBuffer&) = delete;
    // No virtual destructor: the layout is agreed, and the class is final.

    /// Makes the queues, each with room for all items, and puts the items into the free queue in list order.
    /// @param items  the pool, owned by the queues once this returns; after an exception still by the caller
    /// @return true
    virtual bool Create(std::vector<T*>& items, const std::string& name)
    {
        const int capacity = static_cast<int>(items.size());
        m_queue_Free = std::make_unique<CKelPtrQueue<T>>(capacity);
        m_queue_Work = std::make_unique<CKelPtrQueue<T>>(capacity);
        m_queue_Spare = std::make_unique<CKelPtrQueue<T>>(capacity);
        if (m_name.get() != &name)
            *m_name = name;
        for (T* item : items)
            m_queue_Free->TryPush(item);
        return true;
    }

    std::unique_ptr<std::string> m_name = std::make_unique<std::string>();
    std::unique_ptr<CKelPtrQueue<T>> m_queue_Free;  ///< idle items
    std::unique_ptr<CKelPtrQueue<T>> m_queue_Work;  ///< items waiting to be processed
    std::unique_ptr<CKelPtrQueue<T>> m_queue_Spare; ///< part of the agreed layout; never used
};
