#pragma once

namespace dotweave {

/// From how near a print is looked at, and how fine the press is.
struct SViewing {
    double rowsPerInch = 600; ///< nozzle rows of the head per inch, 10 to 10000
    double distanceMm = 350;  ///< of the eye from the paper, 50 to 100000
};

/// The share of a pattern's amplitude that the eye takes in, 0 to 1.
/// V(f) = 2.2 (0.192 + 0.114 f) exp(-(0.114 f)^1.1) above its peak near 6.5 cycles per degree, 1 below it, so
/// that wide bands count in full.
/// Source: J. Sullivan, L. Ray, R. Miller, "Design of minimum visual modulation halftone patterns", IEEE
///         Transactions on Systems, Man, and Cybernetics 21 (1991) 33-38, after S. Daly (1987). Here it is the
///         same in all directions: their factor for oblique patterns is left out.
/// @param cyclesPerDegree  >= 0
double ContrastSensitivity(double cyclesPerDegree);

/// The frequency that the eye sees at a distance: cycles per mm times the mm of one degree,
/// distance * 2 tan(0.5 degrees).
double CyclesPerDegree(double cyclesPerMm, double distanceMm);

/// One nozzle row pitch in mm.
double RowPitchMm(const SViewing& viewing);

} // namespace dotweave
