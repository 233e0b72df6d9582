#pragma once

#include <dotweave/maskparam.h>

#include <string>

namespace dotweave {

/// Reads a mode file into a record, as Record_ReadJson does.
/// @throws CFileError when the file cannot be read; CRecordError for what it says
void Record_ReadFile(const std::string& path, SMaskParam& param, std::string* description = nullptr);

} // namespace dotweave
