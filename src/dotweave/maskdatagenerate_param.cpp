#include "maskdatagenerate_param.h"

#include "maskregion.h"

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

bool Item_HasLines(const SMaskDataGenerate_Param& param)
{
    return param.splitCount_XRes >= 1 && param.splitCount_YRes >= 1;
}

int Item_FirstPlaneRow(const SMaskDataGenerate_Param& param, const SMaskDataGenerate_SubParam& item)
{
    return MaskRegion_Row(item.position, param.rowStep, item.splitIndex_YRes, param.splitCount_YRes);
}

SParam_GenerateMaskData Item_Cut(const SMaskDataGenerate_Param& param, const SMaskDataGenerate_SubParam& item,
                                 int rowStart, int colStart, CMaskBlock& block)
{
    SParam_GenerateMaskData cut = {};
    cut.cutTable = param.pCutTable;
    cut.cutTableCount = param.cutTableCount;
    cut.baseMaskData = param.pBaseMaskData->MaskData(item.color);
    cut.offsetY = rowStart;
    cut.offsetX = colStart;
    cut.baseMaskHeight = param.thresholdHeight;
    cut.baseMaskWidth = param.thresholdWidth;
    cut.bitsPerPixel = param.dotBits;
    cut.maskBlock = &block;
    return cut;
}

SMaskPack Item_Pack(const SMaskDataGenerate_Param& param, const SMaskDataGenerate_SubParam& item)
{
    SMaskPack pack = {};
    pack.cutTable = param.pCutTable;
    pack.plane = param.pBaseMaskData->MaskData(item.color);
    pack.planeWidth = param.thresholdWidth;
    pack.planeHeight = param.thresholdHeight;
    pack.offsetY = Item_FirstPlaneRow(param, item);
    pack.width = param.thresholdWidth;
    pack.xResPass = param.splitCount_XRes;
    pack.bitsPerPixel = param.dotBits;
    pack.firstLine = ItemLines_First(param, item);
    pack.lineDistance = ItemLines_Distance(param);
    return pack;
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
