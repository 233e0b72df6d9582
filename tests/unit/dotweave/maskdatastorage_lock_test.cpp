// The storage's lock, as a host's sink sees it that is called from inside an operation.

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

TEST(MaskDataStorageLock, TheThreadThatHoldsItMayAskForTheCurrentObject)
{
    CMaskDataStorage storage;
    ASSERT_TRUE(storage.MaskData_Current_Init(MaskParam_Small(1)));
    const CMaskData_Base* first = storage.MaskData_Current_Get();
    std::vector<const CMaskData_Base*> seen;
    const CCallingSink sink([&] { seen.push_back(storage.MaskData_Current_Get()); });
    EXPECT_FALSE(storage.MaskData_Current_Init(Mode_Rejected()));
    // At the mask object's record and the factory's the creation is still under way; at the storage's own one
    // there is no current object any more.
    EXPECT_EQ(seen, (std::vector<const CMaskData_Base*>{first, first, nullptr}));
}

TEST(MaskDataStorageLock, TheThreadThatHoldsItMayApplyAndInitToo)
{
    CMaskDataStorage storage;
    ASSERT_TRUE(storage.MaskData_Current_Init(MaskParam_Small(1)));
    CMaskData_Base* applied = nullptr;
    bool isInit = false;
    {
        const CCallingSink sink([&] {
            applied = storage.MaskData_Apply(MaskParam_Small(2));
            isInit = storage.MaskData_Current_Init(MaskParam_Small(3));
        });
        EXPECT_EQ(storage.MaskData_Apply(Mode_OtherStep(4)), nullptr);
    }
    ASSERT_NE(applied, nullptr);
    EXPECT_TRUE(isInit);
    EXPECT_EQ(Listed(storage), (std::vector<int>{1, 4, 2, 3}));
    EXPECT_EQ(storage.MaskData_Current_Get()->MaskParam_Input().featherLevelPercent, 3);
}

/// Runs an operation that logs, and asks for the current object from another thread while it logs.
/// @return what the other thread got; the test fails when it got it before the operation had ended
CMaskData_Base* CurrentOfOtherThread(CMaskDataStorage& storage, const std::function<void()>& operation)
{
    std::future<CMaskData_Base*> other;
    bool isEarly = false;
    {
        const CCallingSink sink([&] {
            // Under the lock it can never be ready, however long it is given; the time lets it show where there
            // is none.
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

TEST(MaskDataStorageLock, OtherThreadsWaitUntilAnInitHasEnded)
{
    CMaskDataStorage storage;
    ASSERT_TRUE(storage.MaskData_Current_Init(MaskParam_Small(1)));
    const CMaskData_Base* current = CurrentOfOtherThread(
        storage, [&storage] { EXPECT_FALSE(storage.MaskData_Current_Init(Mode_Rejected())); });
    EXPECT_EQ(current, nullptr) << "not what was current before";
}

TEST(MaskDataStorageLock, OtherThreadsWaitUntilAnApplyHasEnded)
{
    CMaskDataStorage storage;
    ASSERT_TRUE(storage.MaskData_Current_Init(MaskParam_Small(1)));
    const CMaskData_Base* current = CurrentOfOtherThread(
        storage, [&storage] { EXPECT_EQ(storage.MaskData_Apply(Mode_OtherStep(2)), nullptr); });
    EXPECT_NE(current, nullptr);
    EXPECT_EQ(current, storage.MaskData_Current_Get());
}

} // namespace
