#pragma once

#include <filesystem>
#include <fstream>

namespace dotweave {

/// Opens a text file for a parser.
/// @throws CFileError when it cannot be read
std::ifstream TextFile_Open(const std::filesystem::path& path);

} // namespace dotweave
