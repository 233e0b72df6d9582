#include "kernels/maskkernels.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <ostream>
#include <random>
#include <vector>

#include <gtest/gtest.h>

namespace {

using namespace dotweave;

constexpr std::uint8_t UNTOUCHED = 0xA5;

/// One cut: a plane, a table and a block, with the numbers that choose the region.
struct SCutCase {
    int planeRows;
    int planeColumns;
    int blockRows;
    int blockColumns;
    int offsetY;
    int offsetX;
    int bitsPerPixel;

    friend std::ostream& operator<<(std::ostream& stream, const SCutCase& c)
    {
        return stream << "{plane " << c.planeRows << " x " << c.planeColumns << ", block " << c.blockRows
                      << " x " << c.blockColumns << ", offset " << c.offsetY << ", " << c.offsetX << ", bits "
                      << c.bitsPerPixel << "}";
    }
};

class CCut {
public:
    /// Few levels, so that thresholds often lie on a bound; 0 and the top of the scale among them.
    CCut(const SCutCase& c, unsigned int seed)
        : m_case(c), m_random(seed), m_block(c.blockColumns, c.blockRows)
    {
        const std::uint16_t levels[] = {0, 1, 2, 32766, 32767, 32768, 65533, 65534, 65535};
        std::uniform_int_distribution<std::size_t> anyLevel(0, std::size(levels) - 1);
        m_plane.resize(static_cast<std::size_t>(c.planeRows) * static_cast<std::size_t>(c.planeColumns));
        for (std::uint16_t& threshold : m_plane)
            threshold = levels[anyLevel(m_random)];
        m_table.resize(static_cast<std::size_t>(c.blockRows));
        for (SCutTable& entry : m_table)
            entry = {levels[anyLevel(m_random)], levels[anyLevel(m_random)]};
    }

    void Run()
    {
        SParam_GenerateMaskData param = {};
        param.cutTable = m_table.data();
        param.cutTableCount = m_case.blockRows;
        param.baseMaskData = m_plane.data();
        param.offsetY = m_case.offsetY;
        param.offsetX = m_case.offsetX;
        param.baseMaskHeight = m_case.planeRows;
        param.baseMaskWidth = m_case.planeColumns;
        param.bitsPerPixel = m_case.bitsPerPixel;
        param.maskBlock = &m_block;
        MaskKernel_Cut_Reference(param, {0, m_case.blockRows});
    }

    /// The byte that the cut leaves at a pixel that was `before`: one remainder per pixel.
    [[nodiscard]] int Expected(int y, int x, int before) const
    {
        const int row = (m_case.offsetY + y) % m_case.planeRows;
        const int column = (m_case.offsetX + x) % m_case.planeColumns;
        const int cell = row * m_case.planeColumns + column;
        const int threshold = m_plane[static_cast<std::size_t>(cell)];
        const SCutTable& entry = m_table[static_cast<std::size_t>(y)];
        if (threshold > entry.lowerLimit && threshold <= entry.upperLimit)
            return m_case.bitsPerPixel == 2 ? 3 : 1;
        return before;
    }

    void ExpectCut(int before)
    {
        std::fill_n(m_block.MaskData(), m_block.MaskDataBytesCount(), static_cast<std::uint8_t>(before));
        Run();
        int wrong = 0;
        for (int y = 0; y < m_case.blockRows; ++y) {
            for (int x = 0; x < m_case.blockColumns; ++x)
                wrong += Pixel(y, x) == Expected(y, x, before) ? 0 : 1;
        }
        EXPECT_EQ(wrong, 0) << m_case << ", bytes were " << before;
    }

    [[nodiscard]] int Pixel(int y, int x) const
    {
        return m_block.MaskData_Const()[static_cast<std::ptrdiff_t>(y) * m_case.blockColumns + x];
    }

