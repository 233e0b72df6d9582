// The agreed order of the virtual operations. The tests of the mask object and of the thread base check
// theirs.

#include "kelptrqueue.h"
#include "kelptrqueuebuffer.h"
#include "kelqueue.h"
#include "maskdatagenerator.h"
#include "maskdatagenerator_sub.h"

#include <cstddef>
#include <string>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include "virtualslots.h"

#if defined(DOTWEAVE_TEST_HAS_SLOTS)

namespace {

constexpr std::ptrdiff_t AFTER_DESTRUCTOR = 2; // this platform gives a virtual destructor two places

/// A queue whose overrides note their calls.
class CTellingQueue : public CKelPtrQueue<int> {
public:
    using CKelPtrQueue<int>::CKelPtrQueue;

    bool TryPop(int*& item) override
    {
        m_calls.emplace_back("TryPop");
        return CKelPtrQueue<int>::TryPop(item);
    }
    bool Pop(int*& item, unsigned int milliseconds) override
    {
        m_calls.emplace_back("Pop");
        return CKelPtrQueue<int>::Pop(item, milliseconds);
    }
    bool Clear() override
    {
        m_calls.emplace_back("Clear");
        return true;
    }
    bool Push(int* item) // hides that of the base
    {
        m_calls.emplace_back("Push");
        return CKelPtrQueue<int>::Push(item);
    }
    std::vector<std::string> m_calls;
};

TEST(VirtualSlots, GeneratorAndWorkerAddNone)
{
    EXPECT_EQ(CThreadSlots<CMaskDataGenerator>::Slots(), ThreadSlots_Agreed());
    EXPECT_EQ(CThreadSlots<CMaskDataGenerator_Sub>::Slots(), ThreadSlots_Agreed());
    static_assert(std::has_virtual_destructor_v<CMaskDataGenerator> &&
                  std::has_virtual_destructor_v<CMaskDataGenerator_Sub>);
}

TEST(VirtualSlots, QueuesHaveTryPopThenPopThenClear)
{
    const std::vector<std::ptrdiff_t> agreed = {AFTER_DESTRUCTOR, AFTER_DESTRUCTOR + 1, AFTER_DESTRUCTOR + 2};
    using CQueue = CKelQueue<int*>;
    EXPECT_EQ((std::vector{Slot(&CQueue::TryPop), Slot(&CQueue::Pop), Slot(&CQueue::Clear)}), agreed);
    using COwningQueue = CKelPtrQueue<int>;
    EXPECT_EQ((std::vector{Slot(static_cast<bool (COwningQueue::*)(int*&)>(&COwningQueue::TryPop)),
                           Slot(static_cast<bool (COwningQueue::*)(int*&, unsigned int)>(&COwningQueue::Pop)),
                           Slot(&COwningQueue::Clear)}),
              agreed);
    static_assert(std::has_virtual_destructor_v<CQueue>);
}

TEST(VirtualSlots, QueueOperationsAreVirtual)
{
    CTellingQueue telling(1);
    CKelQueue<int*>& queue = telling;
    int* item = nullptr;
    EXPECT_FALSE(queue.TryPop(item));
    EXPECT_FALSE(queue.Pop(item, 0)); // tries before and after its wait
    EXPECT_TRUE(queue.Clear());
    EXPECT_EQ(telling.m_calls, (std::vector<std::string>{"TryPop", "Pop", "TryPop", "TryPop", "Clear"}));
}

TEST(VirtualSlots, PushIsNotVirtual)
{
    CTellingQueue telling(2);
    CKelQueue<int*>& queue = telling;
    EXPECT_TRUE(queue.Push(new int(1))); // the queue's from here on
    EXPECT_TRUE(telling.m_calls.empty());
    EXPECT_TRUE(telling.Push(new int(2)));
    EXPECT_EQ(telling.m_calls, std::vector<std::string>{"Push"});
}

TEST(VirtualSlots, TheQueueBufferHasCreateAlone)
{
    EXPECT_EQ(Slot(&CKelPtrQueueBuffer<int>::Create), 0);
    static_assert(!std::has_virtual_destructor_v<CKelPtrQueueBuffer<int>>);
}

} // namespace

#endif
