#include "dotweave/maskdatastorage.h"

#include "failuremodes.h"
#include "logcapture.h"
#include "maskbytes.h"
#include "missingthread.h"
#include "peek.h"
#include "refusedmemory.h"
#include "threadfaults.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <list>
#include <memory>
#include <new>
#include <optional>
#include <vector>

namespace {

/// Modes that differ in a field which hard edges never read: one step height, one set of bytes.
SMaskParam Mode(int number)
{
    SMaskParam param = FailureModes().front().param;
    param.featherLevelPercent = number;
    return param;
}

/// A storage that lists modes 1 to 5, the last of them current.
class RefusedMemoryStorage : public testing::Test {
protected:
    RefusedMemoryStorage() : m_expected(MaskBytes_Undisturbed(Mode(0)))
    {
        for (int number = 1; number <= 5; ++number)
            EXPECT_TRUE(m_storage.MaskData_Current_Init(Mode(number)));
        FirstRecord_Log();
    }

    struct SState {
        std::vector<CMaskData_Base*> listed;
        CMaskData_Base* current;
        bool operator==(const SState&) const = default;
    };

    SState State()
    {
        SMaskDataStorage_Peek peek{m_storage};
        return {{peek.List().begin(), peek.List().end()}, m_storage.MaskData_Current_Get()};
    }

    /// The storage does its work as if nothing had been, and its objects are whole.
    void ExpectUsable()
    {
        const CLogCapture log;
        for (const CMaskData_Base* mask : SMaskDataStorage_Peek{m_storage}.List()) {
            ASSERT_NE(mask, nullptr);
            EXPECT_EQ(MaskBytes(*mask), m_expected);
        }
        const SState before = State();
        CMaskData_Base* last = before.listed.back();
        EXPECT_TRUE(m_storage.MaskData_Current_Init(last->MaskParam_Input()));
        EXPECT_EQ(m_storage.MaskData_Current_Get(), last);
        EXPECT_EQ(m_storage.MaskData_Apply(last->MaskParam_Input()), last);
        EXPECT_EQ(State().listed, before.listed);
        EXPECT_EQ(log.Records(), std::vector<SLogRecord>());
    }

