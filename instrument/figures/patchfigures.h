#pragma once

#include "figures/banding.h"
#include "figures/contrastsensitivity.h"
#include "figures/printshare.h"
#include "sheet/bitimage.h"
#include "sheet/passlayout.h"
#include "sheet/printedpatch.h"
#include "sheet/sheeterrors.h"

#include <string>
#include <vector>

namespace dotweave {

/// All figures of one printed patch.
struct SPatchFigures {
    double meanReflectance = 0;
    double meanLightness = 0;    ///< L* of the mean reflectance
    SBanding banding;            ///< of the line profile
    SBanding streaks;            ///< of the column profile; worstLine is a column
    double graininess = 0;       ///< of the middle of the patch: see CFigureCollector
    SPrintShare printShare;      ///< pixels that miss prints because of dead rows
    std::vector<double> lines;   ///< L* of the mean reflectance of each line, from the top down
    std::vector<double> columns; ///< the same of each column
};

/// Why a viewing condition makes no sense: one line that names the field, its value and the range; else empty.
std::string Viewing_Refusal(const SViewing& viewing);

/// Collects the figures of a patch while it is printed, so that a sink can also look at the lines itself.
///
/// Graininess is measured on the middle of the patch, at most GRAIN_SIDE lines and columns, in reflectance
/// that is turned into L* by the slope of L* at the patch's mean: the eye blurs light, not lightness.
/// Memory: a value per line and column, and the middle.
class CFigureCollector {
public:
    static constexpr int GRAIN_SIDE = 1024;

    /// @param layout   of the mode, for the lengths of pitches and steps
    /// @param window   of the patch that is printed
    /// @param viewing  as Viewing_Refusal accepts it @throws std::invalid_argument otherwise
    CFigureCollector(const CPassLayout& layout, const SSheetWindow& window, const SViewing& viewing);

    /// Takes finished lines: a CPatchSink.
    void operator()(const SPatchLines& lines);
    /// The figures, when all lines have been taken; all but printShare.
    SPatchFigures Figures() const;

private:
    void Grain_Take(const SPatchLines& lines, int line);

    SSheetWindow m_window;
    double m_linePitchMm;
    double m_columnPitchMm;
    double m_stepMm;
    double m_distanceMm;
    std::vector<double> m_lineSums;
    std::vector<double> m_columnSums;
    int m_grainWidth;
    int m_grainHeight;
    std::vector<double> m_grain; ///< reflectance of the middle
};

/// Prints a patch and gives all its figures, printShare against the same patch without dead rows.
/// Parameters and exceptions: as Patch_Print and CFigureCollector.
SPatchFigures PatchFigures(const CMaskData_Base& mask, int color, const CBitImage* image,
                           const SSheetErrors& errors, const SPatchOptions& options, const SViewing& viewing);

} // namespace dotweave
