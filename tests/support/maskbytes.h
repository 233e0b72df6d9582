#pragma once

#include "dotweave/maskdata_base.h"

#include <cstddef>
#include <cstdint>
#include <vector>

/// All bytes of a created mask object, from the first position of the first colour on.
inline std::vector<std::uint8_t> MaskBytes(const CMaskData_Base& mask)
{
    int position = -1;
    const std::uint8_t* first = mask.MaskData_Get(0, position);
    const std::ptrdiff_t count =
        std::ptrdiff_t{mask.MaskBytes_OneColor()} * mask.MaskParam_Current().colorCount;
    return {first, first + count};
}

/// The bytes of the mode as an undisturbed creation makes them.
inline std::vector<std::uint8_t> MaskBytes_Undisturbed(const SMaskParam& param)
{
    CMaskData_Base mask;
    return mask.Create(param) ? MaskBytes(mask) : std::vector<std::uint8_t>();
}

/// Work items of a mask: one per colour, position and Y resolution pass.
inline int ItemCount(const CMaskData_Base& mask)
{
    return mask.MaskParam_Current().colorCount * mask.YResPass() *
           (mask.MaskBytes_OneColor() / mask.MaskBytes_OnePosition());
}
