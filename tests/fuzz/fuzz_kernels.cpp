// The inner loops for any number of X resolution passes: the fast twins against the reference, and both
// against the slow model of a mask.

#include "dotweave/rawmaskdata.h"
#include "fuzzing.h"
#include "kernels/maskkernels.h"
#include "maskregion.h"
#include "plainmask.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <random>
#include <vector>

using namespace dotweave;

namespace {

/// An input: sizes, each brought into a range, and the start of the random numbers that fill tables and planes.
struct SInput {
    std::int32_t columns; ///< of the plane
    std::int32_t planeRows;
    std::int32_t width; ///< columns of one X resolution pass
    std::int32_t rows;
    std::int32_t xResPass;
    std::int32_t yResPass;
    std::int32_t bits;
    std::int32_t offsetX;
    std::int32_t offsetY;
    std::int32_t padding; ///< bytes between two lines
    std::int32_t seed;
};

using CBytes = std::vector<std::uint8_t>;
using CRandom = std::minstd_rand;

constexpr std::uint8_t UNTOUCHED = 0xA5;

/// A bound of the scale or a threshold; the ends of the scale are frequent.
std::uint16_t Level(CRandom& random)
{
    const auto draw = static_cast<std::uint32_t>(random());
    constexpr std::uint16_t EDGES[] = {0, 1, 32767, 32768, 65534, 65535};
    return draw % 4 == 0 ? EDGES[draw / 4 % std::size(EDGES)] : static_cast<std::uint16_t>(draw / 4);
}

/// Any plane under any table: cut and pack in one, the cut and the merge one after the other, the reference.
void Twins_Check(const SInput& input)
{
    CRandom random(static_cast<std::uint32_t>(input.seed));
    const int columns = Fuzz_Number(input.columns, 1, 130);
    const int planeRows = Fuzz_Number(input.planeRows, 1, 12);
    const int width = Fuzz_Number(input.width, 1, 130);
    const int rows = Fuzz_Number(input.rows, 1, 6);
    const int xRes = Fuzz_Number(input.xResPass, 1, 40);
    const int bits = Fuzz_Number(input.bits, 1, 2);
    const int offsetX = Fuzz_Number(input.offsetX, 0, 300);
    const int offsetY = Fuzz_Number(input.offsetY, 0, 40);
    const int lineBytes = (width * xRes * bits + 7) / 8;
    const std::ptrdiff_t distance = lineBytes + Fuzz_Number(input.padding, 0, 9);
    std::vector<std::uint16_t> plane(static_cast<std::size_t>(columns) * static_cast<std::size_t>(planeRows));
    std::generate(plane.begin(), plane.end(), [&random] { return Level(random); });
    std::vector<SCutTable> table(static_cast<std::size_t>(rows));
    for (SCutTable& range : table)
        range = {Level(random), Level(random)};

    std::vector<CMaskBlock> expectedBlocks(static_cast<std::size_t>(xRes));
    std::vector<CMaskBlock> blocks(static_cast<std::size_t>(xRes));
    for (int k = 0; k < xRes; ++k) {
        for (std::vector<CMaskBlock>* all : {&expectedBlocks, &blocks}) {
            CMaskBlock& block = (*all)[static_cast<std::size_t>(k)];
            block.Initialize(width, rows);
            SParam_GenerateMaskData cut = {};
            cut.cutTable = table.data();
            cut.cutTableCount = rows;
            cut.baseMaskData = plane.data();
            cut.baseMaskWidth = columns;
            cut.baseMaskHeight = planeRows;
            cut.offsetX = offsetX + MaskRegion_Column(k, columns, xRes);
            cut.offsetY = offsetY;
            cut.maskBlock = &block;
            cut.bitsPerPixel = bits;
            (all == &blocks ? MaskKernel_Cut : MaskKernel_Cut_Reference)(cut, {0, rows});
        }
        const auto pixels = [count = width * rows](const CMaskBlock& block) {
            return CBytes(block.MaskData_Const(), block.MaskData_Const() + count);
        };
        EXPECT_TRUE(pixels(blocks[static_cast<std::size_t>(k)]) ==
                    pixels(expectedBlocks[static_cast<std::size_t>(k)]))
            << "cut of pass " << k;
    }
    CBytes scratch(MaskKernel_ScratchBytes(columns, width, xRes));
    const std::size_t count = static_cast<std::size_t>(distance * rows);
    CBytes expected(count, UNTOUCHED);
    for (int row = 0; row < rows; ++row)
        std::fill_n(expected.begin() + row * distance, lineBytes, std::uint8_t{0});
    MaskKernel_Merge_Reference(expectedBlocks.data(), xRes, bits, {0, rows}, expected.data(), distance);

    CBytes merged(count, UNTOUCHED);
    for (int row = 0; row < rows; ++row) // the twin wants lines that are zero
        std::fill_n(merged.begin() + row * distance, lineBytes, std::uint8_t{0});
    MaskKernel_Merge(expectedBlocks.data(), xRes, bits, {0, rows}, merged.data(), distance, scratch.data());
    EXPECT_TRUE(merged == expected) << "merge";

    CBytes packed(count, UNTOUCHED);
    const SMaskPack pack = {table.data(), plane.data(), columns, planeRows,     offsetY, offsetX,
                            width,        xRes,         bits,    packed.data(), distance};
    MaskKernel_CutAndPack(pack, {0, rows}, scratch.data());
    EXPECT_TRUE(packed == expected) << "cut and pack";
}

/// A mask of the library's own thresholds against the slow model: whole lines of all resolution passes.
void Model_Check(const SInput& input)
{
    CRandom random(static_cast<std::uint32_t>(input.seed));
    SPlainMask mask;
    mask.height = Fuzz_Number(input.rows, 1, 4);
    mask.step = 1 + Fuzz_Number(input.offsetY, 0, 40);
    mask.matrixColumns = Fuzz_Number(input.columns, 1, 130);
    mask.matrixRows = Fuzz_Number(input.planeRows, 1, 12);
    mask.xRes = Fuzz_Number(input.xResPass, 1, 40);
    mask.yRes = Fuzz_Number(input.yResPass, 1, 4);
    mask.bits = Fuzz_Number(input.bits, 1, 2);
    for (int row = 0; row < mask.height; ++row)
        mask.table.push_back({Level(random), Level(random)});
    std::vector<std::uint16_t> plane;
    for (int row = 0; row < mask.matrixRows; ++row) {
        const std::uint16_t* first = CRawMaskData::RawData(0) + std::ptrdiff_t{row} * 544;
        plane.insert(plane.end(), first, first + mask.matrixColumns);
    }
    const int lineBytes = Plain_LineBytes(mask);
    CBytes bytes(static_cast<std::size_t>(mask.height * mask.yRes * lineBytes), UNTOUCHED);
    CBytes scratch(MaskKernel_ScratchBytes(mask.matrixColumns, mask.matrixColumns, mask.xRes));
    for (int r = 0; r < mask.yRes; ++r) {
        const SMaskPack pack = {mask.table.data(),
                                plane.data(),
                                mask.matrixColumns,
                                mask.matrixRows,
                                MaskRegion_Row(0, mask.step, r, mask.yRes),
                                0,
                                mask.matrixColumns,
                                mask.xRes,
                                mask.bits,
                                bytes.data() + std::ptrdiff_t{r} * lineBytes,
                                std::ptrdiff_t{mask.yRes} * lineBytes};
        MaskKernel_CutAndPack(pack, {0, mask.height}, scratch.data());
    }
    EXPECT_TRUE(bytes == Plain_Bytes(mask)) << "slow model";
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    SInput input = {}; // what a short input lacks is zero
    std::memcpy(&input, data, std::min(size, sizeof input));
    Twins_Check(input);
    Model_Check(input);
    return 0;
}
