#pragma once

#include <span>
#include <string>

namespace dotweave {

/// A text and the file name on the command line that takes it.
struct SOutputText {
    std::string file; ///< "-" is standard output
    std::string text;
};

/// Writes texts to files. All are complete before one of them takes its place. Links are followed; an
/// existing regular file is replaced and passes on its owner and mode; a device or a pipe is written through.
/// @throws CFileError, CInterrupted, std::filesystem::filesystem_error
void OutputTexts_Write(std::span<const SOutputText> outputs);

} // namespace dotweave
