#pragma once

#include "figures/patchfigures.h"

#include <nlohmann/json_fwd.hpp>

#include <iosfwd>

namespace dotweave {

/// The figures of a patch as an object, without its profiles.
nlohmann::ordered_json Figures_Json(const SPatchFigures& figures);

/// The errors of a press as an object with the names of SSheetErrors.
nlohmann::ordered_json Errors_Json(const SSheetErrors& errors);

/// The figures of a patch, a line each.
void Figures_Print(const SPatchFigures& figures, std::ostream& out);

} // namespace dotweave
