#include "recordoptions.h"

#include "fileerror.h"
#include "record/recorderror.h"
#include "record/recordfields.h"
#include "recordwords.h"
#include "temporarydirectory.h"
#include "usageerror.h"

#include <CLI/CLI.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

using namespace dotweave;

namespace {

SMaskParam Parse(std::vector<std::string> arguments)
{
    CLI::App app;
    const CRecordOptions options(app);
    std::reverse(arguments.begin(), arguments.end()); // the parser takes them from the back
    app.parse(arguments);
    return options.Record();
}

/// As above, from words with blanks between them.
SMaskParam ParseLine(const std::string& line)
{
    std::istringstream stream(line);
    return Parse({std::istream_iterator<std::string>(stream), std::istream_iterator<std::string>()});
}

} // namespace

TEST(RecordOptions, WithoutAnyTheModeIsTheCommonOne)
{
    const SMaskParam expected = {544, 4, 1, 1, 4, 1, FeatherMode_None, 50.0F, 1, 1, 100, ResSplit_None};
    EXPECT_EQ(Words(Parse({})), Words(expected));
}

TEST(RecordOptions, EveryFieldHasAnOption)
{
    const SMaskParam expected = {180, 6, 2, 4, 8, 2, 1, 12.5F, 3, 2, 70, 5};
    const SMaskParam parsed = ParseLine(
        "--nozzle-count 180 --base-pass 6 --x-res-pass 2 --y-res-pass 4 --color-count 8 --bits-per-pixel=2 "
        "--feather-mode nozzle --feather-percent 12.5 --feather-nozzle-type smooth-3-sine --color-times 2 "
        "--feather-level-percent 70 --res-split-type x2y2");
    EXPECT_EQ(Words(parsed), Words(expected));
}

TEST(RecordOptions, OverrideTheModeFileAndTheDefaults)
{
    const CTemporaryDirectory directory;
    const std::string file = directory.Sub("mode.json");
    File_Write(file, R"({"nozzleCount": 180, "basePass": 6})");
    SMaskParam expected = RECORD_DEFAULT;
    expected.nozzleCount = 180;
    expected.basePass = 3;
    EXPECT_EQ(Words(Parse({"--param", file, "--base-pass", "3"})), Words(expected));
    EXPECT_EQ(Words(Parse({"--base-pass", "3", "--param", file})), Words(expected));
    File_Write(file, R"({"basePass": 0})"); // wrong, though an option overrides it
    EXPECT_THROW(Parse({"--param", file, "--base-pass", "3"}), CRecordError);
}

TEST(RecordOptions, AFileThatCannotBeReadIsAFileError)
{
    const CTemporaryDirectory directory;
    EXPECT_THROW(Parse({"--param", directory.Sub("none")}), CFileError);
    EXPECT_THROW(Parse({"--param", directory.Path().string()}), CFileError);
    EXPECT_THROW(Parse({"--param", ""}), CFileError);
    File_Write(directory.Sub("empty"), "");
    EXPECT_THROW(Parse({"--param", directory.Sub("empty")}), CRecordError);
}

TEST(RecordOptions, ANegativeNumberIsAValue)
{
    try {
        Parse({"--base-pass", "-1"});
        ADD_FAILURE() << "taken";
    } catch (const CUsageError& error) {
        EXPECT_STREQ(error.what(),
                     "--base-pass: \"-1\" is not allowed; allowed: a whole number from 1 to 2147483647");
    }
}

TEST(RecordOptions, AnOptionGivenTwiceIsRefused)
{
    EXPECT_THROW(Parse({"--base-pass", "2", "--base-pass", "3"}), CLI::ParseError);
}
