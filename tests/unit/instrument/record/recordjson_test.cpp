#include "record/recordjson.h"

#include "record/recorderror.h"
#include "record/recordfields.h"
#include "recordwords.h"

#include <nlohmann/json.hpp>

#include <gtest/gtest.h>

#include <random>
#include <sstream>
#include <string>

using namespace dotweave;

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
    } catch (const CRecordError& error) {
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

TEST(RecordJson, ADescriptionIsForPeople)
{
    std::istringstream stream(R"({"description": "for banners", "basePass": 6})");
    SMaskParam param = RECORD_DEFAULT;
    std::string description;
    Record_ReadJson(stream, "mode.json", param, &description);
    EXPECT_EQ(description, "for banners");
    EXPECT_EQ(param.basePass, 6);
    EXPECT_EQ(Words(Read(R"({"description": ""})")), Words(RECORD_DEFAULT));
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

TEST(RecordJson, RefusesWithPlaceValueAndRange)
{
    const std::string whole = " is not allowed; allowed: a whole number from 1 to 2147483647";
    const std::string percent = " is not allowed; allowed: a number from 0 to 100";
    const std::string fields =
        " is not a field; fields: nozzleCount, basePass, xResPass, yResPass, colorCount, "
        "bitsPerPixel, featherMode, featherPercent, featherNozzleType, colorTimes, "
        "featherLevelPercent, resSplitType, description";
    const struct {
        std::string member;
        std::string refusal;
    } CASES[] = {
        // wrong types
        {R"("basePass": "four")", R"(basePass: "four")" + whole},
        {R"("basePass": "4")", R"(basePass: "4")" + whole},
        {R"("basePass": "4\n\u202e")", R"(basePass: "4\x0a\u202e")" + whole},
        {R"("basePass": 4.0)", "basePass: 4.0" + whole},
        {R"("basePass": true)", "basePass: true" + whole},
        {R"("basePass": null)", "basePass: null" + whole},
        {R"("basePass": [4])", "basePass: an array" + whole},
        {R"("basePass": {})", "basePass: an object" + whole},
        {R"("basePass": )" + std::string(200000, '[') + std::string(200000, ']'),
         "basePass: an array" + whole},
        {R"("featherPercent": "50")", R"(featherPercent: "50")" + percent},
        {R"("featherMode": 1.0)", "featherMode: 1.0 is not allowed; allowed: none (0), nozzle (1)"},
        // numbers out of range
        {R"("colorCount": 0)", "colorCount: 0" + whole},
        {R"("colorCount": -3)", "colorCount: -3" + whole},
        {R"("colorCount": 2147483648)", "colorCount: 2147483648" + whole},
        {R"("colorCount": 4294967297)", "colorCount: 4294967297" + whole},
        {R"("bitsPerPixel": 3)", "bitsPerPixel: 3 is not allowed; allowed: a whole number from 1 to 2"},
        {R"("featherPercent": 100.5)", "featherPercent: 100.5" + percent},
        {R"("featherLevelPercent": 101)",
         "featherLevelPercent: 101 is not allowed; allowed: a whole number from 0 to 100"},
        {R"("resSplitType": 6)",
         "resSplitType: 6 is not allowed; allowed: none (0), x2 (1), y2 (2), y3 (3), y4 (4), x2y2 (5)"},
        {R"("description": 4)", "description: 4 is not allowed; allowed: a text"},
        // names
        {R"("basepass": 4)", R"("basepass")" + fields},
        {R"("a\nb": 4)", R"("a\x0ab")" + fields},
        {R"("basePass": 4, "basePass": 4)", R"(field "basePass" is given twice)"},
    };
    for (const auto& [member, refusal] : CASES)
        EXPECT_EQ(Refusal("{" + member + "}"), "mode.json: " + refusal);
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

TEST(RecordJson, ALongTextIsQuotedInPart)
{
    const std::string text(20000000, 'x');
    EXPECT_LT(Refusal(R"({"basePass": ")" + text + R"("})").size(), 300U);
    EXPECT_LT(Refusal(R"({")" + text + R"(": 4})").size(), 500U);
    EXPECT_LT(Refusal(R"(")" + text).size(), 300U);
}
