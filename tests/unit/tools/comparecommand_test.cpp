#include "picture/pictureread.h"
#include "temporarydirectory.h"
#include "toolprocess.h"

#include <nlohmann/json.hpp>

#include <gtest/gtest.h>

#include <string>

using namespace dotweave;
using Json = nlohmann::json;

namespace {

const std::string SMALL = " --height 60 --width 40 --supersample 2";

class CompareCommand : public testing::Test {
protected:
    void SetUp() override
    {
        // 48 rows in 2 passes are steps of 24. Half of three quarters of them is 18: smooth-3 leaves 30, steps
        // of 15.
        File_Write(directory.Sub("hard.json"), R"({"nozzleCount": 48, "basePass": 2, "colorCount": 1})");
        File_Write(directory.Sub("ramp.json"),
                   R"({"nozzleCount": 48, "basePass": 2, "colorCount": 1, "featherMode": "nozzle",
                       "featherNozzleType": "smooth-3", "featherPercent": 50})");
        modes = "compare " + directory.Sub("hard.json") + ' ' + directory.Sub("ramp.json") + SMALL;
    }
    Json Compared(const std::string& words) const
    {
        const SToolResult result = Tool_Run(modes + " --json " + words);
        EXPECT_EQ(result.exitStatus, 0) << result.err;
        return Json::parse(result.out)["modes"];
    }

    CTemporaryDirectory directory;
    std::string modes;
};

} // namespace

TEST_F(CompareCommand, AddsHardEdgesWithTheSameStep)
{
    const Json compared = Compared("--advances 0,0.5");
    ASSERT_EQ(compared.size(), 3U);
    EXPECT_EQ(compared[0]["stepRows"], 24);
    EXPECT_EQ(compared[1]["stepRows"], 15);
    EXPECT_EQ(compared[2]["stepRows"], 15);
    EXPECT_DOUBLE_EQ(compared[0]["relativeArea"].get<double>(), 1);
    EXPECT_DOUBLE_EQ(compared[1]["relativeArea"].get<double>(), 15.0 / 24);
    EXPECT_EQ(compared[2]["mode"]["nozzleCount"], 30);
    EXPECT_EQ(compared[2]["mode"]["featherMode"], 0);
    EXPECT_EQ(compared[1]["hardEdges"], compared[2]["name"]);
    for (const Json& mode : compared) {
        ASSERT_EQ(mode["prints"].size(), 2U);
        EXPECT_EQ(mode["prints"][1]["advance"], 0.5);
    }
    EXPECT_EQ(Compared("--advances 0 --no-hard-edges").size(), 2U);
}

TEST_F(CompareCommand, JudgesAsSimulateDoes)
{
    const Json compared = Compared("--advances 0.5");
    // 60 rows are four steps of 15; the patch of the same size.
    const SToolResult alone =
        Tool_Run("simulate --param " + directory.Sub("ramp.json") +
                 " --advance-constant 0.5 --lines 60 --columns 40 --supersample 2 --json");
    ASSERT_EQ(alone.exitStatus, 0) << alone.err;
    EXPECT_EQ(compared[1]["prints"][0]["figures"], Json::parse(alone.out)["figures"]);
}

TEST_F(CompareCommand, SaysWhereFeatheringWinsAndLoses)
{
    const SToolResult result = Tool_Run(modes + " --advances 0,1");
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_NE(result.out.find("ramp.json against hard edges with the same step, by advance error:\n"),
              std::string::npos)
        << result.out;
    EXPECT_EQ(result.err, "");
}

TEST_F(CompareCommand, DrawsAllPrints)
{
    const std::string file = directory.Sub("sheet.png");
    ASSERT_EQ(Tool_Run(modes + " --advances 0,1 --sheet " + file).exitStatus, 0);
    const std::string bytes = File_Read(file);
    const SPixelPicture sheet =
        Picture_Read({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
    EXPECT_GT(sheet.width, 2 * 260);  // two errors
    EXPECT_GT(sheet.height, 3 * 260); // three modes
}
