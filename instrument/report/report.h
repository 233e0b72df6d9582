#pragma once

#include "figures/contrastsensitivity.h"
#include "sheet/printedpatch.h"

#include <dotweave/maskdata_base.h>

#include <functional>
#include <string>

namespace dotweave {

/// How a report prints and looks.
struct SReportOptions {
    SViewing viewing;         ///< resolution of the press and distance of the eye
    double dotDiameter = 1.5; ///< nozzle row pitches
    int threadCount = 0;      ///< threads that print; 0 takes all cores
};

/// Parts that Report_Html reports as done.
inline constexpr int REPORT_PART_COUNT = 11;

/// Everything that the instrument says about a mode as one HTML page: record, geometry and warnings, cut
/// table, masks, the ideal sheet, figures under a row of errors, a dead nozzle row, the work of the rows,
/// spectra, and a sheet whose errors the reader sets. The page needs no other file and no network.
///
/// Printed patches are those of colour 0. Masks that would make the page too large are shown in part, and
/// the page says so.
/// @param mask      a created object; not const only because its cut table is not
/// @param partDone  called after each of REPORT_PART_COUNT parts; may be empty
/// @return the page, ASCII
/// @throws std::invalid_argument for options that Viewing_Refusal or PatchOptions_Refusal refuses,
///         std::bad_alloc
std::string Report_Html(CMaskData_Base& mask, const SReportOptions& options,
                        const std::function<void()>& partDone = {});

} // namespace dotweave
