#pragma once

#include <CLI/App.hpp>

#include <string>

namespace dotweave {

/// Completion of the command for bash: made from the same table of options as the help.
/// Commands, options, words of options, presets, files and folders are completed.
std::string BashCompletion_Make(const CLI::App& app);

} // namespace dotweave
