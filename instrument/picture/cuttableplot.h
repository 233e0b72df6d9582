#pragma once

#include "dotweave/cuttable.h"

#include <span>
#include <string>

/// A cut table as a picture: nozzle rows downwards, the threshold scale across, one bar per row from its
/// lower to its upper bound. A row that prints nothing has no bar.
/// @param table     one entry per nozzle row
/// @param stepRows  rows that the paper advances per pass, >= 1; every multiple is marked
/// @return the text of an SVG file
std::string CutTablePlot_Svg(std::span<const SCutTable> table, int stepRows);
