#pragma once

#include <dotweave/cuttable.h>
#include <dotweave/maskdata_base.h>

#include <string>
#include <vector>

namespace dotweave {

/// The cut table of a print mode: which thresholds each nozzle row prints.
struct SCutTableView {
    std::vector<SCutTable> rows; ///< one range per nozzle row, before resolution
    int stepRows;                ///< nozzle rows that the paper advances per pass, >= 1; row y and row
                                 ///< y + stepRows print the same line of the image, one pass apart
};

/// Thresholds that a range prints; 0 when the row prints nothing.
int CutRange_Size(const SCutTable& range);

/// Asks a mask object for its cut table.
/// @param mask  a created object. The library's builder is no const operation, but it changes nothing there.
/// @throws std::runtime_error when the library builds no table for the object's parameters
SCutTableView CutTable_View(CMaskData_Base& mask);

/// A cut table as text, in the format of CMaskData_Base::OutputCutTable: a line per row with the lower bound
/// (exclusive), a comma and the upper bound (inclusive), right-aligned in five columns. As text it can also
/// go to a pipe, and a full disk is noticed.
std::string CutTable_Text(const SCutTableView& view);

} // namespace dotweave
