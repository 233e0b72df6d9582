#include "record/maskjsonread.h"

#include "record/recorderror.h"
#include "record/recordfields.h"
#include "recordwords.h"

#include <nlohmann/json.hpp>

#include <gtest/gtest.h>

#include <sstream>
#include <string>

using namespace dotweave;
using nlohmann::ordered_json;

namespace {

SResultRecord Read(const std::string& text)
{
    std::istringstream stream(text);
    return MaskJson_Read(stream, "mask.json");
}

std::string Refusal(const std::string& text)
{
    try {
        Read(text);
    } catch (const CRecordError& error) {
        return error.what();
    }
    return "";
}

/// What the command writes for a small mode.
ordered_json Written()
{
    SMaskParam param = RECORD_DEFAULT;
    param.nozzleCount = 50;
    param.basePass = 3; // does not divide the rows: a warning
    CMaskData_Base mask;
    EXPECT_TRUE(mask.Create(param));
    return Mask_Json(mask, {{"mask.bin", 123, 0xCBF43926}, {"mask_c0_p0.png", 45, 0x0000000A}});
}

} // namespace

TEST(MaskJsonRead, GivesBackWhatWasWritten)
{
    const SResultRecord result = Read(Written().dump());
    SMaskParam param = RECORD_DEFAULT;
    param.nozzleCount = 50;
    param.basePass = 3;
    EXPECT_EQ(Words(result.param), Words(param));
    CMaskData_Base mask;
    ASSERT_TRUE(mask.Create(param));
    EXPECT_EQ(result.shape, MaskShape_Of(mask));
    EXPECT_EQ(result.warnings.size(), 1U);
    ASSERT_EQ(result.files.size(), 2U);
    EXPECT_EQ(result.files[0].name, "mask.bin");
    EXPECT_EQ(result.files[0].bytes, 123);
    EXPECT_EQ(result.files[0].checksum, 0xCBF43926U);
    EXPECT_EQ(result.files[1].checksum, 10U);
}

TEST(MaskJsonRead, RefusesWhatIsNone)
{
    const struct {
        const char* path;
        ordered_json value;
        const char* reason;
    } CASES[] = {
        {"/geometry", nullptr, R"(no "colorCount")"},
        {"/geometry/MaskWidth", "544", R"("MaskWidth" is not a whole number from 0 to 2147483647)"},
        {"/geometry/MaskWidth", -1, R"("MaskWidth" is not a whole number from 0 to 2147483647)"},
        {"/geometry/MaskWidth", 1e3, R"("MaskWidth" is not a whole number from 0 to 2147483647)"},
        {"/geometry/MaskWidth", 2147483648, R"("MaskWidth" is not a whole number from 0 to 2147483647)"},
        {"/geometry/MaskWidth", 100000, R"("geometry" is that of no mask)"},
        {"/geometry/positionCount", 0, R"("geometry" is that of no mask)"},
        {"/warnings", 4, R"("warnings" is no list)"},
        {"/warnings/0", 4, "a warning is no text"},
        {"/files", "mask.bin", R"("files" is no list)"},
        {"/files/0", 7, R"(no "name")"},
        {"/files/0/name", 7, R"("name" of a file is no text)"},
        {"/files/0/name", "", R"("" is not the name of a file in its folder)"},
        {"/files/0/name", "..", R"(".." is not the name of a file in its folder)"},
        {"/files/0/name", "../secret", R"("../secret" is not the name of a file in its folder)"},
        {"/files/0/name", "C:\\x", R"("C:\x" is not the name of a file in its folder)"},
        {"/files/0/name", std::string("a\0b", 3), R"("a\x00b" is not the name of a file in its folder)"},
        {"/files/0/bytes", -1, R"("bytes" is not a whole number from 0 to 9223372036854775807)"},
        {"/files/0/crc32", "123", R"("crc32" is "123" instead of eight hexadecimal digits)"},
        {"/files/0/crc32", "1234567g", R"("crc32" is "1234567g" instead of eight hexadecimal digits)"},
        {"/files/0/crc32", "-1234567", R"("crc32" is "-1234567" instead of eight hexadecimal digits)"},
    };
    for (const auto& [path, value, reason] : CASES) {
        ordered_json object = Written();
        object[ordered_json::json_pointer(path)] = value;
        EXPECT_EQ(Refusal(object.dump()), std::string("mask.json: not the mask.json of a result: ") + reason)
            << path;
    }
    for (const char* text : {"", "{", "[]", "4", "{}", R"({"geometry": {}})"})
        EXPECT_EQ(Refusal(text).rfind("mask.json: not the mask.json of a result: ", 0), 0U) << text;
}

TEST(MaskJsonRead, RefusesAModeThatNoModeFileHas)
{
    ordered_json object = Written();
    object["input"]["basePass"] = 0;
    EXPECT_EQ(Refusal(object.dump()),
              "mask.json: basePass: 0 is not allowed; allowed: a whole number from 1 to 2147483647");
    object["input"] = 4;
    EXPECT_EQ(Refusal(object.dump()), "mask.json: not a mode file: 4 instead of an object with fields");
}

TEST(MaskJsonRead, DeepNestingIsRefusedLikeAnythingElse)
{
    const std::string deep = std::string(200000, '[') + std::string(200000, ']');
    ordered_json object = Written();
    std::string text = object.dump();
    text.replace(text.find("\"files\":") + 8, 0, deep + ",\"more\":");
    EXPECT_NE(Refusal(text), "");
    EXPECT_NE(Refusal("{\"geometry\":" + deep + '}'), "");
}
