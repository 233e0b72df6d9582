#pragma once

#include "command.h"

#include <memory>
#include <vector>

namespace dotweave {

/// Adds every sub-command to the application. The only list of them: help, manual page and completion follow.
/// @param app  outlives the commands
std::vector<std::unique_ptr<CCommand>> CommandList_Make(CLI::App& app);

} // namespace dotweave
