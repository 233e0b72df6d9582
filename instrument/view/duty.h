#pragma once

#include <dotweave/maskdata_base.h>

#include <cstdint>
#include <vector>

namespace dotweave {

/// How much one nozzle row works when everything is printed in a full tone.
struct SRowDuty {
    std::int64_t dotCount = 0;      ///< over all band positions
    std::int64_t togetherCount = 0; ///< dots of this row that the next row fires at the same time
    int longestRun = 0;             ///< dots that it fires one after the other in one pass, at most
};

/// How much the nozzle rows of one colour work.
///
/// A mask repeats to the right, so a run may pass its edge. A row that fires in every column has a run of all
/// columns of a pass, although it never ends.
struct SColorDuty {
    std::vector<SRowDuty> rows;
    std::int64_t chanceCount = 0; ///< pixels that each row passes over: the same for all rows

    /// Share of the pixels under a row that it prints, 0 to 1.
    double Share(const SRowDuty& row) const;
    /// Mean share of all rows, 0 to 1.
    double MeanShare() const;
    /// Mean share of all rows divided by the share of the busiest: 1 when all work the same, 0 without dots.
    double Evenness() const;
    /// Rows that print nothing.
    int IdleCount() const;
    /// Longest run of any row.
    int LongestRun() const;
    /// Share of dots that the next row fires at the same time, of all rows that have a next one; 0 to 1.
    double TogetherShare() const;
};

/// Counts the dots of one colour over all lines and positions.
/// @param mask   a created object
/// @param color  0 to colorCount - 1, not checked
SColorDuty Duty_Count(const CMaskData_Base& mask, int color);

} // namespace dotweave
