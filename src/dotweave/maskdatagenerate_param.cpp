#include "maskdatagenerate_param.h"

#include <algorithm>

std::uint8_t* ItemLines_First(const SMaskDataGenerate_Param& param, const SMaskDataGenerate_SubParam& item)
{
    return param.pMaskBlock->MaskData() + static_cast<std::ptrdiff_t>(item.color) * param.maskBytes_OneColor +
           static_cast<std::ptrdiff_t>(item.position) * param.maskBytes_OnePosition +
           static_cast<std::ptrdiff_t>(item.splitIndex_YRes) * param.maskLineBytes;
}

std::ptrdiff_t ItemLines_Distance(const SMaskDataGenerate_Param& param)
{
    return static_cast<std::ptrdiff_t>(param.splitCount_YRes) * param.maskLineBytes;
}

void ItemLines_Clear(const SMaskDataGenerate_Param& param, const SMaskDataGenerate_SubParam& item)
{
    std::uint8_t* first = ItemLines_First(param, item);
    for (int row = 0; row < param.blockHeight; ++row)
        std::fill_n(first + row * ItemLines_Distance(param), param.maskLineBytes, std::uint8_t{0});
}
