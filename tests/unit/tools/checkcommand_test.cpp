#include "toolprocess.h"

#include <nlohmann/json.hpp>

#include <gtest/gtest.h>

#include <string>

using Json = nlohmann::json;

namespace {

const std::string SMALL = "check --nozzle-count 48 --base-pass 3 --color-count 2 ";

Json Verdict(const std::string& words, int exitStatus)
{
    const SToolResult result = Tool_Run(SMALL + words + " --json");
    EXPECT_EQ(result.exitStatus, exitStatus) << words << result.err;
    return Json::parse(result.out);
}

} // namespace

TEST(CheckCommand, GivesTwoVerdicts)
{
    // Feather zones print once, pass zones twice.
    const std::string stripes = "--feather-mode nozzle --feather-percent 50 --color-times 2";
    const Json object = Verdict(stripes, 0);
    EXPECT_EQ(object["mode"]["colorTimes"], 2);
    EXPECT_EQ(object["asBuilt"]["good"], true);
    EXPECT_EQ(object["asBuilt"]["wrongPixels"], 0);
    EXPECT_FALSE(object["asBuilt"].contains("firstFault"));
    EXPECT_EQ(object["uniform"]["good"], false);
    EXPECT_EQ(object["uniform"]["times"], 2);
    Json names = Json::array();
    std::int64_t pixels = 0;
    for (const Json& cause : object["uniform"]["causes"]) {
        names.push_back(cause["name"]);
        pixels += cause["pixels"].get<std::int64_t>();
    }
    EXPECT_EQ(names, (Json{"threshold-zero", "feather-zone"}));
    EXPECT_EQ(object["uniform"]["uneven"]["pixels"], pixels);
    Verdict(stripes + " --uniform", 1);
}

TEST(CheckCommand, IsGoodForHardEdges)
{
    EXPECT_EQ(Verdict("--uniform", 0)["uniform"]["good"], true);
    const SToolResult result = Tool_Run(SMALL);
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out.rfind("as built  yes\n", 0), 0U) << result.out;
    EXPECT_NE(result.out.find("\nuniform   yes\n"), std::string::npos) << result.out;
}

TEST(CheckCommand, FindsEveryPresetAsBuilt)
{
    const SToolResult list = Tool_Run("presets --json");
    for (const Json& preset : Json::parse(list.out)) {
        // The law is the same for every colour; one is enough, in a test that is run often.
        const SToolResult result =
            Tool_Run("check --json --color-count 1 --preset " + preset["name"].get<std::string>());
        EXPECT_EQ(result.exitStatus, 0) << preset["name"];
        EXPECT_EQ(Json::parse(result.out)["asBuilt"]["good"], true) << preset["name"];
    }
}
