#pragma once

#include <span>
#include <vector>

namespace dotweave {

/// Power of a pattern in one ring of frequencies.
struct SSpectrumRing {
    double frequency;    ///< middle of the ring, cycles per pixel
    int sampleCount;     ///< frequencies in it
    double power;        ///< mean power of them
    double anisotropyDb; ///< how much the power differs with direction: see Spectrum_Radial
};

/// The radially averaged power spectrum of a two-dimensional pattern, and its anisotropy.
///
/// Power at (j, k) is |X(j, k)|^2 / (width height), the mean of the pattern being taken off first, so white
/// noise of variance s has the power s in every ring. Rings are 1 / max(width, height) wide and reach from
/// half of that to the corner at 0.707 cycles per pixel; rings without a frequency are left out.
/// Anisotropy is the variance of the powers of a ring over the square of their mean, n - 1 in the
/// denominator, in decibels: 0 dB for white noise, with about -10 log10(n) where direction makes no
/// difference between n averaged patterns.
/// Source: R. Ulichney, "Digital Halftoning", MIT Press 1987, chapter 3.
/// @param pattern  height rows of width values, such as 0 and 1
/// @param width    >= 2
/// @param height   >= 2
/// @throws std::invalid_argument for other sides
std::vector<SSpectrumRing> Spectrum_Radial(std::span<const double> pattern, int width, int height);

} // namespace dotweave
