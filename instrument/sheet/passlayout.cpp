#include "sheet/passlayout.h"

#include "view/maskview.h"

#include <cstddef>

namespace dotweave {

/// Rounds down, also below 0. @param divisor  >= 1
static std::int64_t Quotient_Floor(std::int64_t value, std::int64_t divisor)
{
    return value / divisor - (value % divisor < 0 ? 1 : 0);
}

CPassLayout::CPassLayout(const CMaskData_Base& mask)
    : m_rowCount(mask.MaskHeight_IncludeRes() / mask.YResPass()), m_stepLines(mask.StepHeight_IncludeRes()),
      m_advanceLines(mask.RealStepHeight_IncludeRes()), m_positionCount(CMaskView(mask).PositionCount()),
      m_xResPass(mask.XResPass()), m_yResPass(mask.YResPass()), m_maskWidth(mask.MaskWidth())
{
    for (int r = 0; r < m_yResPass; ++r) {
        for (int k = 0; k < m_xResPass; ++k)
            m_offsets.push_back(std::int64_t{mask.YResStep()[r]} + mask.XResStep()[k] + r);
    }
}

std::int64_t CPassLayout::SteadyLine_First() const
{
    // The last pass of band -1 reaches furthest down of all that a page does not have.
    return Line(Pass(-1), m_rowCount - 1) + 1;
}

SHeadPass CPassLayout::Pass(std::int64_t number) const
{
    const auto passesPerBand = static_cast<std::int64_t>(m_offsets.size());
    const std::int64_t band = Quotient_Floor(number, passesPerBand);
    const auto pass = static_cast<int>(number - band * passesPerBand);
    const std::int64_t cycle = Quotient_Floor(band, m_positionCount);
    return {number,
            band,
            static_cast<int>(band - cycle * m_positionCount),
            pass / m_xResPass,
            pass % m_xResPass,
            band * m_stepLines + m_offsets[static_cast<std::size_t>(pass)]};
}

std::vector<SHeadPass> CPassLayout::Passes(std::int64_t firstLine, std::int64_t lineCount) const
{
    std::vector<SHeadPass> passes;
    // Offsets grow from pass to pass, so the first pass of a band starts highest and the last one lowest.
    const std::int64_t height = std::int64_t{m_rowCount} * m_yResPass;
    const std::int64_t firstBand = Quotient_Floor(firstLine - m_offsets.back() - height, m_stepLines);
    const auto passesPerBand = static_cast<std::int64_t>(m_offsets.size());
    const std::int64_t end = firstLine + lineCount;
    for (std::int64_t number = firstBand * passesPerBand;; ++number) {
        const SHeadPass pass = Pass(number);
        if (pass.firstLine >= end)
            return passes;
        // The first line from firstLine on that the pass reaches, if its rows go so far.
        const std::int64_t above = firstLine - pass.firstLine;
        const std::int64_t row = above <= 0 ? 0 : Quotient_Floor(above + m_yResPass - 1, m_yResPass);
        if (row < m_rowCount && pass.firstLine + row * m_yResPass < end)
            passes.push_back(pass);
    }
}

int CPassLayout::Row(const SHeadPass& pass, std::int64_t line) const
{
    const std::int64_t below = line - pass.firstLine;
    if (below < 0 || below % m_yResPass != 0 || below / m_yResPass >= m_rowCount)
        return -1;
    return static_cast<int>(below / m_yResPass);
}

} // namespace dotweave
