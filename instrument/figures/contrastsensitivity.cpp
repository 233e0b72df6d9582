#include "figures/contrastsensitivity.h"

#include <cmath>
#include <numbers>

namespace dotweave {

static constexpr double MM_PER_INCH = 25.4;

static double Sensitivity_Formula(double frequency)
{
    return 2.2 * (0.192 + 0.114 * frequency) * std::exp(-std::pow(0.114 * frequency, 1.1));
}

double ContrastSensitivity(double cyclesPerDegree)
{
    // Where the formula's derivative is 0: 1 = 1.1 (0.192 + u) u^0.1 with u = 0.114 f.
    static constexpr double PEAK_FREQUENCY = 6.5292;
    if (cyclesPerDegree <= PEAK_FREQUENCY)
        return 1;
    return Sensitivity_Formula(cyclesPerDegree);
}

double CyclesPerDegree(double cyclesPerMm, double distanceMm)
{
    return cyclesPerMm * 2 * distanceMm * std::tan(0.5 * std::numbers::pi / 180);
}

double RowPitchMm(const SViewing& viewing)
{
    return MM_PER_INCH / viewing.rowsPerInch;
}

} // namespace dotweave
