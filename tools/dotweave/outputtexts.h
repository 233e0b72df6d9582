#pragma once

#include <span>
#include <string>
#include <vector>

namespace dotweave {

/// A text and the file name on the command line that takes it.
struct SOutputText {
    std::string file; ///< "-" is standard output
    std::string text;
};

/// An option that names a file to write.
struct SOutputName {
    std::string option;
    std::string file; ///< "" when the option is not given
};

/// Checks names before any work is done: each is the name of a file, and no two are the same.
/// @throws CUsageError
void OutputNames_Check(const std::vector<SOutputName>& names);

/// Writes texts to files. All are complete before one of them takes its place. Links are followed; an
/// existing regular file is replaced and passes on its owner and mode; a device or a pipe is written through.
/// @throws CFileError, CInterrupted, std::filesystem::filesystem_error
void OutputTexts_Write(std::span<const SOutputText> outputs);

} // namespace dotweave
