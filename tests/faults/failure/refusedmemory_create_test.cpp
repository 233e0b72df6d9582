#include "dotweave/maskdata_base.h"
#include "dotweave/maskdatafactory.h"

#include "failuremodes.h"
#include "livethreads.h"
#include "logcapture.h"
#include "logscopes.h"
#include "maskbytes.h"
#include "missingthread.h"
#include "peek.h"
#include "refusedmemory.h"
#include "refusedrequest.h"
#include "threadfaults.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <numeric>
#include <thread>
#include <vector>

namespace {

using Records = std::vector<SLogRecord>;

/// A worker that got no memory for its blocks says so and ends.
const Records WORKER_WITHOUT_MEMORY = {
    {SCOPE_WORKER_LOOP, "maskdatagenerator_sub", LINE_ANY, 2, "m_processState = 1"}};

/// How the attempts to create a mode ended.
struct STally {
    int builtCount = 0;
    int thrownCount = 0;
    std::array<int, GENERATOR_THREAD_COUNT> missingThreads =
        {}; // attempts by the first thread that did not start

    void Report() const
    {
        testing::Test::RecordProperty("thrown", thrownCount);
        testing::Test::RecordProperty("missingThreads",
                                      std::accumulate(missingThreads.begin(), missingThreads.end(), 0));
        testing::Test::RecordProperty("built", builtCount);
    }
};

/// Every thread has been the one that was missing.
void ExpectEveryThreadMissedOnce(const STally& tally)
{
    for (std::size_t thread = 0; thread < tally.missingThreads.size(); ++thread)
        EXPECT_GT(tally.missingThreads[thread], 0) << thread;
}

class RefusedMemory : public testing::TestWithParam<SFailureMode> {
protected:
    RefusedMemory() : m_expected(MaskBytes_Undisturbed(GetParam().param)) { FirstRecord_Log(); }

    /// Creates the mode on an object of its own.
    SAttempt Create_Attempt(const SRefusalPlan& plan, STally& tally) const
    {
        const CLogCapture log;
        CMaskData_Base mask;
        SAttempt attempt;
        const CThreadFaults threads(ALL_THREADS);
        bool isBuilt = false;
        bool isThrown = false;
        {
            const CRefusedMemory refusal(plan);
            try {
                isBuilt = mask.Create(GetParam().param);
            } catch (const std::bad_alloc&) {
                isThrown = true;
            }
            attempt.wasRefused = refusal.HasRefused();
        }
        Note(attempt,
             {isBuilt ? &mask : nullptr, isThrown, threads.AskedCount(), log.Records(),
              &Records_MissingThread_Create},
             tally);
        return attempt;
    }

    /// Has the factory create it.
    SAttempt Factory_Attempt(const SRefusalPlan& plan, STally& tally) const
    {
        const CLogCapture log;
        std::unique_ptr<CMaskData_Base> mask;
        SAttempt attempt;
        const CThreadFaults threads(ALL_THREADS);
        bool isThrown = false;
        {
            const CRefusedMemory refusal(plan);
            try {
                mask.reset(CMaskDataFactory::MaskData_Create(GetParam().param));
            } catch (const std::bad_alloc&) {
                isThrown = true;
            }
            attempt.wasRefused = refusal.HasRefused();
        }
        if (mask == nullptr && !isThrown)
            attempt.leftBehind = REJECTED_OBJECT_PIECES; // deliberate
        Note(attempt,
             {mask.get(), isThrown, threads.AskedCount(), log.Records(), &Records_MissingThread_Factory},
             tally);
        return attempt;
    }

    std::vector<std::uint8_t> m_expected;

private:
    struct SEnd {
        const CMaskData_Base* mask; // null when none was built
        bool isThrown;
        int threadCount; // that the creation asked for
        Records records;
        Records (*recordsOfMissingThread)(int);
    };

