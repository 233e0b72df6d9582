#include "record/maskjson.h"

#include "record/recordjson.h"
#include "view/maskview.h"

#include <dotweave/maskparam_refusal.h>
#include <dotweave/version.h>

#include <nlohmann/json.hpp>

#include <array>
#include <cstdio>

namespace dotweave {

namespace {

using nlohmann::ordered_json;

ordered_json Layout_Json()
{
    return {
        {"order", "colour plane, band position, mask line, byte of the line; from outermost to innermost, "
                  "without gaps"},
        {"colorPlane", "colorCount planes of MaskBytes_OneColor bytes; plane i is cut from threshold matrix "
                       "i modulo 16"},
        {"bandPosition", "positionCount positions of MaskBytes_OnePosition bytes; the next pass takes the "
                         "next position, after the last comes the first"},
        {"maskLine", "MaskHeight_IncludeRes lines of MaskLineBytes_OneColor bytes; line y * YResPass + r "
                     "is nozzle row y in Y resolution pass r"},
        {"pixel", "MaskWidth pixels of BitsPerPixel bits, packed from the most significant bit down; pixel "
                  "x * XResPass + k is threshold column x in X resolution pass k"},
        {"value", "all bits set: a dot may be printed; all bits clear: none"},
    };
}

ordered_json Files_Json(const std::vector<SResultFile>& files)
{
    ordered_json list = ordered_json::array();
    for (const SResultFile& file : files) {
        std::array<char, sizeof "0123abcd"> checksum = {};
        static_cast<void>(std::snprintf(checksum.data(), checksum.size(), "%08x", file.checksum));
        list.push_back({{"name", file.name}, {"bytes", file.bytes}, {"crc32", checksum.data()}});
    }
    return list;
}

} // namespace

ordered_json Geometry_Json(const CMaskData_Base& mask)
{
    return {
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
        {"colorCount", mask.MaskParam_Current().colorCount},
        {"positionCount", CMaskView(mask).PositionCount()},
    };
}

ordered_json Mask_Json(const CMaskData_Base& mask, const std::vector<SResultFile>& files)
{
    return {
        {"dotweave", dotweave_version()},
        {"input", Record_Json(mask.MaskParam_Input())},
        {"current", Record_Json(mask.MaskParam_Current())},
        {"warnings", MaskParam_Warnings(mask.MaskParam_Input())},
        {"geometry", Geometry_Json(mask)},
        {"layout", Layout_Json()},
        {"files", Files_Json(files)},
    };
}

} // namespace dotweave
