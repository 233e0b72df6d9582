#include "temporarydirectory.h"
#include "toolprocess.h"

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <string>
#include <vector>

namespace fs = std::filesystem;
using CNames = std::vector<std::string>;

namespace {

/// Four passes share the scale: i * 65535 / 4, truncated.
std::string CommonTable()
{
    std::string text;
    for (const char* line : {"    0, 16383\n", "16383, 32767\n", "32767, 49151\n", "49151, 65535\n"})
        for (int row = 0; row < 136; ++row)
            text += line;
    return text;
}

} // namespace

TEST(StandardOutput, FullOrClosedIsAnError)
{
    const CTemporaryDirectory directory;
    const struct {
        const char* script;
        const char* reason;
    } CASES[] = {{R"(exec "$0" "$@" >/dev/full)", "No space left on device"},
                 {R"(exec "$0" "$@" >&-)", "Bad file descriptor"}};
    const std::string commands[] = {"--help", "build --help", "--version", "cuttable --out -",
                                    "cuttable --out " + directory.Sub("a")};
    for (const auto& [script, reason] : CASES)
        for (const std::string& command : commands) {
            const SToolResult result = Tool_RunIn(script, command);
            EXPECT_EQ(result.exitStatus, 4) << command;
            EXPECT_EQ(result.err, std::string("dotweave: standard output: ") + reason + '\n') << command;
        }
    EXPECT_EQ(File_Read(directory.Sub("a")), CommonTable()) << "the summary went into the table";
}

TEST(StandardOutput, TakesATableWithoutTheSummary)
{
    EXPECT_EQ(Tool_Run("cuttable --out -").out, CommonTable());
    EXPECT_EQ(Tool_Run("cuttable --out - --svg /dev/null").out, CommonTable());
    const std::string plot = Tool_Run("cuttable --svg -").out;
    EXPECT_EQ(plot.rfind("<?xml", 0), 0U);
    EXPECT_EQ(plot.find("nozzle rows, step"), std::string::npos);
}

TEST(StandardOutput, AReaderThatLeavesEndsTheRunQuietly)
{
    const SToolResult result = Tool_RunIn(R"({ "$0" "$@"; echo $? >&2; } | head -n 1)",
                                          "cuttable --nozzle-count 65536 --color-count 1 --out -");
    EXPECT_EQ(result.out, "    0, 16383\n");
    EXPECT_EQ(result.err, std::to_string(128 + SIGPIPE) + '\n');
}

TEST(OutputTarget, DevicesAndPipesAreWrittenThrough)
{
    const CTemporaryDirectory directory;
    EXPECT_EQ(Tool_Run("cuttable --out /dev/null").exitStatus, 0);
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
    const SToolResult full = Tool_Run("cuttable --out /dev/full --svg " + directory.Sub("plot"));
    EXPECT_EQ(full.exitStatus, 4);
    EXPECT_EQ(full.err, "dotweave: /dev/full: No space left on device\n");
    EXPECT_EQ(Directory_Names(directory.Path()), CNames{});
    const std::string pipe = directory.Sub("pipe");
    const SToolResult piped = Tool_RunIn(
        "mkfifo " + pipe + "; cat " + pipe + R"( & "$0" "$@" >/dev/null; wait)", "cuttable --out " + pipe);
    EXPECT_EQ(piped.out, CommonTable());
    EXPECT_TRUE(fs::is_fifo(pipe));
}

TEST(OutputTarget, LinksAreFollowed)
{
    const CTemporaryDirectory directory;
    fs::create_directory(directory.Sub("far"));
    File_Write(directory.Sub("far/table"), "older");
    fs::create_symlink("far/table", directory.Sub("link"));
    fs::create_symlink("nothing", directory.Sub("broken"));
    EXPECT_EQ(Tool_Run("cuttable --out " + directory.Sub("link")).exitStatus, 0);
    EXPECT_TRUE(fs::is_symlink(directory.Sub("link")));
    EXPECT_EQ(File_Read(directory.Sub("far/table")), CommonTable());
    const SToolResult broken = Tool_Run("cuttable --out " + directory.Sub("broken"));
    EXPECT_EQ(broken.exitStatus, 4);
    EXPECT_EQ(broken.err, "dotweave: " + directory.Sub("broken") + ": is a link to nothing\n");
    EXPECT_EQ(Directory_Names(directory.Path()), (CNames{"broken", "far", "link"}));
}

TEST(OutputTarget, AReplacedFileKeepsItsMode)
{
    const CTemporaryDirectory directory;
    File_Write(directory.Sub("a"), "older");
    const auto mode = fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_write;
    fs::permissions(directory.Sub("a"), mode);
    EXPECT_EQ(Tool_Run("cuttable --out " + directory.Sub("a")).exitStatus, 0);
    EXPECT_EQ(fs::status(directory.Sub("a")).permissions(), mode);
    EXPECT_EQ(File_Read(directory.Sub("a")), CommonTable());
}
