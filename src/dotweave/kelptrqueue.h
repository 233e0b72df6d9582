#pragma once

#include "kelqueue.h"

/// A CKelQueue that owns the objects its pointers point to: what is still inside is deleted with it. An item
/// taken out belongs to the taker until it is pushed again.
template <typename T>
class CKelPtrQueue : public CKelQueue<T*> {
public:
    using CKelQueue<T*>::CKelQueue;
    CKelPtrQueue(const CKelPtrQueue&) = delete;
    CKelPtrQueue& operator=(const CKelPtrQueue&) = delete;
    ~CKelPtrQueue() override { CKelPtrQueue::Clear(); }

    /// As the base; the item is null when nothing was taken.
    bool TryPop(T*& item) override
    {
        if (CKelQueue<T*>::TryPop(item))
            return true;
        item = nullptr;
        return false;
    }

    /// Takes out and deletes all items. @return true
    bool Clear() override
    {
        for (T* item = nullptr; CKelPtrQueue::TryPop(item);)
            delete item;
        return true;
    }
};
