#pragma once

namespace dotweave {

/// Lightness L* of CIE 1976 (CIE 15:2004): 116 cbrt(Y) - 16 above (6/29)^3, 903.3 Y below it.
/// @param reflectance  share of the light of a perfect white, 0 to 1
/// @return 0 to 100
double Lightness(double reflectance);

/// How much L* changes with the reflectance: the derivative of Lightness.
double Lightness_Slope(double reflectance);

} // namespace dotweave
