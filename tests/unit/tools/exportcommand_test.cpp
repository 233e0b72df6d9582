#include "temporarydirectory.h"
#include "toolprocess.h"

#include <dotweave/maskdata_base.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>

namespace {

const std::string MODE = " --nozzle-count 30 --base-pass 2 --color-count 2 --bits-per-pixel 2 --y-res-pass 2";
const SMaskParam PARAM = {30, 2, 1, 2, 2, 2, 0, 50.0F, 1, 1, 100, 0};

class ExportCommand : public testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(mask.Create(PARAM));
        positionCount = mask.MaskBytes_OneColor() / mask.MaskBytes_OnePosition();
    }
    std::string Exported(const std::string& options) const
    {
        const SToolResult result = Tool_Run("export" + MODE + options + " --out -");
        EXPECT_EQ(result.exitStatus, 0) << result.err;
        return result.out;
    }
    bool IsDot(int color, int position, int line, int column) const
    {
        int counter = position - 1;
        const std::uint8_t* bytes = mask.MaskData_Get(color, counter);
        return (bytes[line * mask.MaskLineBytes_OneColor() + column / 4] >> (6 - column % 4 * 2) & 3) == 3;
    }

    CMaskData_Base mask;
    int positionCount = 0;
};

} // namespace

TEST_F(ExportCommand, RawIsMaskBin)
{
    const CTemporaryDirectory directory;
    ASSERT_EQ(Tool_Run("build --png none --out " + directory.Path().string() + MODE).exitStatus, 0);
    const std::string all = File_Read(directory.Sub("mask.bin"));
    EXPECT_TRUE(Exported(" --format raw") == all);
    const auto one = static_cast<std::size_t>(mask.MaskBytes_OnePosition());
    EXPECT_TRUE(Exported(" --format raw --color 1 --position 2") ==
                all.substr(one * static_cast<std::size_t>(positionCount + 2), one));
    EXPECT_EQ(Exported(" --format raw --position 0").size(), 2 * one);
}

TEST_F(ExportCommand, EveryPixelIsAByteOfTheArray)
{
    const std::string file = Exported("");
    const std::size_t head =
        10U + static_cast<unsigned char>(file[8]) + 256U * static_cast<unsigned char>(file[9]);
    const int height = mask.MaskHeight_IncludeRes(), width = mask.MaskWidth();
    ASSERT_EQ(file.size(), head + static_cast<std::size_t>(2 * positionCount * height * width));
    std::size_t i = head;
    for (int color = 0; color < 2; ++color)
        for (int position = 0; position < positionCount; ++position)
            for (int line = 0; line < height; ++line)
                for (int column = 0; column < width; ++column)
                    ASSERT_EQ(file[i++], IsDot(color, position, line, column) ? 1 : 0);
}

TEST_F(ExportCommand, BitmapsFollowEachOther)
{
    const std::string head =
        "P4\n" + std::to_string(mask.MaskWidth()) + ' ' + std::to_string(mask.MaskHeight_IncludeRes()) + '\n';
    const std::string file = Exported(" --format pbm --color 0");
    const std::size_t lineBytes = static_cast<std::size_t>(mask.MaskWidth() + 7) / 8;
    const std::size_t size = head.size() + lineBytes * static_cast<std::size_t>(mask.MaskHeight_IncludeRes());
    ASSERT_EQ(file.size(), size * static_cast<std::size_t>(positionCount));
    for (int position = 0; position < positionCount; ++position) {
        const std::string one = file.substr(size * static_cast<std::size_t>(position), size);
        ASSERT_EQ(one.substr(0, head.size()), head);
        for (int line = 0; line < mask.MaskHeight_IncludeRes(); ++line)
            for (int column = 0; column < mask.MaskWidth(); ++column)
                ASSERT_EQ(one[head.size() + lineBytes * static_cast<std::size_t>(line) +
                              static_cast<std::size_t>(column) / 8] >>
                                  (7 - column % 8) &
                              1,
                          IsDot(0, position, line, column) ? 1 : 0);
    }
}

TEST_F(ExportCommand, ATableHasALineForEachMaskLine)
{
    std::istringstream stream(Exported(" --format csv --color 1"));
    std::string line;
    ASSERT_TRUE(std::getline(stream, line));
    EXPECT_EQ(line.rfind("color,position,line,0,1,2,", 0), 0U);
    EXPECT_EQ(std::count(line.begin(), line.end(), ','), mask.MaskWidth() + 2);
    for (int position = 0; position < positionCount; ++position)
        for (int y = 0; y < mask.MaskHeight_IncludeRes(); ++y) {
            std::string expected = "1," + std::to_string(position) + ',' + std::to_string(y);
            for (int x = 0; x < mask.MaskWidth(); ++x)
                expected += IsDot(1, position, y, x) ? ",1" : ",0";
            ASSERT_TRUE(std::getline(stream, line));
            ASSERT_EQ(line, expected);
        }
    EXPECT_FALSE(std::getline(stream, line));
}

TEST_F(ExportCommand, SaysWhatItWrote)
{
    const CTemporaryDirectory directory;
    const SToolResult result =
        Tool_Run("export --preset speed --format raw --color 0 --position 1 --out " + directory.Sub("a"));
    EXPECT_EQ(result.out, directory.Sub("a") + ": 1 mask of 544 lines and 544 columns, 36992 bytes\n");
    EXPECT_EQ(File_Read(directory.Sub("a")).size(), 36992U);
}
