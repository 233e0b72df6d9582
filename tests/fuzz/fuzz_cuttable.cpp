// Cut tables of every builder, for all numbers that a layout can have, compared with what the builders
// promise.

#include "cuttablebuilders.h"
#include "cuttables.h"
#include "fuzzing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace {

/// An input: which builder, and its numbers, each brought into a range by the builder that uses it.
struct SInput {
    std::int32_t builder;
    std::int32_t rows;
    std::int32_t step;
    std::int32_t passes;
    std::int32_t times;
    std::int32_t levelPercent;
    std::int32_t count; ///< handed to builders that do not read it
};

constexpr int LEVEL_MAX = 65535;

/// Every row is written, and its lower bound is not above its upper one.
void ExpectRanges(const CRanges& table)
{
    for (const SRange& range : table)
        EXPECT_TRUE(range.lower <= range.upper && range.upper <= LEVEL_MAX) << range;
}

/// The rows of every image row print (0, level] once.
void ExpectTiles(const CRanges& table, int step, int level)
{
    for (int first = 0; first < std::min(step, static_cast<int>(table.size())); ++first)
        EXPECT_TRUE(Tiles(RowsOneStepApart(table, first, step), level)) << "from row " << first;
}

/// Groups of hard zones, the passes left over in the last one, print the whole scale each.
void ExpectGroups(const CRanges& table, int step, int passes, int times)
{
    EXPECT_EQ(table, HardZones(passes, times, step));
    const int groupRows = passes / times * step;
    for (int group = 0; groupRows > 0 && group < times - 1; ++group)
        ExpectTiles(RowsFrom(table, group * groupRows, groupRows), step, LEVEL_MAX);
    const int before = groupRows * (times - 1);
    ExpectTiles(RowsFrom(table, before, static_cast<int>(table.size()) - before), step, LEVEL_MAX);
}

void HardOnce(const SInput& input)
{
    const int passes = Fuzz_Number(input.passes, 1, 64);
    const int step = Fuzz_Number(input.step, 1, 32);
    const CRanges table = OneTimes(passes, step, input.count);
    ExpectRanges(table);
    EXPECT_EQ(table, PassZones(passes, step));
    ExpectTiles(table, step, LEVEL_MAX);
}

void HardSeveral(const SInput& input)
{
    const int passes = Fuzz_Number(input.passes, 1, 64);
    const int times = Fuzz_Number(input.times, 2, passes + 2);
    const int step = Fuzz_Number(input.step, 1, 32);
    const CRanges table = MultipleTimes(passes, times, step);
    ExpectRanges(table);
    ExpectGroups(table, step, passes, times);
}

void Smooth2(const SInput& input)
{
    const int passes = Fuzz_Number(input.passes, 1, 16);
    const int times = Fuzz_Number(input.times, 1, passes);
    const int step = Fuzz_Number(input.step, 1, 64);
    const int feather = Fuzz_Number(input.rows, 0, step);
    CZonedMask zoned(passes, times, feather, step - feather);
    const CRanges table = zoned.Whole(input.count);
    ExpectRanges(table);
    EXPECT_EQ(table.size(), static_cast<std::size_t>(passes * step + feather));
    for (int first = 0; first < step; ++first) {
        const CRanges rows = RowsOneStepApart(table, first, step);
        if (first < feather) {
            EXPECT_TRUE(Tiles(rows, LEVEL_MAX)) << "from row " << first;
        } else {
            EXPECT_EQ(rows, HardZones(passes, times, 1)) << "from row " << first;
        }
    }
    ExpectGroups(zoned.Pass(input.count), step - feather, passes, times);
    EXPECT_EQ(zoned.Feather(), RampByFormula((passes + 1) * feather, feather, LEVEL_MAX));
}

void Smooth3Once(const SInput& input)
{
    const int step = Fuzz_Number(input.step, 1, 200);
    const int rows = Fuzz_Number(input.rows, 0, 600);
    const int percent = Fuzz_Number(input.levelPercent, 0, 100);
    const int level = percent * LEVEL_MAX / 100;
    const CRanges table = OnceStyle1(rows, step, percent);
    ExpectRanges(table);
    ExpectTiles(table, step, level);
    if (rows >= step) { // a band shorter than its step prints the whole level
        EXPECT_EQ(table, RampByFormula(rows, step, level));
    }
}

void Smooth3Zones(const SInput& input)
{
    const int step = Fuzz_Number(input.step, 1, 200);
    const CRanges table = OnceStyle2(Fuzz_Number(input.rows, 0, 600), step);
    ExpectRanges(table);
    ExpectTiles(table, step, LEVEL_MAX);
    for (int first = 0; first < std::min(step, static_cast<int>(table.size())); ++first) {
        const CRanges rows = RowsOneStepApart(table, first, step);
        EXPECT_EQ(rows, PassZones(static_cast<int>(rows.size()), 1)) << "from row " << first;
    }
}

void Smooth3Groups(const SInput& input)
{
    const int passes = Fuzz_Number(input.passes, 1, 16);
    const int times = Fuzz_Number(input.times, 1, passes + 2);
    const int step = Fuzz_Number(input.step, 1, 40);
    const int rows = passes * step + Fuzz_Number(input.rows, 0, 2 * step);
    const int percent = Fuzz_Number(input.levelPercent, 0, 100);
    const CRanges table = MultipleStyle1(rows, passes, times, step, percent);
    ExpectRanges(table);
    const int groupRows = passes / times * step;
    for (int group = 0; groupRows > 0 && group < times - 1; ++group)
        EXPECT_EQ(RowsFrom(table, group * groupRows, groupRows), PassZones(passes / times, step));
    const int rampRows = rows - (times - 1) * groupRows;
    const CRanges ramp = RowsFrom(table, rows - rampRows, rampRows);
    EXPECT_EQ(ramp, OnceStyle1(rampRows, step, percent));
    ExpectTiles(ramp, step, percent * LEVEL_MAX / 100);
}

void Smooth3Widened(const SInput& input)
{
    const int step = Fuzz_Number(input.step, 1, 200);
    const int rows = Fuzz_Number(input.rows, 1, 600);
    const int times = Fuzz_Number(input.times, 1, 64);
    const int percent = Fuzz_Number(input.levelPercent, 0, 100);
    const CRanges ramp = OnceStyle1(rows, step, percent);
    const CRanges table = MultipleStyle2(rows, times, step, percent);
    ExpectRanges(table);
    for (std::size_t row = 0; row < table.size(); ++row)
        EXPECT_EQ(table[row], WidenedByHand(ramp[row], times).range)
            << ramp[row] << ", " << times << " times";
}

constexpr std::array BUILDERS = {HardOnce,     HardSeveral,   Smooth2,       Smooth3Once,
                                 Smooth3Zones, Smooth3Groups, Smooth3Widened};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    SInput input = {}; // what a short input lacks is zero
    std::memcpy(&input, data, std::min(size, sizeof input));
    const int builder = Fuzz_Number(input.builder, 0, static_cast<int>(BUILDERS.size()) - 1);
    BUILDERS[static_cast<std::size_t>(builder)](input);
    return 0;
}
