#include "dotweave/maskdata_base.h"
#include "dotweave/version.h"
#include "picturefile.h"
#include "temporarydirectory.h"
#include "toolprocess.h"

#include <boost/crc.hpp>
#include <nlohmann/json.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>
#include <string>
#include <vector>

using CNames = std::vector<std::string>;
using nlohmann::json;

namespace {

struct SModeCase {
    const char* name;
    std::string options;
    SMaskParam param;
};

std::ostream& operator<<(std::ostream& stream, const SModeCase& one)
{
    return stream << one.name;
}

class BuildMode : public testing::TestWithParam<SModeCase> {};

json Json_Read(const std::string& file)
{
    return json::parse(File_Read(file));
}

/// Compares every pixel of a picture with its bits in the mask bytes.
void Picture_Expect(const SPicture& picture, const CMaskData_Base& mask, const std::uint8_t* bytes)
{
    ASSERT_EQ(picture.width, mask.MaskWidth());
    ASSERT_EQ(picture.height, mask.MaskHeight_IncludeRes());
    int wrongCount = 0;
    int dotCount = 0;
    for (int y = 0; y < picture.height; ++y) {
        const std::uint8_t* line = bytes + static_cast<std::ptrdiff_t>(y) * mask.MaskLineBytes_OneColor();
        for (int x = 0; x < picture.width; ++x) {
            int setCount = 0;
            for (int bit = x * mask.BitsPerPixel(); bit < (x + 1) * mask.BitsPerPixel(); ++bit)
                setCount += line[bit / 8] >> (7 - bit % 8) & 1;
            const bool isDot = setCount == mask.BitsPerPixel();
            wrongCount += isDot != picture.IsBlack(x, y) || (setCount == 0) != picture.IsWhite(x, y) ? 1 : 0;
            dotCount += isDot ? 1 : 0;
        }
    }
    EXPECT_EQ(wrongCount, 0);
    EXPECT_GT(dotCount, 0);
}

} // namespace

TEST_P(BuildMode, FilesAreTheLibrarysOwn)
{
    const CTemporaryDirectory directory;
    ASSERT_EQ(Tool_Run("build --png all --out " + directory.Path().string() + GetParam().options).exitStatus,
              0);
    CMaskData_Base mask;
    ASSERT_TRUE(mask.Create(GetParam().param));
    const int positionCount = mask.MaskBytes_OneColor() / mask.MaskBytes_OnePosition();
    std::string bytes;
    CNames names = {"mask.bin"};
    for (int color = 0; color < GetParam().param.colorCount; ++color) {
        int position = -1;
        for (int i = 0; i < positionCount; ++i) {
            const std::uint8_t* one = mask.MaskData_Get(color, position);
            bytes.append(one, one + mask.MaskBytes_OnePosition());
            names.push_back("mask_c" + std::to_string(color) + "_p" + std::to_string(position) + ".png");
            SCOPED_TRACE(names.back());
            Picture_Expect(Picture_Read(File_Read(directory.Sub(names.back()))), mask, one);
        }
    }
    EXPECT_TRUE(File_Read(directory.Sub("mask.bin")) == bytes);
    EXPECT_EQ(Directory_Names(directory.Path()).size(), names.size() + 1);

    const json files = Json_Read(directory.Sub("mask.json"))["files"];
    ASSERT_EQ(files.size(), names.size());
    for (std::size_t i = 0; i < names.size(); ++i) {
        const std::string content = File_Read(directory.Sub(names[i]));
        boost::crc_32_type checksum;
        checksum.process_bytes(content.data(), content.size());
        EXPECT_EQ(files[i]["name"], names[i]);
        EXPECT_EQ(files[i]["bytes"], content.size());
        EXPECT_EQ(std::stoul(files[i]["crc32"].get<std::string>(), nullptr, 16), checksum.checksum());
    }
}

INSTANTIATE_TEST_SUITE_P(
    , BuildMode,
    testing::Values(SModeCase{"Common", "", {544, 4, 1, 1, 4, 1, 0, 50.0F, 1, 1, 100, 0}},
                    SModeCase{
                        "SineTwoBits",
                        " --nozzle-count 120 --base-pass 2 --x-res-pass 2 --y-res-pass 3 --color-count 2"
                        " --bits-per-pixel 2 --feather-mode nozzle --feather-percent 40.5"
                        " --feather-nozzle-type smooth-3-sine --feather-level-percent 90",
                        {120, 2, 2, 3, 2, 2, 1, 40.5F, 3, 1, 90, 0}},
                    SModeCase{"SplitTwice",
                              " --nozzle-count 96 --base-pass 3 --x-res-pass 6 --y-res-pass 4 --color-count 1"
                              " --color-times 2 --res-split-type x2y2",
                              {96, 3, 6, 4, 1, 1, 0, 50.0F, 1, 2, 100, 5}}),
    testing::PrintToStringParamName());

