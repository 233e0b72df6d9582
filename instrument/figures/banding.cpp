#include "figures/banding.h"

#include "figures/contrastsensitivity.h"
#include "figures/fourier.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace dotweave {

SBanding Banding(const SProfile& profile)
{
    SBanding banding;
    const std::size_t count = profile.lightness.size();
    if (count < 2)
        return banding;
    CFourierSums sums = Fourier(profile.lightness);
    sums[0] = 0; // the mean
    const double length = static_cast<double>(count) * profile.pitchMm;
    double power = 0;
    double plainPower = 0;
    std::size_t peak = 0;
    for (std::size_t j = 1; j < count; ++j) {
        const auto waves = static_cast<double>(std::min(j, count - j));
        const double plain = std::abs(sums[j]) / static_cast<double>(count);
        sums[j] *= ContrastSensitivity(CyclesPerDegree(waves / length, profile.distanceMm));
        const double weighted = std::abs(sums[j]) / static_cast<double>(count);
        plainPower += plain * plain;
        power += weighted * weighted;
        // The upper half mirrors the lower one; alone in the middle is the shortest period.
        const double amplitude = 2 * j == count ? weighted : 2 * weighted;
        if (2 * j <= count && amplitude > banding.peakAmplitude) {
            banding.peakAmplitude = amplitude;
            peak = j;
        }
    }
    banding.rms = std::sqrt(power);
    banding.plainRms = std::sqrt(plainPower);
    if (peak > 0) {
        banding.peakPeriodMm = length / static_cast<double>(peak);
        banding.peakPeriodSteps = banding.peakPeriodMm / profile.stepMm;
    }
    const std::vector<double> seen = Fourier_Undo(sums);
    const auto worst = std::max_element(seen.begin(), seen.end(),
                                        [](double a, double b) { return std::abs(a) < std::abs(b); });
    banding.worstLine = static_cast<int>(worst - seen.begin());
    banding.worstDifference = *worst;
    return banding;
}

} // namespace dotweave
