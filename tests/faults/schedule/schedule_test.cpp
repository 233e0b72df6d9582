/// @file
/// The end of the work, with threads held up wherever their order around the queues matters: no creation may
/// hang, miss a queue's wake-up or lose an item. A missed wake-up shows as a sleep that ran its whole time
/// with work there or with no more to come, which is counted, not measured. Load hardly disturbs the verdict:
/// only a thread that gets no processor for 100 ms between its count and its event is counted too, as where
/// the process is halted. DOTWEAVE_SCHEDULE_ROUNDS sets the creations per mode.

#include "dotweave/maskdata_base.h"

#include "maskparams.h"
#include "pressmodes.h"
#include "schedulepoint.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <random>
#include <string>
#include <thread>
#include <vector>

namespace {

std::atomic<int> g_holdUps = 0; // one point in this many lets others run; 0 holds nobody up
std::atomic<long> g_missed = 0;
std::atomic<long> g_points = 0;

std::atomic<unsigned int> g_threads = 0;

int Rounds(int normally)
{
    const char* rounds =
        std::getenv("DOTWEAVE_SCHEDULE_ROUNDS");             // NOLINT(concurrency-mt-unsafe): before threads
    return rounds != nullptr ? std::atoi(rounds) : normally; // NOLINT(cert-err34-c): a test's own setting
}

} // namespace

namespace dotweave {

void SchedulePoint()
{
    ++g_points;
    const int holdUps = g_holdUps;
    if (holdUps == 0)
        return;
    // Seeded by the thread's number: its id is reused with its stack, which would hold every creation up
    // alike.
    thread_local std::minstd_rand random(++g_threads * 2654435761U);
    const unsigned int draw = static_cast<unsigned int>(random());
    if (draw % static_cast<unsigned int>(holdUps) != 0)
        return;
    if (draw / 1024 % 16 == 0)
        std::this_thread::sleep_for(std::chrono::microseconds(draw / 65536 % 500));
    else
        std::this_thread::yield();
}

void SchedulePoint_WaitExpired(bool wasMissed)
{
    if (wasMissed)
        ++g_missed;
}

} // namespace dotweave

namespace {

/// One item; twice as many items as go round at once; many small ones over two resolution passes.
std::vector<SMaskParam> Modes()
{
    SMaskParam one = MaskParam_Plain();
    SMaskParam some = MaskParam_Feathered(FeatherNozzle_Smooth_3, 32, 4, 50.0F);
    some.colorCount = 4;
    SMaskParam many = MaskParam_Feathered(FeatherNozzle_Smooth_3_Sine, 48, 4, 50.0F);
    many.xResPass = 2;
    many.yResPass = 2;
    many.bitsPerPixel = 2;
    many.colorCount = 2;
    return {one, some, many};
}

std::vector<std::uint8_t> AllBytes(const CMaskData_Base& mask)
{
    int position = -1;
    const std::uint8_t* first = mask.MaskData_Get(0, position);
    const int count = mask.MaskBytes_OneColor() * mask.MaskParam_Current().colorCount;
    return {first, first + count};
}

class CreationHeldUp : public testing::TestWithParam<int> {
protected:
    ~CreationHeldUp() override { g_holdUps = 0; }
};

/// Creates a mode again and again with threads held up at one point in holdUps.
void Creations_Check(const SMaskParam& mode, int holdUps, int rounds)
{
    g_holdUps = 0;
    CMaskData_Base expected;
    ASSERT_TRUE(expected.Create(mode));
    const std::vector<std::uint8_t> bytes = AllBytes(expected);
    g_holdUps = holdUps;
    g_missed = 0;
    g_points = 0;
    for (int round = 0; round < rounds; ++round) {
        CMaskData_Base mask;
        ASSERT_TRUE(mask.Create(mode)) << "round " << round;
        ASSERT_EQ(AllBytes(mask), bytes) << "round " << round;
    }
    EXPECT_EQ(g_missed, 0) << "sleeps that nobody ended";
    EXPECT_GT(g_points, rounds) << "the points are compiled in";
}

TEST_P(CreationHeldUp, EndsPromptlyWithTheSameBytes)
{
    for (const SMaskParam& mode : Modes()) {
        SCOPED_TRACE(testing::PrintToString(mode.colorCount));
        Creations_Check(mode, GetParam(), Rounds(40));
    }
}

TEST_P(CreationHeldUp, EndsPromptlyInTheModesOfAPress)
{
    for (const SPressMode& mode : PressModes_Get()) {
        SCOPED_TRACE(mode.name);
        Creations_Check(mode.param, GetParam(), Rounds(2));
    }
}

INSTANTIATE_TEST_SUITE_P(OnePointIn, CreationHeldUp, testing::Values(0, 1, 3, 20),
                         [](const auto& modeCase) { return std::to_string(modeCase.param); });

} // namespace
