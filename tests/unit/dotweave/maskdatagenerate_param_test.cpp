#include "maskdatagenerate_param.h"

#include "dotweave/generatemaskdataparam.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include "generatorjob.h"
#include "plainmask.h"

namespace {

// The records that travel between the mask object, the generator and the cut, field by field. Pointers are of
// 64 bits; every number has 32 and a sign.
static_assert(sizeof(void*) == 8);

static_assert(std::is_standard_layout_v<SMaskDataGenerate_Param> &&
              std::is_trivially_copyable_v<SMaskDataGenerate_Param>);
static_assert(offsetof(SMaskDataGenerate_Param, pMaskBlock) == 0);
static_assert(offsetof(SMaskDataGenerate_Param, maskBytes_OneColor) == 8);
static_assert(offsetof(SMaskDataGenerate_Param, maskBytes_OnePosition) == 12);
static_assert(offsetof(SMaskDataGenerate_Param, maskLineBytes) == 16);
static_assert(offsetof(SMaskDataGenerate_Param, pBaseMaskData) == 24);
static_assert(offsetof(SMaskDataGenerate_Param, thresholdHeight) == 32);
static_assert(offsetof(SMaskDataGenerate_Param, thresholdWidth) == 36);
static_assert(offsetof(SMaskDataGenerate_Param, colorCount) == 40);
static_assert(offsetof(SMaskDataGenerate_Param, positionCount) == 44);
static_assert(offsetof(SMaskDataGenerate_Param, pCutTable) == 48);
static_assert(offsetof(SMaskDataGenerate_Param, cutTableCount) == 56);
static_assert(offsetof(SMaskDataGenerate_Param, blockHeight) == 60);
static_assert(offsetof(SMaskDataGenerate_Param, rowStep) == 64);
static_assert(offsetof(SMaskDataGenerate_Param, splitCount_XRes) == 68);
static_assert(offsetof(SMaskDataGenerate_Param, splitCount_YRes) == 72);
static_assert(offsetof(SMaskDataGenerate_Param, dotBits) == 76);
static_assert(offsetof(SMaskDataGenerate_Param, featherNozzleType) == 80);
static_assert(sizeof(SMaskDataGenerate_Param) == 88);

static_assert(std::is_standard_layout_v<SMaskDataGenerate_SubParam>);
static_assert(offsetof(SMaskDataGenerate_SubParam, color) == 0);
static_assert(offsetof(SMaskDataGenerate_SubParam, position) == 4);
static_assert(offsetof(SMaskDataGenerate_SubParam, splitIndex_YRes) == 8);
static_assert(sizeof(SMaskDataGenerate_SubParam) == 12);

static_assert(std::is_standard_layout_v<SParam_GenerateMaskData>);
static_assert(offsetof(SParam_GenerateMaskData, cutTable) == 0);
static_assert(offsetof(SParam_GenerateMaskData, cutTableCount) == 8);
static_assert(offsetof(SParam_GenerateMaskData, baseMaskData) == 16);
static_assert(offsetof(SParam_GenerateMaskData, offsetY) == 24);
static_assert(offsetof(SParam_GenerateMaskData, offsetX) == 28);
static_assert(offsetof(SParam_GenerateMaskData, baseMaskHeight) == 32);
static_assert(offsetof(SParam_GenerateMaskData, baseMaskWidth) == 36);
static_assert(offsetof(SParam_GenerateMaskData, bitsPerPixel) == 40);
static_assert(offsetof(SParam_GenerateMaskData, maskBlock) == 48);
static_assert(sizeof(SParam_GenerateMaskData) == 56);

/// Two colours of three positions in two Y resolution passes.
SPlainMask PlainMask_Small()
{
    SPlainMask mask = PlainMask_Sliding(5, 3);
    mask.colorCount = 2;
    mask.positionCount = 3;
    mask.yRes = 2;
    return mask;
}

TEST(ItemLines, EveryMaskLineBelongsToOneItem)
{
    SGeneratorJob job(PlainMask_Small());
    std::vector<int> owners(static_cast<std::size_t>(job.block.MaskDataBytesCount()), 0);
    for (int color = 0; color < 2; ++color) {
        for (int position = 0; position < 3; ++position) {
            for (int split = 0; split < 2; ++split) {
                const std::uint8_t* first = dotweave::ItemLines_First(job.param, {color, position, split});
                for (int row = 0; row < 5; ++row) {
                    const std::ptrdiff_t at =
                        first - job.block.MaskData() + row * dotweave::ItemLines_Distance(job.param);
                    for (std::ptrdiff_t byte = 0; byte < job.param.maskLineBytes; ++byte)
                        ++owners[static_cast<std::size_t>(at + byte)];
                }
            }
        }
    }
    EXPECT_EQ(owners, std::vector<int>(owners.size(), 1));
}

TEST(PositionPages, FirstItemBlanksAByteOfEachPage)
{
    SPlainMask mask = PlainMask_Small();
    mask.height = 64; // two passes of 64 lines of 68 bytes: 8704 bytes a position
    mask.table.resize(64, mask.table.front());
    SGeneratorJob job(mask);
    ASSERT_EQ(job.param.maskBytes_OnePosition, 8704);
    std::fill_n(job.block.MaskData(), job.block.MaskDataBytesCount(), std::uint8_t{0xFF});
    std::vector<std::uint8_t> expected = job.Bytes();
    dotweave::PositionPages_Touch(job.param, {1, 1, 1}); // not the first
    dotweave::PositionPages_Touch(job.param, {2, 0, 0}); // after the end
    EXPECT_EQ(job.Bytes(), expected);
    dotweave::PositionPages_Touch(job.param, {1, 1, 0}); // the fifth position
    for (const std::size_t at : {0U, 4096U, 8192U})
        expected[std::size_t{4} * 8704 + at] = 0;
    EXPECT_EQ(job.Bytes(), expected);
}

TEST(PositionPages, OnePassIsLeftToTheWorkers)
{
    SPlainMask mask = PlainMask_Small();
    mask.yRes = 1;
    SGeneratorJob job(mask);
    std::fill_n(job.block.MaskData(), job.block.MaskDataBytesCount(), std::uint8_t{0xFF});
    dotweave::PositionPages_Touch(job.param, {0, 0, 0});
    EXPECT_EQ(job.Bytes(), std::vector<std::uint8_t>(job.Bytes().size(), 0xFF));
}

} // namespace
