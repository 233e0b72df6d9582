#include "dotweave/maskdata_base.h"
#include "picturefile.h"
#include "temporarydirectory.h"
#include "toolprocess.h"

#include <nlohmann/json.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

namespace fs = std::filesystem;
using CNames = std::vector<std::string>;
using nlohmann::json;

namespace {

constexpr SMaskParam COMMON_MODE = {544, 4, 1, 1, 4, 1, 0, 50.0F, 1, 1, 100, 0};

int PositionCount(const CMaskData_Base& mask)
{
    return mask.MaskBytes_OneColor() / mask.MaskBytes_OnePosition();
}

std::string AllBytes(const CMaskData_Base& mask, int colorCount)
{
    std::string bytes;
    for (int color = 0; color < colorCount; ++color) {
        int position = -1;
        for (int i = 0; i < PositionCount(mask); ++i) {
            const std::uint8_t* one = mask.MaskData_Get(color, position);
            bytes.append(one, one + mask.MaskBytes_OnePosition());
        }
    }
    return bytes;
}

/// Every pixel of the picture is held against its bits in the mask bytes.
void Picture_Expect(const SPicture& picture, const CMaskData_Base& mask, const std::uint8_t* bytes)
{
    EXPECT_EQ(picture.bitDepth, 1);
    EXPECT_EQ(picture.colorType, 0);
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
            const bool isClear = setCount == 0;
            wrongCount += isDot != picture.IsBlack(x, y) || isClear != picture.IsWhite(x, y) ? 1 : 0;
            dotCount += isDot ? 1 : 0;
        }
    }
    EXPECT_EQ(wrongCount, 0);
    EXPECT_GT(dotCount, 0);
}

struct SRefusal {
    CNames options;
    std::string text; ///< the whole line behind "dotweave: "
};

} // namespace

TEST(BuildCommand, WithoutOptionsBuildsTheCommonProductionMode)
{
    const CTemporaryDirectory directory;
    const SToolResult result = Tool_Run({"build", "--out", directory.Sub("out")});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(Directory_Names(directory.Sub("out")),
              (CNames{"mask.bin", "mask.json", "mask_c0_p0.png", "mask_c1_p0.png", "mask_c2_p0.png",
                      "mask_c3_p0.png"}));
    // 544 rows in 4 passes: a step of 136 rows, which meets the matrices' 544 rows again after 4 positions;
    // a line of 544 bits is 68 bytes.
    EXPECT_EQ(fs::file_size(directory.Sub("out/mask.bin")), 4U * 4U * 544U * 68U);
    const json object = json::parse(File_Read(directory.Sub("out/mask.json")));
    const json record = {{"nozzleCount", 544},
                         {"basePass", 4},
                         {"xResPass", 1},
                         {"yResPass", 1},
                         {"colorCount", 4},
                         {"bitsPerPixel", 1},
                         {"featherMode", 0},
                         {"featherPercent", 50.0},
                         {"featherNozzleType", 1},
                         {"colorTimes", 1},
                         {"featherLevelPercent", 100},
                         {"resSplitType", 0}};
    EXPECT_EQ(object["input"], record);
    EXPECT_EQ(object["current"], record);
    EXPECT_EQ(object["geometry"]["StepHeight_IncludeRes"], 136);
    EXPECT_EQ(object["geometry"]["MaskHeight_IncludeRes"], 544);
    EXPECT_EQ(object["geometry"]["LeadBlankHeight_IncludeRes"], 408);
    EXPECT_EQ(object["geometry"]["MaskLineBytes_OneColor"], 68);
    EXPECT_EQ(object["geometry"]["positionCount"], 4);
    EXPECT_EQ(object["files"]["pictures"],
              (json{"mask_c0_p0.png", "mask_c1_p0.png", "mask_c2_p0.png", "mask_c3_p0.png"}));
}

