#include "dotweave/maskdata_base.h"

#include <cstddef>
#include <cstdint>
#include <latch>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

// The cut on its own: what it does not touch, and threads that cut blocks of their own.

namespace {

constexpr int ROWS = 40;
constexpr int COLUMNS = 60;

/// Thresholds from 0 to 65535 that jump about: 25741 shares no factor with 65536.
std::vector<std::uint16_t> Plane()
{
    std::vector<std::uint16_t> plane;
    plane.reserve(std::size_t{ROWS} * COLUMNS);
    for (int i = 0; i < ROWS * COLUMNS; ++i)
        plane.push_back(static_cast<std::uint16_t>(i * 25741));
    return plane;
}

/// Ranges that slide up the scale.
std::vector<SCutTable> Table(int count)
{
    std::vector<SCutTable> table;
    table.reserve(static_cast<std::size_t>(count));
    for (int y = 0; y < count; ++y)
        table.push_back({static_cast<std::uint16_t>((y + 2) * 65535 / (count + 1)),
                         static_cast<std::uint16_t>(y * 65535 / (count + 1))});
    return table;
}

/// A cut that wraps round the plane in both directions.
SParam_GenerateMaskData Cut(const std::vector<std::uint16_t>& plane, const std::vector<SCutTable>& table,
                            int offset, CMaskBlock& block)
{
    SParam_GenerateMaskData param = {};
    param.cutTable = table.data();
    param.cutTableCount = static_cast<int>(table.size());
    param.baseMaskData = plane.data();
    param.offsetY = offset;
    param.offsetX = 2 * offset;
    param.baseMaskHeight = ROWS;
    param.baseMaskWidth = COLUMNS;
    param.bitsPerPixel = 1;
    param.maskBlock = &block;
    return param;
}

std::vector<std::uint8_t> Bytes(const CMaskBlock& block)
{
    return {block.MaskData_Const(), block.MaskData_Const() + block.MaskDataBytesCount()};
}

} // namespace

TEST(MaskCut, SetsTheDotValueInsideTheRangeOnly)
{
    const std::vector<std::uint16_t> plane = {0, 10, 20, 30, 40, 50}; // 2 rows of 3
    const std::vector<SCutTable> table = {{30, 10}, {65535, 0}};
    // A depth of 0 has a value too: dots of no bits are written as 0.
    const std::vector<int> values = {0x00, 0x01, 0x03};
    for (int bits = 0; bits <= 2; ++bits) {
        CMaskBlock block(3, 2);
        for (int i = 0; i < block.MaskDataBytesCount(); ++i)
            block.MaskData()[i] = 0xA5;
        SParam_GenerateMaskData param = {};
        param.cutTable = table.data();
        param.cutTableCount = 2;
        param.baseMaskData = plane.data();
        param.baseMaskHeight = 2;
        param.baseMaskWidth = 3;
        param.bitsPerPixel = bits;
        param.maskBlock = &block;
        EXPECT_TRUE(CMaskData_Base::GenerateMaskData(param));
        // Row 0 has 0 10 20 against (10, 30], row 1 has 30 40 50 against (0, 65535].
        const int value = values[static_cast<std::size_t>(bits)];
        EXPECT_EQ(std::vector<int>(block.MaskData(), block.MaskData() + 6),
                  (std::vector<int>{0xA5, 0xA5, value, value, value, value}))
            << bits;
    }
}

TEST(MaskCut, ManyThreadsShareOnePlaneAndTable)
{
    constexpr int THREAD_COUNT = 8;
    constexpr int RUN_COUNT = 100; // cuts of each thread, so that they overlap
    constexpr int BLOCK_WIDTH = 100;
    constexpr int BLOCK_HEIGHT = 90;
    const std::vector<std::uint16_t> plane = Plane();
    const std::vector<SCutTable> table = Table(BLOCK_HEIGHT);
    std::vector<std::vector<std::uint8_t>> expected;
    for (int i = 0; i < THREAD_COUNT; ++i) {
        CMaskBlock block(BLOCK_WIDTH, BLOCK_HEIGHT);
        SParam_GenerateMaskData param = Cut(plane, table, i, block);
        ASSERT_TRUE(CMaskData_Base::GenerateMaskData(param));
        expected.push_back(Bytes(block));
        ASSERT_NE(expected.back(), std::vector<std::uint8_t>(std::size_t{BLOCK_WIDTH} * BLOCK_HEIGHT, 0));
        for (int j = 0; j < i; ++j)
            ASSERT_NE(expected.back(), expected[static_cast<std::size_t>(j)]); // each has another region
    }

    std::vector<CMaskBlock> blocks(THREAD_COUNT);
    for (CMaskBlock& block : blocks)
        block.Initialize(BLOCK_WIDTH, BLOCK_HEIGHT);
    std::vector<int> rightCounts(THREAD_COUNT, 0);
    std::latch start(THREAD_COUNT);
    std::vector<std::thread> threads;
    threads.reserve(THREAD_COUNT);
    for (int i = 0; i < THREAD_COUNT; ++i) {
        threads.emplace_back([&, i] {
            const auto slot = static_cast<std::size_t>(i);
            SParam_GenerateMaskData param = Cut(plane, table, i, blocks[slot]);
            start.arrive_and_wait();
            int count = 0;
            for (int run = 0; run < RUN_COUNT; ++run) {
                blocks[slot].ClearMaskData();
                const bool isDone = CMaskData_Base::GenerateMaskData(param);
                count += isDone && Bytes(blocks[slot]) == expected[slot] ? 1 : 0;
            }
            rightCounts[slot] = count;
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(rightCounts, std::vector<int>(THREAD_COUNT, RUN_COUNT));
}
