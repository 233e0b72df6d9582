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
                                          "build --color-count 1500 --out " + directory.Sub("out"));
    EXPECT_EQ(result.exitStatus, 3);
    EXPECT_EQ(result.err, "dotweave: not enough memory for this mode\n");
    EXPECT_EQ(Directory_Names(directory.Path()), CNames{});
}
#endif
