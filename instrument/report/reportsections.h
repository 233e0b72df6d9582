#pragma once

#include "report/report.h"
#include "sheet/printedpatch.h"

#include <dotweave/maskdata_base.h>

#include <nlohmann/json_fwd.hpp>

#include <memory>
#include <string>

namespace dotweave {

/// @file
/// The parts of a report. Each gives the HTML below its heading. The data functions give what the scripts of
/// the page read.

/// The colour whose printed patches a report shows.
inline constexpr int REPORT_COLOR = 0;

/// Errors of the paper's move that a report prints, in nozzle row pitches.
inline constexpr double REPORT_ADVANCES[] = {0, 0.25, 0.5, 1};

/// Shares of the pixels that a report asks for: a full tone and a tint.
inline constexpr double REPORT_TINTS[] = {1, 0.4};

/// The nozzle row that fails in a report: the middle one.
int Report_DeadRow(const CMaskData_Base& mask);

/// How a report prints a window of the sheet.
SPatchOptions Report_PatchOptions(const SSheetWindow& window, const SReportOptions& options);

/// The pixels that a tint asks for. @return null for a full tone
std::unique_ptr<CBitImage> Report_Tint(double share);

/// Lines from the first steady one: whole steps of the paper, and about so many lines.
SSheetWindow Report_Window(const CMaskData_Base& mask, int aboutLines, int columnCount);

/// The shape of a mode in one line: "544 nozzle rows, 4 passes, 4 colours".
std::string Report_ModeText(const CMaskData_Base& mask);

std::string RecordSection_Html(const CMaskData_Base& mask);
std::string CutTableSection_Html(CMaskData_Base& mask);
std::string MaskSection_Html(const CMaskData_Base& mask);
nlohmann::ordered_json MaskSection_Data(const CMaskData_Base& mask);
std::string SheetSection_Html(const CMaskData_Base& mask);
std::string FigureSection_Html(const CMaskData_Base& mask, const SReportOptions& options);
std::string DeadRowSection_Html(const CMaskData_Base& mask, const SReportOptions& options);
std::string DutySection_Html(const CMaskData_Base& mask);
std::string SpectrumSection_Html(const CMaskData_Base& mask);

} // namespace dotweave
