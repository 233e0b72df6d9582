#include "kelptrqueuebuffer.h"

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

/// Counts itself, so that a test sees what a queue has deleted.
struct SPoolItem {
    SPoolItem() { ++s_liveCount; }
    ~SPoolItem() { --s_liveCount; }
    SPoolItem(const SPoolItem&) = delete;
    SPoolItem& operator=(const SPoolItem&) = delete;

    inline static int s_liveCount = 0;
};

using CPoolBuffer = CKelPtrQueueBuffer<SPoolItem>;

std::vector<SPoolItem*> Items_New(int count)
{
    std::vector<SPoolItem*> items;
    items.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        items.push_back(new SPoolItem());
    return items;
}

TEST(KelPtrQueueBuffer, HasNoQueuesBeforeCreate)
{
    const CPoolBuffer buffer;
    EXPECT_EQ(buffer.m_queue_Free, nullptr);
    EXPECT_EQ(buffer.m_queue_Work, nullptr);
    EXPECT_EQ(buffer.m_queue_Spare, nullptr);
    EXPECT_EQ(*buffer.m_name, "");
}

TEST(KelPtrQueueBuffer, TwelveItemsAreFreeInListOrder)
{
    std::vector<SPoolItem*> items = Items_New(12);
    CPoolBuffer buffer;
    EXPECT_TRUE(buffer.Create(items, "CMaskDataGenerator"));
    EXPECT_EQ(*buffer.m_name, "CMaskDataGenerator");
    EXPECT_EQ(buffer.m_queue_Free->Count(), 12U);
    EXPECT_EQ(buffer.m_queue_Work->Count(), 0U);
    EXPECT_EQ(buffer.m_queue_Spare->Count(), 0U);
    EXPECT_TRUE(buffer.m_queue_Free->NotEmpty_Test());
    EXPECT_FALSE(buffer.m_queue_Work->NotEmpty_Test());
    EXPECT_FALSE(buffer.m_queue_Work->AddFinished_Get());
    for (SPoolItem* expected : items) {
        SPoolItem* item = nullptr;
        ASSERT_TRUE(buffer.m_queue_Free->TryPop(item));
        EXPECT_EQ(item, expected);
        ASSERT_TRUE(buffer.m_queue_Work->TryPush(item)); // as many fit into each of the other queues
    }
    EXPECT_FALSE(buffer.m_queue_Work->TryPush(nullptr));
    SPoolItem* item = nullptr;
    while (buffer.m_queue_Work->TryPop(item))
        ASSERT_TRUE(buffer.m_queue_Spare->TryPush(item));
    EXPECT_FALSE(buffer.m_queue_Spare->TryPush(nullptr));
}

TEST(KelPtrQueueBuffer, TakesTheItemsOfAllQueuesWithIt)
{
    std::vector<SPoolItem*> items = Items_New(3);
    {
        CPoolBuffer buffer;
        ASSERT_TRUE(buffer.Create(items, "pool"));
        SPoolItem* item = nullptr;
        ASSERT_TRUE(buffer.m_queue_Free->TryPop(item));
        ASSERT_TRUE(buffer.m_queue_Work->TryPush(item));
        ASSERT_TRUE(buffer.m_queue_Free->TryPop(item));
        ASSERT_TRUE(buffer.m_queue_Spare->TryPush(item));
        EXPECT_EQ(SPoolItem::s_liveCount, 3);
    }
    EXPECT_EQ(SPoolItem::s_liveCount, 0);
}

TEST(KelPtrQueueBuffer, MayBeGivenItsOwnName)
{
    std::vector<SPoolItem*> items = Items_New(1);
    CPoolBuffer buffer;
    *buffer.m_name = "the same string";
    EXPECT_TRUE(buffer.Create(items, *buffer.m_name));
    EXPECT_EQ(*buffer.m_name, "the same string");
}

TEST(KelPtrQueueBuffer, EmptyListMakesQueuesWithoutRoom)
{
    std::vector<SPoolItem*> none;
    CPoolBuffer buffer;
    EXPECT_TRUE(buffer.Create(none, "none"));
    EXPECT_EQ(buffer.m_queue_Free->Count(), 0U);
    EXPECT_FALSE(buffer.m_queue_Free->TryPush(nullptr));
}

TEST(KelPtrQueueBuffer, TooManyItemsStayTheCallers)
{
    const auto item = std::make_unique<SPoolItem>();
    std::vector<SPoolItem*> items(65535, nullptr);
    items[0] = item.get();
    {
        CPoolBuffer buffer;
        EXPECT_THROW(buffer.Create(items, "too many"), std::runtime_error);
    }
    EXPECT_EQ(SPoolItem::s_liveCount, 1);
}

} // namespace
