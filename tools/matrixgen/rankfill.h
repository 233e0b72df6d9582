#pragma once

#include "matrixrecipe.h"
#include "splitmix64.h"
#include "torusenergy.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace matrixgen {

/// Ranks the cells of a torus one after another. Each rank goes to the cell in the largest void. The ranking
/// is the order in which a growing tone prints the cells. The first half of the ranks takes the cells of a
/// half pattern, the second half the others. Threads: none.
class CRankFill {
public:
    /// @param side    of the torus in cells, even
    /// @param recipe  deviations, hard core and slab memory
    /// @param half    one byte for each cell, 1 for exactly half of them
    /// @param random  gives each cell the number that decides between equal voids
    CRankFill(int side, const SMatrixRecipe& recipe, std::vector<std::uint8_t> half, CSplitMix64& random);

    /// Ranks all cells.
    /// @return the cell of each rank, each cell once
    const std::vector<int>& Run();

    /// Cells ranked so far, the first printed one first.
    [[nodiscard]] const std::vector<int>& Order() const { return m_order; }
    /// Ranks count more cells, or up to the end.
    void Advance(int count);
    /// Computes all energies from the cells ranked so far, with the kernels in use. Energies are updated with
    /// every cell, so this alone changes none of them.
    void Recompute();
    [[nodiscard]] const CTorusEnergy& Energy() const { return m_energy; }

private:
    [[nodiscard]] double Share() const;
    [[nodiscard]] bool IsLow() const; // ranking the cells of the half pattern
    [[nodiscard]] double MinorityShare() const;
    [[nodiscard]] double Sigma() const;
    [[nodiscard]] double SlabFade() const;
    [[nodiscard]] double CoreRadius() const;
    [[nodiscard]] bool KernelsAreStale() const;
    void RenewKernels();

    void Place(int cell);
    void AddMinority();
    void BanAround(int cell);

    SMatrixRecipe m_recipe;
    std::vector<std::uint8_t> m_half;
    std::vector<std::uint8_t> m_tieBreak;
    std::vector<std::uint8_t> m_ranked; // one for each cell
    std::vector<std::uint8_t> m_inCore; // one for each cell
    std::vector<int> m_order;
    CTorusEnergy m_energy;
    int m_slabCells = 0;
    int m_slabFirst = 0; // rank of the oldest cell in the slab memory

    // as of the last RenewKernels
    double m_sigma = 0.0;
    double m_fade = 0.0;
    double m_coreRadius = 0.0;
    std::optional<CKernel> m_kernel;
    std::optional<CKernel> m_slabKernel; // none while the memory has not faded in
};

} // namespace matrixgen
