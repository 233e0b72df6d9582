#pragma once

#include <span>
#include <string>

namespace dotweave {

/// The lightness of a print from line to line, as a picture: place on the paper in mm to the right, L*
/// upwards, the mean dashed, every step of the paper marked.
/// @param lightness  L* of each line, at least one
/// @param pitchMm    from one line to the next
/// @param stepMm     of the paper
/// @return the text of an SVG file
std::string ProfilePlot_Svg(std::span<const double> lightness, double pitchMm, double stepMm);

} // namespace dotweave
