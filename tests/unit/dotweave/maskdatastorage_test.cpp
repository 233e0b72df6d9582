#include "dotweave/maskdatastorage.h"

#include "listedmodes.h"
#include "logcapture.h"
#include "logscopes.h"
#include "maskparams.h"
#include "peek.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <type_traits>
#include <vector>

namespace {

static_assert(!std::is_polymorphic_v<CMaskDataStorage> && sizeof(CMaskDataStorage) == 32,
              "a mutex, the most entries, the list and the current object");

TEST(MaskDataStorage, HasNoCurrentObjectBeforeTheFirstInit)
{
    CMaskDataStorage storage;
    EXPECT_EQ(storage.MaskData_Current_Get(), nullptr);
    EXPECT_TRUE(Listed(storage).empty());
}

TEST(MaskDataStorage, SameRecordTwiceCreatesOneObject)
{
    CMaskDataStorage storage;
    ASSERT_TRUE(storage.MaskData_Current_Init(MaskParam_Small(1)));
    const CMaskData_Base* first = storage.MaskData_Current_Get();
    ASSERT_NE(first, nullptr);
    ASSERT_TRUE(storage.MaskData_Current_Init(MaskParam_Small(2)));
    ASSERT_TRUE(storage.MaskData_Current_Init(MaskParam_Small(1)));
    EXPECT_EQ(storage.MaskData_Current_Get(), first);
    EXPECT_EQ(Listed(storage), (std::vector<int>{2, 1})) << "found objects move to the back";
}

TEST(MaskDataStorage, SixthRecordEvictsTheFirst)
{
    CMaskDataStorage storage;
    for (int mode = 1; mode <= 6; ++mode)
        ASSERT_TRUE(storage.MaskData_Current_Init(MaskParam_Small(mode)));
    EXPECT_EQ(Listed(storage), (std::vector<int>{2, 3, 4, 5, 6}));
    EXPECT_EQ(storage.MaskData_Current_Get()->MaskParam_Input().featherLevelPercent, 6);
}

TEST(MaskDataStorage, FoundRecordIsSavedFromEviction)
{
    CMaskDataStorage storage;
    for (int mode = 1; mode <= 5; ++mode)
        ASSERT_TRUE(storage.MaskData_Current_Init(MaskParam_Small(mode)));
    ASSERT_TRUE(storage.MaskData_Current_Init(MaskParam_Small(1)));
    ASSERT_TRUE(storage.MaskData_Current_Init(MaskParam_Small(6)));
    EXPECT_EQ(Listed(storage), (std::vector<int>{3, 4, 5, 1, 6}));
}

TEST(MaskDataStorage, ApplyWithTheCurrentRecordGivesTheCurrentObject)
{
    CMaskDataStorage storage;
    ASSERT_TRUE(storage.MaskData_Current_Init(MaskParam_Small(1)));
    EXPECT_EQ(storage.MaskData_Apply(MaskParam_Small(1)), storage.MaskData_Current_Get());
    EXPECT_EQ(Listed(storage), (std::vector<int>{1}));
}

TEST(MaskDataStorage, ApplyAddsANewObjectWithoutMakingItCurrent)
{
    CMaskDataStorage storage;
    ASSERT_TRUE(storage.MaskData_Current_Init(MaskParam_Small(1)));
    const CMaskData_Base* current = storage.MaskData_Current_Get();
    const CMaskData_Base* applied = storage.MaskData_Apply(MaskParam_Small(2));
    ASSERT_NE(applied, nullptr);
    EXPECT_NE(applied, current);
    EXPECT_EQ(storage.MaskData_Current_Get(), current);
    EXPECT_EQ(Listed(storage), (std::vector<int>{1, 2}));
}

TEST(MaskDataStorage, ApplyLeavesAFoundObjectInItsPlace)
{
    CMaskDataStorage storage;
    ASSERT_TRUE(storage.MaskData_Current_Init(MaskParam_Small(1)));
    ASSERT_TRUE(storage.MaskData_Current_Init(MaskParam_Small(2)));
    EXPECT_NE(storage.MaskData_Apply(MaskParam_Small(1)), nullptr);
    EXPECT_EQ(Listed(storage), (std::vector<int>{1, 2}));
}

TEST(MaskDataStorage, ApplyWithAnotherStepGivesNullButListsTheObjectAndEvicts)
{
    CMaskDataStorage storage;
    for (int mode = 1; mode <= 5; ++mode)
        ASSERT_TRUE(storage.MaskData_Current_Init(MaskParam_Small(mode)));
    const CLogCapture log;
    EXPECT_EQ(storage.MaskData_Apply(Mode_OtherStep(6)), nullptr);
    EXPECT_EQ(Listed(storage), (std::vector<int>{2, 3, 4, 5, 6}));
    EXPECT_EQ(log.Records(), (std::vector<SLogRecord>{Failure(UNIT_STORAGE, SCOPE_STORAGE_APPLY)}));
}

TEST(MaskDataStorage, FifthApplyOnAFullListEvictsTheCurrentObject)
{
    CMaskDataStorage storage;
    for (int mode = 1; mode <= 5; ++mode)
        ASSERT_TRUE(storage.MaskData_Current_Init(MaskParam_Small(mode)));
    for (int mode = 6; mode <= 9; ++mode)
        ASSERT_NE(storage.MaskData_Apply(MaskParam_Small(mode)), nullptr);
    // One more would compare steps with a destroyed object, so the law is held one step before the fault: the
    // current object has come to the front, where the next arrival evicts it.
    EXPECT_EQ(Listed(storage), (std::vector<int>{5, 6, 7, 8, 9}));
    EXPECT_EQ(SMaskDataStorage_Peek{storage}.List().front(), storage.MaskData_Current_Get());
}

TEST(MaskDataStorage, ZerosOfDifferentSignAreDifferentKeys)
{
    SMaskParam positive = MaskParam_Small(1);
    positive.featherPercent = 0.0F;
    SMaskParam negative = MaskParam_Small(1);
    negative.featherPercent = -0.0F;
    CMaskDataStorage storage;
    ASSERT_TRUE(storage.MaskData_Current_Init(positive));
    const CMaskData_Base* first = storage.MaskData_Current_Get();
    ASSERT_TRUE(storage.MaskData_Current_Init(negative));
    EXPECT_NE(storage.MaskData_Current_Get(), first);
    EXPECT_EQ(Listed(storage).size(), 2U);
}

TEST(MaskDataStorage, RecordsThatCreateNormalisesAwayAreDifferentKeys)
{
    SMaskParam four = MaskParam_Small(1);
    four.yResPass = 4;
    four.resSplitType = ResSplit_Y2;
    SMaskParam five = four;
    five.yResPass = 5;
    CMaskDataStorage storage;
    ASSERT_TRUE(storage.MaskData_Current_Init(four));
    ASSERT_TRUE(storage.MaskData_Current_Init(five));
    EXPECT_EQ(storage.MaskData_Current_Get()->YResPass(), 2);
    EXPECT_EQ(Listed(storage).size(), 2U);
}

TEST(MaskDataStorage, FailedInitLeavesNoCurrentObjectButTheListAsItWas)
{
    CMaskDataStorage storage;
    ASSERT_TRUE(storage.MaskData_Current_Init(MaskParam_Small(1)));
    const CMaskData_Base* first = storage.MaskData_Current_Get();
    {
        const CLogCapture log;
        EXPECT_FALSE(storage.MaskData_Current_Init(Mode_Rejected()));
        const std::vector<SLogRecord> expected = {Failure(UNIT_MASK, SCOPE_MASK_CREATE, 85),
                                                  Failure(UNIT_FACTORY, SCOPE_FACTORY),
                                                  Failure(UNIT_STORAGE, SCOPE_STORAGE_INIT)};
        EXPECT_EQ(log.Records(), expected);
    }
    EXPECT_EQ(storage.MaskData_Current_Get(), nullptr);
    EXPECT_EQ(Listed(storage), (std::vector<int>{1}));
    ASSERT_TRUE(storage.MaskData_Current_Init(MaskParam_Small(1)));
    EXPECT_EQ(storage.MaskData_Current_Get(), first);
}

TEST(MaskDataStorage, ListWithinItsLimitIsLeftAlone)
{
    CMaskDataStorage storage;
    for (int mode = 1; mode <= 5; ++mode)
        ASSERT_TRUE(storage.MaskData_Current_Init(MaskParam_Small(mode)));
    SMaskDataStorage_Peek peek{storage};
    EXPECT_TRUE(peek.Release_One_FromFront_If_OutOfRange());
    EXPECT_EQ(peek.List().size(), 5U);
}

TEST(MaskDataStorage, NullEntryAtTheFrontIsEvictedLikeAnyOther)
{
    CMaskDataStorage storage;
    for (int mode = 1; mode <= 5; ++mode)
        ASSERT_TRUE(storage.MaskData_Current_Init(MaskParam_Small(mode)));
    SMaskDataStorage_Peek peek{storage};
    peek.List().push_front(nullptr);
    EXPECT_TRUE(peek.Release_One_FromFront_If_OutOfRange());
    EXPECT_EQ(Listed(storage), (std::vector<int>{1, 2, 3, 4, 5}));
}

TEST(MaskDataStorage, ReleasingTheContentEmptiesTheListAndLeavesTheCurrentPointer)
{
    CMaskDataStorage storage;
    ASSERT_TRUE(storage.MaskData_Current_Init(MaskParam_Small(1)));
    SMaskDataStorage_Peek peek{storage};
    const CMaskData_Base* before = peek.Current();
    EXPECT_TRUE(peek.Release_ListMaskData_Content());
    EXPECT_EQ(peek.List().size(), 0U);
    EXPECT_EQ(peek.Current(), before) << "the pointer dangles; nothing but a new Init mends it";
    ASSERT_TRUE(storage.MaskData_Current_Init(MaskParam_Small(2)));
}

TEST(MaskDataStorage, ThreadsShareOneStorage)
{
    constexpr int THREADS = 4;
    constexpr int ROUNDS = 25;
    CMaskDataStorage storage;
    std::atomic<int> failures = 0;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < THREADS; ++thread) {
        threads.emplace_back([&storage, &failures, thread] {
            for (int round = 0; round < ROUNDS; ++round) {
                if (!storage.MaskData_Current_Init(MaskParam_Small((thread + round) % 7)))
                    ++failures;
                if (storage.MaskData_Current_Get() == nullptr)
                    ++failures;
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(failures, 0);
    EXPECT_EQ(Listed(storage).size(), 5U);
}

} // namespace
