#include "figures/lightness.h"

#include <cmath>

namespace dotweave {

// CIE 15:2004 in whole fractions: the straight part ends at (6/29)^3 and has the slope (29/3)^3.
static constexpr double STRAIGHT_END = 216.0 / 24389.0;
static constexpr double STRAIGHT_SLOPE = 24389.0 / 27.0;

double Lightness(double reflectance)
{
    if (reflectance <= STRAIGHT_END)
        return STRAIGHT_SLOPE * reflectance;
    return 116 * std::cbrt(reflectance) - 16;
}

double Lightness_Slope(double reflectance)
{
    if (reflectance <= STRAIGHT_END)
        return STRAIGHT_SLOPE;
    const double root = std::cbrt(reflectance);
    return 116 / (3 * root * root);
}

} // namespace dotweave
