#include "slidingramp.h"

#include <algorithm>
#include <cstdint>

namespace dotweave {

void SlidingRamp_Fill(SCutTable* table, int rowCount, int stepRows, int level)
{
    // A band shorter than its step has no rows to meet: what it has prints the whole level.
    for (int i = 0; i < std::min(stepRows, rowCount); ++i) {
        table[i].upperLimit = static_cast<std::uint16_t>(level);
        table[rowCount - 1 - i].lowerLimit = 0;
    }
    const int slidingRows = rowCount - stepRows;
    for (int row = 0; row < slidingRows; ++row) {
        const std::int64_t shares = std::int64_t{slidingRows - row} * level;
        const auto bound = static_cast<std::uint16_t>(shares / (slidingRows + 1));
        table[stepRows + row].upperLimit = bound;
        table[row].lowerLimit = bound;
    }
}

} // namespace dotweave
