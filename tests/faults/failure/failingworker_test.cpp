#include "dotweave/maskdata_base.h"

#include "failingpacking.h"
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
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string>
#include <vector>

namespace {

constexpr int WORKER_COUNT = 6;
constexpr int EVERY_CALL = 1000000;

using Records = std::vector<SLogRecord>;

/// So many workers that ended in a state: 3 cuts the sine mask's rows, 5 packs the lines.
Records WorkerRecords(int count, int state)
{
    return {static_cast<std::size_t>(count),
            {SCOPE_WORKER_LOOP, "maskdatagenerator_sub", LINE_ANY, 2,
             "m_processState = " + std::to_string(state)}};
}

class FailingWorker : public testing::TestWithParam<SFailureMode> {
protected:
    FailingWorker() : m_expected(MaskBytes_Undisturbed(GetParam().param)) {}

    void SetUp() override
    {
        FirstRecord_Log();
        {
            SCOPED_TRACE("the first one leaves the test library's own list allocated");
        }
        m_liveCount = LiveAllocations_Count();
    }

    /// Nobody may be left, nor may anything be that a worker held.
    void TearDown() override
    {
        EXPECT_TRUE(LiveThreads_AreGone());
        if (!HasFailure()) {
            EXPECT_EQ(LiveAllocations_Count(), m_liveCount);
        }
    }

    /// A creation in which some calls of a step fail is right in all items but those that were lost with
    /// them.
    void ExpectLost(EWorkerStep step, int first, int count, const SItemLines& lines)
    {
        const CLogCapture log;
        const CFailingSteps failing(step, first, count);
        CMaskData_Base mask;
        ASSERT_TRUE(mask.Create(GetParam().param));
        EXPECT_TRUE(LiveThreads_AreGone());
        EXPECT_EQ(log.Records(),
                  WorkerRecords(std::min(count, WORKER_COUNT), step == EWorkerStep::Cut ? 3 : 5));
        EXPECT_EQ(ItemLines_Compare(mask, MaskBytes(mask), m_expected), lines);
    }

    int CallCount(EWorkerStep step)
    {
        const CFailingSteps none(step, 0, 0);
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

TEST_P(FailingWorker, AnyCallThatFailsCostsOneItemAndTheOthersGoOn)
{
    const int items = Items();
    ASSERT_GE(CallCount(EWorkerStep::Pack), items);
    for (const EWorkerStep step : {EWorkerStep::Cut, EWorkerStep::Pack}) {
        const int calls = CallCount(step);
        for (int call = 0; call < calls; ++call) {
            SCOPED_TRACE(testing::Message() << "step " << static_cast<int>(step) << ", call " << call);
            ExpectLost(step, call, 1, {items - 1, 1, 0});
        }
    }
}

TEST_P(FailingWorker, TheLastOneDoesWhatIsLeft)
{
    const int items = Items();
    const int failing = std::min(items, WORKER_COUNT - 1); // the first calls: each is another worker's
    ExpectLost(EWorkerStep::Pack, 0, failing, {items - failing, failing, 0});
}

TEST_P(FailingWorker, WhenAllFailTheItemsThatNobodyTakesStayBlank)
{
    // No more items than go round at once, so the producer gets rid of all of them and waits for nobody.
    const int items = Items();
    const int failing = std::min(items, WORKER_COUNT);
    const CLogCapture log;
    const CFailingSteps steps(EWorkerStep::Pack, 0, EVERY_CALL);
    CMaskData_Base mask;
    ASSERT_TRUE(mask.Create(GetParam().param));
    EXPECT_TRUE(LiveThreads_AreGone());
    EXPECT_EQ(log.Records(), WorkerRecords(failing, 5));
    EXPECT_EQ(ItemLines_Compare(mask, MaskBytes(mask), m_expected), (SItemLines{0, items, 0}));
}

INSTANTIATE_TEST_SUITE_P(Of, FailingWorker, testing::ValuesIn(FailureModes()),
                         [](const auto& modeCase) { return modeCase.param.name; });

bool IsBlank(const CMaskBlock& block)
{
    const std::uint8_t* bytes = block.MaskData_Const();
    return std::all_of(bytes, bytes + block.MaskDataBytesCount(),
                       [](std::uint8_t byte) { return byte == 0; });
}

/// A mode with far more items than go round at once.
SMaskParam MaskParam_ManyItems()
{
    SMaskParam param = MaskParam_Plain();
    param.basePass = 17; // 17 positions of 32 rows
    param.colorCount = 4;
    return param;
}

TEST(FailingWorkers, WithMoreItemsThanGoRoundTheCreationEndsWithItsWait)
{
    CMaskData_Base mask;
    SMaskData_Base_Peek peek{mask};
    Geometry_Create(peek, MaskParam_ManyItems());
    const CLogCapture log;
    const CFailingSteps steps(EWorkerStep::Pack, 0, EVERY_CALL);
    EXPECT_FALSE(peek.CreateMaskData_Within(250));
    EXPECT_TRUE(LiveThreads_AreGone());
    // A worker that was not given a processor in this time has not failed before it is stopped.
    Records records = log.Records();
    const auto workers = std::remove(records.begin(), records.end(), WorkerRecords(1, 5).front());
    EXPECT_LE(std::distance(workers, records.end()), WORKER_COUNT);
    records.erase(workers, records.end());
    EXPECT_EQ(records,
              (Records{Failure(UNIT_GENERATOR, SCOPE_GENERATOR_WAIT), Failure(UNIT_MASK, SCOPE_MASK_DATA)}));
    ASSERT_NE(peek.MaskBlock(), nullptr);
    EXPECT_TRUE(IsBlank(*peek.MaskBlock()));
}

TEST(FailingWorkers, AnExpiredWaitLeavesNoThreadAndABlankBlockForGood)
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
        EXPECT_TRUE(IsBlank(*peek.MaskBlock()));
        ASSERT_TRUE(LiveThreads_AreGone()); // so that nobody is left to write
        EXPECT_TRUE(IsBlank(*peek.MaskBlock()));
    }
}

} // namespace