    CMaskDataStorage m_storage;
    std::vector<std::uint8_t> m_expected;
};

TEST_F(RefusedMemoryStorage, StorageIsMadeWholeOrNot)
{
    const auto attempt = [](const SRefusalPlan& plan) {
        std::unique_ptr<CMaskDataStorage> storage;
        bool isThrown = false;
        const CRefusedMemory refusal(plan);
        try {
            storage = std::make_unique<CMaskDataStorage>();
        } catch (const std::bad_alloc&) {
            isThrown = true;
        }
        EXPECT_EQ(isThrown, refusal.HasRefused());
        EXPECT_EQ(storage == nullptr, isThrown);
        return SAttempt{refusal.HasRefused(), 0};
    };
    EXPECT_GE(Refuse_EachInTurn({0, ERequester::Caller}, attempt), 3); // itself, its mutex, its list
}

TEST_F(RefusedMemoryStorage, NewModeMadeCurrent)
{
    int thrownCount = 0;
    int missingCount = 0;
    const auto attempt = [&](const SRefusalPlan& plan) {
        const SState before = State();
        SAttempt made;
        bool isCurrent = false;
        bool isThrown = false;
        const CLogCapture log;
        const CThreadFaults threads(ALL_THREADS);
        {
            const CRefusedMemory refusal(plan);
            try {
                isCurrent = m_storage.MaskData_Current_Init(Mode(6));
            } catch (const std::bad_alloc&) {
                isThrown = true;
            }
            made.wasRefused = refusal.HasRefused();
        }
        EXPECT_EQ(isCurrent, !made.wasRefused);
        if (isCurrent) {
            EXPECT_EQ(State().current->MaskParam_Input().featherLevelPercent, 6);
            EXPECT_EQ(State().listed.size(), 5U);
            EXPECT_EQ(State().listed.front(), before.listed[1]); // the oldest had to go
        } else if (isThrown) {
            ++thrownCount;
            EXPECT_EQ(State(), before);
            EXPECT_EQ(log.Records(), std::vector<SLogRecord>());
        } else {
            ++missingCount;
            made.leftBehind = REJECTED_OBJECT_PIECES; // deliberate
            EXPECT_EQ(State(), (SState{before.listed, nullptr}));
            EXPECT_EQ(log.Records(), Records_MissingThread_Storage(threads.AskedCount() - 1));
        }
        ExpectUsable();
        return made;
    };
    Refuse_EachInTurn({0, ERequester::Caller}, attempt);
    EXPECT_GE(thrownCount, 22); // the list's entry too
    EXPECT_GE(missingCount, GENERATOR_THREAD_COUNT);
    RecordProperty("thrown", thrownCount);
    RecordProperty("missingThreads", missingCount);
}

TEST_F(RefusedMemoryStorage, ListedModeMadeCurrent)
{
    const auto attempt = [&](const SRefusalPlan& plan) {
        const SState before = State();
        SAttempt made;
        {
            const CRefusedMemory refusal(plan);
            try {
                EXPECT_TRUE(m_storage.MaskData_Current_Init(Mode(2)));
            } catch (const std::bad_alloc&) {
                made.wasRefused = true;
            }
            EXPECT_EQ(made.wasRefused, refusal.HasRefused());
        }
        if (made.wasRefused)
            EXPECT_EQ(State(), before);
        else
            EXPECT_EQ(State().current, before.listed[1]);
        ExpectUsable();
        return made;
    };
    Refuse_EachInTurn({0, ERequester::Caller}, attempt);
}

/// An apply whose new object is not built is the agreed fault, so here every thread starts.
TEST_F(RefusedMemoryStorage, NewModeApplied)
{
    std::optional<CSparedRequests> spared; // for the time of each start
    SThreadFaults faults;
    faults.starting = [&spared](const CustomThreadBase& /*thread*/) { spared.emplace(); };
    faults.started = [&spared] { spared.reset(); };
    const CThreadFaults threads(faults);
    const auto attempt = [&](const SRefusalPlan& plan) {
        const SState before = State();
        SAttempt made;
        const CMaskData_Base* applied = nullptr;
        const CLogCapture log;
        {
            const CRefusedMemory refusal(plan);
            try {
                applied = m_storage.MaskData_Apply(Mode(7));
            } catch (const std::bad_alloc&) {
                made.wasRefused = true;
            }
            EXPECT_EQ(made.wasRefused, refusal.HasRefused());
        }
        EXPECT_EQ(log.Records(), std::vector<SLogRecord>());
        if (made.wasRefused) {
            EXPECT_EQ(State(), before);
        } else {
            EXPECT_EQ(State().listed.back(), applied);
            EXPECT_EQ(State().current, before.current);
        }
        ExpectUsable();
        return made;
    };
    const int refused = Refuse_EachInTurn({0, ERequester::Caller}, attempt);
    EXPECT_GE(refused, 22);
    RecordProperty("thrown", refused);
}

TEST_F(RefusedMemoryStorage, OfAWorkerIsNoFailure)
{
    int number = 10;
    const auto attempt = [&](const SRefusalPlan& plan) {
        SAttempt made;
        const CLogCapture log;
        {
            const CRefusedMemory refusal(plan);
            const bool isApplied = number % 2 == 0;
            ++number;
            if (isApplied)
                EXPECT_NE(m_storage.MaskData_Apply(Mode(number)), nullptr);
            else
                EXPECT_TRUE(m_storage.MaskData_Current_Init(Mode(number)));
            made.wasRefused = refusal.HasRefused();
        }
        EXPECT_EQ(log.Records().size(), made.wasRefused ? 1U : 0U);
        EXPECT_EQ(State().listed.back()->MaskParam_Input().featherLevelPercent, number);
        ExpectUsable();
        return made;
    };
    EXPECT_GE(Refuse_EachInTurn({0, ERequester::Others}, attempt), 6);
}

TEST_F(RefusedMemoryStorage, ReadingAsksForNoMemory)
{
    const CRefusedMemory refusal({0, ERequester::All, ERefusal::FromThenOn});
    CMaskData_Base* current = m_storage.MaskData_Current_Get();
    EXPECT_NE(current, nullptr);
    EXPECT_EQ(m_storage.MaskData_Apply(Mode(5)), current);
    EXPECT_NE(m_storage.MaskData_Apply(Mode(1)), nullptr);
    int position = -1;
    EXPECT_NE(current->MaskData_Get(0, position), nullptr);
    EXPECT_FALSE(refusal.HasRefused());
}

} // namespace
