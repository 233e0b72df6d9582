#include "sheet/patchrows.h"

#include "sheet/chance.h"
#include "view/maskview.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace dotweave {

namespace {

constexpr unsigned int SCATTER_BITS = 10; // of the random bits of a dot, the top ones

/// The normal distribution in steps of equal share: fast to draw from, and the same on every machine.
std::vector<double> Scatter_Make(double sigma)
{
    std::vector<double> scatter;
    if (sigma == 0)
        return scatter;
    constexpr int COUNT = 1 << SCATTER_BITS;
    for (int i = 0; i < COUNT; ++i)
        scatter.push_back(1 + sigma * Normal_Quantile((i + 0.5) / COUNT));
    return scatter;
}

int Volume_Units(double volume)
{
    return static_cast<int>(std::lround(std::clamp(volume * VOLUME_UNIT, 0.0, double{VOLUME_MAX_UNITS})));
}

std::int64_t Eighths(double cells)
{
    return std::llround(cells * CELL_EIGHTHS);
}

} // namespace

CPatchRows::CPatchRows(const CMaskData_Base& mask, int color, const CBitImage* image,
                       const SSheetErrors& errors, const SPatchOptions& options)
    : m_mask(mask), m_color(color), m_image(image), m_window(options.window),
      m_supersample(options.supersample),
      m_placement(CPassLayout(mask), errors), m_shape{options.dotDiameter,
                                                      options.supersample * mask.XResPass(),
                                                      options.supersample * mask.YResPass()},
      m_scatter(Scatter_Make(errors.volumeSigma)), m_volumeMax(VOLUME_UNIT)
{
    for (const SWeakRow& weak : errors.weakRows)
        m_volumeMax = std::max(m_volumeMax, Volume_Units(weak.volume));
    if (!m_scatter.empty())
        m_volumeMax = Volume_Units(m_scatter.back() * m_volumeMax / VOLUME_UNIT);
}

std::vector<SRowPrint> CPatchRows::Rows(int firstLine, int lineCount) const
{
    const CPassLayout& layout = m_placement.Layout();
    const double pitchLines = layout.YResPass();
    const int reachCells = ReachY();
    const auto slackLines = static_cast<std::int64_t>(
        std::ceil(m_placement.RowShiftY_Max() * pitchLines + reachCells / double(m_supersample)) + 1);
    const std::int64_t first = m_window.firstLine + firstLine - slackLines;
    const std::int64_t count = lineCount + 2 * slackLines;
    const std::int64_t firstEighth = std::int64_t{firstLine} * m_supersample * CELL_EIGHTHS;
    const std::int64_t endEighth = std::int64_t{firstLine + lineCount} * m_supersample * CELL_EIGHTHS;
    const std::int64_t reach = std::int64_t{reachCells} * CELL_EIGHTHS;

    std::vector<SRowPrint> prints;
    for (const SPlacedPass& pass : m_placement.Passes(first, count)) {
        const double top = static_cast<double>(pass.pass.firstLine) + pass.shift * pitchLines;
        const auto above = static_cast<int>(std::floor((static_cast<double>(first) - top) / pitchLines));
        const auto below =
            static_cast<int>(std::ceil((static_cast<double>(first + count) - top) / pitchLines));
        for (int row = std::max(above, 0); row < std::min(below, layout.RowCount()); ++row) {
            const SRowPlace place = m_placement.Row(pass, row);
            const std::int64_t line = layout.Line(pass.pass, row);
            const double middle = static_cast<double>(line - m_window.firstLine) + 0.5;
            const SRowPrint print = {pass.pass,
                                     row,
                                     line,
                                     Eighths(middle * m_supersample + place.shiftY * m_shape.cellsY),
                                     Eighths(place.shiftX * m_shape.cellsX),
                                     Volume_Units(place.volume)};
            if (print.volume > 0 && print.centreY + reach >= firstEighth && print.centreY - reach < endEighth)
                prints.push_back(print);
        }
    }
    return prints;
}

int CPatchRows::ReachColumns() const
{
    return ReachX() / m_supersample + 2;
}

SFiredColumns CPatchRows::Fired_Make() const
{
    const auto count =
        static_cast<std::size_t>(m_window.columnCount) + 2 * static_cast<std::size_t>(ReachColumns());
    SFiredColumns fired = {
        {},
        std::vector<std::uint8_t>(static_cast<std::size_t>(m_placement.Layout().MaskWidth())),
        std::vector<std::uint8_t>(count, 1)};
    fired.columns.reserve(count);
    return fired;
}

void CPatchRows::Fire(const SRowPrint& print, SFiredColumns& fired) const
{
    const CPassLayout& layout = m_placement.Layout();
    const auto shiftColumns = static_cast<int>(print.shiftX / (std::int64_t{m_supersample} * CELL_EIGHTHS));
    const int first = -ReachColumns() - shiftColumns;
    const auto count = static_cast<int>(fired.wanted.size());
    CMaskView(m_mask)
        .Lines(m_color, print.pass.position)
        .Line_Unpack(layout.MaskLine(print.pass, print.row), fired.maskPixels.data());
    if (m_image != nullptr)
        m_image->Line_Unpack(first, print.line - m_window.firstLine, count, fired.wanted.data());

    fired.columns.clear();
    const int width = layout.MaskWidth();
    int maskColumn = (first % width + width) % width;
    for (int i = 0; i < count; ++i) {
        // A mask line has the columns of all X resolution passes.
        if (fired.maskPixels[static_cast<std::size_t>(maskColumn)] != 0 &&
            fired.wanted[static_cast<std::size_t>(i)] != 0 &&
            maskColumn % layout.XResPass() == print.pass.xPass)
            fired.columns.push_back(first + i);
        maskColumn = maskColumn + 1 < width ? maskColumn + 1 : 0;
    }
}

int CPatchRows::Volume_Scattered(const SRowPrint& print, std::size_t level) const
{
    return Volume_Units(m_scatter[level] * print.volume / VOLUME_UNIT);
}

int CPatchRows::Volume(const SRowPrint& print, int column) const
{
    if (m_scatter.empty())
        return print.volume;
    const std::uint64_t bits = m_placement.VolumeBits(print.pass, print.row, column);
    return Volume_Scattered(print, static_cast<std::size_t>(bits >> (64U - SCATTER_BITS)));
}

SVolumeRange CPatchRows::Volumes(const SRowPrint& print) const
{
    if (m_scatter.empty())
        return {print.volume, print.volume};
    return {Volume_Scattered(print, 0), Volume_Scattered(print, m_scatter.size() - 1)};
}

} // namespace dotweave
