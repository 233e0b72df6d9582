#include "cuttablecommand.h"

#include "dotweave/maskdata_base.h"
#include "temporarydirectory.h"
#include "toolprocess.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

namespace fs = std::filesystem;
using CNames = std::vector<std::string>;

TEST(CutTableCommand, WritesALinePerNozzleRow)
{
    const CTemporaryDirectory directory;
    const SToolResult result = Tool_Run({"cuttable", "--out", directory.Sub("table.txt")});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out, "544 nozzle rows, step 136 rows: " + directory.Sub("table.txt") + '\n');
    std::string expected; // four passes share the scale: i * 65535 / 4, truncated
    for (const char* line : {"    0, 16383\n", "16383, 32767\n", "32767, 49151\n", "49151, 65535\n"})
        for (int row = 0; row < 136; ++row)
            expected += line;
    EXPECT_EQ(File_Read(directory.Sub("table.txt")), expected);
    EXPECT_EQ(Directory_Names(directory.Path()), CNames{"table.txt"});
}

TEST(CutTableCommand, WritesTheTableThatTheLibraryMakes)
{
    const CTemporaryDirectory directory;
    ASSERT_EQ(
        Tool_Run({"cuttable", "--out", directory.Sub("x/table.txt"), "--svg", directory.Sub("y/plot.svg"),
                  "--nozzle-count", "180", "--y-res-pass", "2", "--feather-mode", "nozzle",
                  "--feather-nozzle-type", "smooth-3", "--feather-level-percent", "80"})
            .exitStatus,
        0);
    CMaskData_Base mask;
    ASSERT_TRUE(mask.Create({180, 4, 1, 2, 4, 1, 1, 50.0F, 2, 1, 80, 0}));
    std::vector<SCutTable> expected(static_cast<std::size_t>(mask.MaskHeight_IncludeRes() / 2));
    ASSERT_TRUE(mask.CreateCutTable(expected.data(), static_cast<int>(expected.size())));
    const std::vector<SCutTable> written = CutTable_ReadFile(directory.Sub("x/table.txt"));
    ASSERT_EQ(written.size(), expected.size());
    for (std::size_t row = 0; row < expected.size(); ++row) {
        EXPECT_EQ(written[row].lowerLimit, expected[row].lowerLimit) << row;
        EXPECT_EQ(written[row].upperLimit, expected[row].upperLimit) << row;
    }
    EXPECT_NE(File_Read(directory.Sub("y/plot.svg")).find("</svg>"), std::string::npos);
}

TEST(CutTableCommand, ReadsADumpUpToTheFirstLineThatIsNone)
{
    const CTemporaryDirectory directory;
    File_Write(directory.Sub("a"), "13107, 39321\n    0,   255\n70000, 1\n");
    const std::vector<SCutTable> table = CutTable_ReadFile(directory.Sub("a"));
    ASSERT_EQ(table.size(), 2U);
    EXPECT_EQ(table[0].lowerLimit, 13107);
    EXPECT_EQ(table[0].upperLimit, 39321);
    EXPECT_EQ(table[1].upperLimit, 255);
    EXPECT_TRUE(CutTable_ReadFile(directory.Sub("none")).empty());
}

TEST(CutTableCommand, WrongOptionsAreOneLine)
{
    const CTemporaryDirectory directory;
    const std::string file = directory.Sub("a");
    const std::vector<CNames> commands = {{"cuttable"},
                                          {"cuttable", "--out", file, "--base-pass", "0"},
                                          {"cuttable", "--out", file + '/'},
                                          {"cuttable", "--out", file, "--svg", directory.Sub("./a")},
                                          {"cuttable", "--out", file, "--png", "all"}};
    for (const CNames& command : commands) {
        SCOPED_TRACE(testing::PrintToString(command));
        const SToolResult result = Tool_Run(command);
        EXPECT_EQ(result.exitStatus, 2);
        EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
        EXPECT_EQ(Directory_Names(directory.Path()), CNames{});
    }
}

TEST(CutTableCommand, AModeThatTheLibraryRejectsLeavesNoFiles)
{
    const CTemporaryDirectory directory;
    const SToolResult result =
        Tool_Run({"cuttable", "--out", directory.Sub("a"), "--base-pass", "600"}); // more passes than rows
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_NE(result.err.find("severity 2: failure"), std::string::npos);
    EXPECT_EQ(Directory_Names(directory.Path()), CNames{});
}

TEST(CutTableCommand, WhenOneFileFailsTheOtherStaysAsItWas)
{
    const CTemporaryDirectory directory;
    File_Write(directory.Sub("table.txt"), "older");
    fs::create_directory(directory.Sub("plot.svg"));
    const SToolResult result =
        Tool_Run({"cuttable", "--out", directory.Sub("table.txt"), "--svg", directory.Sub("plot.svg")});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.err, "dotweave: " + directory.Sub("plot.svg") + ": Is a directory\n");
    EXPECT_EQ(File_Read(directory.Sub("table.txt")), "older");
    EXPECT_EQ(Directory_Names(directory.Path()), (CNames{"plot.svg", "table.txt"}));
}

TEST(CutTableCommand, AFullDiskIsNoticedThoughTheDumpDoesNotTell)
{
    const CTemporaryDirectory directory;
    const SToolResult result = Tool_RunWithFileLimit(400, {"cuttable", "--out", directory.Sub("table.txt"),
                                                           "--nozzle-count", "65536", "--color-count", "1"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.err, "dotweave: " + directory.Sub("table.txt") + ": Input/output error\n");
    EXPECT_EQ(Directory_Names(directory.Path()), CNames{});
}
