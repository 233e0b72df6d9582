#include "record/recordjson.h"

#include "record/recordfields.h"
#include "recordwords.h"
#include "temporarydirectory.h"
#include "record/usageerror.h"

#include <nlohmann/json.hpp>

#include <gtest/gtest.h>

#include <random>
#include <sstream>
#include <string>

namespace {

SMaskParam Read(const std::string& text)
{
    SMaskParam param = RECORD_DEFAULT;
    std::istringstream stream(text);
    Record_ReadJson(stream, "mode.json", param);
    return param;
}

/// The refusal of a text, or "" when it is taken.
std::string Refusal(const std::string& text)
{
    try {
        Read(text);
    } catch (const CUsageError& error) {
        return error.what();
    }
    return "";
}

} // namespace

TEST(RecordJson, NamedFieldsReplaceAndOthersStay)
{
    SMaskParam expected = RECORD_DEFAULT;
    expected.nozzleCount = 180;
    expected.featherPercent = 12.5F;
    expected.featherNozzleType = FeatherNozzle_Smooth_3;
    expected.resSplitType = ResSplit_X2Y2;
    const SMaskParam read = Read(R"({"resSplitType": "x2y2", "nozzleCount": 180, "featherPercent": 12.5,
                                     "featherNozzleType": 2})");
    EXPECT_EQ(Words(read), Words(expected));
    EXPECT_EQ(Words(Read("{}")), Words(RECORD_DEFAULT));
}

TEST(RecordJson, AWholeNumberIsAPercentageToo)
{
    EXPECT_EQ(Read(R"({"featherPercent": 25})").featherPercent, 25.0F);
}

TEST(RecordJson, WhatIsWrittenIsReadBackByteForByte)
{
    std::mt19937 random(20240607); // NOLINT(cert-msc32-c,cert-msc51-cpp): the same records in every run
    std::uniform_real_distribution<float> percent(0.0F, 100.0F);
    for (int i = 0; i < 2000; ++i) {
        SMaskParam param = {7, 5, 3, 2, 9, 2, 1, percent(random), 3, 4, 66, 5};
        SCOPED_TRACE(param.featherPercent);
        EXPECT_EQ(Words(Read(Record_Json(param).dump())), Words(param));
    }
}

TEST(RecordJson, TheSignOfAZeroPercentageIsReadBackToo)
{
    for (const std::string zero : {"0", "0.0", "-0.0"}) {
        SCOPED_TRACE(zero);
        SMaskParam param = RECORD_DEFAULT;
        param.featherPercent = zero[0] == '-' ? -0.0F : 0.0F;
        EXPECT_EQ(Words(Read(R"({"featherPercent": )" + zero + "}")), Words(param));
        EXPECT_EQ(Words(Read(Record_Json(param).dump())), Words(param));
    }
}

TEST(RecordJson, WritesTheFieldsInOrderAsNumbers)
{
    SMaskParam param = {7, 5, 3, 2, 9, 2, 1, 33.3F, 3, 4, 66, 5};
    EXPECT_EQ(Record_Json(param).dump(),
              R"({"nozzleCount":7,"basePass":5,"xResPass":3,"yResPass":2,"colorCount":9,"bitsPerPixel":2,)"
              R"("featherMode":1,"featherPercent":33.3,"featherNozzleType":3,"colorTimes":4,)"
              R"("featherLevelPercent":66,"resSplitType":5})");
}

TEST(RecordJson, RefusesWrongTypes)
{
    const std::string whole = " is not allowed; allowed: a whole number from 1 to 2147483647";
    EXPECT_EQ(Refusal(R"({"basePass": "four"})"), "mode.json: basePass: \"four\"" + whole);
    EXPECT_EQ(Refusal(R"({"basePass": "4"})"), "mode.json: basePass: \"4\"" + whole);
    EXPECT_EQ(Refusal(R"({"basePass": 4.0})"), "mode.json: basePass: 4.0" + whole);
    EXPECT_EQ(Refusal(R"({"basePass": true})"), "mode.json: basePass: true" + whole);
    EXPECT_EQ(Refusal(R"({"basePass": null})"), "mode.json: basePass: null" + whole);
    EXPECT_EQ(Refusal(R"({"basePass": [4]})"), "mode.json: basePass: an array" + whole);
    EXPECT_EQ(Refusal(R"({"basePass": {}})"), "mode.json: basePass: an object" + whole);
    EXPECT_EQ(Refusal(R"({"featherPercent": "50"})"),
              "mode.json: featherPercent: \"50\" is not allowed; allowed: a number from 0 to 100");
    EXPECT_EQ(Refusal(R"({"featherMode": 1.0})"),
              "mode.json: featherMode: 1.0 is not allowed; allowed: none (0), nozzle (1)");
}

