#pragma once

#include "dotweave/basemaskdata.h"
#include "maskdatagenerate_param.h"
#include "plainmask.h"

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

/// Everything that a generator or a worker needs, without a mask object. What `mask` does not name comes from
/// the threshold matrices. Make it before the generator that uses it, so that it
/// is destroyed after that.
struct SGeneratorJob {
    explicit SGeneratorJob(SPlainMask plain) : mask(std::move(plain))
    {
        param.maskLineBytes = Plain_LineBytes(mask);
        param.maskBytes_OnePosition = mask.yRes * mask.height * param.maskLineBytes;
        param.maskBytes_OneColor = mask.positionCount * param.maskBytes_OnePosition;
        block.Initialize(param.maskBytes_OneColor, mask.colorCount);
        planes.Create(mask.matrixColumns, mask.matrixRows, mask.colorCount);
        param.pMaskBlock = &block;
        param.pBaseMaskData = &planes;
        param.thresholdHeight = mask.matrixRows;
        param.thresholdWidth = mask.matrixColumns;
        param.colorCount = mask.colorCount;
        param.positionCount = mask.positionCount;
        param.pCutTable = mask.table.data();
        param.cutTableCount = mask.height;
        param.blockHeight = mask.height;
        param.rowStep = mask.step;
        param.splitCount_XRes = mask.xRes;
        param.splitCount_YRes = mask.yRes;
        param.dotBits = mask.bits;
        param.featherNozzleType = mask.isSine ? 3 : 2;
    }
    SGeneratorJob(const SGeneratorJob&) = delete;
    SGeneratorJob& operator=(const SGeneratorJob&) = delete;
    ~SGeneratorJob() = default;

    [[nodiscard]] std::vector<std::uint8_t> Bytes() const
    {
        return {block.MaskData_Const(), block.MaskData_Const() + block.MaskDataBytesCount()};
    }

    SPlainMask mask;
    CBaseMaskData planes;
    CMaskBlock block;
    SMaskDataGenerate_Param param = {};
};

/// A job whose rows share the threshold scale: row y prints from y / height to (y + 2) / height of it.
inline SPlainMask PlainMask_Sliding(int height, int step)
{
    SPlainMask mask;
    mask.height = height;
    mask.step = step;
    for (int y = 0; y < height; ++y)
        mask.table.push_back({static_cast<std::uint16_t>(std::min(y + 2, height) * 65535 / height),
                              static_cast<std::uint16_t>(y * 65535 / height)});
    return mask;
}

/// Far more work than a test waits for.
inline SPlainMask PlainMask_Large()
{
    SPlainMask mask = PlainMask_Sliding(544, 34);
    mask.colorCount = 4;
    mask.positionCount = 16;
    mask.yRes = 4;
    mask.xRes = 4;
    return mask;
}
