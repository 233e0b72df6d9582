#pragma once

#include <string_view>

/// Names the calling thread for debuggers, profilers and process monitors. A help to the reader only: where
/// the platform knows no thread names, or refuses this one, nothing happens.
/// @param name  ASCII; Linux shows the first 15 characters, Windows 63
void ThreadName_Set(std::string_view name) noexcept;
