#include "record/maskjson.h"
#include "record/recordfields.h"
#include "report/htmltext.h"
#include "report/reportsections.h"

#include <dotweave/maskparam_refusal.h>

#include <nlohmann/json.hpp>

namespace dotweave {

namespace {

std::string Record_Html(const SMaskParam& param)
{
    std::vector<std::vector<std::string>> rows;
    for (const SRecordField& field : RecordFields())
        rows.push_back({field.name, RecordField_ValueText(field, param), field.help});
    return Table_Html("The record, as it was asked for", {"field", "value", "meaning"}, rows);
}

std::string Geometry_Html(const CMaskData_Base& mask)
{
    const nlohmann::ordered_json json = Mask_Json(mask, {});
    std::vector<std::vector<std::string>> rows;
    for (const auto& [name, value] : json.at("geometry").items())
        rows.push_back({name, value.dump()});
    return Table_Html("The geometry, under the names of the library's accessors", {"name", "value"}, rows);
}

std::string Warnings_Html(const SMaskParam& param)
{
    const std::vector<std::string> warnings = MaskParam_Warnings(param);
    if (warnings.empty())
        return "<p>The library has no warnings about this mode.</p>\n";
    std::string html = "<p>The library warns:</p>\n<ul class='warnings'>\n";
    for (const std::string& warning : warnings)
        html += "<li>" + Html_Escape(warning) + "</li>\n";
    return html + "</ul>\n";
}

} // namespace

std::string Report_ModeText(const CMaskData_Base& mask)
{
    const SMaskParam& param = mask.MaskParam_Input();
    std::string text = Count_Text(param.nozzleCount, "nozzle row", "nozzle rows") + ", " +
                       Count_Text(param.basePass, "pass", "passes") + ", " +
                       Count_Text(param.colorCount, "colour", "colours");
    for (const SRecordField& field : RecordFields()) {
        const std::string name = field.name;
        const bool isFeathered = mask.MaskParam_Current().featherMode != FeatherMode_None;
        if (isFeathered && name == "featherNozzleType")
            text += ", " + RecordField_ValueText(field, mask.MaskParam_Current());
    }
    return text;
}

std::string RecordSection_Html(const CMaskData_Base& mask)
{
    return Warnings_Html(mask.MaskParam_Input()) + "<div class='pair'>\n" +
           Record_Html(mask.MaskParam_Input()) + Geometry_Html(mask) + "</div>\n";
}

} // namespace dotweave
