#pragma once

#include <cstdint>
#include <filesystem>
#include <vector>

namespace matrixgen {

/// Writes levels as raw little-endian 16-bit cells on every processor.
/// Writes to a file with the ending ".part" first and renames it when it is complete, so that nobody finds a
/// half-written matrix under the given name.
/// @throws std::system_error that names the file; the ".part" file is then removed
void LevelFile_Write(const std::filesystem::path& path, const std::vector<std::uint16_t>& levels);

} // namespace matrixgen
