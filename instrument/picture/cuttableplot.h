#pragma once

#include "view/cuttableview.h"

#include <string>

namespace dotweave {

/// A cut table as a picture: nozzle rows downwards, the threshold scale across, one bar per row from its
/// lower to its upper bound. A row that prints nothing has no bar. Every step of the paper is marked.
/// @return the text of an SVG file
std::string CutTablePlot_Svg(const SCutTableView& view);

} // namespace dotweave
