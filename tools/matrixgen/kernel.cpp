#include "kernel.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace matrixgen {

CKernel::CKernel(int side, double sigma, double wideGain, double gain)
{
    const double wideSigma = 3.0 * sigma;
    const bool wide = wideGain > 0.0 && wideSigma <= WIDE_SIGMA_MAX_CELLS;
    const double reach = CUT_SIGMAS * (wide ? wideSigma : sigma);
    m_radius = std::clamp(static_cast<int>(reach), 1, side / 2 - 1);

    const double reachSquared = reach * reach;
    const auto value = [&](int dy, int dx) {
        const double squared = static_cast<double>(dy * dy + dx * dx);
        const double narrow = std::exp(-squared / (2.0 * sigma * sigma));
        return wide ? narrow + wideGain * std::exp(-squared / (2.0 * wideSigma * wideSigma)) : narrow;
    };

    double sum = 0.0;
    for (int dy = -m_radius; dy <= m_radius; ++dy) {
        const double rest = std::max(0.0, reachSquared - static_cast<double>(dy * dy));
        const int halfWidth = std::min(m_radius, static_cast<int>(std::sqrt(rest)));
        m_halfWidth.push_back(halfWidth);
        for (int dx = -halfWidth; dx <= halfWidth; ++dx)
            sum += value(dy, dx);
    }

    const double scale = gain * std::min(PEAK_MAX, TOTAL_MAX / sum);
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
