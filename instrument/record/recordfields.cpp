#include "record/recordfields.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>

namespace {

constexpr std::int32_t COUNT_MAX = std::numeric_limits<std::int32_t>::max();

constexpr SRecordChoice FEATHER_MODES[] = {{"none", FeatherMode_None}, {"nozzle", FeatherMode_Nozzle}};
constexpr SRecordChoice FEATHER_NOZZLE_TYPES[] = {{"smooth-2", FeatherNozzle_Smooth_2},
                                                  {"smooth-3", FeatherNozzle_Smooth_3},
                                                  {"smooth-3-sine", FeatherNozzle_Smooth_3_Sine}};
constexpr SRecordChoice RES_SPLIT_TYPES[] = {{"none", ResSplit_None}, {"x2", ResSplit_X2},
                                             {"y2", ResSplit_Y2},     {"y3", ResSplit_Y3},
                                             {"y4", ResSplit_Y4},     {"x2y2", ResSplit_X2Y2}};

constexpr std::array<SRecordField, 12> FIELDS = {{
    {"nozzleCount",
     "--nozzle-count",
     "nozzle rows of the head that print one band",
     &SMaskParam::nozzleCount,
     1,
     COUNT_MAX,
     {}},
    {"basePass",
     "--base-pass",
     "passes that together print one band",
     &SMaskParam::basePass,
     1,
     COUNT_MAX,
     {}},
    {"xResPass",
     "--x-res-pass",
     "pixel columns interleaved per threshold column, before the split",
     &SMaskParam::xResPass,
     1,
     COUNT_MAX,
     {}},
    {"yResPass",
     "--y-res-pass",
     "mask lines interleaved per nozzle row, before the split",
     &SMaskParam::yResPass,
     1,
     COUNT_MAX,
     {}},
    {"colorCount", "--color-count", "colour planes", &SMaskParam::colorCount, 1, COUNT_MAX, {}},
    {"bitsPerPixel",
     "--bits-per-pixel",
     "bits of one pixel in the mask bytes",
     &SMaskParam::bitsPerPixel,
     1,
     2,
     {}},
    {"featherMode", "--feather-mode", "edges of a band: hard, or feathered over nozzle rows",
     &SMaskParam::featherMode, FeatherMode_None, FeatherMode_Nozzle, FEATHER_MODES},
    {"featherPercent",
     "--feather-percent",
     "share of the head for feathering, in percent",
     &SMaskParam::featherPercent,
     0,
     100,
     {}},
    {"featherNozzleType", "--feather-nozzle-type", "profile of the feathered edges",
     &SMaskParam::featherNozzleType, FeatherNozzle_Smooth_2, FeatherNozzle_Smooth_3_Sine,
     FEATHER_NOZZLE_TYPES},
    {"colorTimes",
     "--color-times",
     "passes that may print the same pixel of a colour; at most the passes",
     &SMaskParam::colorTimes,
     1,
     COUNT_MAX,
     {}},
    {"featherLevelPercent",
     "--feather-level-percent",
     "top of the smooth-3 ramps, in percent of the threshold scale",
     &SMaskParam::featherLevelPercent,
     0,
     100,
     {}},
    {"resSplitType", "--res-split-type", "split of the resolution passes between parts of the job",
     &SMaskParam::resSplitType, ResSplit_None, ResSplit_X2Y2, RES_SPLIT_TYPES},
}};

/// The whole text as a number; false for anything left over, blanks included.
template <typename TNumber>
bool Number_Read(const std::string& text, TNumber& number)
{
    const char* const end = text.data() + text.size();
    const auto [last, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && last == end;
}

} // namespace

std::span<const SRecordField> RecordFields()
{
    return FIELDS;
}

std::string RecordField_RangeText(const SRecordField& field)
{
    if (field.choices.empty()) {
        const bool isWhole = std::holds_alternative<std::int32_t SMaskParam::*>(field.member);
        return std::string(isWhole ? "a whole number" : "a number") + " from " +
               std::to_string(field.lowest) + " to " + std::to_string(field.highest);
    }
    std::string text;
    for (const SRecordChoice& choice : field.choices) {
        text += text.empty() ? "" : ", ";
        text += std::string(choice.name) + " (" + std::to_string(choice.value) + ")";
    }
    return text;
}

std::string RecordField_ValueText(const SRecordField& field, const SMaskParam& param)
{
    if (const auto* real = std::get_if<float SMaskParam::*>(&field.member)) {
        std::array<char, 64> digits = {}; // the shortest digits that give the same float again
        const auto written = std::to_chars(digits.data(), digits.data() + digits.size(), param.*(*real));
        return {digits.data(), written.ptr};
    }
    const std::int32_t value = param.*std::get<std::int32_t SMaskParam::*>(field.member);
    const auto isValue = [value](const SRecordChoice& choice) { return choice.value == value; };
    const auto choice = std::find_if(field.choices.begin(), field.choices.end(), isValue);
    return choice != field.choices.end() ? choice->name : std::to_string(value);
}

std::string RecordField_RefusalText(const SRecordField& field, const std::string& where,
                                    const std::string& value)
{
    return where + ": " + value + " is not allowed; allowed: " + RecordField_RangeText(field);
}

bool RecordField_SetText(const SRecordField& field, const std::string& text, SMaskParam& param)
{
    if (RecordField_SetName(field, text, param))
        return true;
    if (std::holds_alternative<float SMaskParam::*>(field.member)) {
        double number = 0.0;
        return Number_Read(text, number) && RecordField_SetNumber(field, number, param);
    }
    std::int32_t number = 0;
    return Number_Read(text, number) && RecordField_SetNumber(field, number, param);
}

bool RecordField_SetName(const SRecordField& field, const std::string& name, SMaskParam& param)
{
    for (const SRecordChoice& choice : field.choices)
        if (name == choice.name)
            return RecordField_SetNumber(field, choice.value, param);
    return false;
}

bool RecordField_SetNumber(const SRecordField& field, double number, SMaskParam& param)
{
    if (!(number >= field.lowest && number <= field.highest)) // so written, a NaN is refused too
        return false;
    if (const auto* real = std::get_if<float SMaskParam::*>(&field.member))
        param.*(*real) = static_cast<float>(number);
    else
        param.*std::get<std::int32_t SMaskParam::*>(field.member) = static_cast<std::int32_t>(number);
    return true;
}
