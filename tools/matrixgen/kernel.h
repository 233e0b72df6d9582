#pragma once

#include <cstdint>
#include <vector>

namespace matrixgen {

/// What one set cell adds to the energy of the cells around it: a disc of integer weights.
/// Shape: rows -radius..radius; row dy holds 2 * HalfWidth(dy) + 1 weights, column -HalfWidth first.
/// Integers, so that adding and taking away cancel exactly and no summation order can matter.
class CKernel {
public:
    /// A Gaussian of the given deviation with a wider one of three times the deviation below it. The narrow
    /// one keeps neighbours apart, the wide one evens out the density over several dots.
    /// @param side      side of the torus in cells, >= 8; the disc is cut so that it never meets itself
    /// @param sigma     deviation in cells, > 0
    /// @param wideGain  peak of the wide Gaussian, the narrow one's being 1; not used where it would be
    ///                  broader than WIDE_SIGMA_MAX_CELLS
    /// @param gain      factor on all weights, >= 0
    CKernel(int side, double sigma, double wideGain, double gain = 1.0);

    int Radius() const { return m_radius; }
    int HalfWidth(int dy) const { return m_halfWidth[static_cast<std::size_t>(dy + m_radius)]; }
    /// First weight of row dy, that of column -HalfWidth(dy).
    const std::int32_t* Row(int dy) const
    {
        return m_weight.data() + m_rowStart[static_cast<std::size_t>(dy + m_radius)];
    }
    /// Weight at an offset in cells; 0 outside the disc.
    std::int32_t At(int dy, int dx) const;
    /// Weight of the cell itself.
    std::int32_t Peak() const { return At(0, 0); }
    /// Sum of all weights: the energy of every cell when all cells are set.
    std::int32_t Total() const { return m_total; }

    static constexpr double WIDE_SIGMA_MAX_CELLS = 9.0;
    static constexpr double CUT_SIGMAS = 3.7;      ///< radius of the disc, in the larger deviation
    static constexpr double PEAK_MAX = 3e6;        ///< weight that stands for 1, where the sum allows it
    static constexpr double TOTAL_MAX = 400000000; ///< leaves room for the bans in 32 bits

private:
    int m_radius = 0;
    std::vector<int> m_halfWidth;
    std::vector<std::size_t> m_rowStart;
    std::vector<std::int32_t> m_weight;
    std::int32_t m_total = 0;
};

} // namespace matrixgen
