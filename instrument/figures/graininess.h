#pragma once

#include <span>

namespace dotweave {

/// A part of a print: L* row by row, and how it is seen.
struct SLightnessArea {
    std::span<const double> lightness; ///< height rows of width values
    int width;
    int height;
    double columnPitchMm;
    double linePitchMm;
    double distanceMm; ///< of the eye
};

/// How grainy an area is: the root mean square, weighted by the contrast sensitivity, of what is left when
/// the mean of every line and the mean of every column are taken off. In units of L*.
///   rms^2 = sum over (j, k), j > 0 and k > 0, of (V(f) |X(j, k)| / (width height))^2
/// where f is the length of the frequency vector. The frequencies with j = 0 or k = 0 are those means.
/// @param area  a side below 2 gives 0
double Graininess(const SLightnessArea& area);

} // namespace dotweave
