#include "picturefile.h"
#include "temporarydirectory.h"
#include "toolprocess.h"

#include <dotweave/maskdata_base.h>

#include <gtest/gtest.h>

#include <string>

namespace {

const std::string MODE = "render --nozzle-count 40 --base-pass 2 --color-count 2 ";

SPicture Drawn(const std::string& options)
{
    const SToolResult result = Tool_Run(MODE + options + " --out -");
    EXPECT_EQ(result.exitStatus, 0) << result.err;
    return Picture_Read(result.out);
}

bool IsDot(const CMaskData_Base& mask, int color, int position, int line, int column)
{
    int counter = position - 1;
    const std::uint8_t* bytes = mask.MaskData_Get(color, counter);
    return (bytes[line * mask.MaskLineBytes_OneColor() + column / 8] >> (7 - column % 8) & 1) != 0;
}

class RenderCommand : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(mask.Create({40, 2, 1, 1, 2, 1, 0, 50.0F, 1, 1, 100, 0})); }

    CMaskData_Base mask;
};

} // namespace

TEST_F(RenderCommand, APlainDrawingIsTheMask)
{
    const SPicture picture = Drawn("--plain --color 1 --position 3");
    ASSERT_EQ(picture.width, mask.MaskWidth());
    ASSERT_EQ(picture.height, 40);
    for (int y = 0; y < picture.height; ++y)
        for (int x = 0; x < picture.width; ++x)
            ASSERT_TRUE(IsDot(mask, 1, 3, y, x) ? picture.IsBlack(x, y) : picture.IsWhite(x, y))
                << x << ' ' << y;
}

TEST_F(RenderCommand, AWindowIsMagnified)
{
    const SPicture picture = Drawn("--plain --line 5 --lines 7 --column 100 --columns 9 --magnify 3");
    ASSERT_EQ(picture.width, 27);
    ASSERT_EQ(picture.height, 21);
    for (int y = 0; y < picture.height; ++y)
        for (int x = 0; x < picture.width; ++x)
            ASSERT_EQ(picture.IsBlack(x, y), IsDot(mask, 0, 0, 5 + y / 3, 100 + x / 3)) << x << ' ' << y;
}

TEST_F(RenderCommand, RulersTakeRoomAtTheLeftAndTheTop)
{
    // Two digits, a tick and a gap at the left; title, numbers and ticks at the top.
    const SPicture picture = Drawn("--lines 20 --columns 200 --magnify 2");
    EXPECT_EQ(picture.width, 23 + 400 + 30);
    EXPECT_EQ(picture.height, 38 + 40 + 8);
    for (int y = 0; y < 40; ++y)
        for (int x = 0; x < 400; ++x)
            ASSERT_EQ(picture.IsBlack(23 + x, 38 + y), IsDot(mask, 0, 0, y / 2, x / 2)) << x << ' ' << y;
}

TEST_F(RenderCommand, AContactSheetHasAllMasks)
{
    const int positions = mask.MaskBytes_OneColor() / mask.MaskBytes_OnePosition();
    const SPicture picture = Drawn("--sheet --reduce 8");
    EXPECT_EQ(picture.width, 57 + positions * (mask.MaskWidth() / 8 + 10));
    EXPECT_EQ(picture.height, 21 + 2 * (5 + 10));
    EXPECT_LE(Drawn("--sheet").width, 2400);
}

TEST_F(RenderCommand, SaysHowLargeThePictureIs)
{
    const CTemporaryDirectory directory;
    const SToolResult result = Tool_Run(MODE + "--plain --magnify 2 --out " + directory.Sub("a.png"));
    EXPECT_EQ(result.out,
              directory.Sub("a.png") + ": " + std::to_string(2 * mask.MaskWidth()) + " x 80 pixels\n");
    EXPECT_EQ(Picture_Read(File_Read(directory.Sub("a.png"))).height, 80);
}
