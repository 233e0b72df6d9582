#include "sheet/idealsheet.h"

#include "view/maskview.h"

#include <algorithm>
#include <limits>
#include <stdexcept>
#include <string>

namespace dotweave {

SSheetWindow SheetWindow_Cycle(const CPassLayout& layout)
{
    const std::int64_t lines = layout.CycleLines();
    if (lines > std::numeric_limits<int>::max())
        throw std::length_error("the sheet repeats after " + std::to_string(lines) + " lines only");
    return {layout.SteadyLine_First(), static_cast<int>(lines), layout.MaskWidth()};
}

CIdealSheet::CIdealSheet(const CMaskData_Base& mask, int color, const SSheetWindow& window,
                         const CBitImage* image, std::span<const int> deadRows)
    : m_mask(mask), m_color(color), m_layout(mask), m_window(window),
      m_isDead(static_cast<std::size_t>(m_layout.RowCount()))
{
    if (window.lineCount < 1 || window.columnCount < 1)
        throw std::invalid_argument("a window of the sheet needs at least one pixel");
    for (const int row : deadRows) {
        if (row >= 0 && row < m_layout.RowCount())
            m_isDead[static_cast<std::size_t>(row)] = 1;
    }
    m_passes = m_layout.Passes(window.firstLine, window.lineCount);
    const std::size_t pixelCount = Cell(window.lineCount, 0);
    m_counts.assign(pixelCount, 0);
    m_firstPasses.assign(pixelCount, -1);

    const auto width = static_cast<std::size_t>(window.columnCount);
    std::vector<std::uint8_t> wanted(width, 1);
    std::vector<std::uint8_t> maskPixels(static_cast<std::size_t>(m_layout.MaskWidth()));
    const std::int64_t headLines = m_layout.Line({}, m_layout.RowCount());
    std::size_t firstPass = 0; // passes above it have left the line behind; they are in order
    for (int line = 0; line < window.lineCount; ++line) {
        if (image != nullptr)
            image->Line_Unpack(0, line, window.columnCount, wanted.data());
        while (firstPass < m_passes.size() && m_passes[firstPass].firstLine + headLines <= SheetLine(line))
            ++firstPass;
        for (std::size_t pass = firstPass;
             pass < m_passes.size() && m_passes[pass].firstLine <= SheetLine(line); ++pass) {
            const int row = m_layout.Row(m_passes[pass], SheetLine(line));
            if (row >= 0 && !IsDead(row))
                Pass_Print(static_cast<int>(pass), line, row, wanted, maskPixels);
        }
    }
}

void CIdealSheet::Pass_Print(int passIndex, int line, int row, std::span<const std::uint8_t> wanted,
                             std::vector<std::uint8_t>& maskPixels)
{
    const SHeadPass& pass = m_passes[static_cast<std::size_t>(passIndex)];
    CMaskView(m_mask)
        .Lines(m_color, pass.position)
        .Line_Unpack(m_layout.MaskLine(pass, row), maskPixels.data());
    const std::size_t first = Cell(line, 0);
    const auto step = static_cast<std::size_t>(m_layout.XResPass());
    for (auto column = static_cast<std::size_t>(pass.xPass); column < wanted.size(); column += step) {
        if (wanted[column] == 0 || maskPixels[column % maskPixels.size()] == 0)
            continue;
        std::uint8_t& count = m_counts[first + column];
        count = static_cast<std::uint8_t>(std::min(count + 1, 255));
        std::int32_t& firstPass = m_firstPasses[first + column];
        firstPass = firstPass < 0 ? passIndex : firstPass;
    }
}

int CIdealSheet::FirstRow(int line, int column) const
{
    const int pass = FirstPass(line, column);
    return pass < 0 ? -1 : m_layout.Row(m_passes[static_cast<std::size_t>(pass)], SheetLine(line));
}

int CIdealSheet::FirstTurn(int line, int column) const
{
    const int pass = FirstPass(line, column);
    if (pass < 0)
        return -1;
    const auto meets = [this, line](const SHeadPass& one) { return m_layout.Row(one, SheetLine(line)) >= 0; };
    return static_cast<int>(std::count_if(m_passes.begin(), m_passes.begin() + pass, meets));
}

std::vector<SPixelPrint> CIdealSheet::Prints(int line, int column) const
{
    std::vector<SPixelPrint> prints;
    if (Count(line, column) == 0)
        return prints;
    for (const SHeadPass& pass : m_passes) {
        const int row = m_layout.Row(pass, SheetLine(line));
        if (row < 0 || IsDead(row) || column % m_layout.XResPass() != pass.xPass)
            continue;
        const SMaskLines lines = CMaskView(m_mask).Lines(m_color, pass.position);
        if (lines.Pixel(column % m_layout.MaskWidth(), m_layout.MaskLine(pass, row)) != 0)
            prints.push_back({pass, row});
    }
    return prints;
}

} // namespace dotweave
