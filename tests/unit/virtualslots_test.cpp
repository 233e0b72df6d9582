// The order of the virtual operations, which is agreed for every class that has some. Tested where a pointer to a
// virtual operation holds its place in the table: 1 + byte offset. The mask object and the thread base hold theirs
// in tests of their own.

#include "kelptrqueue.h"
#include "kelptrqueuebuffer.h"
#include "kelqueue.h"
#include "maskdatagenerator.h"
#include "maskdatagenerator_sub.h"

#include <cstddef>
#include <cstring>
#include <string>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#if defined(__GNUC__) && defined(__x86_64__)

namespace {

constexpr std::ptrdiff_t BEHIND_DESTRUCTOR = 2; // this platform gives a virtual destructor two places

template <typename TOperation>
std::ptrdiff_t Slot(TOperation operation)
{
    std::ptrdiff_t words[2] = {};
    static_assert(sizeof(words) == sizeof(operation));
    std::memcpy(words, &operation, sizeof(words));
    return (words[0] - 1) / static_cast<std::ptrdiff_t>(sizeof(void*));
}

/// Reaches what is protected in a thread class.
template <typename TThread>
class CInside : public TThread {
public:
    static std::vector<std::ptrdiff_t> Slots()
    {
        return {Slot(&CInside::Start),       Slot(&CInside::Wait_PrepareComplete),
                Slot(&CInside::Wait_Paused), Slot(&CInside::Wait_Exit),
                Slot(&CInside::Stop),        Slot(&CInside::Pause),
                Slot(&CInside::Resume),      Slot(&CInside::OneLoop),
                Slot(&CInside::Prepare),     Slot(&CInside::Finally)};
    }
};

/// A queue whose overrides tell that they were called.
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
    std::vector<std::string> m_calls;
};

TEST(VirtualSlots, GeneratorAndWorkerAddNoneToThoseOfTheThreadBase)
{
    const std::vector<std::ptrdiff_t> agreed = {2, 3, 4, 5, 6, 7, 8, 9, 10, 11};
    EXPECT_EQ(CInside<CMaskDataGenerator>::Slots(), agreed);
    EXPECT_EQ(CInside<CMaskDataGenerator_Sub>::Slots(), agreed);
    static_assert(std::has_virtual_destructor_v<CMaskDataGenerator> &&
                  std::has_virtual_destructor_v<CMaskDataGenerator_Sub>);
}

TEST(VirtualSlots, BothQueuesHaveTryPopThenPopThenClear)
{
    const std::vector<std::ptrdiff_t> agreed = {BEHIND_DESTRUCTOR, BEHIND_DESTRUCTOR + 1,
                                                BEHIND_DESTRUCTOR + 2};
    using CQueue = CKelQueue<int*>;
    EXPECT_EQ((std::vector{Slot(&CQueue::TryPop), Slot(&CQueue::Pop), Slot(&CQueue::Clear)}), agreed);
    using COwningQueue = CKelPtrQueue<int>;
    EXPECT_EQ((std::vector{Slot(static_cast<bool (COwningQueue::*)(int*&)>(&COwningQueue::TryPop)),
                           Slot(static_cast<bool (COwningQueue::*)(int*&, unsigned int)>(&COwningQueue::Pop)),
                           Slot(&COwningQueue::Clear)}),
              agreed);
    static_assert(std::has_virtual_destructor_v<CQueue>);
}

TEST(VirtualSlots, AQueuesOperationsAreCalledThroughTheTable)
{
    CTellingQueue telling(1);
    CKelQueue<int*>& queue = telling;
    int* item = nullptr;
    EXPECT_FALSE(queue.TryPop(item));
    EXPECT_FALSE(queue.Pop(item, 0)); // tries before and behind its wait
    EXPECT_TRUE(queue.Clear());
    EXPECT_EQ(telling.m_calls, (std::vector<std::string>{"TryPop", "Pop", "TryPop", "TryPop", "Clear"}));
}

TEST(VirtualSlots, TheQueueBufferHasCreateAloneAndNoVirtualDestructor)
{
    EXPECT_EQ(Slot(&CKelPtrQueueBuffer<int>::Create), 0);
    static_assert(!std::has_virtual_destructor_v<CKelPtrQueueBuffer<int>>);
}

} // namespace

#endif
