/// @file
/// The fast kernels against the reference, byte for byte, for every instruction set that was compiled and
/// that this machine can run. Widths, offsets, passes and bounds are swept with odd values and around every
/// wrap.

#include "kernels/maskkernels.h"

#include "maskregion.h"

#include <gtest/gtest.h>
#include <hwy/detect_targets.h>
#include <hwy/targets.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

using namespace dotweave;

namespace {

using namespace dotweave;

constexpr std::uint8_t UNTOUCHED = 0xAA;
constexpr std::size_t MARGIN = 64;

std::vector<std::int64_t> Targets()
{
    std::vector<std::int64_t> targets;
    for (std::uint64_t rest = static_cast<std::uint64_t>(hwy::SupportedTargets()); rest != 0;
         rest &= rest - 1)
        targets.push_back(static_cast<std::int64_t>(rest & (~rest + 1)));
    return targets;
}

/// Lets the kernels believe that the machine has one instruction set only.
class MaskKernelTarget : public testing::TestWithParam<std::int64_t> {
protected:
    MaskKernelTarget() { Choose(GetParam()); }
    ~MaskKernelTarget() override { Choose(0); }

private:
    static void Choose(std::int64_t target)
    {
        hwy::SetSupportedTargetsForTest(target);
        hwy::GetChosenTarget().Update(hwy::SupportedTargets());
    }
};

struct SRegionCase {
    int planeColumns;
    int planeRows;
    int columns;
    int rows;
    int passes;
    int bits;
    int offsetY;
    int offsetX;
};

std::ostream& operator<<(std::ostream& stream, const SRegionCase& c)
{
    return stream << "plane " << c.planeColumns << " x " << c.planeRows << ", " << c.columns << " columns, "
                  << c.rows << " rows, " << c.passes << " passes, " << c.bits << " bits, offset " << c.offsetY
                  << ", " << c.offsetX;
}

/// One region of random thresholds, and its blocks and lines as the reference makes them.
class CRegion {
public:
    CRegion(const SRegionCase& c, unsigned int seed)
        : m_case(c), m_plane(Size(c.planeColumns, c.planeRows)), m_table(static_cast<std::size_t>(c.rows)),
          m_lineBytes((c.columns * c.passes * c.bits + 7) / 8), m_lineDistance(m_lineBytes + 3)
    {
        std::minstd_rand random(seed);
        constexpr std::array<std::uint16_t, 8> ENDS = {0, 1, 32767, 32768, 32769, 65533, 65534, 65535};
        const auto level = [&random, &ENDS] {
            const auto draw = static_cast<unsigned int>(random());
            return draw % 3 == 0 ? ENDS[draw / 8 % ENDS.size()] : static_cast<std::uint16_t>(draw >> 8);
        };
        std::generate(m_plane.begin(), m_plane.end(), level);
        for (SCutTable& range : m_table) {
            range = {level(), level()}; // some of them empty: upper below lower, or equal
            if (random() % 4 == 0)
                range = {65535, 0};
            if (random() % 8 == 0)
                range.upperLimit = range.lowerLimit;
        }
        m_blocks = Blocks();
        for (int k = 0; k < c.passes; ++k)
            MaskKernel_Cut_Reference(Cut(m_blocks, k), AllRows());
        m_lines = Lines(HasThresholds() ? 0 : UNTOUCHED);
        if (HasThresholds())
            MaskKernel_Merge_Reference(m_blocks.data(), c.passes, c.bits, AllRows(), m_lines.data() + MARGIN,
                                       m_lineDistance);
    }

    void ExpectCut()
    {
        std::vector<CMaskBlock> blocks = Blocks();
        for (int k = 0; k < m_case.passes; ++k) {
            MaskKernel_Cut(Cut(blocks, k), AllRows());
            const std::uint8_t* expected = m_blocks[static_cast<std::size_t>(k)].MaskData();
            EXPECT_TRUE(std::equal(expected, expected + Size(m_case.columns, m_case.rows),
                                   blocks[static_cast<std::size_t>(k)].MaskData()))
                << m_case << ", pass " << k;
        }
    }

    void ExpectMerge()
    {
        std::vector<std::uint8_t> lines = Lines(UNTOUCHED);
        std::vector<std::uint8_t> scratch = Scratch(0);
        MaskKernel_Merge(m_blocks.data(), m_case.passes, m_case.bits, AllRows(), lines.data() + MARGIN,
                         m_lineDistance, scratch.data());
        ExpectLines(lines, "merge");
    }

    void ExpectCutAndPack()
    {
        std::vector<std::uint8_t> lines = Lines(UNTOUCHED);
        std::vector<std::uint8_t> scratch = Scratch(m_case.planeColumns);
        SMaskPack pack = {};
        pack.cutTable = m_table.data();
        pack.plane = m_plane.data();
        pack.planeWidth = m_case.planeColumns;
        pack.planeHeight = m_case.planeRows;
        pack.offsetY = m_case.offsetY;
        pack.offsetX = m_case.offsetX;
        pack.width = m_case.columns;
        pack.xResPass = m_case.passes;
        pack.bitsPerPixel = m_case.bits;
        pack.firstLine = lines.data() + MARGIN;
        pack.lineDistance = m_lineDistance;
        const int half = m_case.rows / 2; // two calls meet without a seam
        MaskKernel_CutAndPack(pack, {0, half}, scratch.data());
        MaskKernel_CutAndPack(pack, {half, m_case.rows}, scratch.data());
        ExpectLines(lines, "cut and pack");
    }

private:
    static std::size_t Size(int columns, int rows)
    {
        return static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows);
    }

