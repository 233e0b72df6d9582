#include "record/maskjson.h"

#include <nlohmann/json.hpp>

#include <gtest/gtest.h>

using namespace dotweave;
using nlohmann::json;

namespace {

json Json(const CMaskData_Base& mask)
{
    return json::parse(Mask_Json(mask, {{"mask.bin", 5000000000, 0xBEEFU}}).dump());
}

} // namespace

TEST(MaskJson, ShowsTheValueOfEveryAccessor)
{
    for (const SMaskParam& param : {SMaskParam{120, 2, 2, 3, 2, 2, 1, 40.5F, 3, 1, 90, 0},
                                    SMaskParam{96, 3, 6, 4, 1, 1, 0, 50.0F, 1, 2, 100, 5}}) {
        CMaskData_Base mask;
        ASSERT_TRUE(mask.Create(param));
        const json expected = {
            {"BasePass", mask.BasePass()},
            {"XResPass", mask.XResPass()},
            {"YResPass", mask.YResPass()},
            {"BitsPerPixel", mask.BitsPerPixel()},
            {"MaskWidth", mask.MaskWidth()},
            {"MaskHeight_IncludeRes", mask.MaskHeight_IncludeRes()},
            {"StepHeight_IncludeRes", mask.StepHeight_IncludeRes()},
            {"RealStepHeight_IncludeRes", mask.RealStepHeight_IncludeRes()},
            {"LeadBlankHeight_IncludeRes", mask.LeadBlankHeight_IncludeRes()},
            {"XResStep", std::vector<int>(mask.XResStep(), mask.XResStep() + mask.XResPass())},
            {"YResStep", std::vector<int>(mask.YResStep(), mask.YResStep() + mask.YResPass())},
            {"MaskLineBytes_OneColor", mask.MaskLineBytes_OneColor()},
            {"MaskBytes_OnePosition", mask.MaskBytes_OnePosition()},
            {"MaskBytes_OneColor", mask.MaskBytes_OneColor()},
            {"SplitCount_XRes", mask.SplitCount_XRes_Get()},
            {"SplitCount_YRes", mask.SplitCount_YRes_Get()},
            {"colorCount", param.colorCount},
            {"positionCount", mask.MaskBytes_OneColor() / mask.MaskBytes_OnePosition()}};
        EXPECT_EQ(Json(mask)["geometry"], expected);
    }
}

TEST(MaskJson, ShowsBothRecordsAndTheFiles)
{
    CMaskData_Base mask; // 544 rows do not divide into 3 passes: the current record is a smooth-2 one
    ASSERT_TRUE(mask.Create({544, 3, 1, 1, 1, 1, 0, 50.0F, 2, 1, 100, 0}));
    const json object = Json(mask);
    const json input = {{"nozzleCount", 544},
                        {"basePass", 3},
                        {"xResPass", 1},
                        {"yResPass", 1},
                        {"colorCount", 1},
                        {"bitsPerPixel", 1},
                        {"featherMode", 0},
                        {"featherPercent", 50.0},
                        {"featherNozzleType", 2},
                        {"colorTimes", 1},
                        {"featherLevelPercent", 100},
                        {"resSplitType", 0}};
    json current = input;
    current["featherMode"] = current["featherNozzleType"] = 1;
    EXPECT_EQ(object["input"], input);
    EXPECT_EQ(object["current"], current);
    const json file = {{"name", "mask.bin"}, {"bytes", 5000000000}, {"crc32", "0000beef"}};
    EXPECT_EQ(object["files"], json::array({file}));
}
