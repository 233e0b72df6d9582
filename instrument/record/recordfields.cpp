#include "record/recordfields.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>

namespace dotweave {

namespace {

constexpr std::int32_t COUNT_MAX = std::numeric_limits<std::int32_t>::max();

constexpr SRecordChoice MODES[] = {{"none", FeatherMode_None}, {"nozzle", FeatherMode_Nozzle}};
constexpr SRecordChoice PROFILES[] = {{"smooth-2", FeatherNozzle_Smooth_2},
                                      {"smooth-3", FeatherNozzle_Smooth_3},
                                      {"smooth-3-sine", FeatherNozzle_Smooth_3_Sine}};
constexpr SRecordChoice SPLITS[] = {{"none", ResSplit_None}, {"x2", ResSplit_X2}, {"y2", ResSplit_Y2},
                                    {"y3", ResSplit_Y3},     {"y4", ResSplit_Y4}, {"x2y2", ResSplit_X2Y2}};

using P = SMaskParam;

// name, help, member, lowest, highest, choices
// clang-format off
constexpr std::array<SRecordField, 12> FIELDS = {{
    {"nozzleCount", "nozzle rows that print one band", &P::nozzleCount, 1, COUNT_MAX, {}},
    {"basePass", "passes that together print one band", &P::basePass, 1, COUNT_MAX, {}},
    {"xResPass", "pixel columns per threshold column, before the split", &P::xResPass, 1, COUNT_MAX, {}},
    {"yResPass", "mask lines per nozzle row, before the split", &P::yResPass, 1, COUNT_MAX, {}},
    {"colorCount", "colour planes", &P::colorCount, 1, COUNT_MAX, {}},
    {"bitsPerPixel", "bits of one pixel in the mask bytes", &P::bitsPerPixel, 1, 2, {}},
    {"featherMode", "band edges: hard, or feathered over nozzle rows", &P::featherMode, 0, 1, MODES},
    {"featherPercent", "share of the head for feathering, in percent", &P::featherPercent, 0, 100, {}},
    {"featherNozzleType", "profile of the feathered edges", &P::featherNozzleType, 1, 3, PROFILES},
    {"colorTimes", "passes that may print the same pixel; at most all", &P::colorTimes, 1, COUNT_MAX, {}},
    {"featherLevelPercent", "top of the smooth-3 ramps, in percent", &P::featherLevelPercent, 0, 100, {}},
    {"resSplitType", "split of the resolution passes between job parts", &P::resSplitType, 0, 5, SPLITS},
}};
// clang-format on

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

std::string OptionName(const char* fieldName)
{
    std::string option = "--";
    for (const char* c = fieldName; *c != 0; ++c) {
        const bool isCapital = *c >= 'A' && *c <= 'Z';
        option += isCapital ? std::string{'-', static_cast<char>(*c - 'A' + 'a')} : std::string{*c};
    }
    return option;
}

std::string RecordField_Option(const SRecordField& field)
{
    return OptionName(field.name);
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
    if (!(number >= field.lowest && number <= field.highest)) // written so that a NaN is refused too
        return false;
    if (const auto* real = std::get_if<float SMaskParam::*>(&field.member))
        param.*(*real) = static_cast<float>(number);
    else
        param.*std::get<std::int32_t SMaskParam::*>(field.member) = static_cast<std::int32_t>(number);
    return true;
}

} // namespace dotweave
