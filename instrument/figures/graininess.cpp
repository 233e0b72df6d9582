#include "figures/graininess.h"

#include "figures/contrastsensitivity.h"
#include "figures/fourier.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <cstddef>

namespace dotweave {

/// The frequency of term j of n, in cycles per mm.
static double Frequency(int j, int n, double pitchMm)
{
    return std::min(j, n - j) / (n * pitchMm);
}

double Graininess(const SLightnessArea& area)
{
    if (area.width < 2 || area.height < 2)
        return 0;
    const CFourierSums sums = Fourier_Area(area.lightness, area.width, area.height);
    double power = 0;
    for (int k = 1; k < area.height; ++k) {
        const double frequencyY = Frequency(k, area.height, area.linePitchMm);
        for (int j = 1; j < area.width; ++j) {
            const double frequency = std::hypot(Frequency(j, area.width, area.columnPitchMm), frequencyY);
            const double weight = ContrastSensitivity(CyclesPerDegree(frequency, area.distanceMm));
            const auto term = static_cast<std::size_t>(k) * static_cast<std::size_t>(area.width) +
                              static_cast<std::size_t>(j);
            power += weight * weight * std::norm(sums[term]);
        }
    }
    return std::sqrt(power) / (static_cast<double>(area.width) * area.height);
}

} // namespace dotweave
