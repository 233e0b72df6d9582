#include "quantise.h"

namespace matrixgen {

std::vector<std::uint16_t> LevelsOfRanks_Make(int count)
{
    constexpr std::int64_t LEVEL_MAX = QUANTISED_LEVEL_COUNT - 1;
    constexpr std::int64_t LEVEL_MIDDLE = LEVEL_MAX / 2;
    std::vector<std::uint16_t> levels(static_cast<std::size_t>(count), std::uint16_t{LEVEL_MIDDLE});
    for (std::int64_t rank = 0; rank < count; ++rank) {
        const std::int64_t level = rank * QUANTISED_LEVEL_COUNT / count;
        if (level >= LEVEL_MIDDLE)
            break;
        levels[static_cast<std::size_t>(rank)] = static_cast<std::uint16_t>(level);
        levels[static_cast<std::size_t>(count - 1 - rank)] = static_cast<std::uint16_t>(LEVEL_MAX - level);
    }
    return levels;
}

std::vector<std::uint16_t> Ranking_Quantise(const std::vector<int>& order)
{
    const std::vector<std::uint16_t> levels = LevelsOfRanks_Make(static_cast<int>(order.size()));
    std::vector<std::uint16_t> cells(order.size());
    for (std::size_t rank = 0; rank < order.size(); ++rank)
        cells[static_cast<std::size_t>(order[rank])] = levels[rank];
    return cells;
}

} // namespace matrixgen
