#pragma once

#include "dotweave/maskdata_base.h"

#include <filesystem>
#include <string>

/// Which masks are also written as pictures.
enum EMaskPictures {
    MaskPictures_None,
    MaskPictures_First, ///< position 0 of each colour
    MaskPictures_All,   ///< every position of each colour
};

/// "mask_c0_p0.png"
std::string MaskPicture_FileName(int color, int position);

/// Writes a created object into a directory: mask.bin with all mask bytes, mask.json, pictures. Pictures of
/// an older result in the directory go. All files appear together; when it throws, the directory is as it
/// was.
/// @return number of pictures
/// @throws std::filesystem::filesystem_error, CInterrupted
int MaskOutput_Write(const CMaskData_Base& mask, const std::filesystem::path& directory,
                     EMaskPictures pictures);
