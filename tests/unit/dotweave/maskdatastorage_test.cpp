// The examples that explain the storage. maskdatastorage_model_test.cpp compares any sequence of calls with a
// model.

#include "dotweave/maskdatastorage.h"

#include "listedmodes.h"
#include "logcapture.h"
#include "logscopes.h"
#include "maskparams.h"
#include "peek.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <new>
#include <thread>
#include <type_traits>
#include <vector>

namespace {

static_assert(!std::is_polymorphic_v<CMaskDataStorage> && sizeof(CMaskDataStorage) == 32,
              "a mutex, the most entries, the list and the current object");

using CNumbers = std::vector<int>;
using Records = std::vector<SLogRecord>;

class Storage : public testing::Test {
protected:
    CMaskDataStorage m_storage;
    SMaskDataStorage_Peek m_peek{m_storage};
};

TEST_F(Storage, HasNoCurrentObjectBeforeTheFirstInit)
{
    EXPECT_EQ(m_storage.MaskData_Current_Get(), nullptr);
    EXPECT_TRUE(Listed(m_storage).empty());
}

TEST_F(Storage, FindsARecordAgainAndMovesItToTheBack)
{
    ASSERT_TRUE(Init(m_storage, {1}));
    const CMaskData_Base* first = m_storage.MaskData_Current_Get();
    ASSERT_TRUE(Init(m_storage, {2, 3, 4, 5, 1}));
    EXPECT_EQ(m_storage.MaskData_Current_Get(), first);
    EXPECT_EQ(Listed(m_storage), (CNumbers{2, 3, 4, 5, 1}));
    ASSERT_TRUE(Init(m_storage, {6}));
    EXPECT_EQ(Listed(m_storage), (CNumbers{3, 4, 5, 1, 6})) << "the sixth evicts the front";
}

TEST_F(Storage, ApplyListsButNeverMovesNorMakesCurrent)
{
    ASSERT_TRUE(Init(m_storage, {1}));
    CMaskData_Base* current = m_storage.MaskData_Current_Get();
    CMaskData_Base* applied = m_storage.MaskData_Apply(MaskParam_Small(2));
    ASSERT_NE(applied, nullptr);
    EXPECT_NE(applied, current);
    EXPECT_EQ(m_storage.MaskData_Apply(MaskParam_Small(1)), current);
    EXPECT_EQ(m_storage.MaskData_Apply(MaskParam_Small(2)), applied);
    EXPECT_EQ(m_storage.MaskData_Current_Get(), current);
    EXPECT_EQ(Listed(m_storage), (CNumbers{1, 2}));
}

TEST_F(Storage, AnotherStepGivesNullButIsListedAndEvicts)
{
    ASSERT_TRUE(Init(m_storage, {1, 2, 3, 4, 5}));
    const CLogCapture log;
    EXPECT_EQ(m_storage.MaskData_Apply(Mode_OtherStep(6)), nullptr);
    EXPECT_EQ(Listed(m_storage), (CNumbers{2, 3, 4, 5, 6}));
    EXPECT_EQ(log.Records(), Records{Failure(UNIT_STORAGE, SCOPE_STORAGE_APPLY)});
}

TEST_F(Storage, FourAppliesBringTheCurrentObjectToTheFront)
{
    // A fifth evicts it: StorageDeathTest.TheFifthApplyReadsWhatItEvicted.
    ASSERT_TRUE(Init(m_storage, {1, 2, 3, 4, 5}));
    for (int mode = 6; mode <= 9; ++mode)
        ASSERT_NE(m_storage.MaskData_Apply(MaskParam_Small(mode)), nullptr);
    EXPECT_EQ(Listed(m_storage), (CNumbers{5, 6, 7, 8, 9}));
    EXPECT_EQ(m_peek.List().front(), m_storage.MaskData_Current_Get());
}

TEST_F(Storage, AFailedInitLeavesTheListButNothingCurrent)
{
    ASSERT_TRUE(Init(m_storage, {1}));
    const CMaskData_Base* first = m_storage.MaskData_Current_Get();
    {
        const CLogCapture log;
        EXPECT_FALSE(m_storage.MaskData_Current_Init(Mode_Rejected()));
        EXPECT_EQ(log.Records(), (Records{MaskCreateFailure(85), Failure(UNIT_FACTORY, SCOPE_FACTORY),
                                          Failure(UNIT_STORAGE, SCOPE_STORAGE_INIT)}));
    }
    EXPECT_EQ(m_storage.MaskData_Current_Get(), nullptr);
    EXPECT_EQ(Listed(m_storage), CNumbers{1});
    ASSERT_TRUE(Init(m_storage, {1}));
    EXPECT_EQ(m_storage.MaskData_Current_Get(), first);
}

TEST_F(Storage, NullAtTheFrontIsEvictedLikeAnyOther)
{
    ASSERT_TRUE(Init(m_storage, {1, 2, 3, 4, 5}));
    EXPECT_TRUE(m_peek.Release_One_FromFront_If_OutOfRange()); // five are within the limit
    m_peek.List().push_front(nullptr);
    EXPECT_TRUE(m_peek.Release_One_FromFront_If_OutOfRange());
    EXPECT_EQ(Listed(m_storage), (CNumbers{1, 2, 3, 4, 5}));
}

TEST_F(Storage, ReleasingTheContentKeepsTheCurrentPointer)
{
    ASSERT_TRUE(Init(m_storage, {1}));
    const CMaskData_Base* before = m_peek.Current();
    EXPECT_TRUE(m_peek.Release_ListMaskData_Content());
    EXPECT_TRUE(m_peek.List().empty());
    EXPECT_EQ(m_peek.Current(), before) << "it dangles until the next Init";
    ASSERT_TRUE(Init(m_storage, {2}));
}

TEST_F(Storage, ThreadsShareOneStorage)
{
    std::atomic<int> failures = 0;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&storage = m_storage, &failures, thread] {
            for (int round = 0; round < 25; ++round) {
                failures += Init(storage, {(thread + round) % 7}) ? 0 : 1;
                failures += storage.MaskData_Current_Get() != nullptr ? 0 : 1;
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(failures, 0);
    CNumbers listed = Listed(m_storage);
    std::sort(listed.begin(), listed.end());
    EXPECT_EQ(listed.size(), 5U);
    EXPECT_EQ(std::unique(listed.begin(), listed.end()), listed.end()) << "no mode twice";
}

/// Only one of two storages that share their members may be destroyed: they are swapped back in the end.
TEST_F(Storage, CopiesShareMutexListAndCurrentObject)
{
    ASSERT_TRUE(Init(m_storage, {1}));
    alignas(CMaskDataStorage) unsigned char bytes[sizeof(CMaskDataStorage)];
    auto& constructed = *new (bytes) CMaskDataStorage(m_storage); // never destroyed
    CMaskDataStorage assigned;
    ASSERT_TRUE(Init(assigned, {7}));
    alignas(CMaskDataStorage) unsigned char ownBytes[sizeof(CMaskDataStorage)];
    const auto& own = *new (ownBytes) CMaskDataStorage(assigned); // keeps what the assignment overwrites
    EXPECT_EQ(&(assigned = m_storage), &assigned);
    for (CMaskDataStorage* copy : {&constructed, &assigned}) {
        EXPECT_EQ(SMaskDataStorage_Peek{*copy}.Mutex(), m_peek.Mutex());
        EXPECT_EQ(SMaskDataStorage_Peek{*copy}.ListPointer(), m_peek.ListPointer());
        EXPECT_EQ(copy->MaskData_Current_Get(), m_storage.MaskData_Current_Get());
    }
    ASSERT_TRUE(Init(constructed, {2, 3, 4, 5, 6}));
    EXPECT_EQ(Listed(m_storage), (CNumbers{2, 3, 4, 5, 6})) << "the limit of five is copied too";
    assigned = own;
    EXPECT_EQ(Listed(assigned), CNumbers{7}) << "an assignment destroys nothing";
}

} // namespace