    SCutCase m_case;
    std::mt19937 m_random;
    std::vector<std::uint16_t> m_plane;
    std::vector<SCutTable> m_table;
    CMaskBlock m_block;
};

TEST(MaskKernelCut, BoundsAreOpenBelowAndClosedAbove)
{
    CCut cut({1, 5, 1, 5, 0, 0, 1}, 0);
    cut.m_plane = {16383, 16384, 30000, 32767, 32768};
    cut.m_table = {{32767, 16383}};
    cut.Run();
    const int expected[] = {0, 1, 1, 1, 0};
    for (int x = 0; x < 5; ++x)
        EXPECT_EQ(cut.Pixel(0, x), expected[x]) << x;
}

TEST(MaskKernelCut, WholeScalePrintsAllButZero)
{
    CCut cut({1, 4, 1, 4, 0, 0, 2}, 0);
    cut.m_plane = {0, 1, 65534, 65535};
    cut.m_table = {{65535, 0}};
    cut.Run();
    const int expected[] = {0, 3, 3, 3};
    for (int x = 0; x < 4; ++x)
        EXPECT_EQ(cut.Pixel(0, x), expected[x]) << x;
}

TEST(MaskKernelCut, ThresholdZeroIsNeverSet)
{
    CCut cut({3, 3, 3, 3, 0, 0, 1}, 0);
    std::fill(cut.m_plane.begin(), cut.m_plane.end(), std::uint16_t{0});
    for (const int upper : {0, 1, 65535}) {
        for (const int lower : {0, 1, 65535}) {
            std::fill(cut.m_table.begin(), cut.m_table.end(),
                      SCutTable{static_cast<std::uint16_t>(upper), static_cast<std::uint16_t>(lower)});
            cut.ExpectCut(0);
            EXPECT_EQ(std::count(cut.m_block.MaskData(), cut.m_block.MaskData() + 9, 0), 9);
        }
    }
}

TEST(MaskKernelCut, ReversedRangePrintsNothing)
{
    CCut cut({1, 3, 1, 3, 0, 0, 1}, 0);
    cut.m_plane = {99, 100, 101};
    for (const SCutTable range : {SCutTable{100, 100}, SCutTable{99, 101}, SCutTable{0, 65535}}) {
        cut.m_table = {range};
        cut.Run();
        EXPECT_EQ(cut.Pixel(0, 0) + cut.Pixel(0, 1) + cut.Pixel(0, 2), 0);
    }
}

TEST(MaskKernelCut, TableGoesByBlockRows)
{
    CCut cut({2, 1, 3, 1, 1, 0, 1}, 0);
    cut.m_plane = {10, 20}; // block rows read 20, 10, 20
    cut.m_table = {{20, 10}, {20, 10}, {10, 0}};
    cut.Run();
    EXPECT_EQ(cut.Pixel(0, 0), 1);
    EXPECT_EQ(cut.Pixel(1, 0), 0); // 10 is the exclusive bound
    EXPECT_EQ(cut.Pixel(2, 0), 0);
}

TEST(MaskKernelCut, ABlockLargerThanThePlaneTilesIt)
{
    for (const int offset : {0, 1, 2, 3, 7, 1000}) {
        CCut(SCutCase{3, 2, 10, 9, offset, offset, 1}, 1).ExpectCut(0);
        CCut(SCutCase{1, 1, 4, 5, offset, offset, 2}, 2).ExpectCut(0);
    }
}

TEST(MaskKernelCut, EqualsOneRemainderPerPixel)
{
    constexpr unsigned int SEED = 20240517;
    std::mt19937 random(SEED); // NOLINT(cert-msc32-c,cert-msc51-cpp): the same cases on every run
    const auto any = [&random](int low, int high) {
        return std::uniform_int_distribution<int>(low, high)(random);
    };
    for (unsigned int i = 0; i < 600; ++i) {
        const SCutCase c = {any(1, 40),  any(1, 70),  any(1, 50), any(1, 150),
                            any(0, 200), any(0, 200), any(1, 2)};
        SCOPED_TRACE(testing::Message() << "seed " << SEED << ", case " << i);
        CCut(c, i).ExpectCut(0);
        CCut(c, i).ExpectCut(UNTOUCHED); // a clear pixel is left as it is
    }
}

TEST(MaskKernelCut, NothingToDoDividesByNothing)
{
    // No rows, no columns, and the same with a plane of no thresholds, whose sizes a remainder would trap on.
    for (const SCutCase& c :
         {SCutCase{3, 3, 0, 4, 1, 1, 1}, SCutCase{3, 3, 4, 0, 1, 1, 1}, SCutCase{0, 0, 0, 4, 1, 1, 1},
          SCutCase{0, 0, 4, 0, 1, 1, 1}, SCutCase{0, 3, 4, 4, 1, 1, 1}, SCutCase{3, 0, 4, 4, 1, 1, 1}}) {
        CCut cut(c, 3);
        std::fill_n(cut.m_block.MaskData(), cut.m_block.MaskDataBytesCount(), UNTOUCHED);
        cut.Run(); // the sanitizers see a write outside
        const std::uint8_t* bytes = cut.m_block.MaskData_Const();
        EXPECT_EQ(std::count(bytes, bytes + cut.m_block.MaskDataBytesCount(), UNTOUCHED),
                  cut.m_block.MaskDataBytesCount())
            << c;
    }
}

/// One merge: blocks of random pixels and the lines that take them.
class CMerge {
public:
    CMerge(int rows, int columns, int blockCount, int bitsPerPixel, unsigned int seed)
        : m_rows(rows), m_columns(columns), m_bits(bitsPerPixel),
          m_blocks(static_cast<std::size_t>(blockCount)),
          m_lineBytes((columns * blockCount * bitsPerPixel + 7) / 8)
    {
        std::mt19937 random(seed);
        for (CMaskBlock& block : m_blocks) {
            block.Initialize(columns, rows);
            std::generate_n(block.MaskData(), rows * columns, [&random, this] {
                return static_cast<std::uint8_t>((random() & 1U) * (m_bits == 2 ? 3U : 1U));
            });
        }
    }

