#include "sheet/inklayers.h"

#include <algorithm>
#include <cstddef>

namespace dotweave {

CInkLaw::CInkLaw(const SPatchOptions& options)
{
    const double share = options.inkReflectance / options.paperReflectance;
    m_reflectance[0] = options.paperReflectance;
    for (std::size_t layers = 1; layers < m_reflectance.size(); ++layers)
        m_reflectance[layers] =
            options.overlap == EOverlap::Union ? options.inkReflectance : m_reflectance[layers - 1] * share;
}

float CInkLaw::Reflectance(const CLayerCounts& counts) const
{
    double sum = 0;
    double points = 0;
    for (std::size_t layers = 0; layers < counts.size(); ++layers) {
        sum += counts[layers] * m_reflectance[layers];
        points += counts[layers];
    }
    return static_cast<float>(sum / points);
}

} // namespace dotweave
