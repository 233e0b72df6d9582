#include "dotweave/maskdatafactory.h"
#include "dotweave/maskdatastorage.h"

#include "failuremodes.h"
#include "geometrysteps.h"
#include "livethreads.h"
#include "logcapture.h"
#include "maskbytes.h"
#include "missingthread.h"
#include "peek.h"
#include "threadfaults.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace {

class RefusedThreads : public testing::TestWithParam<SFailureMode> {
protected:
    RefusedThreads() : m_expected(MaskBytes_Undisturbed(GetParam().param)) {}

    /// @return what the operation logged while so many threads could start
    template <typename TOperation>
    static std::vector<SLogRecord> RecordsWith(int startCount, TOperation operation)
    {
        const CLogCapture log;
        const CThreadFaults threads(startCount);
        operation();
        EXPECT_EQ(threads.AskedCount(), startCount + 1); // nobody tries again
        return log.Records();
    }

    std::vector<std::uint8_t> m_expected;
};

TEST_P(RefusedThreads, MissingThreadFailsCreate)
{
    for (int started = 0; started < GENERATOR_THREAD_COUNT; ++started) {
        SCOPED_TRACE(started);
        CMaskData_Base mask;
        EXPECT_EQ(RecordsWith(started, [&] { EXPECT_FALSE(mask.Create(GetParam().param)); }),
                  Records_MissingThread_Create(started));
        EXPECT_TRUE(LiveThreads_AreGone());
        const CMaskBlock* block = SMaskData_Base_Peek{mask}.MaskBlock();
        ASSERT_NE(block, nullptr); // attached before the generator was made
        const std::uint8_t* bytes = block->MaskData_Const();
        EXPECT_TRUE(std::all_of(bytes, bytes + block->MaskDataBytesCount(),
                                [](std::uint8_t byte) { return byte == 0; }));
        EXPECT_EQ(MaskBytes_Undisturbed(GetParam().param), m_expected);
    }
}

TEST_P(RefusedThreads, MissingThreadGivesNull)
{
    for (int started = 0; started < GENERATOR_THREAD_COUNT; ++started) {
        SCOPED_TRACE(started);
        EXPECT_EQ(
            RecordsWith(started,
                        [&] { EXPECT_EQ(CMaskDataFactory::MaskData_Create(GetParam().param), nullptr); }),
            Records_MissingThread_Factory(started));
        EXPECT_TRUE(LiveThreads_AreGone());
        const std::unique_ptr<CMaskData_Base> later(CMaskDataFactory::MaskData_Create(GetParam().param));
        ASSERT_NE(later, nullptr);
        EXPECT_EQ(MaskBytes(*later), m_expected);
    }
}

TEST_P(RefusedThreads, MissingThreadLeavesTheStorageUsable)
{
    SMaskParam other = GetParam().param;
    other.colorCount += 2;
    CMaskDataStorage storage;
    ASSERT_TRUE(storage.MaskData_Current_Init(other));
    const CMaskData_Base* listed = storage.MaskData_Current_Get();
    for (int started = 0; started < GENERATOR_THREAD_COUNT; ++started) {
        SCOPED_TRACE(started);
        EXPECT_EQ(
            RecordsWith(started, [&] { EXPECT_FALSE(storage.MaskData_Current_Init(GetParam().param)); }),
            Records_MissingThread_Storage(started));
        EXPECT_TRUE(LiveThreads_AreGone());
        EXPECT_EQ(storage.MaskData_Current_Get(), nullptr);
        EXPECT_EQ(SMaskDataStorage_Peek{storage}.List().size(), 1U);
        ASSERT_TRUE(storage.MaskData_Current_Init(other));
        EXPECT_EQ(storage.MaskData_Current_Get(), listed);
    }
    ASSERT_TRUE(storage.MaskData_Current_Init(GetParam().param));
    EXPECT_EQ(MaskBytes(*storage.MaskData_Current_Get()), m_expected);
}

TEST_P(RefusedThreads, SevenAreEnough)
{
    const CThreadFaults threads(GENERATOR_THREAD_COUNT);
    EXPECT_EQ(MaskBytes_Undisturbed(GetParam().param), m_expected);
    EXPECT_EQ(threads.AskedCount(), GENERATOR_THREAD_COUNT);
    EXPECT_TRUE(LiveThreads_AreGone());
}

TEST_P(RefusedThreads, OldAssemblyAsksForNone)
{
    CMaskData_Base mask;
    SMaskData_Base_Peek peek{mask};
    Geometry_Create(peek, GetParam().param);
    const CThreadFaults threads(0);
    EXPECT_TRUE(peek.CreateMaskData_Old());
    EXPECT_EQ(threads.AskedCount(), 0);
    EXPECT_NE(peek.MaskBlock(), nullptr);
}

INSTANTIATE_TEST_SUITE_P(Of, RefusedThreads, testing::ValuesIn(FailureModes()),
                         [](const auto& modeCase) { return modeCase.param.name; });

} // namespace
