#include "dotweave/maskdatastorage.h"

#include "hostthreads.h"
#include "livethreads.h"
#include "stressmodes.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <mutex>
#include <random>
#include <vector>

namespace {

constexpr int ROUNDS_STRESS = 120;
constexpr int STORAGE_OBJECTS = 5;

/// No more modes than a storage keeps: nothing is ever evicted, so every object may be read at any time.
TEST(StorageStress, SixteenThreadsShareAStorage)
{
    const std::vector<SStressMode> modes = StressModes_OneStep(STORAGE_OBJECTS);
    {
        CMaskDataStorage storage;
        ASSERT_TRUE(storage.MaskData_Current_Init(modes[0].param)); // before anyone applies
        HostThreads_Run([&](std::minstd_rand& random) {
            for (int round = 0; round < ROUNDS_STRESS; ++round) {
                const SStressMode& mode = modes[random() % modes.size()];
                const CMaskData_Base* mask = nullptr;
                switch (random() % 3) {
                case 0:
                    EXPECT_TRUE(storage.MaskData_Current_Init(mode.param));
                    mask = storage.MaskData_Current_Get(); // perhaps another thread's by now
                    break;
                case 1:
                    mask = storage.MaskData_Apply(mode.param);
                    ASSERT_NE(mask, nullptr);
                    EXPECT_EQ(MaskBytes(*mask), mode.bytes);
                    break;
                default:
                    mask = storage.MaskData_Current_Get();
                    break;
                }
                ASSERT_NE(mask, nullptr);
                EXPECT_TRUE(HasBytesOfItsMode(*mask, modes));
            }
        });
    }
    EXPECT_TRUE(LiveThreads_AreGone());
}

/// More modes than a storage keeps: any call that adds an object may delete another, so the host keeps its
/// own lock from the call to the end of its reading.
TEST(StorageStress, TurnsMakeTheStorageEvict)
{
    const std::vector<SStressMode> modes = StressModes_OneStep(9);
    CMaskDataStorage storage;
    std::mutex hostLock;
    HostThreads_Run([&](std::minstd_rand& random) {
        for (int round = 0; round < ROUNDS_STRESS / 3; ++round) {
            const SStressMode& current = modes[random() % modes.size()];
            const SStressMode& applied = modes[random() % modes.size()];
            const std::lock_guard<std::mutex> lock(hostLock);
            ASSERT_TRUE(
                storage.MaskData_Current_Init(current.param)); // at the back: one apply cannot evict it
            const CMaskData_Base* mask = storage.MaskData_Apply(applied.param);
            ASSERT_NE(mask, nullptr);
            EXPECT_EQ(MaskBytes(*mask), applied.bytes);
            EXPECT_EQ(MaskBytes(*storage.MaskData_Current_Get()), current.bytes);
        }
    });
}

/// A storage per thread: storages share nothing.
TEST(StorageStress, SixteenStoragesDoNotDisturbEachOther)
{
    const std::vector<SStressMode> modes = StressModes_OneStep(7);
    HostThreads_Run([&](std::minstd_rand& random) {
        CMaskDataStorage storage;
        for (int round = 0; round < ROUNDS_STRESS / 4; ++round) {
            const SStressMode& mode = modes[random() % modes.size()];
            ASSERT_TRUE(storage.MaskData_Current_Init(mode.param));
            EXPECT_EQ(MaskBytes(*storage.MaskData_Current_Get()), mode.bytes);
        }
    });
}

} // namespace
