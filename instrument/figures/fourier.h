#pragma once

#include <complex>
#include <span>
#include <vector>

/// @file
/// Fourier sums in double precision, of any length. Nothing is shared between calls, so any number of threads
/// may call them at once.

namespace dotweave {

using CFourierSums = std::vector<std::complex<double>>;

/// X(j) = sum over i of values(i) exp(-2 pi i j / n).
CFourierSums Fourier(std::span<const double> values);

/// The real part of the sum over j of sums(j) exp(2 pi i j / n), over n: undoes Fourier.
std::vector<double> Fourier_Undo(const CFourierSums& sums);

/// X(j, k) of height rows of width values, in the same layout: row k, column j.
CFourierSums Fourier_Area(std::span<const double> values, int width, int height);

} // namespace dotweave
