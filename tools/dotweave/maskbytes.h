#pragma once

#include "console.h"
#include "view/maskshape.h"

#include <dotweave/maskdata_base.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace dotweave {

/// All mask bytes of something that one word on the command line names.
struct SMaskBytes {
    std::vector<std::uint8_t> bytes;
    std::optional<SMaskShape> shape; ///< not known for a file without its mask.json
};

/// A print mode by one word: the name of a preset, a mode file "*.json", or a folder that "dotweave build" has
/// written. A file or folder of that name counts before a preset.
/// @throws CUsageError for a word that is none of them, CFileError, CRecordError
SMaskParam Mode_ByWord(const std::string& word);

/// Mask bytes by one word: a print mode as above, which is built, a folder that "dotweave build" has written,
/// or its mask.bin. Bytes of files are taken as they are.
/// @throws CUsageError, CFileError, CRecordError, CModeNotBuilt, std::bad_alloc
SMaskBytes MaskBytes_ByWord(const std::string& word, CConsole& console);

} // namespace dotweave
