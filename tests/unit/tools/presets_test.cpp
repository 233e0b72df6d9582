#include "presets.h"

#include "record/recorderror.h"
#include "record/recordfields.h"
#include "recordwords.h"
#include "temporarydirectory.h"
#include "toolprocess.h"

#include <dotweave/maskdata_base.h>
#include <dotweave/maskparam_refusal.h>

#include <nlohmann/json.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <set>
#include <sstream>
#include <string>
#include <vector>

using namespace dotweave;

namespace {

std::vector<SPreset> Presets()
{
    return Presets_Read(DOTWEAVE_PRESETS);
}

} // namespace

TEST(Presets, AllBuildWithoutAWarning)
{
    EXPECT_GE(Presets().size(), 8U);
    for (const SPreset& preset : Presets()) {
        SCOPED_TRACE(preset.name);
        EXPECT_EQ(MaskParam_Refusal(preset.param), "");
        EXPECT_EQ(MaskParam_Warnings(preset.param), std::vector<std::string>{});
        CMaskData_Base mask;
        EXPECT_TRUE(mask.Create(preset.param));
    }
}

TEST(Presets, DifferInTheirModesAndSayWhatFor)
{
    std::set<std::array<std::uint32_t, 12>> modes;
    for (const SPreset& preset : Presets()) {
        EXPECT_TRUE(modes.insert(Words(preset.param)).second) << preset.name;
        EXPECT_FALSE(preset.description.empty()) << preset.name;
        EXPECT_LE(preset.name.size() + 2 + preset.description.size(), 100U) << preset.name;
        EXPECT_EQ(preset.description.find('\n'), std::string::npos) << preset.name;
    }
}

TEST(Presets, ProductionIsTheModeWithoutOptions)
{
    const std::vector<SPreset> presets = Presets();
    const auto found = std::find_if(presets.begin(), presets.end(),
                                    [](const SPreset& preset) { return preset.name == "production"; });
    ASSERT_NE(found, presets.end());
    EXPECT_EQ(Words(found->param), Words(RECORD_DEFAULT));
}

TEST(Presets, CoverProfilesBitsAndResolutions)
{
    std::set<std::int32_t> profiles, bits, columns, lines, times;
    for (const SPreset& preset : Presets()) {
        profiles.insert(preset.param.featherMode == FeatherMode_None ? 0 : preset.param.featherNozzleType);
        bits.insert(preset.param.bitsPerPixel);
        columns.insert(preset.param.xResPass);
        lines.insert(preset.param.yResPass);
        times.insert(preset.param.colorTimes);
    }
    EXPECT_EQ(profiles, (std::set<std::int32_t>{0, 1, 2, 3}));
    EXPECT_EQ(bits, (std::set<std::int32_t>{1, 2}));
    EXPECT_EQ(times, (std::set<std::int32_t>{1, 2}));
    EXPECT_GT(columns.size(), 1U);
    EXPECT_GT(lines.size(), 1U);
}

TEST(Presets, OfABrokenFileAreRefused)
{
    const CTemporaryDirectory directory;
    File_Write(directory.Sub("a.json"), R"({"description": "four", "basePass": 4})");
    File_Write(directory.Sub("note.txt"), "no mode");
    ASSERT_EQ(Presets_Read(directory.Path()).size(), 1U);
    File_Write(directory.Sub("b.json"), R"({"basePass": 0})");
    EXPECT_THROW(Presets_Read(directory.Path()), CRecordError);
}

TEST(PresetsCommand, ListsEveryPresetWithItsLine)
{
    const SToolResult result = Tool_Run("presets");
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.err, "");
    std::istringstream stream(result.out);
    std::string line;
    for (const SPreset& preset : Presets()) {
        ASSERT_TRUE(std::getline(stream, line)) << preset.name;
        EXPECT_EQ(line.substr(0, preset.name.size() + 2), preset.name + "  ");
        EXPECT_EQ(line.substr(line.size() - preset.description.size() - 2), "  " + preset.description);
    }
    EXPECT_FALSE(std::getline(stream, line)) << line;
}

TEST(PresetsCommand, JsonHasEveryField)
{
    const nlohmann::json list = nlohmann::json::parse(Tool_Run("presets --json").out);
    ASSERT_EQ(list.size(), Presets().size());
    for (std::size_t i = 0; i < list.size(); ++i) {
        EXPECT_EQ(list[i]["name"], Presets()[i].name);
        EXPECT_EQ(list[i]["description"], Presets()[i].description);
        EXPECT_EQ(list[i]["mode"].size(), RecordFields().size());
    }
}

TEST(PresetOption, IsTheModeAndOptionsOverrideIt)
{
    const CTemporaryDirectory directory;
    ASSERT_EQ(
        Tool_Run("build --png none --preset quality --color-count 2 --out " + directory.Sub("a")).exitStatus,
        0);
    const nlohmann::json mode = nlohmann::json::parse(File_Read(directory.Sub("a/mask.json")))["input"];
    EXPECT_EQ(mode["basePass"], 8);
    EXPECT_EQ(mode["bitsPerPixel"], 2);
    EXPECT_EQ(mode["colorCount"], 2);
}

TEST(PresetOption, RefusesAnUnknownNameWithASuggestion)
{
    EXPECT_EQ(
        Tool_Run("cuttable --out - --preset produktion").err,
        "dotweave: --preset: \"produktion\" is not a preset; did you mean production?; dotweave presets "
        "lists them\n");
    const SToolResult both = Tool_Run("cuttable --out - --preset quality --param mode.json");
    EXPECT_EQ(both.exitStatus, 2);
    EXPECT_EQ(both.err, "dotweave: --preset excludes --param; dotweave cuttable --help tells more\n");
}
