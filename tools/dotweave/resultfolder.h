#pragma once

#include "record/maskjsonread.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace dotweave {

/// Reads the mask.json of a folder that "dotweave build" has written.
/// @throws CFileError when it cannot be read; CRecordError for what it says
SResultRecord ResultFolder_Read(const std::filesystem::path& folder);

/// Compares a file of a result with what mask.json says about it.
/// @return what is wrong, such as "is not there"; "" when size and CRC-32 are right
std::string ResultFile_Fault(const std::filesystem::path& folder, const SResultFile& file);

/// Reads a whole file.
/// @throws CFileError
std::vector<std::uint8_t> Bytes_ReadFile(const std::filesystem::path& path);

} // namespace dotweave
