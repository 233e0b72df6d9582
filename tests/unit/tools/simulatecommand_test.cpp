#include "figures/patchfigures.h"
#include "picture/pictureread.h"
#include "temporarydirectory.h"
#include "toolprocess.h"

#include <dotweave/maskdata_base.h>

#include <nlohmann/json.hpp>

#include <gtest/gtest.h>

#include <string>

using namespace dotweave;
using Json = nlohmann::json;

namespace {

const std::string MODE = "simulate --nozzle-count 40 --base-pass 2 --y-res-pass 2 --color-count 2 ";

SPixelPicture Png(const std::string& file)
{
    const std::string bytes = File_Read(file);
    return Picture_Read({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
}

/// Pixels per metre that a PNG file names, across: the number after the name of the chunk.
int PixelsPerMetre(const std::string& file)
{
    const std::string bytes = File_Read(file);
    const std::size_t at = bytes.find("pHYs");
    EXPECT_NE(at, std::string::npos);
    int number = 0;
    for (std::size_t i = at + 4; i < at + 8; ++i)
        number = number * 256 + static_cast<unsigned char>(bytes[i]);
    return number;
}

std::array<int, 3> Pixel(const SPixelPicture& picture, int x, int y)
{
    const std::uint8_t* const pixel = picture.pixels.data() + (y * picture.width + x) * 3;
    return {pixel[0], pixel[1], pixel[2]};
}

} // namespace

TEST(SimulateCommand, GivesTheFiguresOfTheLibrary)
{
    const SToolResult result = Tool_Run(
        MODE + "--color 1 --advance-constant 0.2 --weak 3:0.5 --dead 7,9-10 --lines 80 --columns 100 --json");
    ASSERT_EQ(result.exitStatus, 0) << result.err;
    const Json object = Json::parse(result.out);

    CMaskData_Base mask;
    ASSERT_TRUE(mask.Create({40, 2, 1, 2, 2, 1, 0, 50.0F, 1, 1, 100, 0}));
    SSheetErrors errors;
    errors.advanceConstant = 0.2;
    errors.weakRows = {{3, 0.5}};
    errors.deadRows = {7, 9, 10};
    SPatchOptions options;
    options.window = {CPassLayout(mask).SteadyLine_First(), 80, 100};
    const SPatchFigures figures = PatchFigures(mask, 1, nullptr, errors, options, {});
    EXPECT_DOUBLE_EQ(object["figures"]["meanLightness"].get<double>(), figures.meanLightness);
    EXPECT_DOUBLE_EQ(object["figures"]["banding"]["rms"].get<double>(), figures.banding.rms);
    EXPECT_EQ(object["figures"]["banding"]["worstLine"], figures.banding.worstLine);
    EXPECT_DOUBLE_EQ(object["figures"]["graininess"].get<double>(), figures.graininess);
    EXPECT_DOUBLE_EQ(object["figures"]["wrongPixels"].get<double>(), figures.printShare.WrongShare());
    EXPECT_GT(figures.printShare.WrongShare(), 0);
    EXPECT_EQ(object["errors"]["deadRows"], (Json{7, 9, 10}));
}

TEST(SimulateCommand, DrawsPrintMapsAndProfile)
{
    const CTemporaryDirectory directory;
    const SToolResult result =
        Tool_Run(MODE + "--dead 0-39 --lines 60 --columns 50 --patch " + directory.Sub("p.png") +
                 " --coverage " + directory.Sub("c.png") + " --passes " + directory.Sub("m.png") +
                 " --profile " + directory.Sub("p.svg"));
    ASSERT_EQ(result.exitStatus, 0) << result.err;
    // Two lines a row pitch and one column: columns are doubled. 600 rows an inch are 1200 pixels an inch,
    // 47244 a metre. With all rows dead the paper stays white, and every wanted pixel is missing.
    const SPixelPicture patch = Png(directory.Sub("p.png"));
    EXPECT_GE(patch.width, 100);
    EXPECT_GT(patch.height, 60);
    EXPECT_EQ(PixelsPerMetre(directory.Sub("p.png")), 47244);
    EXPECT_EQ(Pixel(patch, 99, 59), (std::array{255, 255, 255}));
    EXPECT_EQ(Pixel(Png(directory.Sub("c.png")), 99, 59), (std::array{200, 30, 40}));
    EXPECT_EQ(Pixel(Png(directory.Sub("m.png")), 99, 59), (std::array{255, 255, 255}));
    EXPECT_NE(File_Read(directory.Sub("p.svg")).find("</svg>"), std::string::npos);
}

TEST(SimulateCommand, PrintsAPictureInItsColours)
{
    const CTemporaryDirectory directory;
    // The coverage map of a press without ink is red: a picture for the next press, which has black and cyan.
    ASSERT_EQ(Tool_Run(MODE + "--dead 0-39 --lines 64 --columns 80 --coverage " + directory.Sub("red.png"))
                  .exitStatus,
              0);
    const SPixelPicture red = Png(directory.Sub("red.png"));
    const SToolResult result = Tool_Run(MODE + "--image " + directory.Sub("red.png") + " --patch " +
                                        directory.Sub("again.png") + " --json");
    ASSERT_EQ(result.exitStatus, 0) << result.err;
    const Json patch = Json::parse(result.out)["patch"];
    EXPECT_EQ(patch["lines"], red.height);
    EXPECT_EQ(patch["columns"], red.width);
    EXPECT_EQ(Png(directory.Sub("again.png")).width, red.width * 2);
}

TEST(SimulateCommand, WritesOnePictureToStandardOutput)
{
    const SToolResult result = Tool_Run(MODE + "--lines 20 --columns 20 --patch -");
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.out.substr(1, 3), "PNG");
    EXPECT_EQ(result.err, "");
}
