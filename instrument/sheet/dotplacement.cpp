#include "sheet/dotplacement.h"

#include "sheet/chance.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <stdexcept>
#include <string>

namespace dotweave {

namespace {

/// How many standard deviations of one move a random walk is taken never to go back.
constexpr double WALK_SIGMAS = 100;

double Draw(const SSheetErrors& errors, double sigma, EChance what, std::uint64_t which)
{
    return sigma == 0 ? 0 : sigma * Chance_Normal(errors.seed, what, which);
}

std::vector<SRowPlace> Rows_Make(const SSheetErrors& errors, int rowCount)
{
    std::vector<SRowPlace> rows(static_cast<std::size_t>(rowCount));
    const double middle = (rowCount - 1) / 2.0;
    for (std::size_t row = 0; row < rows.size(); ++row) {
        rows[row] = {errors.tilt * (static_cast<double>(row) - middle) +
                         Draw(errors, errors.rowSigmaX, EChance::RowX, row),
                     Draw(errors, errors.rowSigmaY, EChance::RowY, row), 1};
    }
    for (const SWeakRow& weak : errors.weakRows)
        rows[static_cast<std::size_t>(weak.row)].volume = weak.volume;
    for (const int row : errors.deadRows)
        rows[static_cast<std::size_t>(row)].volume = 0;
    return rows;
}

} // namespace

CDotPlacement::CDotPlacement(const CPassLayout& layout, const SSheetErrors& errors)
    : m_layout(layout), m_errors(errors)
{
    if (const std::string reason = SheetErrors_Refusal(errors, layout.RowCount()); !reason.empty())
        throw std::invalid_argument(reason);
    const double move = static_cast<double>(layout.AdvanceLines()) / layout.YResPass();
    if (move + errors.advanceConstant <= 0)
        throw std::invalid_argument("advanceConstant " + std::to_string(errors.advanceConstant) +
                                    " takes back the whole move of " + std::to_string(move) + " row pitches");
    m_rows = Rows_Make(errors, layout.RowCount());
    for (const SRowPlace& row : m_rows)
        m_rowShiftYMax = std::max(m_rowShiftYMax, std::abs(row.shiftY));
}

double CDotPlacement::MoveError(std::int64_t number) const
{
    double error = m_errors.advanceConstant;
    error += Draw(m_errors, m_errors.advanceSigma, EChance::Move, static_cast<std::uint64_t>(number));
    if (m_errors.advancePeriodic != 0) {
        const double turns = static_cast<double>(number) / m_errors.periodMoves + m_errors.periodPhase;
        error += m_errors.advancePeriodic * std::sin(2 * std::numbers::pi * turns);
    }
    return error;
}

std::vector<SPlacedPass> CDotPlacement::Passes(std::int64_t firstLine, std::int64_t lineCount) const
{
    const double pitchLines = m_layout.YResPass();
    const auto first = static_cast<double>(firstLine);
    const auto end = static_cast<double>(firstLine + lineCount);
    const double headLines = m_layout.RowCount() * pitchLines;
    // So far the paper may be carried back again: what the periodic error can add up to, and chance.
    const double retreatLines =
        pitchLines * (m_errors.advancePeriodic * m_errors.periodMoves + WALK_SIGMAS * m_errors.advanceSigma);

    std::vector<SPlacedPass> above, passes;
    const auto top = [pitchLines](const SPlacedPass& one) {
        return static_cast<double>(one.pass.firstLine) + one.shift * pitchLines;
    };
    const auto reaches = [&](const SPlacedPass& one) {
        return top(one) < end && top(one) + headLines > first;
    };
    // Upwards from pass 0 until everything is above the lines, then downwards until everything is below them.
    SPlacedPass one = {m_layout.Pass(0), 0};
    while (top(one) + headLines + retreatLines > first) {
        one.shift -= MoveError(one.pass.number);
        one.pass = m_layout.Pass(one.pass.number - 1);
        if (reaches(one))
            above.push_back(one);
    }
    passes.assign(above.rbegin(), above.rend());
    for (one = {m_layout.Pass(0), 0}; top(one) - retreatLines < end;) {
        if (reaches(one))
            passes.push_back(one);
        one.pass = m_layout.Pass(one.pass.number + 1);
        one.shift += MoveError(one.pass.number);
    }
    return passes;
}

SRowPlace CDotPlacement::Row(const SPlacedPass& pass, int row) const
{
    SRowPlace place = m_rows[static_cast<std::size_t>(row)];
    place.shiftX += pass.pass.number % 2 != 0 ? m_errors.bidirectional : 0;
    place.shiftY += pass.shift;
    return place;
}

std::uint64_t CDotPlacement::VolumeBits(const SHeadPass& pass, int row, std::int64_t column) const
{
    // A row of a pass has an own number; columns are counted from far left of the paper on.
    const auto print = static_cast<std::uint64_t>(pass.number * m_layout.RowCount() + row);
    return Chance_Bits(m_errors.seed, EChance::Volume, print, static_cast<std::uint64_t>(column));
}

} // namespace dotweave
