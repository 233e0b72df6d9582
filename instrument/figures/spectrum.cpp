#include "figures/spectrum.h"

#include "figures/fourier.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <cstddef>
#include <numeric>
#include <stdexcept>

namespace dotweave {

namespace {

/// Decibels of a ratio that may be 0.
constexpr double DECIBELS_LEAST = -99;

double Decibels(double ratio)
{
    return ratio > 0 ? std::max(10 * std::log10(ratio), DECIBELS_LEAST) : DECIBELS_LEAST;
}

SSpectrumRing Ring_Make(double frequency, const std::vector<double>& powers)
{
    const auto count = static_cast<double>(powers.size());
    const double mean = std::accumulate(powers.begin(), powers.end(), 0.0) / count;
    double variance = 0;
    for (const double power : powers)
        variance += (power - mean) * (power - mean);
    variance = powers.size() > 1 ? variance / (count - 1) : 0;
    const double anisotropy = mean > 0 ? variance / (mean * mean) : 0;
    return {frequency, static_cast<int>(powers.size()), mean, Decibels(anisotropy)};
}

} // namespace

std::vector<SSpectrumRing> Spectrum_Radial(std::span<const double> pattern, int width, int height)
{
    if (width < 2 || height < 2 ||
        pattern.size() != static_cast<std::size_t>(width) * static_cast<std::size_t>(height))
        throw std::invalid_argument("a spectrum needs a pattern of at least 2 by 2 values");
    const CFourierSums sums = Fourier_Area(pattern, width, height);
    const double ringWidth = 1.0 / std::max(width, height);
    std::vector<std::vector<double>> rings;
    const auto cellCount = static_cast<double>(pattern.size());
    for (std::size_t i = 1; i < sums.size(); ++i) { // term 0 is the mean
        const auto j = static_cast<int>(i % static_cast<std::size_t>(width));
        const auto k = static_cast<int>(i / static_cast<std::size_t>(width));
        const double frequency = std::hypot(static_cast<double>(std::min(j, width - j)) / width,
                                            static_cast<double>(std::min(k, height - k)) / height);
        const auto ring = static_cast<std::size_t>(std::lround(frequency / ringWidth));
        rings.resize(std::max(rings.size(), ring + 1));
        rings[ring].push_back(std::norm(sums[i]) / cellCount);
    }
    std::vector<SSpectrumRing> spectrum;
    for (std::size_t ring = 0; ring < rings.size(); ++ring) {
        if (!rings[ring].empty())
            spectrum.push_back(Ring_Make(static_cast<double>(ring) * ringWidth, rings[ring]));
    }
    return spectrum;
}

} // namespace dotweave
