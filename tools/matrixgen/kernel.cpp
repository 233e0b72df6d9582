#include "kernel.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace matrixgen {

namespace {

/// exp(-x) with the Laguerre polynomial that makes its spectrum flat up to the given order; 1 at x = 0.
double Narrow_AtSquare(double x, int flatness)
{
    double term = 1.0;
    double polynomial = 1.0;
    for (int i = 0; i < flatness; ++i) {
        term *= -x * (flatness - i) / ((i + 2) * (i + 1));
        polynomial += term;
    }
    return polynomial * std::exp(-x);
}

} // namespace

CKernel::CKernel(int side, const SKernelShape& shape)
{
    const double wideSigma = shape.wideRatio * shape.sigma;
    const bool wide = shape.wideGain > 0.0 && wideSigma <= WIDE_SIGMA_MAX_CELLS;
    const double reach =
        CUT_SIGMAS * (wide ? wideSigma : shape.sigma * (1.0 + CUT_PER_FLATNESS * shape.flatness));
    m_radius = std::clamp(static_cast<int>(reach), 1, side / 2 - 1);

    const double reachSquared = reach * reach;
    const auto value = [&](int dy, int dx) {
        const auto squared = static_cast<double>(dy * dy + dx * dx);
        const double narrow = Narrow_AtSquare(squared / (2.0 * shape.sigma * shape.sigma), shape.flatness);
        return wide ? narrow + shape.wideGain * std::exp(-squared / (2.0 * wideSigma * wideSigma)) : narrow;
    };

    double sum = 0.0;
    for (int dy = -m_radius; dy <= m_radius; ++dy) {
        const double rest = std::max(0.0, reachSquared - static_cast<double>(dy * dy));
        const int halfWidth = std::min(m_radius, static_cast<int>(std::sqrt(rest)));
        m_halfWidth.push_back(halfWidth);
        for (int dx = -halfWidth; dx <= halfWidth; ++dx)
            sum += std::abs(value(dy, dx));
    }

    const double scale = shape.gain * std::min(PEAK_MAX, TOTAL_MAX / sum);
    for (int dy = -m_radius; dy <= m_radius; ++dy) {
        m_rowStart.push_back(m_weight.size());
        const int halfWidth = HalfWidth(dy);
        for (int dx = -halfWidth; dx <= halfWidth; ++dx) {
            m_weight.push_back(static_cast<std::int32_t>(std::lround(scale * value(dy, dx))));
            m_total += m_weight.back();
        }
    }
}

std::int32_t CKernel::At(int dy, int dx) const
{
    if (std::abs(dy) > m_radius || std::abs(dx) > HalfWidth(dy))
        return 0;
    return Row(dy)[dx + HalfWidth(dy)];
}

} // namespace matrixgen