TEST(BuildCommand, PrintsAShortTable)
{
    const CTemporaryDirectory directory;
    std::string out = Tool_Run({"build", "--out", directory.Sub("out")}).out;
    const std::size_t time = out.find("time");
    ASSERT_NE(time, std::string::npos);
    const std::string timeLine = out.substr(time, out.find('\n', time) - time);
    EXPECT_EQ(timeLine.find_first_not_of("0123456789 ", 4), timeLine.find("ms to build")) << timeLine;
    out.erase(time, timeLine.size() + 1);
    EXPECT_EQ(out, "step                   136 lines per pass\n"
                   "mask height            544 lines\n"
                   "mask width             544 pixels\n"
                   "lead blank             408 lines\n"
                   "positions                4 per colour\n"
                   "mask bytes          591872 in 4 colours\n"
                   "files         " +
                       directory.Sub("out") + ": mask.bin, mask.json, 4 pictures\n");
}

TEST(BuildCommand, SaysWhenTheRowsDoNotDivideIntoThePasses)
{
    const CTemporaryDirectory directory;
    const SToolResult result = Tool_Run({"build", "--base-pass", "3", "--out", directory.Sub("out")});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_NE(result.out.find("built with smooth-2 feathered edges"), std::string::npos);
    const json object = json::parse(File_Read(directory.Sub("out/mask.json")));
    EXPECT_EQ(object["input"]["featherMode"], 0);
    EXPECT_EQ(object["current"]["featherMode"], 1);
}

TEST(BuildCommand, FilesSayWhatTheLibrarySaysForBothDepthsAndResolutions)
{
    struct SCase {
        SMaskParam param;
        CNames options;
    };
    const std::vector<SCase> cases = {
        {COMMON_MODE, {}},
        {{120, 2, 2, 3, 2, 2, 1, 40.5F, 3, 1, 90, 0},
         {"--nozzle-count",
          "120",
          "--base-pass",
          "2",
          "--x-res-pass",
          "2",
          "--y-res-pass",
          "3",
          "--color-count",
          "2",
          "--bits-per-pixel",
          "2",
          "--feather-mode",
          "nozzle",
          "--feather-percent",
          "40.5",
          "--feather-nozzle-type",
          "smooth-3-sine",
          "--feather-level-percent",
          "90"}},
        {{96, 3, 6, 4, 1, 1, 0, 50.0F, 1, 2, 100, 5},
         {"--nozzle-count", "96", "--base-pass", "3", "--x-res-pass", "6", "--y-res-pass", "4",
          "--color-count", "1", "--color-times", "2", "--res-split-type", "x2y2"}},
    };
    for (const SCase& one : cases) {
        SCOPED_TRACE(testing::PrintToString(one.options));
        const CTemporaryDirectory directory;
        CNames command = {"build", "--out", directory.Path().string(), "--png", "all"};
        command.insert(command.end(), one.options.begin(), one.options.end());
        ASSERT_EQ(Tool_Run(command).exitStatus, 0);

        CMaskData_Base mask;
        ASSERT_TRUE(mask.Create(one.param));
        EXPECT_TRUE(File_Read(directory.Sub("mask.bin")) == AllBytes(mask, one.param.colorCount));

        const json geometry = json::parse(File_Read(directory.Sub("mask.json")))["geometry"];
        const json expected = {
            {"BasePass", mask.BasePass()},
            {"XResPass", mask.XResPass()},
            {"YResPass", mask.YResPass()},
            {"BitsPerPixel", mask.BitsPerPixel()},
            {"MaskWidth", mask.MaskWidth()},
            {"MaskHeight_IncludeRes", mask.MaskHeight_IncludeRes()},
            {"StepHeight_IncludeRes", mask.StepHeight_IncludeRes()},
            {"RealStepHeight_IncludeRes", mask.RealStepHeight_IncludeRes()},
            {"LeadBlankHeight_IncludeRes", mask.LeadBlankHeight_IncludeRes()},
            {"XResStep", std::vector<int>(mask.XResStep(), mask.XResStep() + mask.XResPass())},
            {"YResStep", std::vector<int>(mask.YResStep(), mask.YResStep() + mask.YResPass())},
            {"MaskLineBytes_OneColor", mask.MaskLineBytes_OneColor()},
            {"MaskBytes_OnePosition", mask.MaskBytes_OnePosition()},
            {"MaskBytes_OneColor", mask.MaskBytes_OneColor()},
            {"SplitCount_XRes", mask.SplitCount_XRes_Get()},
            {"SplitCount_YRes", mask.SplitCount_YRes_Get()},
            {"colorCount", one.param.colorCount},
            {"positionCount", PositionCount(mask)}};
        EXPECT_EQ(geometry, expected);

        for (int color = 0; color < one.param.colorCount; ++color) {
            int position = -1;
            for (int i = 0; i < PositionCount(mask); ++i) {
                const std::uint8_t* bytes = mask.MaskData_Get(color, position);
                const std::string name =
                    "mask_c" + std::to_string(color) + "_p" + std::to_string(position) + ".png";
                SCOPED_TRACE(name);
                Picture_Expect(Picture_Read(File_Read(directory.Sub(name))), mask, bytes);
            }
        }
        const std::size_t pictureCount =
            static_cast<std::size_t>(one.param.colorCount) * static_cast<std::size_t>(PositionCount(mask));
        EXPECT_EQ(Directory_Names(directory.Path()).size(), pictureCount + 2);
    }
}

