#include "sheet/printedpatch.h"

#include "sheet/inkband.h"
#include "sheet/patchrows.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdio>
#include <stdexcept>
#include <thread>

namespace dotweave {

namespace {

constexpr std::size_t BAND_BYTES = std::size_t{1} << 20U; // ink of a band, so that it stays in the cache
constexpr int BAND_LINES_MAX = 64;
constexpr int BANDS_PER_THREAD = 4; // finished before a sink sees them

constexpr int COUNTING_PLANES = 4; // count to LAYERS_MAX

struct SOptionRange {
    const char* name;
    double value;
    double lowest;
    double highest;
};

std::int64_t CellOf(std::int64_t eighths)
{
    return eighths >= 0 ? eighths / CELL_EIGHTHS : -((-eighths + CELL_EIGHTHS - 1) / CELL_EIGHTHS);
}

int PhaseOf(std::int64_t eighths)
{
    return static_cast<int>(eighths - CellOf(eighths) * CELL_EIGHTHS);
}

/// One band of a patch: its ink, and what a thread needs to print it.
struct SBand {
    CInkBand ink;
    int firstLine;
    int lineCount;
    SFiredColumns fired;
    std::vector<float> reflectance;
    std::vector<float> cells;
};

/// Prints a patch, some bands at a time.
class CPatchPrinter {
public:
    CPatchPrinter(const CMaskData_Base& mask, int color, const CBitImage* image, const SSheetErrors& errors,
                  const SPatchOptions& options)
        : m_options(options), m_rows(mask, color, image, errors, options), m_stamps(m_rows.Shape()),
          m_law(options),
          m_threadCount(options.threadCount > 0
                            ? options.threadCount
                            : static_cast<int>(std::max(1U, std::thread::hardware_concurrency())))
    {
        const int marginCells = (2 * m_rows.ReachX() + 8) / 4 * 4;
        const int width = options.window.columnCount * options.supersample;
        const int planeCount = options.overlap == EOverlap::Union ? 1 : COUNTING_PLANES;
        const std::size_t lineBytes =
            (static_cast<std::size_t>(width) + 2 * static_cast<std::size_t>(marginCells)) *
            sizeof(std::uint16_t) * static_cast<std::size_t>(options.supersample) *
            static_cast<std::size_t>(planeCount);
        m_bandLines = static_cast<int>(std::clamp<std::size_t>(BAND_BYTES / lineBytes, 1, BAND_LINES_MAX));
        const int bandCount = (options.window.lineCount + m_bandLines - 1) / m_bandLines;
        const std::size_t pixels =
            static_cast<std::size_t>(options.window.columnCount) * static_cast<std::size_t>(m_bandLines);
        const auto side = static_cast<std::size_t>(options.supersample);
        for (int i = 0; i < std::min(bandCount, m_threadCount * BANDS_PER_THREAD); ++i)
            m_bands.push_back({CInkBand(width, m_bandLines * options.supersample, marginCells, planeCount), 0,
                               0, m_rows.Fired_Make(), std::vector<float>(pixels),
                               std::vector<float>(options.wantsCells ? pixels * side * side : 0)});
    }

    void Print(const CPatchSink& sink)
    {
        for (int line = 0; line < m_options.window.lineCount;) {
            const int firstLine = line;
            int bandCount = 0;
            for (SBand& band : m_bands) {
                band.firstLine = line;
                band.lineCount = std::min(m_bandLines, m_options.window.lineCount - line);
                line += band.lineCount;
                bandCount += band.lineCount > 0 ? 1 : 0;
            }
            Rows_Prepare(firstLine, line - firstLine);
#pragma omp parallel for schedule(dynamic) num_threads(m_threadCount)
            for (int i = 0; i < bandCount; ++i)
                Band_Print(m_bands[static_cast<std::size_t>(i)]);
            for (int i = 0; i < bandCount; ++i) {
                const SBand& band = m_bands[static_cast<std::size_t>(i)];
                sink({band.firstLine, band.lineCount, m_options.window.columnCount, m_options.supersample,
                      band.reflectance.data(), m_options.wantsCells ? band.cells.data() : nullptr});
            }
        }
    }

private:
    /// Does all that allocates before the threads start.
    void Rows_Prepare(int firstLine, int lineCount)
    {
        m_prints = m_rows.Rows(firstLine, lineCount);
        for (const SRowPrint& print : m_prints) {
            const int phaseX = PhaseOf(m_rows.CentreX(print, 0));
            m_stamps.Make(phaseX, PhaseOf(print.centreY), m_rows.Volumes(print));
        }
    }

