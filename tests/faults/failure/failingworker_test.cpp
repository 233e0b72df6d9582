#include "dotweave/maskdata_base.h"

#include "failingkernels.h"
#include "failuremodes.h"
#include "geometrysteps.h"
#include "livethreads.h"
#include "logcapture.h"
#include "logscopes.h"
#include "maskbytes.h"
#include "peek.h"
#include "refusedmemory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace {

constexpr int WORKER_COUNT = 6;
constexpr int EVERY_CALL = 1000000;

using Records = std::vector<SLogRecord>;

/// So many workers that ended in a step: state 3 cuts the sine mask's rows, state 5 packs the lines.
Records WorkerRecords(int count, EWorkerStep step)
{
    const std::string state = step == EWorkerStep::Cut ? "3" : "5";
    return {static_cast<std::size_t>(count),
            FailureValue(UNIT_WORKER, SCOPE_WORKER_LOOP, "m_processState = " + state)};
}

bool IsBlank(CMaskData_Base& mask)
{
    const CMaskBlock* block = SMaskData_Base_Peek{mask}.MaskBlock();
    return block != nullptr &&
           std::all_of(block->MaskData_Const(), block->MaskData_Const() + block->MaskDataBytesCount(),
                       [](std::uint8_t byte) { return byte == 0; });
}

/// A creation of which some calls fail has lost the items in work: it is false, and nobody sees the others'
/// lines. The first worker that fails stops the others, each before or after it has failed too.
/// @return calls of that step until the end
int ExpectLost(const SMaskParam& param, EWorkerStep step, int first, int count, int failingWorkers)
{
    const CLogCapture log;
    const CFailingKernels failing(step, first, count);
    CMaskData_Base mask;
    EXPECT_FALSE(mask.Create(param));
    EXPECT_TRUE(LiveThreads_AreGone());
    const int failedWorkers = static_cast<int>(log.Records().size()) - 2;
    EXPECT_GE(failedWorkers, 1);
    EXPECT_LE(failedWorkers, failingWorkers);
    EXPECT_EQ(log.Records(), Chain(WorkerRecords(std::max(failedWorkers, 0), step),
                                   {Failure(UNIT_MASK, SCOPE_MASK_DATA), MaskCreateFailure(120)}));
    EXPECT_TRUE(IsBlank(mask));
    return failing.CallCount();
}

class FailingWorker : public testing::TestWithParam<SFailureMode> {
protected:
    FailingWorker() : m_expected(MaskBytes_Undisturbed(GetParam().param)) {}

    void SetUp() override
    {
        FirstRecord_Log();
        {
            SCOPED_TRACE("the test library allocates its list with the first one, and keeps it");
        }
        m_liveCount = LiveAllocations_Count();
    }

    /// No thread is left, nor anything that a worker had.
    void TearDown() override
    {
        EXPECT_TRUE(LiveThreads_AreGone());
        if (!HasFailure()) {
            EXPECT_EQ(LiveAllocations_Count(), m_liveCount);
        }
    }

    int CallCount(EWorkerStep step)
    {
        const CFailingKernels none(step, 0, 0);
        EXPECT_EQ(MaskBytes_Undisturbed(GetParam().param), m_expected);
        return none.CallCount();
    }

    int Items()
    {
        CMaskData_Base mask;
        return mask.Create(GetParam().param) ? ItemCount(mask) : 0;
    }

    std::vector<std::uint8_t> m_expected;
    long m_liveCount = 0;
};

TEST_P(FailingWorker, AnyCallThatFailsCostsTheMask)
{
    ASSERT_GE(CallCount(EWorkerStep::Pack), Items());
    for (const EWorkerStep step : {EWorkerStep::Cut, EWorkerStep::Pack}) {
        const int calls = CallCount(step);
        for (int call = 0; call < calls; ++call) {
            SCOPED_TRACE(testing::Message() << "step " << static_cast<int>(step) << ", call " << call);
            ExpectLost(GetParam().param, step, call, 1, 1);
        }
    }
}

TEST_P(FailingWorker, SoDoAllButOneAndAll)
{
    // The first calls: each is another worker's.
    const int items = Items();
    for (const int failing : {std::min(items, WORKER_COUNT - 1), std::min(items, WORKER_COUNT)})
        ExpectLost(GetParam().param, EWorkerStep::Pack, 0, failing, failing);
}

INSTANTIATE_TEST_SUITE_P(Of, FailingWorker, testing::ValuesIn(FailureModes()),
                         [](const auto& modeCase) { return modeCase.param.name; });

/// A mode with far more items than go round at once.
SMaskParam MaskParam_ManyItems()
{
    SMaskParam param = MaskParam_Plain();
    param.basePass = 17; // 17 positions of 32 rows
    param.colorCount = 4;
    return param;
}

/// Fails once or for good, early or late in a mode of 68 items.
TEST(FailingWorkers, EndARunOfManyItemsAtOnce)
{
    for (const int first : {0, 30})
        for (const int count : {1, EVERY_CALL}) {
            SCOPED_TRACE(testing::Message() << "calls " << first << " and " << count - 1 << " more");
            const auto start = std::chrono::steady_clock::now();
            ExpectLost(MaskParam_ManyItems(), EWorkerStep::Pack, first, count, WORKER_COUNT);
            EXPECT_LT(std::chrono::steady_clock::now() - start, FALSE_WITHIN);
        }
}

/// A mode of 680 items, of which the first fails: nobody writes what is of no use any more. Items in work
/// are finished, and a few that the producer hands out before it hears of the loss.
TEST(FailingWorkers, NobodyWritesTheRestOfALostMask)
{
    SMaskParam param = MaskParam_ManyItems();
    param.colorCount = 40;
    constexpr int ITEM_COUNT = 40 * 17;
    int fewest = ITEM_COUNT;
    for (int attempt = 0; attempt < 3; ++attempt)
        fewest = std::min(fewest, ExpectLost(param, EWorkerStep::Pack, 0, 1, 1));
    EXPECT_LT(fewest, ITEM_COUNT / 4);
}

TEST(FailingWorkers, ExpiredWaitLeavesABlankBlock)
{
    for (const unsigned int milliseconds : {0U, 0U, 1U}) {
        SCOPED_TRACE(milliseconds);
        SMaskParam param = MaskParam_ManyItems(); // and large ones
        param.nozzleCount = 512;
        param.basePass = 16; // 17 positions of 32 rows
        param.xResPass = 4;
        param.yResPass = 4;
        CMaskData_Base mask;
        SMaskData_Base_Peek peek{mask};
        Geometry_Create(peek, param);
        const CLogCapture quiet;
        ASSERT_FALSE(peek.CreateMaskData_Within(milliseconds));
        EXPECT_TRUE(IsBlank(mask));
        ASSERT_TRUE(LiveThreads_AreGone()); // so that nobody can write any more
        EXPECT_TRUE(IsBlank(mask));
    }
}

} // namespace
