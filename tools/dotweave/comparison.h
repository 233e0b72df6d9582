#pragma once

#include "figures/patchfigures.h"
#include "view/pixelpicture.h"

#include <dotweave/maskparam.h>

#include <nlohmann/json_fwd.hpp>

#include <iosfwd>
#include <string>
#include <vector>

namespace dotweave {

/// One mode of a comparison and its prints.
struct SComparedMode {
    std::string name;
    SMaskParam param{};
    int hardEdges = -1; ///< the mode with hard edges and the same step, by its place; -1 for none
    double stepRows = 0;
    double rowsPerPass = 0;
    std::vector<SPatchFigures> figures; ///< one for each error
    std::vector<SPatch> patches;        ///< the same, when somebody wants to look at them
};

/// Modes under the same errors.
struct SComparison {
    std::vector<double> advances; ///< errors of every move of the paper, in row pitches
    std::vector<SComparedMode> modes;

    /// Area per hour relative to the first mode's, at the same speed of the carriage.
    double RelativeArea(const SComparedMode& mode) const
    {
        return mode.rowsPerPass / modes.front().rowsPerPass;
    }
};

/// The table, and below it where each feathered mode wins and loses against hard edges.
void Comparison_Print(const SComparison& comparison, std::ostream& out);

nlohmann::ordered_json Comparison_Json(const SComparison& comparison);

/// A contact sheet: modes downwards, errors to the right, the upper left part of each print.
SPixelPicture Comparison_Sheet(const SComparison& comparison, const SPatchOptions& options);

} // namespace dotweave
