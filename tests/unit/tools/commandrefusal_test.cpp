#include "sanitized.h"
#include "temporarydirectory.h"
#include "toolprocess.h"

#include <nlohmann/json.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

using CNames = std::vector<std::string>;

namespace {

/// Runs build with arguments that it refuses, and checks that nothing is written.
class CommandRefusal : public testing::Test {
protected:
    SToolResult Refused(int exitStatus, const std::string& words, const CNames& more = {})
    {
        SCOPED_TRACE(words);
        const CNames before = Directory_Names(directory.Path());
        const SToolResult result = Tool_Run(words + " --out " + directory.Sub("out"), more);
        EXPECT_EQ(result.exitStatus, exitStatus);
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(Directory_Names(directory.Path()), before);
        return result;
    }

    CTemporaryDirectory directory;
};

} // namespace

TEST_F(CommandRefusal, OfAValueNamesPlaceValueAndRange)
{
    File_Write(directory.Sub("mode.json"), R"({"colorCount": 0})");
    const std::string whole = " is not allowed; allowed: a whole number from 1 to 2147483647";
    const struct {
        CNames option;
        std::string text;
    } CASES[] = {
        {{"--nozzle-count", "0"}, R"(--nozzle-count: "0")" + whole},
        {{"--base-pass", "four"}, R"(--base-pass: "four")" + whole},
        {{"--x-res-pass", "-1"}, R"(--x-res-pass: "-1")" + whole},
        {{"--y-res-pass", "99999999999"}, R"(--y-res-pass: "99999999999")" + whole},
        {{"--color-count", ""}, R"(--color-count: "")" + whole},
        {{"--color-times", "1\n2"}, R"(--color-times: "1\x0a2")" + whole},
        {{"--base-pass", std::string(5000, '7')},
         "--base-pass: \"" + std::string(98, '7') + "..." + std::string(98, '7') + '"' + whole},
        {{"--bits-per-pixel", "3"},
         R"(--bits-per-pixel: "3" is not allowed; allowed: a whole number from 1 to 2)"},
        {{"--feather-mode", "soft"},
         R"(--feather-mode: "soft" is not allowed; allowed: none (0), nozzle (1))"},
        {{"--feather-percent", "nan"},
         R"(--feather-percent: "nan" is not allowed; allowed: a number from 0 to 100)"},
        {{"--feather-nozzle-type", "4"},
         "--feather-nozzle-type: \"4\" is not allowed; allowed: smooth-2 (1), smooth-3 (2), smooth-3-sine "
         "(3)"},
        {{"--feather-level-percent", "101"},
         "--feather-level-percent: \"101\" is not allowed; allowed: a whole number from 0 to 100"},
        {{"--res-split-type", "x3"},
         "--res-split-type: \"x3\" is not allowed; allowed: none (0), x2 (1), y2 (2), y3 (3), y4 (4), x2y2 "
         "(5)"},
        {{"--png", "some"}, "--png: \"some\" is not allowed; allowed: none, first, all"},
        {{"--param", directory.Sub("mode.json")}, directory.Sub("mode.json") + ": colorCount: 0" + whole},
    };
    for (const auto& [option, text] : CASES)
        EXPECT_EQ(Refused(2, "build", option).err, "dotweave: " + text + '\n');
}

TEST_F(CommandRefusal, OfAnOptionIsOneLine)
{
    const std::string file = directory.Sub("a");
    const CNames commands[] = {{},
                               {"draw"},
                               {"build"},
                               {"build", "--out"},
                               {"build", "--out", ""},
                               {"build", "--out", file, "--passes", "4"},
                               {"build", "--out", file, "more"},
                               {"build", "--out", file, "more\n\x1B[31m"},
                               {"build", "--out", file, "--base-pass"},
                               {"build", "--out", file, "--out", "x"},
                               {"cuttable"},
                               {"cuttable", "--out", file, "--base-pass", "0"},
                               {"cuttable", "--out", file + '/'},
                               {"cuttable", "--out", file, "--svg", directory.Sub("./a")},
                               {"cuttable", "--out", file, "--png", "all"}};
    for (const CNames& command : commands) {
        SCOPED_TRACE(testing::PrintToString(command));
        const SToolResult result = Tool_Run("", command);
        EXPECT_EQ(result.exitStatus, 2);
        EXPECT_EQ(std::count_if(result.err.begin(), result.err.end(), [](char c) { return c < ' '; }), 1)
            << result.err;
        EXPECT_EQ(result.err.rfind("dotweave: ", 0), 0U) << result.err;
        EXPECT_EQ(Directory_Names(directory.Path()), CNames{});
    }
}

