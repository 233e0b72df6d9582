#pragma once

#include <cstdint>
#include <vector>

namespace matrixgen {

/// The shape of a kernel: what counts as a clump.
struct SKernelShape {
    double sigma;           ///< deviation in cells, > 0
    int flatness = 0;       ///< 0: a Gaussian; above, its spectrum is flat up to this order before it falls
    double wideGain = 0.0;  ///< peak of a wide Gaussian beside it, that of the narrow one being 1
    double wideRatio = 3.0; ///< deviation of the wide one, in sigma; >= 1
    double gain = 1.0;      ///< factor for all weights, >= 0
};

/// What one set cell adds to the energy of the cells around it: a disc of integer weights.
/// Shape: rows -radius..radius; row dy holds 2 * HalfWidth(dy) + 1 weights, column -HalfWidth first.
/// The weights are integers, so that adding and subtracting cancel exactly, in any order.
/// Source: docs/threshold-matrices.md, "The kernel".
class CKernel {
public:
    /// The narrow part keeps neighbours apart, the wide part evens out the density over several dots. A wide
    /// part broader than WIDE_SIGMA_MAX_CELLS is left out.
    /// @param side   side of the torus in cells, >= 8; the disc is cut so that it never meets itself
    /// @param shape  deviations and gains
    CKernel(int side, const SKernelShape& shape);

    [[nodiscard]] int Radius() const { return m_radius; }
    [[nodiscard]] int HalfWidth(int dy) const { return m_halfWidth[static_cast<unsigned>(dy + m_radius)]; }
    /// First weight of row dy, that of column -HalfWidth(dy).
    [[nodiscard]] const std::int32_t* Row(int dy) const
    {
        return m_weight.data() + m_rowStart[static_cast<unsigned>(dy + m_radius)];
    }
    /// Weight at an offset in cells; 0 outside the disc.
    [[nodiscard]] std::int32_t At(int dy, int dx) const;
    /// Weight of the cell itself.
    [[nodiscard]] std::int32_t Peak() const { return At(0, 0); }
    /// Sum of all weights: the energy of every cell when all cells are set.
    [[nodiscard]] std::int32_t Total() const { return m_total; }

    static constexpr double WIDE_SIGMA_MAX_CELLS = 9.0;
    static constexpr double CUT_SIGMAS = 3.7;       ///< radius of the disc, in the larger deviation
    static constexpr double CUT_PER_FLATNESS = 0.1; ///< a flatter kernel reaches further, by this share
    static constexpr double PEAK_MAX = 3e6;         ///< weight for a value of 1, where the sum permits it
    static constexpr double TOTAL_MAX = 400000000;  ///< leaves room for the bans in 32 bits

private:
    int m_radius = 0;
    std::vector<int> m_halfWidth;
    std::vector<std::size_t> m_rowStart;
    std::vector<std::int32_t> m_weight;
    std::int32_t m_total = 0;
};

} // namespace matrixgen
