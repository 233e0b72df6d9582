#pragma once

#include <cstdint>
#include <filesystem>
#include <vector>

namespace matrixgen {

/// Writes levels as raw little-endian 16-bit cells, whatever the processor's own order.
/// A neighbouring file with the ending ".part" takes the bytes first and is renamed once it is whole, so that
/// no half-written matrix is ever found under the name asked for.
/// @throws std::system_error naming the file; the ".part" file is then gone again
void LevelFile_Write(const std::filesystem::path& path, const std::vector<std::uint16_t>& levels);

} // namespace matrixgen