    /// Merges into lines `distance` bytes apart after `margin` bytes, all of which were `before`.
    void Run(int margin, int distance, std::uint8_t before)
    {
        m_margin = margin;
        m_distance = distance;
        const int byteCount = margin + distance * m_rows + margin;
        m_bytes.assign(static_cast<std::size_t>(byteCount), before);
        MaskKernel_Merge_Reference(m_blocks.data(), static_cast<int>(m_blocks.size()), m_bits, {0, m_rows},
                                   m_bytes.data() + margin, distance);
    }

    /// The bits of pixel j of the line of a row, read from the most significant end.
    [[nodiscard]] unsigned int Bits(int row, int j) const
    {
        const int firstBit = j * m_bits;
        unsigned int bits = 0;
        for (int bit = firstBit; bit < firstBit + m_bits; ++bit)
            bits = bits * 2U + ((Byte(row, bit / 8) >> (7 - bit % 8)) & 1U);
        return bits;
    }

    [[nodiscard]] unsigned int Byte(int row, int index) const
    {
        const int byte = m_margin + row * m_distance + index;
        return m_bytes[static_cast<std::size_t>(byte)];
    }

    [[nodiscard]] unsigned int Pixel(int block, int row, int column) const
    {
        const CMaskBlock& source = m_blocks[static_cast<std::size_t>(block)];
        return source.MaskData_Const()[static_cast<std::ptrdiff_t>(row) * m_columns + column];
    }

    [[nodiscard]] int WrongPixels(unsigned int before) const
    {
        const int blockCount = static_cast<int>(m_blocks.size());
        int wrong = 0;
        for (int row = 0; row < m_rows; ++row) {
            for (int j = 0; j < m_columns * blockCount; ++j)
                wrong += Bits(row, j) == (Pixel(j % blockCount, row, j / blockCount) | before) ? 0 : 1;
        }
        return wrong;
    }

    /// Bits after the last pixel of a line that are not `before`, up to the end of its last byte.
    [[nodiscard]] int WrongPadding(unsigned int before) const
    {
        const int usedBits = m_columns * static_cast<int>(m_blocks.size()) * m_bits;
        int wrong = 0;
        for (int row = 0; row < m_rows; ++row) {
            for (int bit = usedBits; bit < m_lineBytes * 8; ++bit)
                wrong += ((Byte(row, bit / 8) >> (7 - bit % 8)) & 1U) == before ? 0 : 1;
        }
        return wrong;
    }

    /// Bytes outside the lines that have changed.
    [[nodiscard]] int TouchedOutside(std::uint8_t before) const
    {
        int touched = 0;
        for (int i = 0; i < static_cast<int>(m_bytes.size()); ++i) {
            const int inLines = i - m_margin;
            const bool isInside =
                inLines >= 0 && inLines < m_rows * m_distance && inLines % m_distance < m_lineBytes;
            touched += isInside || m_bytes[static_cast<std::size_t>(i)] == before ? 0 : 1;
        }
        return touched;
    }