TEST(BuildCommand, ANewResultReplacesTheOldOneAndItsPictures)
{
    const CTemporaryDirectory directory;
    ASSERT_EQ(Tool_Run({"build", "--out", directory.Path().string(), "--png", "all"}).exitStatus, 0);
    ASSERT_EQ(Directory_Names(directory.Path()).size(), 18U);
    const CNames others = {"a", "mask_c0_p0.png.txt", "mask_c00_p0.png", "mask_c9_p.png", "xmask_c9_p9.png"};
    for (const std::string& name : others)
        File_Write(directory.Sub(name), "somebody else's");
    ASSERT_EQ(Tool_Run({"build", "--out", directory.Path().string(), "--color-count", "1", "--png", "first"})
                  .exitStatus,
              0);
    EXPECT_EQ(Directory_Names(directory.Path()),
              (CNames{"a", "mask.bin", "mask.json", "mask_c00_p0.png", "mask_c0_p0.png", "mask_c0_p0.png.txt",
                      "mask_c9_p.png", "xmask_c9_p9.png"}));
    EXPECT_EQ(fs::file_size(directory.Sub("mask.bin")), 4U * 544U * 68U);
    ASSERT_EQ(Tool_Run({"build", "--out", directory.Path().string(), "--png", "none"}).exitStatus, 0);
    EXPECT_EQ(Directory_Names(directory.Path()),
              (CNames{"a", "mask.bin", "mask.json", "mask_c00_p0.png", "mask_c0_p0.png.txt", "mask_c9_p.png",
                      "xmask_c9_p9.png"}));
}

TEST(BuildCommand, RecordsOfAResultServeAsAModeFile)
{
    const CTemporaryDirectory directory;
    ASSERT_EQ(Tool_Run({"build", "--out", directory.Sub("first"), "--nozzle-count", "100", "--feather-mode",
                        "nozzle", "--feather-percent", "33.3"})
                  .exitStatus,
              0);
    const json object = json::parse(File_Read(directory.Sub("first/mask.json")));
    File_Write(directory.Sub("mode.json"), object["input"].dump());
    ASSERT_EQ(Tool_Run({"build", "--out", directory.Sub("second"), "--param", directory.Sub("mode.json")})
                  .exitStatus,
              0);
    for (const std::string& name : Directory_Names(directory.Sub("first")))
        EXPECT_TRUE(File_Read(directory.Sub("first/" + name)) == File_Read(directory.Sub("second/" + name)))
            << name;
}