TEST(BuildCommand, WithoutOptionsBuildsTheCommonMode)
{
    const CTemporaryDirectory directory;
    SToolResult result = Tool_Run("build --out " + directory.Sub("out"));
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(Directory_Names(directory.Sub("out")),
              (CNames{"mask.bin", "mask.json", "mask_c0_p0.png", "mask_c1_p0.png", "mask_c2_p0.png",
                      "mask_c3_p0.png"}));
    // 544 rows in 4 passes: a step of 136 rows, which meets the matrices' 544 rows again after 4 positions;
    // a line of 544 bits is 68 bytes.
    EXPECT_EQ(File_Read(directory.Sub("out/mask.bin")).size(), 4U * 4U * 544U * 68U);
    EXPECT_EQ(Json_Read(directory.Sub("out/mask.json"))["warnings"], json::array());

    const std::size_t time = result.out.find("time");
    ASSERT_NE(time, std::string::npos);
    const std::string timeLine = result.out.substr(time, result.out.find('\n', time) - time);
    EXPECT_EQ(timeLine.find_first_not_of("0123456789 ", 4), timeLine.find("ms to build")) << timeLine;
    EXPECT_EQ(result.out.erase(time, timeLine.size() + 1), "step                   136 lines per pass\n"
                                                           "mask height            544 lines\n"
                                                           "mask width             544 pixels\n"
                                                           "lead blank             408 lines\n"
                                                           "positions                4 per colour\n"
                                                           "mask bytes          591872 in 4 colours\n"
                                                           "files         " +
                                                               directory.Sub("out") +
                                                               ": mask.bin, mask.json, 4 pictures\n");
}

TEST(BuildCommand, WarningsAreLinesAndInTheJson)
{
    const CTemporaryDirectory directory;
    const SToolResult result = // the rows do not divide into the passes, and colours 0 and 16 share a matrix
        Tool_Run("build --base-pass 3 --color-count 17 --png none --out " + directory.Path().string());
    EXPECT_EQ(result.exitStatus, 0);
    std::string lines;
    const json object = Json_Read(directory.Sub("mask.json"));
    for (const json& warning : object["warnings"])
        lines += "dotweave: warning: " + warning.get<std::string>() + '\n';
    EXPECT_EQ(result.err, lines);
    EXPECT_EQ(std::count(lines.begin(), lines.end(), '\n'), 2);
}

TEST(BuildCommand, RecordsOfAResultServeAsAModeFile)
{
    const CTemporaryDirectory directory;
    ASSERT_EQ(Tool_Run("build --nozzle-count 100 --feather-mode nozzle --feather-percent 33.3 --out " +
                       directory.Sub("first"))
                  .exitStatus,
              0);
    File_Write(directory.Sub("mode.json"), Json_Read(directory.Sub("first/mask.json"))["input"].dump());
    ASSERT_EQ(Tool_Run("build --out " + directory.Sub("second") + " --param " + directory.Sub("mode.json"))
                  .exitStatus,
              0);
    for (const std::string& name : Directory_Names(directory.Sub("first")))
        EXPECT_TRUE(File_Read(directory.Sub("first/" + name)) == File_Read(directory.Sub("second/" + name)))
            << name;
}

TEST(BuildCommand, TellsItsVersionAndItsOptions)
{
    EXPECT_EQ(Tool_Run("--version").out, "dotweave " DOTWEAVE_VERSION_STRING "\n");
    const std::string help = Tool_Run("--help").out;
    EXPECT_NE(help.find("build"), std::string::npos);
    EXPECT_NE(help.find("cuttable"), std::string::npos);
    const SToolResult buildHelp = Tool_Run("build --help");
    EXPECT_EQ(buildHelp.exitStatus, 0);
    for (const char* text : {"--out",
                             "--png",
                             "--param",
                             "--log",
                             "--nozzle-count",
                             "--base-pass",
                             "--x-res-pass",
                             "--y-res-pass",
                             "--color-count",
                             "--bits-per-pixel",
                             "--feather-mode",
                             "--feather-percent",
                             "--feather-nozzle-type",
                             "--color-times",
                             "--feather-level-percent",
                             "--res-split-type",
                             "1 to 2147483647",
                             "in percent;",
                             "default 50",
                             "none (0), x2 (1)"})
        EXPECT_NE(buildHelp.out.find(text), std::string::npos) << text;
}