    bool HasThresholds() const { return m_case.planeColumns >= 1 && m_case.planeRows >= 1; }

    SRowRange AllRows() const { return {0, m_case.rows}; }

    std::vector<CMaskBlock> Blocks() const
    {
        std::vector<CMaskBlock> blocks(static_cast<std::size_t>(m_case.passes));
        for (CMaskBlock& block : blocks)
            block.Initialize(m_case.columns, m_case.rows);
        return blocks;
    }

    SParam_GenerateMaskData Cut(std::vector<CMaskBlock>& blocks, int k) const
    {
        SParam_GenerateMaskData cut = {};
        cut.cutTable = m_table.data();
        cut.cutTableCount = m_case.rows;
        cut.baseMaskData = m_plane.data();
        cut.offsetY = m_case.offsetY;
        cut.offsetX = m_case.offsetX + MaskRegion_Column(k, m_case.planeColumns, m_case.passes);
        cut.baseMaskHeight = m_case.planeRows;
        cut.baseMaskWidth = m_case.planeColumns;
        cut.bitsPerPixel = m_case.bits;
        cut.maskBlock = &blocks[static_cast<std::size_t>(k)];
        return cut;
    }

    std::vector<std::uint8_t> Lines(std::uint8_t before) const
    {
        return std::vector<std::uint8_t>(2 * MARGIN + Size(m_lineDistance, m_case.rows), before);
    }

    std::vector<std::uint8_t> Scratch(int planeColumns) const
    {
        return std::vector<std::uint8_t>(
            MaskKernel_ScratchBytes(planeColumns, m_case.columns, m_case.passes));
    }

    /// Lines as the reference has them, and not a byte between or around them touched.
    void ExpectLines(const std::vector<std::uint8_t>& lines, const std::string& kernel) const
    {
        std::vector<std::uint8_t> expected = Lines(UNTOUCHED);
        for (int row = 0; row < m_case.rows; ++row) {
            const auto line =
                static_cast<std::ptrdiff_t>(MARGIN) + static_cast<std::ptrdiff_t>(row) * m_lineDistance;
            std::copy_n(m_lines.begin() + line, m_lineBytes, expected.begin() + line);
        }
        EXPECT_TRUE(lines == expected) << kernel << ": " << m_case;
    }

    SRegionCase m_case;
    std::vector<std::uint16_t> m_plane;
    std::vector<SCutTable> m_table;
    int m_lineBytes;
    int m_lineDistance;
    std::vector<CMaskBlock> m_blocks;
    std::vector<std::uint8_t> m_lines;
};

void ExpectAll(const SRegionCase& c, unsigned int seed)
{
    CRegion region(c, seed);
    region.ExpectCut();
    region.ExpectMerge();
    region.ExpectCutAndPack();
}

TEST_P(MaskKernelTarget, NothingToDoDividesByNothing)
{
    for (const SRegionCase& c : {SRegionCase{0, 0, 0, 0, 2, 1, 1, 1}, SRegionCase{0, 0, 9, 0, 1, 1, 1, 1},
                                 SRegionCase{0, 0, 0, 9, 2, 2, 1, 1}, SRegionCase{0, 3, 9, 4, 1, 1, 1, 1},
                                 SRegionCase{3, 0, 9, 4, 2, 1, 1, 1}}) {
        CRegion region(c, 1);
        region.ExpectCut();
        region.ExpectCutAndPack();
    }
}

TEST_P(MaskKernelTarget, EveryCountOfColumns)
{
    for (int columns = 0; columns <= 200; ++columns) {
        const int passes = columns % 4 + 1;
        const int planeColumns = std::max(columns, 1);
        ExpectAll({planeColumns, 3, columns, 4, passes, columns / 4 % 2 + 1, 2, 0},
                  static_cast<unsigned int>(columns));
    }
}

TEST_P(MaskKernelTarget, WholeMatricesInAllResolutions)
{
    for (int bits = 1; bits <= 2; ++bits) {
        for (int passes = 1; passes <= 11; ++passes)
            ExpectAll({544, 12, 544, 17, passes, bits, 7, 0}, static_cast<unsigned int>(passes));
    }
}

TEST_P(MaskKernelTarget, OffsetsAroundTheWrap)
{
    for (const int planeColumns : {1, 2, 3, 5, 7, 8, 9, 15, 16, 17, 31, 33, 64, 100, 543}) {
        for (const int offsetX : {0, 1, 7, 8, planeColumns - 1, planeColumns, planeColumns + 1}) {
            for (const int columns : {1, 15, 16, 17, 31, 64, 65, 2 * planeColumns + 1}) {
                const int passes = (offsetX + columns) % 5 + 1;
                ExpectAll({planeColumns, 2, columns, 9, passes, (columns + passes) % 2 + 1, offsetX, offsetX},
                          static_cast<unsigned int>(columns));
            }
        }
    }
}

TEST_P(MaskKernelTarget, SeededRegions)
{
    std::minstd_rand random(20);
    const auto draw = [&random](int first, int last) {
        return first + static_cast<int>(random() % static_cast<unsigned int>(last - first + 1));
    };
    for (unsigned int seed = 0; seed < 300; ++seed) {
        const SRegionCase c = {draw(1, 600), draw(1, 20), draw(1, 700), draw(1, 20),
                               draw(1, 12),  draw(1, 2),  draw(0, 50),  draw(0, 900)};
        ExpectAll(c, seed);
    }
}

INSTANTIATE_TEST_SUITE_P(EveryInstructionSet, MaskKernelTarget, testing::ValuesIn(Targets()),
                         [](const auto& target) { return std::string(hwy::TargetName(target.param)); });

} // namespace