TEST(RecordJson, RefusesNumbersOutOfRange)
{
    const std::string whole = " is not allowed; allowed: a whole number from 1 to 2147483647";
    EXPECT_EQ(Refusal(R"({"colorCount": 0})"), "mode.json: colorCount: 0" + whole);
    EXPECT_EQ(Refusal(R"({"colorCount": -3})"), "mode.json: colorCount: -3" + whole);
    EXPECT_EQ(Refusal(R"({"colorCount": 2147483648})"), "mode.json: colorCount: 2147483648" + whole);
    EXPECT_EQ(Refusal(R"({"colorCount": 4294967297})"), "mode.json: colorCount: 4294967297" + whole);
    EXPECT_EQ(Refusal(R"({"bitsPerPixel": 3})"),
              "mode.json: bitsPerPixel: 3 is not allowed; allowed: a whole number from 1 to 2");
    EXPECT_EQ(Refusal(R"({"featherPercent": 100.5})"),
              "mode.json: featherPercent: 100.5 is not allowed; allowed: a number from 0 to 100");
    EXPECT_EQ(Refusal(R"({"featherLevelPercent": 101})"),
              "mode.json: featherLevelPercent: 101 is not allowed; allowed: a whole number from 0 to 100");
    EXPECT_EQ(Refusal(R"({"resSplitType": 6})"), "mode.json: resSplitType: 6 is not allowed; allowed: none "
                                                 "(0), x2 (1), y2 (2), y3 (3), y4 (4), x2y2 (5)");
}

TEST(RecordJson, RefusesUnknownAndDoubleFields)
{
    EXPECT_EQ(Refusal(R"({"basepass": 4})"),
              "mode.json: \"basepass\" is not a field; fields: nozzleCount, basePass, xResPass, yResPass, "
              "colorCount, bitsPerPixel, featherMode, featherPercent, featherNozzleType, colorTimes, "
              "featherLevelPercent, resSplitType");
    EXPECT_EQ(Refusal(R"({"basePass": 4, "basePass": 4})"), "mode.json: field \"basePass\" is given twice");
}

TEST(RecordJson, RefusesWhatIsNoModeFile)
{
    for (const char* text : {"", "{", R"({"basePass" 4})", "{} {}", "[1, 2]", "4", "null", "\"basePass\"",
                             R"({"featherPercent": 1e400})", "\xFF\xFE"}) {
        SCOPED_TRACE(text);
        const std::string refusal = Refusal(text);
        EXPECT_EQ(refusal.rfind("mode.json: not a mode file: ", 0), 0U) << refusal;
        EXPECT_EQ(refusal.find("json.exception"), std::string::npos) << refusal;
    }
}

TEST(RecordJson, DeepNestingIsRefusedLikeAnyList)
{
    const std::string deep(200000, '[');
    EXPECT_EQ(Refusal("{\"basePass\": " + deep + std::string(200000, ']') + "}"),
              "mode.json: basePass: an array is not allowed; allowed: a whole number from 1 to 2147483647");
}

TEST(RecordJson, AFileThatCannotBeReadIsRefused)
{
    const CTemporaryDirectory directory;
    SMaskParam param = RECORD_DEFAULT;
    EXPECT_THROW(Record_ReadFile(directory.Sub("none.json"), param), CUsageError);
    EXPECT_THROW(Record_ReadFile(directory.Path().string(), param), CUsageError);
    File_Write(directory.Sub("empty.json"), "");
    EXPECT_THROW(Record_ReadFile(directory.Sub("empty.json"), param), CUsageError);
    EXPECT_EQ(Words(param), Words(RECORD_DEFAULT));
}
