#include "record/recordjson.h"

#include "record/recorderror.h"
#include "record/recordfields.h"
#include "record/textquote.h"

#include <nlohmann/json.hpp>

#include <istream>
#include <set>

namespace dotweave {

namespace {

using nlohmann::json;

constexpr char DESCRIPTION[] = "description";

/// The value as the file gives it. Lists and objects are only named, because they may be nested without end.
std::string Value_Text(const json& value)
{
    if (value.is_structured())
        return std::string("an ") + value.type_name();
    if (value.is_string())
        return '"' + Text_Quote(value.get_ref<const std::string&>()) + '"';
    return value.dump();
}

const SRecordField& Field_Find(const std::string& name, const std::string& source)
{
    std::string known;
    for (const SRecordField& field : RecordFields()) {
        if (name == field.name)
            return field;
        known.append(known.empty() ? "" : ", ").append(field.name);
    }
    throw CRecordError(source + ": \"" + Text_Quote(name) + "\" is not a field; fields: " + known + ", " +
                       DESCRIPTION);
}

bool Field_Set(const SRecordField& field, const json& value, SMaskParam& param)
{
    if (value.is_string())
        return RecordField_SetName(field, value.get<std::string>(), param);
    const bool isReal = std::holds_alternative<float SMaskParam::*>(field.member);
    if (isReal ? !value.is_number() : !value.is_number_integer())
        return false;
    return RecordField_SetNumber(field, value.get<double>(), param);
}

/// Parses, and refuses a field that is given twice, so that nobody has to guess which value counts.
json Object_Parse(std::istream& stream, const std::string& source)
{
    std::set<std::string> names;
    const auto refuseTwice = [&](int depth, json::parse_event_t event, const json& parsed) {
        if (event == json::parse_event_t::key && depth == 1 &&
            !names.insert(parsed.get<std::string>()).second)
            throw CRecordError(source + ": field " + Value_Text(parsed) + " is given twice");
        return true;
    };
    json object;
    try {
        object = json::parse(stream, refuseTwice);
    } catch (const json::exception& error) {
        const std::string text = error.what(); // "[json.exception.name.number] text"
        const std::size_t prefix = text.find("] ");
        throw CRecordError(source + ": not a mode file: " +
                           Text_Quote(text.substr(prefix == std::string::npos ? 0 : prefix + 2)));
    }
    return object;
}

} // namespace

nlohmann::ordered_json Record_Json(const SMaskParam& param)
{
    nlohmann::ordered_json object = nlohmann::ordered_json::object();
    for (const SRecordField& field : RecordFields()) {
        if (std::holds_alternative<float SMaskParam::*>(field.member)) { // 33.3, not 33.29999923706055
            const std::string text = RecordField_ValueText(field, param);
            // A whole -0 is plain 0 in JSON, but another mode as a record.
            object[field.name] = nlohmann::ordered_json::parse(text == "-0" ? "-0.0" : text);
        } else
            object[field.name] = param.*std::get<std::int32_t SMaskParam::*>(field.member);
    }
    return object;
}

void Record_ReadJson(std::istream& stream, const std::string& source, SMaskParam& param,
                     std::string* description)
{
    Record_FromJson(Object_Parse(stream, source), source, param, description);
}

void Record_FromJson(const json& object, const std::string& source, SMaskParam& param,
                     std::string* description)
{
    if (!object.is_object())
        throw CRecordError(source + ": not a mode file: " + Value_Text(object) +
                           " instead of an object with fields");
    for (const auto& [name, value] : object.items()) {
        if (name == DESCRIPTION) {
            if (!value.is_string())
                throw CRecordError(source + ": " + DESCRIPTION + ": " + Value_Text(value) +
                                   " is not allowed; allowed: a text");
            if (description != nullptr)
                *description = value.get<std::string>();
            continue;
        }
        const SRecordField& field = Field_Find(name, source);
        if (Field_Set(field, value, param))
            continue;
        std::string where = source;
        where.append(": ").append(name);
        throw CRecordError(RecordField_RefusalText(field, where, Value_Text(value)));
    }
}

} // namespace dotweave
