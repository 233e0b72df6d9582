// The storage's lock, seen from a host's sink that is called inside an operation.

#include "dotweave/maskdatastorage.h"

#include "callingsink.h"
#include "listedmodes.h"
#include "maskparams.h"

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <future>
#include <vector>

namespace {

class StorageLock : public testing::Test {
protected:
    StorageLock() { EXPECT_TRUE(Init(m_storage, {1})); }

    CMaskDataStorage m_storage;
};

TEST_F(StorageLock, ItsHolderMayAskForTheCurrentObject)
{
    const CMaskData_Base* first = m_storage.MaskData_Current_Get();
    std::vector<const CMaskData_Base*> seen;
    const CCallingSink sink([&] { seen.push_back(m_storage.MaskData_Current_Get()); });
    EXPECT_FALSE(m_storage.MaskData_Current_Init(Mode_Rejected()));
    // At the mask object's record and the factory's the creation is still under way. At the storage's own one
    // nothing is current any more.
    EXPECT_EQ(seen, (std::vector<const CMaskData_Base*>{first, first, nullptr}));
}

TEST_F(StorageLock, ItsHolderMayApplyAndInitToo)
{
    CMaskData_Base* applied = nullptr;
    bool isInit = false;
    {
        const CCallingSink sink([&] {
            applied = m_storage.MaskData_Apply(MaskParam_Small(2));
            isInit = Init(m_storage, {3});
        });
        EXPECT_EQ(m_storage.MaskData_Apply(Mode_OtherStep(4)), nullptr);
    }
    ASSERT_NE(applied, nullptr);
    EXPECT_TRUE(isInit);
    EXPECT_EQ(Listed(m_storage), (std::vector<int>{1, 4, 2, 3}));
    EXPECT_EQ(Number(*m_storage.MaskData_Current_Get()), 3);
}

/// Runs an operation that logs, and asks for the current object from another thread while it logs.
/// @return what the other thread got; the test fails when it got it before the operation had ended
CMaskData_Base* CurrentOfOtherThread(CMaskDataStorage& storage, const std::function<void()>& operation)
{
    std::future<CMaskData_Base*> other;
    bool isEarly = false;
    {
        const CCallingSink sink([&] {
            // Under the lock it is never ready. The time gives a missing lock the chance to show.
            std::chrono::milliseconds time(0);
            if (!other.valid()) {
                other = std::async(std::launch::async, [&storage] { return storage.MaskData_Current_Get(); });
                time = std::chrono::milliseconds(100);
            }
            isEarly = isEarly || other.wait_for(time) == std::future_status::ready;
        });
        operation();
    }
    EXPECT_FALSE(isEarly);
    return other.valid() ? other.get() : nullptr;
}

TEST_F(StorageLock, OtherThreadsWaitForInitAndApply)
{
    const auto apply = [this] { EXPECT_EQ(m_storage.MaskData_Apply(Mode_OtherStep(2)), nullptr); };
    const CMaskData_Base* current = m_storage.MaskData_Current_Get();
    EXPECT_EQ(CurrentOfOtherThread(m_storage, apply), current);
    const auto init = [this] { EXPECT_FALSE(m_storage.MaskData_Current_Init(Mode_Rejected())); };
    EXPECT_EQ(CurrentOfOtherThread(m_storage, init), nullptr) << "not what was current before";
}

} // namespace
