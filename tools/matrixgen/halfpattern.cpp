#include "halfpattern.h"

#include "torusenergy.h"

#include <array>
#include <cmath>
#include <numeric>
#include <utility>

namespace matrixgen {

namespace {

using CellFlags = std::vector<std::uint8_t>;

constexpr std::int32_t BAN = 1 << 30; // above every energy, so that a banned cell is never the lowest

std::size_t Index(int value)
{
    return static_cast<std::size_t>(value);
}

CellFlags CellFlags_RandomHalf(int cellCount, CSplitMix64& random)
{
    std::vector<int> cells(Index(cellCount));
    std::iota(cells.begin(), cells.end(), 0);
    CellFlags set(Index(cellCount), 0);
    for (int i = 0; i < cellCount / 2; ++i) { // the first half of a shuffle
        std::swap(cells[Index(i)], cells[Index(i + random.Below(cellCount - i))]);
        set[Index(cells[Index(i)])] = 1;
    }
    return set;
}

/// Void-and-cluster: the set cell in the tightest cluster moves to the largest void, as long as that lowers
/// the energy. Voids and clusters are two energies of opposite sign, so both are found as a lowest cell.
class CRelaxation {
public:
    CRelaxation(int side, const CKernel& kernel, CellFlags& set)
        : m_kernel(kernel), m_set(set), m_void(side), m_cluster(side)
    {
        for (int cell = 0; cell < m_void.CellCount(); ++cell) {
            m_cluster.Offset(cell, BAN);
            if (m_set[Index(cell)] != 0)
                Set(cell);
        }
    }

    void Run()
    {
        for (;;) {
            const int cluster = m_cluster.Lowest();
            Clear(cluster);
            const int largestVoid = m_void.Lowest();
            if (m_void.Value(largestVoid) >= m_void.Value(cluster)) {
                Set(cluster); // no better place
                return;
            }
            Set(largestVoid);
        }
    }

private:
    void Set(int cell)
    {
        m_set[Index(cell)] = 1;
        m_void.Add(cell, m_kernel);
        m_void.Offset(cell, BAN);
        m_cluster.Subtract(cell, m_kernel);
        m_cluster.Offset(cell, -BAN);
    }

    void Clear(int cell)
    {
        m_set[Index(cell)] = 0;
        m_void.Subtract(cell, m_kernel);
        m_void.Offset(cell, -BAN);
        m_cluster.Add(cell, m_kernel);
        m_cluster.Offset(cell, BAN);
    }

    const CKernel& m_kernel;
    CellFlags& m_set;
    CTorusEnergy m_void;
    CTorusEnergy m_cluster;
};

/// Draws -ln(u) in steps of 1 / ONE, with u uniform in (0, 1). A rise is accepted when it is below the
/// temperature times this number. That is the usual rule exp(-rise / temperature) > u without a float in the
/// loop.
class CExponentialDraw {
public:
    static constexpr std::int64_t ONE = 1 << 16;

    CExponentialDraw()
    {
        for (std::size_t i = 0; i < m_table.size(); ++i) {
            const double u = (static_cast<double>(i) + 0.5) / static_cast<double>(m_table.size());
            m_table[i] = static_cast<std::int64_t>(std::llround(-std::log(u) * static_cast<double>(ONE)));
        }
    }

    [[nodiscard]] std::int64_t Draw(CSplitMix64& random) const
    {
        return m_table[Index(random.Below(static_cast<int>(m_table.size())))];
    }

private:
    std::array<std::int64_t, 4096> m_table{};
};

/// Annealing: set cells step to one of their eight neighbours, at falling temperature.
class CAnnealing {
public:
    CAnnealing(int side, const CKernel& kernel, CellFlags& set, CSplitMix64& random)
        : m_kernel(kernel), m_set(set), m_random(random), m_energy(side)
    {
        for (int cell = 0; cell < m_energy.CellCount(); ++cell) {
            if (m_set[Index(cell)] == 0)
                continue;
            m_cells.push_back(cell);
            m_energy.Add(cell, m_kernel);
        }
    }

    /// @param tries        moves to try
    /// @param temperature  in units of the kernel's weights; 0 accepts no rise
    void Sweep(std::int64_t tries, std::int64_t temperature)
    {
        for (std::int64_t i = 0; i < tries; ++i)
            Try(temperature);
    }

    [[nodiscard]] int SetCount() const { return static_cast<int>(m_cells.size()); }

private:
    struct SStep {
        int dy, dx;
    };
    static constexpr std::array<SStep, 8> STEPS = {
        {{-1, -1}, {-1, 0}, {-1, 1}, {0, -1}, {0, 1}, {1, -1}, {1, 0}, {1, 1}}};

    void Try(std::int64_t temperature)
    {
        const int side = m_energy.Side();
        int& from = m_cells[Index(m_random.Below(SetCount()))];
        const SStep step = STEPS[Index(m_random.Below(static_cast<int>(STEPS.size())))];
        const int row = (from / side + step.dy + side) % side;
        const int column = (from % side + step.dx + side) % side;
        const int target = row * side + column;
        if (m_set[Index(target)] != 0)
            return;
        // both energies contain the cell's own weight, which must not count
        const std::int64_t energyThere = m_energy.Value(target) - m_kernel.At(step.dy, step.dx);
        const std::int64_t energyHere = m_energy.Value(from) - m_kernel.Peak();
        const std::int64_t rise = energyThere - energyHere;
        if (rise > 0 && rise * CExponentialDraw::ONE >= temperature * m_exponential.Draw(m_random))
            return;
        m_energy.Subtract(from, m_kernel);
        m_energy.Add(target, m_kernel);
        m_set[Index(from)] = 0;
        m_set[Index(target)] = 1;
        from = target;
    }

    const CKernel& m_kernel;
    CellFlags& m_set;
    CSplitMix64& m_random;
    CTorusEnergy m_energy;
    std::vector<int> m_cells;
    CExponentialDraw m_exponential;
};

/// Falls geometrically from the hottest to the coolest. The last sweep is at 0.
std::int64_t Temperature_OfSweep(const SMatrixRecipe& recipe, int sweep, std::int32_t peak)
{
    const int coolest = recipe.annealSweeps - 2;
    if (sweep > coolest)
        return 0;
    const double fall = coolest > 0 ? static_cast<double>(sweep) / coolest : 0.0;
    const double share = recipe.annealHottest * std::pow(recipe.annealCoolest / recipe.annealHottest, fall);
    return std::llround(share * peak);
}

} // namespace

std::vector<std::uint8_t> HalfPattern_Make(int side, const SMatrixRecipe& recipe, CSplitMix64& random)
{
    CellFlags set = CellFlags_RandomHalf(side * side, random);
    const CKernel relaxKernel(side, recipe.relaxShape);
    CRelaxation(side, relaxKernel, set).Run();

    const CKernel annealKernel(side, recipe.annealShape);
    CAnnealing annealing(side, annealKernel, set, random);
    const std::int64_t tries = static_cast<std::int64_t>(recipe.annealTriesPerCell) * annealing.SetCount();
    for (int sweep = 0; sweep < recipe.annealSweeps; ++sweep)
        annealing.Sweep(tries, Temperature_OfSweep(recipe, sweep, annealKernel.Peak()));
    return set;
}

} // namespace matrixgen
