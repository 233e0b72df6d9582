#include "figures/patchfigures.h"

#include "figures/graininess.h"
#include "figures/lightness.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdio>
#include <functional>
#include <numeric>
#include <stdexcept>

namespace dotweave {

namespace {

/// The checked condition.
const SViewing& Viewing_Check(const SViewing& viewing)
{
    if (const std::string reason = Viewing_Refusal(viewing); !reason.empty())
        throw std::invalid_argument(reason);
    return viewing;
}

/// L* of the mean of `count` reflectances, given their sums.
std::vector<double> Lightness_OfSums(const std::vector<double>& sums, int count)
{
    std::vector<double> lightness;
    lightness.reserve(sums.size());
    for (const double sum : sums)
        lightness.push_back(Lightness(sum / count));
    return lightness;
}

} // namespace

std::string Viewing_Refusal(const SViewing& viewing)
{
    struct SRange {
        const char* name;
        double value, lowest, highest;
    };
    for (const SRange& range : {SRange{"rowsPerInch", viewing.rowsPerInch, 10, 10000},
                                SRange{"distanceMm", viewing.distanceMm, 50, 100000}}) {
        if (range.value >= range.lowest && range.value <= range.highest)
            continue;
        std::array<char, 120> text = {};
        static_cast<void>(std::snprintf(text.data(), text.size(), "%s %g is not from %g to %g", range.name,
                                        range.value, range.lowest, range.highest));
        return text.data();
    }
    return {};
}

CFigureCollector::CFigureCollector(const CPassLayout& layout, const SSheetWindow& window,
                                   const SViewing& viewing)
    : m_window(window), m_linePitchMm(RowPitchMm(Viewing_Check(viewing)) / layout.YResPass()),
      m_columnPitchMm(RowPitchMm(viewing) / layout.XResPass()), m_stepMm(m_linePitchMm * layout.StepLines()),
      m_distanceMm(viewing.distanceMm), m_columnSums(static_cast<std::size_t>(window.columnCount)),
      m_grainWidth(std::min(window.columnCount, GRAIN_SIDE)),
      m_grainHeight(std::min(window.lineCount, GRAIN_SIDE))
{
    m_lineSums.reserve(static_cast<std::size_t>(window.lineCount));
    m_grain.reserve(static_cast<std::size_t>(m_grainWidth) * static_cast<std::size_t>(m_grainHeight));
}

void CFigureCollector::operator()(const SPatchLines& lines)
{
    for (int line = 0; line < lines.lineCount; ++line) {
        const float* pixels = lines.reflectance + static_cast<std::ptrdiff_t>(line) * lines.width;
        double sum = 0;
        for (std::size_t column = 0; column < m_columnSums.size(); ++column) {
            sum += static_cast<double>(pixels[column]);
            m_columnSums[column] += static_cast<double>(pixels[column]);
        }
        m_lineSums.push_back(sum);
        const int grainLine = lines.firstLine + line - (m_window.lineCount - m_grainHeight) / 2;
        if (grainLine >= 0 && grainLine < m_grainHeight) {
            const float* first = pixels + (m_window.columnCount - m_grainWidth) / 2;
            m_grain.insert(m_grain.end(), first, first + m_grainWidth);
        }
    }
}

SPatchFigures CFigureCollector::Figures() const
{
    SPatchFigures figures;
    const double sum = std::accumulate(m_lineSums.begin(), m_lineSums.end(), 0.0);
    figures.meanReflectance = sum / m_window.lineCount / m_window.columnCount;
    figures.meanLightness = Lightness(figures.meanReflectance);
    figures.lines = Lightness_OfSums(m_lineSums, m_window.columnCount);
    figures.columns = Lightness_OfSums(m_columnSums, m_window.lineCount);
    figures.banding = Banding({figures.lines, m_linePitchMm, m_stepMm, m_distanceMm});
    figures.streaks = Banding({figures.columns, m_columnPitchMm, m_stepMm, m_distanceMm});
    figures.graininess =
        Lightness_Slope(figures.meanReflectance) *
        Graininess({m_grain, m_grainWidth, m_grainHeight, m_columnPitchMm, m_linePitchMm, m_distanceMm});
    return figures;
}

SPatchFigures PatchFigures(const CMaskData_Base& mask, int color, const CBitImage* image,
                           const SSheetErrors& errors, const SPatchOptions& options, const SViewing& viewing)
{
    CFigureCollector collector(CPassLayout(mask), options.window, viewing);
    Patch_Print(mask, color, image, errors, options, std::ref(collector));
    SPatchFigures figures = collector.Figures();
    figures.printShare.lineCount = options.window.lineCount;
    figures.printShare.pixelCount = figures.printShare.lineCount * options.window.columnCount;
    if (!errors.deadRows.empty()) { // nothing else takes a print from a pixel
        const CIdealSheet ideal(mask, color, options.window, image);
        const CIdealSheet sheet(mask, color, options.window, image, errors.deadRows);
        figures.printShare = PrintShare_Ideal(sheet, ideal);
    }
    return figures;
}

} // namespace dotweave
