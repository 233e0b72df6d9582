#pragma once

#include "maskgeometry.h"

#include <string>

/// @file
/// The conditions under which the library refuses a mode, in one table: the mask object refuses by it, and
/// the reasons that a host is given come from it.

namespace dotweave {

/// Where a creation checks what it has so far. Each failing check has its own log record, see
/// docs/deliberate-behaviour.md.
enum class ECreationStep : int {
    ColorTimes,    ///< before anything is computed
    Param,         ///< the other fields, resolution passes after the split
    FeatherMode,   ///< before the choice between hard and feathered edges
    FeatherNozzle, ///< before the choice of the feather profile
    Layout,        ///< after the library's own set-up in nozzle rows
    Band,          ///< after any set-up in nozzle rows, that of a derived mask object included
    Lead,          ///< in the library's own resolution set-up
    MaskSize,      ///< after the search for a matrix height
};

/// A condition that refuses a mode.
struct SRefusal {
    ECreationStep step;
    bool (*applies)(const SMaskGeometry& geometry);
    /// One line that names field, value and limit.
    std::string (*reason)(const SMaskGeometry& geometry);
};

/// The first condition that applies at a step.
/// @return null when the creation may go on
const SRefusal* Refusal_Find(ECreationStep step, const SMaskGeometry& geometry);

} // namespace dotweave
