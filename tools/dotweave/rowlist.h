#pragma once

#include "sheet/sheeterrors.h"

#include <string>
#include <vector>

namespace dotweave {

/// Nozzle rows as a user lists them, "17,200-204", perhaps with a number for each entry, "17:0.5,200-204:0".
/// @param option      for messages
/// @param text        "" is no row
/// @param wantsVolume whether each entry has a volume, which is 0 otherwise
/// @param rowCount    rows of the head
/// @throws CUsageError for another form, a row that the head does not have, and a volume not from 0 to 2
std::vector<SWeakRow> RowList_Parse(const std::string& option, const std::string& text, bool wantsVolume,
                                    int rowCount);

} // namespace dotweave