TEST(BuildCommand, AWrongValueIsOneLineAndLeavesNoFiles)
{
    const CTemporaryDirectory directory;
    File_Write(directory.Sub("mode.json"), R"({"colorCount": 0})");
    const std::string whole = " is not allowed; allowed: a whole number from 1 to 2147483647";
    const std::vector<SRefusal> refusals = {
        {{"--nozzle-count", "0"}, "--nozzle-count: \"0\"" + whole},
        {{"--base-pass", "four"}, "--base-pass: \"four\"" + whole},
        {{"--x-res-pass", "-1"}, "--x-res-pass: \"-1\"" + whole},
        {{"--y-res-pass", "99999999999"}, "--y-res-pass: \"99999999999\"" + whole},
        {{"--color-count", ""}, "--color-count: \"\"" + whole},
        {{"--color-times", "1\n2"}, "--color-times: \"1 2\"" + whole},
        {{"--bits-per-pixel", "3"},
         "--bits-per-pixel: \"3\" is not allowed; allowed: a whole number from 1 to 2"},
        {{"--feather-mode", "soft"},
         "--feather-mode: \"soft\" is not allowed; allowed: none (0), nozzle (1)"},
        {{"--feather-percent", "nan"},
         "--feather-percent: \"nan\" is not allowed; allowed: a number from 0 to 100"},
        {{"--feather-nozzle-type", "4"},
         "--feather-nozzle-type: \"4\" is not allowed; allowed: smooth-2 (1), "
         "smooth-3 (2), smooth-3-sine (3)"},
        {{"--feather-level-percent", "101"},
         "--feather-level-percent: \"101\" is not allowed; allowed: a whole number from 0 to 100"},
        {{"--res-split-type", "x3"},
         "--res-split-type: \"x3\" is not allowed; allowed: none (0), x2 (1), y2 "
         "(2), y3 (3), y4 (4), x2y2 (5)"},
        {{"--png", "some"}, "--png: \"some\" is not allowed; allowed: none, first, all"},
        {{"--param", directory.Sub("mode.json")}, directory.Sub("mode.json") + ": colorCount: 0" + whole},
    };
    for (const SRefusal& refusal : refusals) {
        SCOPED_TRACE(refusal.text);
        CNames command = {"build", "--out", directory.Sub("out")};
        command.insert(command.end(), refusal.options.begin(), refusal.options.end());
        const SToolResult result = Tool_Run(command);
        EXPECT_EQ(result.exitStatus, 2);
        EXPECT_EQ(result.err, "dotweave: " + refusal.text + '\n');
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(Directory_Names(directory.Path()), CNames{"mode.json"});
    }
}

TEST(BuildCommand, AWrongOptionIsOneLineToo)
{
    const CTemporaryDirectory directory;
    const std::vector<CNames> commands = {{},
                                          {"draw"},
                                          {"build"},
                                          {"build", "--out"},
                                          {"build", "--out", ""},
                                          {"build", "--out", directory.Sub("out"), "--passes", "4"},
                                          {"build", "--out", directory.Sub("out"), "more"},
                                          {"build", "--out", directory.Sub("out"), "--base-pass"},
                                          {"build", "--out", directory.Sub("out"), "--out", "x"}};
    for (const CNames& command : commands) {
        SCOPED_TRACE(testing::PrintToString(command));
        const SToolResult result = Tool_Run(command);
        EXPECT_EQ(result.exitStatus, 2);
        EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
        EXPECT_EQ(result.err.rfind("dotweave: ", 0), 0U) << result.err;
        EXPECT_EQ(Directory_Names(directory.Path()), CNames{});
    }
}

TEST(BuildCommand, AModeThatTheLibraryRejectsShowsItsLog)
{
    const CTemporaryDirectory directory;
    const std::string end = "dotweave: the library does not build this mode; its log stands above\n";
    const SToolResult tooOften = Tool_Run({"build", "--out", directory.Sub("out"), "--color-times", "5"});
    EXPECT_EQ(tooOften.exitStatus, 1);
    EXPECT_EQ(tooOften.out, "");
    EXPECT_EQ(tooOften.err,
              "bool __cdecl CMaskData_Base::Create(const struct SMaskParam &), maskdata_base:85, "
              "severity 2: failure\n" +
                  end);
    const SToolResult noZone = Tool_Run(
        {"build", "--out", directory.Sub("out"), "--feather-mode", "nozzle", "--feather-percent", "0"});
    EXPECT_EQ(noZone.exitStatus, 1);
    EXPECT_EQ(noZone.err,
              "bool __cdecl CMaskData_Base::InitResParam(void), maskdata_base:941, severity 1: "
              "m_maskHeight = 544, m_leadBlankHeight = 544\n"
              "bool __cdecl CMaskData_Base::Create(const struct SMaskParam &), maskdata_base:118, "
              "severity 2: failure\n" +
                  end);
    EXPECT_EQ(Directory_Names(directory.Path()), CNames{});
}

