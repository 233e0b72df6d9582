#pragma once

#include "dotweave/cuttable.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <ostream>
#include <vector>

/// @file
/// Cut tables as the tests look at them: built between guard entries, read as ranges, held against the law
/// that the rows of one image row share the threshold scale without gap or overlap.

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

/// What an entry holds before a builder reaches it: an empty range that no builder makes.
inline constexpr SRange UNWRITTEN = {54321, 12345};

/// Fills a table of `count` entries by `build(SCutTable*)` and fails when entries before or behind it change.
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
        << "written in front of the table";
    EXPECT_EQ(CRanges(ranges.end() - GUARD_COUNT, ranges.end()), CRanges(GUARD_COUNT, UNWRITTEN))
        << "written behind the table";
    return {ranges.begin() + GUARD_COUNT, ranges.end() - GUARD_COUNT};
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

/// Whether the ranges print every threshold of (0, level] once and no other one. Empty ranges print nothing.
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
                   << range << " does not follow on " << reached << " in " << testing::PrintToString(asGiven);
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

/// Zones of `rowsPerPass` rows whose passes form groups, each of which shares the scale; the last group takes the
/// passes left over.
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

/// Rows that slide from the level down to 0, by the linear formula: row r prints up to (rows - r) / (m + 1) of the
/// level and above (m - r) / (m + 1) of it, cut off at both ends, where m = rows - step.
/// @param rows  at least `step`
inline CRanges RampByFormula(int rows, int step, int level)
{
    CRanges ramp;
    const int m = rows - step;
    for (int r = 0; r < rows; ++r)
        ramp.push_back(
            {r < m ? (m - r) * level / (m + 1) : 0, r < step ? level : (rows - r) * level / (m + 1)});
    return ramp;
}