/// Twenty modes whose fields are in range one by one. Limits and nearest modes are worked out by hand.
TEST_F(CommandRefusal, OfAModeNamesFieldValueAndLimit)
{
    const std::string smooth3 = " --feather-mode nozzle --feather-nozzle-type smooth-3";
    const struct {
        std::string options;
        const char* reason;
    } CASES[] = {
        {"--color-times 5", "colorTimes 5 is more than basePass 4; nearest that builds: colorTimes 4"},
        {"--base-pass 2 --color-times 3",
         "colorTimes 3 is more than basePass 2; nearest that builds: colorTimes 2"},
        // A step is a multiple of all resolution passes, and every pass has one.
        {"--nozzle-count 3", "nozzleCount 3 is too small for a step of 1 or more rows with 4 passes; nearest "
                             "that builds: nozzleCount 4"},
        {"--base-pass 600", "nozzleCount 544 is too small for a step of 1 or more rows with 600 passes; "
                            "nearest that builds: nozzleCount 600"},
        {"--nozzle-count 5 --y-res-pass 2",
         "nozzleCount 5 is too small for a step of 2 or more rows with 4 passes and "
         "2 Y resolution passes; nearest that builds: nozzleCount 8"},
        {"--nozzle-count 11 --base-pass 3 --x-res-pass 2 --y-res-pass 2",
         "nozzleCount 11 is too small for a step of 4 or more rows with 3 passes, 2 X and 2 Y resolution "
         "passes; "
         "nearest that builds: nozzleCount 12"},
        {"--base-pass 3 --x-res-pass 50 --y-res-pass 4",
         "nozzleCount 544 is too small for a step of 200 or more rows with 3 passes, 50 X and 4 Y resolution "
         "passes; "
         "nearest that builds: nozzleCount 600"},
        // Smooth-3 takes up to three quarters of the rows off first.
        {"--nozzle-count 20 --base-pass 6 --y-res-pass 2 --feather-percent 100" + smooth3,
         "featherPercent 100 leaves nozzleCount 20 too few rows for a step of 2 or more; at most 59 percent "
         "with 6 passes and 2 Y resolution passes"},
        {"--base-pass 300 --feather-percent 100" + smooth3,
         "featherPercent 100 leaves nozzleCount 544 too few rows for a step of 1 or more; at most 60 percent "
         "with 300 passes"},
        // The split leaves no resolution pass.
        {"--res-split-type x2", "xResPass 1 is less than the 2 parts that resSplitType 1 makes of it; "
                                "nearest that builds: xResPass 2"},
        {"--res-split-type y2", "yResPass 1 is less than the 2 parts that resSplitType 2 makes of it; "
                                "nearest that builds: yResPass 2"},
        {"--res-split-type y3 --y-res-pass 2",
         "yResPass 2 is less than the 3 parts that resSplitType 3 makes of it; "
         "nearest that builds: yResPass 3"},
        {"--res-split-type y4 --y-res-pass 3",
         "yResPass 3 is less than the 4 parts that resSplitType 4 makes of it; "
         "nearest that builds: yResPass 4"},
        {"--res-split-type x2y2 --x-res-pass 2",
         "yResPass 1 is less than the 2 parts that resSplitType 5 makes of it; "
         "nearest that builds: yResPass 2"},
        // Feather zones of smooth-2.
        {"--feather-mode nozzle --feather-percent 0",
         "featherPercent 0 leaves a feather zone of 0 rows, and so a lead blank as high as the mask; "
         "at least 2 percent with 4 passes"},
        {"--nozzle-count 24 --base-pass 8 --feather-mode nozzle --feather-percent 90",
         "nozzleCount 24 needs a feather zone of 8 rows, more than the step of 2 rows with 8 passes; "
         "nearest that builds: nozzleCount 25"},
        // 4 positions of 544 lines of 68 bytes are 147968 bytes a colour.
        {"--color-count 14514", "colorCount 14514 makes 2147607552 mask bytes, more than 2147483647; "
                                "nearest that builds: colorCount 14513"},
        {"--color-count 5000 --bits-per-pixel 2 --x-res-pass 30 --y-res-pass 4",
         "colorCount 5000 makes 399513600000 mask bytes, more than 2147483647; nearest that builds: "
         "colorCount 26"},
        {"--x-res-pass 4000000 --base-pass 1",
         "xResPass 4000000 makes mask lines of 2176000000 bits with bitsPerPixel 1, more than 2147483640"},
        {"--nozzle-count 65536 --base-pass 1 --y-res-pass 500",
         "nozzleCount 65536 makes positions of 2228224000 bytes, more than 2147483647"},
    };
    for (const auto& [options, reason] : CASES)
        EXPECT_EQ(Refused(3, "build " + options).err, std::string("dotweave: ") + reason + '\n');
}

TEST_F(CommandRefusal, OfAModeShowsTheLogWhenAsked)
{
    EXPECT_EQ(Refused(3, "build --log --color-times 5")
                  .err.rfind("bool __cdecl CMaskData_Base::Create(const struct SMaskParam &), "
                             "maskdata_base:85, severity 2: "
                             "failure\ndotweave: ",
                             0),
              0U);
    EXPECT_EQ(
        Refused(3, "build --log --feather-mode nozzle --feather-percent 0")
            .err.rfind("bool __cdecl CMaskData_Base::InitResParam(void), maskdata_base:941, severity 1: "
                       "m_maskHeight = 544, m_leadBlankHeight = 544\n"
                       "bool __cdecl CMaskData_Base::Create(const struct SMaskParam &), maskdata_base:118, "
                       "severity 2: failure\ndotweave: ",
                       0),
        0U);
    EXPECT_EQ(Refused(3, "cuttable --base-pass 600").exitStatus, 3); // more passes than rows
}

#if !defined(DOTWEAVE_TEST_IS_SANITIZED) // sanitizers reserve more address space than the limit gives
TEST_F(CommandRefusal, OfMemoryIsOneLine)
{
    const SToolResult result = Tool_RunIn(R"(ulimit -v 400000; exec "$0" "$@")",
                                          "build --color-count 8000 --out " + directory.Sub("out"));
    EXPECT_EQ(result.exitStatus, 3);
    EXPECT_EQ(result.err, "dotweave: not enough memory for this mode\n");
    EXPECT_EQ(Directory_Names(directory.Path()), CNames{});
}
#endif
