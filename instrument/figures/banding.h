#pragma once

#include <span>
#include <vector>

namespace dotweave {

/// A lightness profile across bands or across streaks, and how it is seen.
struct SProfile {
    std::span<const double> lightness; ///< L* of each line, or of each column
    double pitchMm;                    ///< from one value to the next
    double stepMm;                     ///< what a period is counted in: the paper's step
    double distanceMm;                 ///< of the eye
};

/// How far a profile is from even, as the eye sees it. In units of L*.
struct SBanding {
    double rms = 0;           ///< root mean square of the profile, weighted by the contrast sensitivity
    double plainRms = 0;      ///< the same without the weights: the standard deviation
    double peakAmplitude = 0; ///< weighted amplitude of the strongest sinusoid in it
    double peakPeriodMm = 0;  ///< its period; 0 for a profile without any
    double peakPeriodSteps = 0;
    int worstLine = -1;         ///< index of the value that differs most from the mean, after weighting
    double worstDifference = 0; ///< its weighted difference from the mean; negative is darker
};

/// The figures of a profile of n values l(i) with the Fourier sums X(j) = sum of l(i) exp(-2 pi i j / n):
///   rms^2         = sum over j = 1 .. n - 1 of (V(f(j)) |X(j)| / n)^2, where f(j) is the frequency
///                   min(j, n - j) / (n pitch) and V the contrast sensitivity;
///   peakAmplitude = the largest 2 V |X(j)| / n (V |X| / n at j = n / 2), peakPeriod = n pitch / j;
///   worst line    = the largest value, signed, of the profile that is weighted by V and transformed back.
/// No window: a profile of whole steps repeats itself, and a single line counts the same wherever it is.
/// @param profile  fewer than two values give no banding
SBanding Banding(const SProfile& profile);

} // namespace dotweave
