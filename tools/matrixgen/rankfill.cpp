#include "rankfill.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace matrixgen {

namespace {

// Above every energy: the total of both kernels is below 2^29, and both bans added to it give less than 2^31.
constexpr std::int32_t TAKEN_BAN = 1 << 30;
constexpr std::int32_t CORE_BAN = 1 << 29; // a cell in the core is still better than a taken one

constexpr int TIE_BREAK_COUNT = 64;

constexpr double SPARSE_SHARE = 0.01;
constexpr double DENSE_SHARE = 0.10;
constexpr double SIGMA_STALE = 0.03; // relative change that needs a new kernel
constexpr double FADE_STALE = 1.0 / 16.0;
constexpr double CORE_TO_SHARE = 0.20;
constexpr double CORE_AHEAD = 1.03;          // the core is sized for the share just ahead
constexpr double HEXAGONAL_SPACING = 1.0746; // sqrt(2 / sqrt(3)): spacing of a hexagonal grid of share 1

std::size_t Index(int value)
{
    return static_cast<std::size_t>(value);
}

double Sigma_OfShare(double share, const SSigmaRule& rule)
{
    if (share <= 0.0)
        return HUGE_VAL;
    const double way =
        std::clamp(std::log(share / SPARSE_SHARE) / std::log(DENSE_SHARE / SPARSE_SHARE), 0.0, 1.0);
    return (rule.sparse + (rule.dense - rule.sparse) * way) / std::sqrt(share);
}

} // namespace

CRankFill::CRankFill(int side, const SMatrixRecipe& recipe, std::vector<std::uint8_t> half,
                     CSplitMix64& random)
    : m_recipe(recipe), m_half(std::move(half)), m_tieBreak(m_half.size()), m_ranked(m_half.size()),
      m_inCore(m_half.size()), m_energy(side), m_slabCells(side * side / recipe.slab.windowDivisor)
{
    for (std::uint8_t& value : m_tieBreak)
        value = static_cast<std::uint8_t>(random.Below(TIE_BREAK_COUNT));
    m_order.reserve(m_half.size());
    RenewKernels();
}

double CRankFill::Share() const
{
    return static_cast<double>(m_order.size()) / static_cast<double>(m_half.size());
}

bool CRankFill::IsLow() const
{
    return 2 * m_order.size() < m_half.size();
}

double CRankFill::MinorityShare() const
{
    return std::min(Share(), 1.0 - Share());
}

double CRankFill::Sigma() const
{
    const double wanted = Sigma_OfShare(MinorityShare(), IsLow() ? m_recipe.lowSigma : m_recipe.highSigma);
    return std::clamp(wanted, m_recipe.sigmaMin, m_recipe.sigmaMax);
}

double CRankFill::SlabFade() const
{
    const SSlabMemory& slab = m_recipe.slab;
    const double from = IsLow() ? slab.lowFadeFrom : slab.highFadeFrom;
    const double to = IsLow() ? slab.lowFadeTo : slab.highFadeTo;
    return std::clamp((MinorityShare() - from) / (to - from), 0.0, 1.0);
}

double CRankFill::CoreRadius() const
{
    if (m_order.empty() || Share() >= CORE_TO_SHARE)
        return 0.0;
    const double spacing = HEXAGONAL_SPACING / std::sqrt(CORE_AHEAD * Share());
    return std::min(m_recipe.core * spacing, m_energy.Side() / 2.0 - 1.0);
}

bool CRankFill::KernelsAreStale() const
{
    const double fade = SlabFade();
    return std::abs(Sigma() - m_sigma) > SIGMA_STALE * m_sigma || std::abs(fade - m_fade) > FADE_STALE ||
           (fade != m_fade && (fade == 0.0 || fade == 1.0)) ||
           std::abs(CoreRadius() - m_coreRadius) > SIGMA_STALE * m_coreRadius;
}

void CRankFill::RenewKernels()
{
    const int side = m_energy.Side();
    m_sigma = Sigma();
    m_fade = SlabFade();
    m_coreRadius = CoreRadius();
    SKernelShape shape = m_recipe.fillShape;
    shape.sigma = m_sigma;
    m_kernel.emplace(side, shape);
    m_slabKernel.reset();
    if (m_fade > 0.0) {
        SKernelShape slabShape = m_recipe.slab.shape;
        slabShape.gain *= m_fade;
        m_slabKernel.emplace(side, slabShape);
    }
    Recompute();
}

void CRankFill::Recompute()
{
    AddMinority();
    const int ranked = static_cast<int>(m_order.size());
    m_slabFirst = std::max(0, ranked - m_slabCells);
    if (m_slabKernel)
        for (int rank = m_slabFirst; rank < ranked; ++rank)
            m_energy.Add(m_order[Index(rank)], *m_slabKernel);

    const std::uint8_t now = IsLow() ? 1 : 0; // which side of the half pattern is being ranked
    for (int cell = 0; cell < m_energy.CellCount(); ++cell)
        if (m_ranked[Index(cell)] != 0 || m_half[Index(cell)] != now)
            m_energy.Offset(cell, TAKEN_BAN);
    std::fill(m_inCore.begin(), m_inCore.end(), std::uint8_t{0});
    if (m_coreRadius > 0.0)
        for (const int cell : m_order)
            BanAround(cell);
}

/// Adds the minority. Above one half, that is the energy of a full torus less that of the unranked cells.
void CRankFill::AddMinority()
{
    if (Share() <= 0.5) {
        m_energy.Reset(0, m_tieBreak);
        for (const int cell : m_order)
            m_energy.Add(cell, *m_kernel);
        return;
    }
    m_energy.Reset(m_kernel->Total(), m_tieBreak);
    for (int cell = 0; cell < m_energy.CellCount(); ++cell)
        if (m_ranked[Index(cell)] == 0)
            m_energy.Subtract(cell, *m_kernel);
}

void CRankFill::BanAround(int cell)
{
    const int side = m_energy.Side();
    const int radius = static_cast<int>(m_coreRadius);
    for (int dy = -radius; dy <= radius; ++dy) {
        for (int dx = -radius; dx <= radius; ++dx) {
            if (static_cast<double>(dy * dy + dx * dx) >= m_coreRadius * m_coreRadius)
                continue;
            const int near = (cell / side + dy + side) % side * side + (cell % side + dx + side) % side;
            if (m_inCore[Index(near)] != 0)
                continue;
            m_inCore[Index(near)] = 1;
            m_energy.Offset(near, CORE_BAN);
        }
    }
}

void CRankFill::Place(int cell)
{
    m_order.push_back(cell);
    m_ranked[Index(cell)] = 1;
    m_energy.Offset(cell, TAKEN_BAN);
    m_energy.Add(cell, *m_kernel);
    if (m_slabKernel)
        m_energy.Add(cell, *m_slabKernel);
    if (static_cast<int>(m_order.size()) - m_slabFirst > m_slabCells) {
        if (m_slabKernel)
            m_energy.Subtract(m_order[Index(m_slabFirst)], *m_slabKernel);
        ++m_slabFirst;
    }
    if (m_coreRadius > 0.0)
        BanAround(cell);
}

void CRankFill::Advance(int count)
{
    const std::size_t end = std::min(m_order.size() + Index(count), m_half.size());
    while (m_order.size() < end) {
        Place(m_energy.Lowest());
        if (2 * m_order.size() == m_half.size() || KernelsAreStale())
            RenewKernels();
    }
}

const std::vector<int>& CRankFill::Run()
{
    Advance(m_energy.CellCount());
    return m_order;
}

} // namespace matrixgen
