#pragma once

#include "dotweave/cuttable.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <ostream>
#include <vector>

/// @file
/// Cut tables as ranges, built between guard entries, and the laws that they follow, worked out without the
/// library.

/// The thresholds of one row, written as in print: (lower, upper].
struct SRange {
    int lower;
    int upper;

    friend bool operator==(const SRange&, const SRange&) = default;
    friend std::ostream& operator<<(std::ostream& stream, const SRange& range)
    {
        return stream << '(' << range.lower << ", " << range.upper << ']';
    }
};

using CRanges = std::vector<SRange>;

/// What an entry is before a builder writes it: an empty range that no builder makes.
inline constexpr SRange UNWRITTEN = {54321, 12345};

/// Fills a table of `count` entries by `build(SCutTable*)`. Fails when an entry before or after the table
/// changes.
template <typename TBuild>
CRanges BuiltRanges(int count, TBuild build)
{
    constexpr std::size_t GUARD_COUNT = 40;
    const SCutTable unwritten = {UNWRITTEN.upper, UNWRITTEN.lower};
    std::vector<SCutTable> entries(static_cast<std::size_t>(count) + 2 * GUARD_COUNT, unwritten);
    build(entries.data() + GUARD_COUNT);
    CRanges ranges;
    for (const SCutTable& entry : entries)
        ranges.push_back({entry.lowerLimit, entry.upperLimit});
    EXPECT_EQ(CRanges(ranges.begin(), ranges.begin() + GUARD_COUNT), CRanges(GUARD_COUNT, UNWRITTEN))
        << "written before the table";
    EXPECT_EQ(CRanges(ranges.end() - GUARD_COUNT, ranges.end()), CRanges(GUARD_COUNT, UNWRITTEN))
        << "written after the table";
    return {ranges.begin() + GUARD_COUNT, ranges.end() - GUARD_COUNT};
}

/// The ranges as the library takes them.
inline std::vector<SCutTable> CutTable_Of(const CRanges& ranges)
{
    std::vector<SCutTable> table;
    for (const SRange& range : ranges)
        table.push_back({static_cast<std::uint16_t>(range.upper), static_cast<std::uint16_t>(range.lower)});
    return table;
}

/// `count` rows from row `first` on.
inline CRanges RowsFrom(const CRanges& table, int first, int count)
{
    const auto begin = table.begin() + static_cast<std::ptrdiff_t>(first);
    return {begin, begin + static_cast<std::ptrdiff_t>(count)};
}

/// The rows first, first + step, ...: those that print one image row.
inline CRanges RowsOneStepApart(const CRanges& table, int first, int step)
{
    CRanges rows;
    for (auto row = static_cast<std::size_t>(first); row < table.size();
         row += static_cast<std::size_t>(step))
        rows.push_back(table[row]);
    return rows;
}

/// Succeeds when the ranges print every threshold of (0, level] once and no other. Empty ranges print
/// nothing.
inline testing::AssertionResult Tiles(CRanges ranges, int level)
{
    const CRanges asGiven = ranges;
    ranges.erase(std::remove_if(ranges.begin(), ranges.end(),
                                [](const SRange& range) { return range.upper <= range.lower; }),
                 ranges.end());
    std::sort(ranges.begin(), ranges.end(),
              [](const SRange& a, const SRange& b) { return a.lower < b.lower; });
    int reached = 0;
    for (const SRange& range : ranges) {
        if (range.lower != reached)
            return testing::AssertionFailure()
                   << range << " does not start at " << reached << " in " << testing::PrintToString(asGiven);
        reached = range.upper;
    }
    if (reached != level)
        return testing::AssertionFailure() << "ends at " << reached << " instead of " << level << " in "
                                           << testing::PrintToString(asGiven);
    return testing::AssertionSuccess();
}

/// Pass `i` of `passCount` passes that share the scale, its bounds summed up step by step.
inline SRange PassShare(int i, int passCount)
{
    int below = 0;
    for (int pass = 0; pass < i; ++pass)
        below += 65535;
    return {below / passCount, (below + 65535) / passCount};
}

/// Zones of `rowsPerPass` rows, one for each of `passCount` passes that share the scale.
inline CRanges PassZones(int passCount, int rowsPerPass)
{
    CRanges zones;
    for (int pass = 0; pass < passCount; ++pass)
        zones.insert(zones.end(), static_cast<std::size_t>(std::max(rowsPerPass, 0)),
                     PassShare(pass, passCount));
    return zones;
}

/// Zones of `rowsPerPass` rows whose passes form groups, each of which shares the scale; the last group takes
/// the passes left over.
inline CRanges HardZones(int basePass, int colorTimes, int rowsPerPass)
{
    CRanges zones;
    const int groupSize = basePass / colorTimes;
    for (int group = 0; group < colorTimes; ++group) {
        const int size = group == colorTimes - 1 ? basePass - group * groupSize : groupSize;
        const CRanges more = PassZones(size, rowsPerPass);
        zones.insert(zones.end(), more.begin(), more.end());
    }
    return zones;
}

/// Rows that slide from the level down to 0, by the linear formula: row r prints up to (rows - r) / (m + 1)
/// of the level and above (m - r) / (m + 1) of it, cut off at both ends, where m = rows - step.
inline CRanges RampByFormula(int rows, int step, int level)
{
    CRanges ramp;
    const int m = rows - step;
    for (int r = 0; r < rows; ++r)
        ramp.push_back(
            {r < m ? (m - r) * level / (m + 1) : 0, r < step ? level : (rows - r) * level / (m + 1)});
    return ramp;
}

/// Smooth-2 zones as they lie on the head: basePass + 1 feather zones that share one ramp, a pass zone
/// between each two of them.
inline CRanges Smooth2Zones(int basePass, int colorTimes, int featherRows, int passRows)
{
    const CRanges ramp = RampByFormula((basePass + 1) * featherRows, featherRows, 65535);
    const CRanges passes = HardZones(basePass, colorTimes, passRows);
    CRanges zones = RowsFrom(ramp, 0, featherRows);
    for (int pass = 0; pass < basePass; ++pass) {
        for (const CRanges& zone : {RowsFrom(passes, pass * passRows, passRows),
                                    RowsFrom(ramp, (pass + 1) * featherRows, featherRows)})
            zones.insert(zones.end(), zone.begin(), zone.end());
    }
    return zones;
}

/// How a range takes its new place when it is widened.
enum class EPlace { Whole, PushedUp, CentredLow, CentredHigh, PushedDown };

struct SWidened {
    SRange range;
    EPlace place;
};

/// The widening on paper: the new width around the old centre, moved back onto the scale at either end. Both
/// halves are rounded down. From 32767 on the upper bound is found first, below it the lower bound.
inline SWidened WidenedByHand(const SRange& range, int times)
{
    const int width = (range.upper - range.lower) * times;
    if (width >= 65535)
        return {{0, 65535}, EPlace::Whole};
    const int centre = (range.lower + range.upper) / 2;
    if (centre >= 32767) {
        const int upper = centre + width / 2;
        if (upper > 65535)
            return {{65535 - width, 65535}, EPlace::PushedDown};
        return {{upper - width, upper}, EPlace::CentredHigh};
    }
    const int lower = centre - width / 2;
    if (lower < 0)
        return {{0, width}, EPlace::PushedUp};
    return {{lower, lower + width}, EPlace::CentredLow};
}