    void Band_Print(SBand& band)
    {
        const int side = m_options.supersample;
        band.ink.Clear();
        const std::int64_t firstCell = std::int64_t{band.firstLine} * side;
        const std::int64_t endCell = firstCell + std::int64_t{band.lineCount} * side;
        const int reach = m_rows.ReachY();
        for (const SRowPrint& print : m_prints) {
            const std::int64_t cellY = CellOf(print.centreY);
            if (cellY + reach >= firstCell && cellY - reach < endCell)
                Row_Print(band, print, cellY - firstCell);
        }
        float* pixel = band.reflectance.data();
        for (int line = 0; line < band.lineCount; ++line) {
            for (int column = 0; column < m_options.window.columnCount; ++column)
                *pixel++ = m_law.Reflectance(band.ink.Layers(column * side, line * side, side));
        }
        if (!m_options.wantsCells)
            return;
        float* cell = band.cells.data();
        for (int y = 0; y < band.lineCount * side; ++y) {
            for (int x = 0; x < m_options.window.columnCount * side; ++x)
                *cell++ = m_law.Reflectance(band.ink.Layers(x, y, 1));
        }
    }

    void Row_Print(SBand& band, const SRowPrint& print, std::int64_t cellY)
    {
        m_rows.Fire(print, band.fired);
        const int phaseX = PhaseOf(m_rows.CentreX(print, 0)); // of all columns, as they are whole cells wide
        const int phaseY = PhaseOf(print.centreY);
        for (const int column : band.fired.columns) {
            const SDotStamp& stamp = m_stamps.Get(phaseX, phaseY, m_rows.Volume(print, column));
            band.ink.Dot_Add(stamp, CellOf(m_rows.CentreX(print, column)), cellY);
        }
    }

    SPatchOptions m_options;
    CPatchRows m_rows;
    CDotStamps m_stamps;
    CInkLaw m_law;
    int m_threadCount;
    int m_bandLines = 1;
    std::vector<SBand> m_bands;
    std::vector<SRowPrint> m_prints;
};

} // namespace

std::string PatchOptions_Refusal(const SPatchOptions& options)
{
    constexpr double SIDE_MAX = 1 << 24;
    const SOptionRange ranges[] = {
        {"window.lineCount", static_cast<double>(options.window.lineCount), 1, SIDE_MAX},
        {"window.columnCount", static_cast<double>(options.window.columnCount), 1, SIDE_MAX},
        {"dotDiameter", options.dotDiameter, 0.1, 8},
        {"supersample", static_cast<double>(options.supersample), 1, 16},
        {"paperReflectance", options.paperReflectance, 0.01, 1},
        {"inkReflectance", options.inkReflectance, 0.0001, options.paperReflectance},
        {"threadCount", static_cast<double>(options.threadCount), 0, 1024},
    };
    for (const SOptionRange& range : ranges) {
        if (range.value >= range.lowest && range.value <= range.highest)
            continue;
        std::array<char, 160> text = {};
        static_cast<void>(std::snprintf(text.data(), text.size(), "%s %g is not from %g to %g", range.name,
                                        range.value, range.lowest, range.highest));
        return text.data();
    }
    return {};
}

void Patch_Print(const CMaskData_Base& mask, int color, const CBitImage* image, const SSheetErrors& errors,
                 const SPatchOptions& options, const CPatchSink& sink)
{
    if (const std::string reason = PatchOptions_Refusal(options); !reason.empty())
        throw std::invalid_argument(reason);
    CPatchPrinter(mask, color, image, errors, options).Print(sink);
}

SPatch Patch_Collect(const CMaskData_Base& mask, int color, const CBitImage* image,
                     const SSheetErrors& errors, const SPatchOptions& options)
{
    SPatch patch = {options.window.columnCount, options.window.lineCount, {}};
    Patch_Print(mask, color, image, errors, options, [&patch](const SPatchLines& lines) {
        const auto count = static_cast<std::size_t>(lines.lineCount) * static_cast<std::size_t>(lines.width);
        patch.reflectance.insert(patch.reflectance.end(), lines.reflectance, lines.reflectance + count);
    });
    return patch;
}

} // namespace dotweave
