#include "maskdatagenerate_param.h"

#include "maskregion.h"

#include <algorithm>

namespace dotweave {

std::uint8_t* ItemLines_First(const SMaskDataGenerate_Param& param, const SMaskDataGenerate_SubParam& item)
{
    return param.pMaskBlock->MaskData() +
           MaskRegion_FirstByte(item.color, param.maskBytes_OneColor, item.position,
                                param.maskBytes_OnePosition) +
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

void PositionPages_Touch(const SMaskDataGenerate_Param& param, const SMaskDataGenerate_SubParam& item)
{
    constexpr std::ptrdiff_t PAGE_BYTES = 4096; // the smallest that processors have
    if (item.splitIndex_YRes != 0 || param.splitCount_YRes < 2 || param.pMaskBlock == nullptr)
        return;
    std::uint8_t* first = ItemLines_First(param, item);
    const std::uint8_t* end = param.pMaskBlock->MaskData() + param.pMaskBlock->MaskDataBytesCount();
    if (end - first < param.maskBytes_OnePosition)
        return;
    for (std::ptrdiff_t at = 0; at < param.maskBytes_OnePosition; at += PAGE_BYTES)
        first[at] = 0;
}

} // namespace dotweave
