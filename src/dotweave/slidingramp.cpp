#include "slidingramp.h"

#include <algorithm>
#include <cstdint>

namespace dotweave {

void SlidingRamp_Fill(SCutTable* table, int rowCount, int stepRows, int level)
{
    // A band shorter than its step has no rows that meet: each prints the whole level.
    const int wholeRows = std::clamp(stepRows, 0, std::max(rowCount, 0));
    for (int i = 0; i < wholeRows; ++i) {
        table[i].upperLimit = static_cast<std::uint16_t>(level);
        table[rowCount - 1 - i].lowerLimit = 0;
    }
    const std::int64_t slidingRows = std::int64_t{rowCount} - wholeRows;
    for (std::int64_t row = 0; row < slidingRows; ++row) {
        const std::int64_t shares = (slidingRows - row) * level;
        const auto bound = static_cast<std::uint16_t>(shares / (slidingRows + 1));
        table[wholeRows + row].upperLimit = bound;
        table[row].lowerLimit = bound;
    }
}

} // namespace dotweave
