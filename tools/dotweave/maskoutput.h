#pragma once

#include "console.h"

#include <dotweave/maskdata_base.h>

#include <filesystem>

namespace dotweave {

/// Which masks are also written as pictures.
enum EMaskPictures {
    MaskPictures_None,
    MaskPictures_First, ///< position 0 of each colour
    MaskPictures_All,   ///< every position of each colour
};

/// Writes a created object into a directory: mask.bin with all mask bytes, the pictures "mask_c0_p0.png" of
/// colour 0 and position 0 and so on, and mask.json. Pictures of an older result in the directory are
/// removed. All files appear together; when it throws before that, the directory is as it was.
/// @param console  takes the progress
/// @return number of pictures
/// @throws CFileError, CInterrupted, std::filesystem::filesystem_error
int MaskOutput_Write(const CMaskData_Base& mask, const std::filesystem::path& directory,
                     EMaskPictures pictures, CConsole& console);

} // namespace dotweave
