#pragma once

#include "report/report.h"

#include <dotweave/maskdata_base.h>

#include <nlohmann/json_fwd.hpp>

#include <string>

namespace dotweave {

/// The sliders, the canvas and the profile of the part that the browser prints.
std::string SketchSection_Html(const CMaskData_Base& mask);

/// What the browser needs to print a small window of the sheet with errors of its own, by the model of
/// Patch_Print, and what Patch_Print says about some of them.
///
/// "window":  the part of the sheet, and how dots become ink, under the names of SPatchOptions
/// "passes":  per pass that may reach the window: [number, position, xPass]
/// "prints":  per row print: [index of the pass, nozzle row, line relative to the window]
/// "fired":   base64; per row print a bit for each column from -margin on: set where the mask has a dot
/// "wanted":  base64 per tint; a bit for each column from -margin on, for each line from -marginLines on
/// "weights": contrast sensitivity of each frequency of the line profile, from 0 waves a window on
/// "ranges":  limits of the sliders
/// "marks":   settings that C++ has printed, with its figures
nlohmann::ordered_json SketchSection_Data(const CMaskData_Base& mask, const SReportOptions& options);

} // namespace dotweave