    int m_rows;
    int m_columns;
    int m_bits;
    std::vector<CMaskBlock> m_blocks;
    int m_lineBytes;
    int m_margin = 0;
    int m_distance = 0;
    std::vector<std::uint8_t> m_bytes;
};

TEST(MaskKernelMerge, TwoBlocksAlternateFromBitSevenDown)
{
    // Bit 7 is block 0 column 0, bit 6 block 1 column 0, ... bit 0 block 1 column 3.
    for (int bit = 0; bit < 8; ++bit) {
        CMerge merge(1, 4, 2, 1, 0);
        for (CMaskBlock& block : merge.m_blocks)
            block.ClearMaskData();
        const int pixel = 7 - bit;
        merge.m_blocks[static_cast<std::size_t>(pixel % 2)].MaskData()[pixel / 2] = 1;
        merge.Run(0, 1, 0);
        EXPECT_EQ(merge.Byte(0, 0), 1U << bit);
    }
}

TEST(MaskKernelMerge, FourPixelsOfTwoBitsShareAByte)
{
    const unsigned int expected[] = {0xC0, 0x30, 0x0C, 0x03};
    for (int x = 0; x < 4; ++x) {
        CMerge merge(1, 4, 1, 2, 0);
        merge.m_blocks[0].ClearMaskData();
        merge.m_blocks[0].MaskData()[x] = 3;
        merge.Run(0, 1, 0);
        EXPECT_EQ(merge.Byte(0, 0), expected[x]);
    }
}

TEST(MaskKernelMerge, ElevenPixelsEndWithFiveClearBits)
{
    CMerge merge(1, 11, 1, 1, 0);
    std::fill_n(merge.m_blocks[0].MaskData(), 11, std::uint8_t{1});
    merge.Run(0, 2, 0);
    EXPECT_EQ(merge.Byte(0, 0), 0xFFU);
    EXPECT_EQ(merge.Byte(0, 1), 0xE0U);
}

TEST(MaskKernelMerge, FivePixelsEndWithSixClearBits)
{
    CMerge merge(1, 5, 1, 2, 0);
    std::fill_n(merge.m_blocks[0].MaskData(), 5, std::uint8_t{3});
    merge.Run(0, 2, 0);
    EXPECT_EQ(merge.Byte(0, 0), 0xFFU);
    EXPECT_EQ(merge.Byte(0, 1), 0xC0U);
}

TEST(MaskKernelMerge, EveryPixelOfAnySizeLandsInItsBits)
{
    unsigned int seed = 0;
    for (int bits = 1; bits <= 2; ++bits) {
        for (int blockCount = 1; blockCount <= 5; ++blockCount) {
            for (const int columns : {1, 2, 3, 4, 5, 7, 8, 9, 16, 17, 33, 68, 544}) {
                for (const int rows : {1, 2, 5}) {
                    SCOPED_TRACE(testing::Message() << bits << " bits, " << blockCount << " blocks of "
                                                    << rows << " x " << columns);
                    CMerge merge(rows, columns, blockCount, bits, ++seed);
                    merge.Run(3, merge.m_lineBytes, 0);
                    EXPECT_EQ(merge.WrongPixels(0), 0);
                    EXPECT_EQ(merge.WrongPadding(0), 0);
                    EXPECT_EQ(merge.TouchedOutside(0), 0);
                    merge.Run(5, merge.m_lineBytes * 3 + 1, 0); // lines of other passes lie between
                    EXPECT_EQ(merge.WrongPixels(0), 0);
                    EXPECT_EQ(merge.TouchedOutside(0), 0);
                }
            }
        }
    }
}

TEST(MaskKernelMerge, OnlyEverSetsBits)
{
    for (int bits = 1; bits <= 2; ++bits) {
        CMerge merge(4, 13, 3, bits, 5);
        merge.Run(2, merge.m_lineBytes + 2, 0xFF);
        EXPECT_EQ(std::count(merge.m_bytes.begin(), merge.m_bytes.end(), 0xFF),
                  static_cast<std::ptrdiff_t>(merge.m_bytes.size()));
        merge.Run(2, merge.m_lineBytes + 2, UNTOUCHED);
        int cleared = 0;
        for (const std::uint8_t byte : merge.m_bytes)
            cleared += (byte & UNTOUCHED) == UNTOUCHED ? 0 : 1;
        EXPECT_EQ(cleared, 0);
        EXPECT_EQ(merge.TouchedOutside(UNTOUCHED), 0);
    }
}

TEST(MaskKernelMerge, BlocksAreReadByTheirOwnWidth)
{
    CMerge merge(3, 4, 2, 1, 0);
    CMaskBlock& wide = merge.m_blocks[1];
    wide.Initialize(7, 3); // the first block gives the columns, each block its own row distance
    for (int y = 0; y < 3; ++y)
        wide.MaskData()[y * 7 + y] = 1;
    merge.m_blocks[0].ClearMaskData();
    merge.Run(0, 1, 0);
    EXPECT_EQ(merge.Byte(0, 0), 0x40U); // column 0 of block 1 is bit 6
    EXPECT_EQ(merge.Byte(1, 0), 0x10U);
    EXPECT_EQ(merge.Byte(2, 0), 0x04U);
}

TEST(MaskKernelMerge, NothingToDoWritesNothing)
{
    std::uint8_t byte = UNTOUCHED;
    MaskKernel_Merge_Reference(nullptr, 0, 1, {0, 1}, &byte, 1);
    const CMaskBlock noRows(8, 0);
    MaskKernel_Merge_Reference(&noRows, 1, 1, {0, 0}, &byte, 1);
    const CMaskBlock noColumns(0, 8);
    MaskKernel_Merge_Reference(&noColumns, 1, 1, {0, 8}, &byte, 1);
    MaskKernel_Merge_Reference(&noRows, -1, 1, {0, 8}, &byte, 1);
    EXPECT_EQ(byte, UNTOUCHED);
}

} // namespace
