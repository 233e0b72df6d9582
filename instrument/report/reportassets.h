#pragma once

#include <string>

namespace dotweave {

/// The style sheet of a report: report.css.
std::string ReportAsset_Style();

/// The scripts of a report as one module. cmake/EmbedReport.cmake joins them when the library is built.
std::string ReportAsset_Script();

} // namespace dotweave
