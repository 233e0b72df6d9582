#include "sheet/sheetmaps.h"

#include "maskparams.h"

#include <gtest/gtest.h>

using namespace dotweave;

namespace {

CMapColor Pixel(const SPixelPicture& map, int x, int y)
{
    const std::uint8_t* const pixel =
        map.pixels.data() + (static_cast<std::ptrdiff_t>(y) * map.width + x) * 3;
    return {pixel[0], pixel[1], pixel[2]};
}

class SheetMaps : public testing::Test {
protected:
    void SetUp() override
    {
        SMaskParam param = MaskParam_Plain();
        param.nozzleCount = 16; // steps of 4 rows
        param.basePass = 4;
        ASSERT_TRUE(mask.Create(param));
        window = SheetWindow_Cycle(CPassLayout(mask));
        window.lineCount = 40;
    }

    CMaskData_Base mask;
    SSheetWindow window;
};

} // namespace

TEST_F(SheetMaps, CoverageTellsFewerFromMore)
{
    const CIdealSheet sheet(mask, 0, window, nullptr, std::vector<int>{5}); // dead: on every fourth line
    for (const int times : {1, 2}) {
        const SPixelPicture map = CoverageMap_Make(sheet, nullptr, times);
        ASSERT_EQ(map.width, 544);
        ASSERT_EQ(map.height, 40);
        int missing = 0;
        for (int y = 0; y < 40; ++y)
            for (int x = 0; x < 544; ++x) {
                const bool isPrinted = sheet.Count(y, x) > 0;
                missing += isPrinted ? 0 : 1;
                EXPECT_EQ(Pixel(map, x, y), !isPrinted ? MAP_MISSING : times == 1 ? MAP_RIGHT : MAP_FEWER);
            }
        EXPECT_NEAR(missing, 10 * 544 / 4, 100); // a quarter of the pixels of every fourth line
    }
}

TEST_F(SheetMaps, CoverageOfAnImageIsWhiteBesideIt)
{
    CBitImage image(544, 40, EImageEdge::Blank);
    image.Pixel_Set(3, 2);
    const CIdealSheet unwanted(mask, 0, window);
    const SPixelPicture more = CoverageMap_Make(unwanted, &image, 1); // printed, although nobody asked
    EXPECT_EQ(Pixel(more, 4, 2), MAP_MORE);
    const SPixelPicture map = CoverageMap_Make(CIdealSheet(mask, 0, window, &image), &image, 1);
    EXPECT_EQ(Pixel(map, 4, 2), MAP_UNWANTED);
    EXPECT_EQ(Pixel(map, 3, 2), MAP_RIGHT);
}

TEST_F(SheetMaps, PassMapHasTheColourOfTheTurn)
{
    const CIdealSheet sheet(mask, 0, window);
    const SPixelPicture map = PassMap_Make(sheet);
    EXPECT_EQ(PassMap_TurnCount(sheet), 4);
    for (int y = 0; y < 40; ++y)
        for (int x = 0; x < 544; x += 5) {
            const int turn = sheet.FirstTurn(y, x);
            EXPECT_EQ(Pixel(map, x, y), turn < 0 ? MAP_UNWANTED : MapColor_Turn(turn));
        }
}