    /// Only these ends are right: the mask as ever; the exception, without a record; false or null with the
    /// records of a thread that could not start; the mask as ever with the record of a worker whose share
    /// others took.
    void Note(const SAttempt& attempt, const SEnd& end, STally& tally) const
    {
        if (end.mask != nullptr) {
            ++tally.builtCount;
            EXPECT_EQ(end.records, attempt.wasRefused ? WORKER_WITHOUT_MEMORY : Records());
            EXPECT_EQ(MaskBytes(*end.mask), m_expected);
        } else if (end.isThrown) {
            ++tally.thrownCount;
            EXPECT_EQ(end.records, Records());
        } else {
            ASSERT_GT(end.threadCount, 0);
            ASSERT_LE(end.threadCount, GENERATOR_THREAD_COUNT);
            EXPECT_EQ(end.records, end.recordsOfMissingThread(end.threadCount - 1));
            ++tally.missingThreads[static_cast<std::size_t>(end.threadCount - 1)];
        }
    }
};

TEST_P(RefusedMemory, OfTheCallerThrowsOrCostsAThread)
{
    STally tally;
    Refuse_EachInTurn({0, ERequester::Caller},
                      [&](const SRefusalPlan& plan) { return Create_Attempt(plan, tally); });
    ExpectEveryThreadMissedOnce(tally);
    EXPECT_GE(tally.thrownCount, 20); // planes, table, offsets, block, queues, items, workers
    EXPECT_EQ(tally.builtCount, 1);   // the last attempt, which met no refusal
    tally.Report();
}

TEST_P(RefusedMemory, OfAWorkerLeavesItsShareToOthers)
{
    STally tally;
    const int refused = Refuse_EachInTurn(
        {0, ERequester::Others}, [&](const SRefusalPlan& plan) { return Create_Attempt(plan, tally); });
    EXPECT_GE(refused, 6); // each worker asks at least once
    EXPECT_EQ(tally.builtCount, refused + 1);
    tally.Report();
}

TEST_P(RefusedMemory, InTheFactoryThrowsOrGivesNull)
{
    STally tally;
    Refuse_EachInTurn({0, ERequester::Caller},
                      [&](const SRefusalPlan& plan) { return Factory_Attempt(plan, tally); });
    ExpectEveryThreadMissedOnce(tally);
    EXPECT_GE(tally.thrownCount, 21); // the object itself too
    EXPECT_EQ(tally.builtCount, 1);
    tally.Report();
}

TEST_P(RefusedMemory, InAnyThreadLeavesNothingBehind)
{
    STally tally;
    Refuse_EachInTurn({0, ERequester::All},
                      [&](const SRefusalPlan& plan) { return Factory_Attempt(plan, tally); });
    EXPECT_GE(tally.thrownCount, 1);
    tally.Report();
}

/// Memory that stays gone takes the records with it, the caller's own too, so nothing is said of them here. A
/// mask that counts as created is whole.
TEST_P(RefusedMemory, ForGoodThrowsOrIsFalse)
{
    STally tally;
    const auto attempt = [&](const SRefusalPlan& plan) {
        const CLogCapture quiet;
        CMaskData_Base mask;
        SAttempt made;
        bool isBuilt = false;
        {
            const CRefusedMemory refusal(plan);
            try {
                isBuilt = mask.Create(GetParam().param);
            } catch (const std::bad_alloc&) {
                ++tally.thrownCount;
            }
            made.wasRefused = refusal.HasRefused();
        }
        if (isBuilt) {
            ++tally.builtCount;
            EXPECT_EQ(MaskBytes(mask), m_expected);
        }
        return made;
    };
    Refuse_EachInTurn({0, ERequester::All, ERefusal::FromThenOn}, attempt);
    EXPECT_GE(tally.thrownCount, 20);
    tally.Report();
}

/// @return a mode with more items than go round at once
SMaskParam ManyItems(SMaskParam param)
{
    param.colorCount = 5;
    return param;
}

/// Workers that get no memory at all, each with its record or without: the creation is false at once, and
/// says so.
TEST_P(RefusedMemory, OfAllWorkersForGoodIsFalseAtOnce)
{
    for (const SMaskParam& param : {GetParam().param, ManyItems(GetParam().param)}) {
        SCOPED_TRACE(param);
        const CLogCapture log;
        CMaskData_Base mask;
        const auto start = std::chrono::steady_clock::now();
        {
            const CRefusedMemory refusal({0, ERequester::Others, ERefusal::FromThenOn});
            EXPECT_FALSE(mask.Create(param));
            EXPECT_TRUE(refusal.HasRefused());
        }
        EXPECT_LT(std::chrono::steady_clock::now() - start, FALSE_WITHIN);
        Records records = log.Records();
        ASSERT_GE(records.size(), 2U);
        const Records end(records.end() - 2, records.end());
        EXPECT_EQ(end, (Records{Failure(UNIT_MASK, SCOPE_MASK_DATA), MaskCreateFailure(120)}));
        const CMaskBlock* block = SMaskData_Base_Peek{mask}.MaskBlock();
        ASSERT_NE(block, nullptr);
        EXPECT_EQ(
            std::count(block->MaskData_Const(), block->MaskData_Const() + block->MaskDataBytesCount(), 0),
            block->MaskDataBytesCount());
        EXPECT_TRUE(LiveThreads_AreGone());
    }
}

/// A host's thread that never logged before makes the logging library's list of its scopes with its first
/// record.
TEST(RefusedMemoryLog, OfAThreadsFirstRecordThrows)
{
#if defined(DOTWEAVE_TEST_IS_SANITIZED)
    GTEST_SKIP() << "a leak checker sees what the logging library loses when it runs out of memory half-way";
#endif
    const Records expected = {Failure(UNIT_MASK, SCOPE_MASK_CREATE, 85)};
    int thrownCount = 0;
    const auto attempt = [&](const SRefusalPlan& plan) {
        const long liveCount = LiveAllocations_Count();
        SAttempt made;
        {
            const CLogCapture log;
            std::thread([&] {
                CMaskData_Base rejected;
                const CRefusedMemory refusal(plan);
                try {
                    EXPECT_FALSE(rejected.Create({}));
                } catch (const std::bad_alloc&) {
                    ++thrownCount;
                }
                made.wasRefused = refusal.HasRefused();
            }).join();
            EXPECT_EQ(log.Records(), made.wasRefused ? Records() : expected);
        }
        // The logging library itself loses a piece or two when it runs out of memory half-way.
        if (made.wasRefused)
            made.leftBehind = LiveAllocations_Count() - liveCount;
        return made;
    };
    FirstRecord_Log();
    const int refused = Refuse_EachInTurn({0, ERequester::Caller}, attempt);
    EXPECT_GE(refused, 2); // the list, the record
    EXPECT_EQ(thrownCount, refused);
}

/// The C library asks for memory itself, for the state of a new thread that gets no used stack.
TEST_P(RefusedMemory, OfTheCLibraryCostsAThread)
{
    if (!CLibraryMemory_CanBeRefused())
        GTEST_SKIP() << "only in a plain build with the GNU C library, and where that keeps no used stacks";
    STally tally;
    Refuse_EachInTurn({0, ERequester::Caller, ERefusal::Once, ERequestKind::CLibrary},
                      [&](const SRefusalPlan& plan) { return Create_Attempt(plan, tally); });
    ExpectEveryThreadMissedOnce(tally);
    EXPECT_EQ(tally.thrownCount, 0);
    EXPECT_EQ(tally.builtCount, 1);
    tally.Report();
}

INSTANTIATE_TEST_SUITE_P(Of, RefusedMemory, testing::ValuesIn(FailureModes()),
                         [](const auto& modeCase) { return modeCase.param.name; });

} // namespace