TEST(BuildCommand, ADirectoryThatCannotBeWrittenIsOneLine)
{
    const CTemporaryDirectory directory;
    File_Write(directory.Sub("file"), "text");
    for (const char* name : {"file", "file/out"}) {
        SCOPED_TRACE(name);
        const SToolResult result = Tool_Run({"build", "--out", directory.Sub(name)});
        EXPECT_EQ(result.exitStatus, 1);
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.err, "dotweave: " + directory.Sub(name) + ": Not a directory\n");
    }
    EXPECT_EQ(Directory_Names(directory.Path()), CNames{"file"});
    EXPECT_EQ(File_Read(directory.Sub("file")), "text");
}

TEST(BuildCommand, AFullDiskLeavesTheOlderResult)
{
    const CTemporaryDirectory directory;
    const std::string out = directory.Sub("out");
    const SToolResult nothingYet = Tool_RunWithFileLimit(400, {"build", "--out", out});
    EXPECT_EQ(nothingYet.exitStatus, 1);
    EXPECT_EQ(nothingYet.err, "dotweave: " + out + "/mask.bin: File too large\n");
    EXPECT_EQ(Directory_Names(directory.Path()), CNames{});

    ASSERT_EQ(Tool_Run({"build", "--out", out, "--color-count", "1"}).exitStatus, 0);
    const std::string older = File_Read(out + "/mask.bin");
    EXPECT_EQ(Tool_RunWithFileLimit(400, {"build", "--out", out}).exitStatus, 1);
    EXPECT_EQ(Directory_Names(out), (CNames{"mask.bin", "mask.json", "mask_c0_p0.png"}));
    EXPECT_TRUE(File_Read(out + "/mask.bin") == older);
}

TEST(BuildCommand, AFileThatCannotTakeItsPlaceLeavesTheOlderResult)
{
    const CTemporaryDirectory directory;
    const std::string out = directory.Path().string();
    ASSERT_EQ(Tool_Run({"build", "--out", out, "--color-count", "1"}).exitStatus, 0);
    const std::string older = File_Read(out + "/mask.bin");
    fs::create_directory(out + "/mask_c3_p0.png");
    const SToolResult result = Tool_Run({"build", "--out", out});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.err, "dotweave: " + out + "/mask_c3_p0.png: Is a directory\n");
    EXPECT_EQ(Directory_Names(out), (CNames{"mask.bin", "mask.json", "mask_c0_p0.png", "mask_c3_p0.png"}));
    EXPECT_TRUE(File_Read(out + "/mask.bin") == older);
}

TEST(BuildCommand, AnInterruptedRunLeavesNothing)
{
    // A mode of a thousand pictures: the signal comes while they are written.
    const CTemporaryDirectory directory;
    CToolProcess process({DOTWEAVE_TOOL, "build", "--out", directory.Sub("out"), "--png", "all",
                          "--nozzle-count", "132", "--color-count", "64"});
    while (!fs::exists(directory.Sub("out")) && !process.IsEnded())
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    process.Signal(SIGTERM);
    const SToolResult result = process.Wait();
    EXPECT_EQ(result.signal, SIGTERM) << result.err;
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(Directory_Names(directory.Path()), CNames{});
}

TEST(BuildCommand, TellsItsVersionAndItsOptions)
{
    const SToolResult version = Tool_Run({"--version"});
    EXPECT_EQ(version.exitStatus, 0);
    EXPECT_EQ(version.out, "dotweave " DOTWEAVE_VERSION "\n");
    const SToolResult help = Tool_Run({"--help"});
    EXPECT_EQ(help.exitStatus, 0);
    EXPECT_NE(help.out.find("build"), std::string::npos);
    EXPECT_NE(help.out.find("cuttable"), std::string::npos);
    const SToolResult buildHelp = Tool_Run({"build", "--help"});
    EXPECT_EQ(buildHelp.exitStatus, 0);
    for (const char* text :
         {"--out", "--png", "--param", "--nozzle-count", "--base-pass", "--x-res-pass", "--y-res-pass",
          "--color-count", "--bits-per-pixel", "--feather-mode", "--feather-percent", "--feather-nozzle-type",
          "--color-times", "--feather-level-percent", "--res-split-type", "1 to 2147483647",
          "in percent; a number from 0 to 100; default 50", "none (0), x2 (1)"})
        EXPECT_NE(buildHelp.out.find(text), std::string::npos) << text;
}
