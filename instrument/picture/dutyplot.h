#pragma once

#include "view/duty.h"

#include <span>
#include <string>

namespace dotweave {

/// Colours that a plot of the nozzle rows' work shows at most.
inline constexpr std::size_t DUTY_PLOT_COLORS_MAX = 24;

/// How much the nozzle rows work, as a picture: nozzle rows downwards, one panel for each colour, with the
/// share of pixels that a row prints to the right. All panels have the same scale, up to the busiest row.
/// @return the text of an SVG file
std::string DutyPlot_Svg(std::span<const SColorDuty> colors);

} // namespace dotweave
