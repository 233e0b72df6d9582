#pragma once

#include "sheet/printedpatch.h"

#include <array>

namespace dotweave {

/// More layers of ink than these count as these.
inline constexpr int LAYERS_MAX = 15;

/// Sample points of an area by how many layers of ink they have.
using CLayerCounts = std::array<int, LAYERS_MAX + 1>;

/// The reflectance of an area of sample points.
/// With n layers on it paper reflects paper * (ink / paper)^n; with EOverlap::Union every n above 0 counts as 1.
/// An area reflects the mean of its points.
class CInkLaw {
public:
    explicit CInkLaw(const SPatchOptions& options);

    float Reflectance(const CLayerCounts& counts) const;

private:
    std::array<double, LAYERS_MAX + 1> m_reflectance; ///< by layers
};

} // namespace dotweave
