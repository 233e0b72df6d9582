#include "dotweave/maskdata_base.h"
#include "temporarydirectory.h"
#include "toolprocess.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace fs = std::filesystem;
using CNames = std::vector<std::string>;

TEST(CutTableCommand, WritesTheTableThatTheLibraryMakes)
{
    const CTemporaryDirectory directory;
    const std::string text = directory.Sub("x/table.txt"), plot = directory.Sub("y/plot.svg");
    const SToolResult result = Tool_Run(
        "cuttable --nozzle-count 180 --y-res-pass 2 --feather-mode nozzle --feather-nozzle-type smooth-3 "
        "--feather-level-percent 80 --out " +
        text + " --svg " + plot);
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.err, "");
    CMaskData_Base mask;
    ASSERT_TRUE(mask.Create({180, 4, 1, 2, 4, 1, 1, 50.0F, 2, 1, 80, 0}));
    std::vector<SCutTable> table(static_cast<std::size_t>(mask.MaskHeight_IncludeRes() / 2));
    ASSERT_TRUE(mask.CreateCutTable(table.data(), static_cast<int>(table.size())));
    ASSERT_TRUE(CMaskData_Base::OutputCutTable(table.data(), static_cast<int>(table.size()),
                                               directory.Sub("expected")));
    EXPECT_EQ(File_Read(text), File_Read(directory.Sub("expected")));
    EXPECT_NE(File_Read(plot).find("</svg>"), std::string::npos);
    EXPECT_EQ(result.out, std::to_string(table.size()) + " nozzle rows, step " +
                              std::to_string(mask.StepHeight_IncludeRes() / 2) + " rows: " + text + ", " +
                              plot + '\n');
}

TEST(CutTableCommand, KeepsBothFilesWhenOneFails)
{
    const CTemporaryDirectory directory;
    for (const char* folder : {"a", "b"})
        fs::create_directory(directory.Sub(folder));
    for (const char* table : {"a/table.txt", "b/table.txt"}) { // beside the plot, and in another folder
        SCOPED_TRACE(table);
        File_Write(directory.Sub(table), "older");
        fs::create_directories(directory.Sub("b/plot.svg"));
        const SToolResult result =
            Tool_Run("cuttable --out " + directory.Sub(table) + " --svg " + directory.Sub("b/plot.svg"));
        EXPECT_EQ(result.exitStatus, 4);
        EXPECT_EQ(result.err,
                  "dotweave: " + directory.Sub("b/plot.svg") + ": is no regular file and is not replaced\n");
        EXPECT_EQ(File_Read(directory.Sub(table)), "older");
    }
    EXPECT_EQ(Directory_Names(directory.Sub("a")), CNames{"table.txt"});
    EXPECT_EQ(Directory_Names(directory.Sub("b")), (CNames{"plot.svg", "table.txt"}));
}

TEST(CutTableCommand, CallsAFullDiskByItsName)
{
    const CTemporaryDirectory directory;
    const SToolResult result =
        Tool_RunIn(R"(trap '' XFSZ; ulimit -f 800; exec "$0" "$@")",
                   "cuttable --nozzle-count 65536 --color-count 1 --out " + directory.Sub("table.txt"));
    EXPECT_EQ(result.exitStatus, 4);
    EXPECT_EQ(result.err, "dotweave: " + directory.Sub("table.txt") + ": File too large\n");
    EXPECT_EQ(Directory_Names(directory.Path()), CNames{});
}
