#include "maskchoice.h"

#include <limits>

namespace dotweave {

static constexpr int INT_HIGHEST = std::numeric_limits<int>::max(); // the mode has its own limit

CMaskChoice::CMaskChoice(CLI::App& command, const std::string& without)
    : m_color(command, "--color", "colour plane; " + without, 0, INT_HIGHEST),
      m_position(command, "--position", "band position; " + without, 0, INT_HIGHEST)
{}

SMaskPlace CMaskChoice::First(const CMaskView& view) const
{
    return {IsColorGiven() ? m_color.Value(view.ColorCount() - 1) : 0,
            IsPositionGiven() ? m_position.Value(view.PositionCount() - 1) : 0};
}

std::vector<SMaskPlace> CMaskChoice::All(const CMaskView& view) const
{
    const auto [firstColor, firstPosition] = First(view);
    const int colorEnd = IsColorGiven() ? firstColor + 1 : view.ColorCount();
    const int positionEnd = IsPositionGiven() ? firstPosition + 1 : view.PositionCount();
    std::vector<SMaskPlace> places;
    for (int color = firstColor; color < colorEnd; ++color)
        for (int position = firstPosition; position < positionEnd; ++position)
            places.push_back({color, position});
    return places;
}

} // namespace dotweave
