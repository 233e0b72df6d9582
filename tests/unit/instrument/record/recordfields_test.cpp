#include "record/recordfields.h"
#include "recordwords.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <cstring>
#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

using namespace dotweave;

namespace {

struct SRange {
    const char* name;
    const char* option;
    double lowest;
    double highest;
};

constexpr double INT_HIGHEST = 2147483647.0;
constexpr std::array<SRange, 12> RANGES = {{
    {"nozzleCount", "--nozzle-count", 1, INT_HIGHEST},
    {"basePass", "--base-pass", 1, INT_HIGHEST},
    {"xResPass", "--x-res-pass", 1, INT_HIGHEST},
    {"yResPass", "--y-res-pass", 1, INT_HIGHEST},
    {"colorCount", "--color-count", 1, INT_HIGHEST},
    {"bitsPerPixel", "--bits-per-pixel", 1, 2},
    {"featherMode", "--feather-mode", 0, 1},
    {"featherPercent", "--feather-percent", 0, 100},
    {"featherNozzleType", "--feather-nozzle-type", 1, 3},
    {"colorTimes", "--color-times", 1, INT_HIGHEST},
    {"featherLevelPercent", "--feather-level-percent", 0, 100},
    {"resSplitType", "--res-split-type", 0, 5},
}};

const SRecordField& Field(const std::string& name)
{
    for (const SRecordField& field : RecordFields())
        if (field.name == name)
            return field;
    throw std::invalid_argument(name);
}

SMaskParam Set(const std::string& name, const std::string& text)
{
    SMaskParam param = RECORD_DEFAULT;
    EXPECT_TRUE(RecordField_SetText(Field(name), text, param)) << name << ' ' << text;
    return param;
}

} // namespace

TEST(RecordFields, AreTheTwelveOfTheRecordInItsOrder)
{
    ASSERT_EQ(RecordFields().size(), RANGES.size());
    for (std::size_t i = 0; i < RANGES.size(); ++i) {
        EXPECT_STREQ(RecordFields()[i].name, RANGES[i].name);
        EXPECT_EQ(RecordField_Option(RecordFields()[i]), RANGES[i].option);
        EXPECT_GT(std::strlen(RecordFields()[i].help), 10U);
    }
}

TEST(RecordFields, EachSetsItsOwnFourBytesAndNoOthers)
{
    for (std::size_t i = 0; i < RecordFields().size(); ++i) {
        SCOPED_TRACE(RecordFields()[i].name);
        SMaskParam param = {};
        EXPECT_TRUE(RecordField_SetNumber(RecordFields()[i], 1.0, param));
        std::array<std::uint32_t, 12> expected = {};
        expected[i] = i == 7 ? 0x3F800000U : 1U; // the eighth is a float
        EXPECT_EQ(Words(param), expected);
    }
}

TEST(RecordFields, TakeTheirRangesAndNothingBeyond)
{
    for (std::size_t i = 0; i < RANGES.size(); ++i) {
        SCOPED_TRACE(RANGES[i].name);
        const SRecordField& field = RecordFields()[i];
        SMaskParam param = RECORD_DEFAULT;
        EXPECT_TRUE(RecordField_SetNumber(field, RANGES[i].lowest, param));
        EXPECT_TRUE(RecordField_SetNumber(field, RANGES[i].highest, param));
        const SMaskParam before = param;
        EXPECT_FALSE(RecordField_SetNumber(field, RANGES[i].lowest - 1.0, param));
        EXPECT_FALSE(RecordField_SetNumber(field, RANGES[i].highest + 1.0, param));
        EXPECT_FALSE(RecordField_SetNumber(field, std::numeric_limits<double>::quiet_NaN(), param));
        EXPECT_FALSE(RecordField_SetNumber(field, -std::numeric_limits<double>::infinity(), param));
        EXPECT_EQ(Words(param), Words(before));
    }
}

TEST(RecordFields, TakeWholeTextsOnly)
{
    for (const SRecordField& field : RecordFields()) {
        for (const char* text : {"", " 1", "1 ", "1x", "0x1", "+1", "-", "1,0", "99999999999999999999"}) {
            SCOPED_TRACE(std::string(field.name) + " \"" + text + '"');
            SMaskParam param = RECORD_DEFAULT;
            EXPECT_FALSE(RecordField_SetText(field, text, param));
        }
    }
    SMaskParam param = RECORD_DEFAULT;
    EXPECT_FALSE(RecordField_SetText(Field("basePass"), "1.0", param));
    EXPECT_FALSE(RecordField_SetText(Field("featherPercent"), "nan", param));
    EXPECT_FALSE(RecordField_SetText(Field("featherPercent"), "inf", param));
    EXPECT_FALSE(RecordField_SetText(Field("featherPercent"), "100.0001", param));
}

TEST(RecordFields, TakeNumbersAndNames)
{
    EXPECT_EQ(Set("basePass", "7").basePass, 7);
    EXPECT_EQ(Set("featherPercent", "33.3").featherPercent, 33.3F);
    EXPECT_EQ(Set("featherMode", "nozzle").featherMode, FeatherMode_Nozzle);
    EXPECT_EQ(Set("featherMode", "none").featherMode, FeatherMode_None);
    EXPECT_EQ(Set("featherMode", "1").featherMode, FeatherMode_Nozzle);
    EXPECT_EQ(Set("featherNozzleType", "smooth-2").featherNozzleType, 1);
    EXPECT_EQ(Set("featherNozzleType", "smooth-3").featherNozzleType, 2);
    EXPECT_EQ(Set("featherNozzleType", "smooth-3-sine").featherNozzleType, 3);
    const std::vector<std::string> splits = {"none", "x2", "y2", "y3", "y4", "x2y2"};
    for (std::size_t i = 0; i < splits.size(); ++i) {
        EXPECT_EQ(Set("resSplitType", splits[i]).resSplitType, static_cast<int>(i));
        EXPECT_EQ(Set("resSplitType", std::to_string(i)).resSplitType, static_cast<int>(i));
    }
}

TEST(RecordFields, ShowNamesAndShortNumbers)
{
    SMaskParam param = RECORD_DEFAULT;
    param.featherPercent = 33.3F;
    param.resSplitType = 6; // without a name
    EXPECT_EQ(RecordField_ValueText(Field("nozzleCount"), param), "544");
    EXPECT_EQ(RecordField_ValueText(Field("featherPercent"), param), "33.3");
    EXPECT_EQ(RecordField_ValueText(Field("featherMode"), param), "none");
    EXPECT_EQ(RecordField_ValueText(Field("resSplitType"), param), "6");
}

TEST(RecordFields, RefuseWithPlaceValueAndRange)
{
    EXPECT_EQ(RecordField_RefusalText(Field("bitsPerPixel"), "--bits-per-pixel", "\"3\""),
              "--bits-per-pixel: \"3\" is not allowed; allowed: a whole number from 1 to 2");
    EXPECT_EQ(RecordField_RefusalText(Field("featherPercent"), "a.json: featherPercent", "101"),
              "a.json: featherPercent: 101 is not allowed; allowed: a number from 0 to 100");
    EXPECT_EQ(RecordField_RefusalText(Field("featherMode"), "--feather-mode", "\"2\""),
              "--feather-mode: \"2\" is not allowed; allowed: none (0), nozzle (1)");
}
