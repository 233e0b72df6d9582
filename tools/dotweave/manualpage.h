#pragma once

#include <CLI/App.hpp>

#include <string>

namespace dotweave {

/// The manual page of the command, for section 1: made from the same table of options as the help.
/// @return text for man, in its macros
std::string ManualPage_Make(const CLI::App& app);

} // namespace dotweave
