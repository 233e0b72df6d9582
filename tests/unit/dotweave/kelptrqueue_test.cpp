#include "kelptrqueue.h"

#include <memory>

#include <gtest/gtest.h>

namespace {

/// Counts itself, so that a test sees what a queue has deleted.
struct SItem {
    SItem() { ++s_liveCount; }
    ~SItem() { --s_liveCount; }
    SItem(const SItem&) = delete;
    SItem& operator=(const SItem&) = delete;

    inline static int s_liveCount = 0;
};

using CItemQueue = CKelPtrQueue<SItem>;

/// @return false when the queue did not take the item, which then is gone
bool Push_New(CItemQueue& queue)
{
    auto item = std::make_unique<SItem>();
    if (!queue.TryPush(item.get()))
        return false;
    static_cast<void>(item.release());
    return true;
}

TEST(KelPtrQueue, AnEmptyQueueGivesNoItemAndANullPointer)
{
    CItemQueue queue(12);
    SItem other;
    SItem* item = &other;
    EXPECT_FALSE(queue.TryPop(item));
    EXPECT_EQ(item, nullptr);
    item = &other;
    EXPECT_FALSE(queue.Pop(item, 0));
    EXPECT_EQ(item, nullptr);
    item = &other;
    CKelQueue<SItem*>& base = queue; // the override answers through the base too
    EXPECT_FALSE(base.Pop(item, 1));
    EXPECT_EQ(item, nullptr);
}

TEST(KelPtrQueue, AnItemTakenOutBelongsToTheTaker)
{
    SItem* item = nullptr;
    {
        CItemQueue queue(2);
        ASSERT_TRUE(Push_New(queue));
        ASSERT_TRUE(queue.Pop(item, 0));
        ASSERT_NE(item, nullptr);
    }
    EXPECT_EQ(SItem::s_liveCount, 1);
    delete item;
    EXPECT_EQ(SItem::s_liveCount, 0);
}

TEST(KelPtrQueue, ItemsStillInsideGoWithTheQueue)
{
    std::unique_ptr<CKelQueue<SItem*>> queue = std::make_unique<CItemQueue>(12);
    for (int i = 0; i < 12; ++i)
        ASSERT_TRUE(Push_New(static_cast<CItemQueue&>(*queue))) << i;
    EXPECT_EQ(SItem::s_liveCount, 12);
    queue.reset();
    EXPECT_EQ(SItem::s_liveCount, 0);
}

TEST(KelPtrQueue, ClearDeletesAllItemsAndTheQueueGoesOn)
{
    CItemQueue queue(3);
    for (int i = 0; i < 3; ++i)
        ASSERT_TRUE(Push_New(queue)) << i;
    EXPECT_FALSE(Push_New(queue)); // full
    EXPECT_EQ(SItem::s_liveCount, 3);
    EXPECT_TRUE(queue.Clear());
    EXPECT_EQ(SItem::s_liveCount, 0);
    EXPECT_EQ(queue.Count(), 0U);
    EXPECT_FALSE(queue.NotEmpty_Test());
    EXPECT_TRUE(Push_New(queue));
    EXPECT_EQ(SItem::s_liveCount, 1);
    EXPECT_TRUE(queue.Clear());
    EXPECT_EQ(SItem::s_liveCount, 0);
}

TEST(KelPtrQueue, NullItemIsTreatedLikeAnyOther)
{
    CItemQueue queue(2);
    ASSERT_TRUE(queue.Push(nullptr));
    SItem other;
    SItem* item = &other;
    EXPECT_TRUE(queue.TryPop(item));
    EXPECT_EQ(item, nullptr);
    ASSERT_TRUE(queue.Push(nullptr));
    ASSERT_TRUE(Push_New(queue));
    EXPECT_TRUE(queue.Clear());
    EXPECT_EQ(SItem::s_liveCount, 1); // the local one
}

} // namespace
