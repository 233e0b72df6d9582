#pragma once

#include "figures/patchfigures.h"

#include <dotweave/maskdata_base.h>

#include <memory>
#include <string>

namespace dotweave {

/// How modes are printed so that they can be compared: everything but the mode.
struct SJudgeOptions {
    SPatchOptions patch; ///< without its window
    SViewing viewing;
    double tint = 1;      ///< share of the pixels that get ink, 0 to 1
    int heightRows = 544; ///< of the patch; as many whole steps as fit, at least one
    int widthRows = 272;
};

/// Nozzle rows that the paper advances per step.
double StepRows(const CPassLayout& layout);

/// Nozzle rows that the paper advances in one pass of the head: what the throughput of a press follows.
double RowsPerPass(const CPassLayout& layout);

/// The patch that a mode is judged by: whole steps of the steady state.
SSheetWindow Judge_Window(const CPassLayout& layout, const SJudgeOptions& options);

/// Prints colour plane 0 of a mode on one thread and judges it.
/// @param patch  takes the print; null when nobody wants it
/// @throws std::invalid_argument for errors that the mode's paper cannot make
SPatchFigures Mode_Judge(const CMaskData_Base& mask, const SSheetErrors& errors, const SJudgeOptions& options,
                         SPatch* patch = nullptr);

/// The mode with hard edges that has the same step: as many nozzle rows as its passes need.
SMaskParam HardEdges_Of(const CMaskData_Base& mask);

} // namespace dotweave
