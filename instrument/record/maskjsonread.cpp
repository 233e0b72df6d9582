#include "record/maskjsonread.h"

#include "record/recorderror.h"
#include "record/recordfields.h"
#include "record/recordjson.h"
#include "record/textquote.h"

#include <nlohmann/json.hpp>

#include <charconv>
#include <limits>
#include <string_view>

namespace dotweave {

namespace {

using nlohmann::json;

[[noreturn]] void Refuse(const std::string& source, const std::string& reason)
{
    throw CRecordError(source + ": not the mask.json of a result: " + reason);
}

const json& Member(const json& object, const char* name, const std::string& source)
{
    if (!object.is_object() || !object.contains(name))
        Refuse(source, std::string("no \"") + name + '"');
    return object.at(name);
}

std::int64_t Number(const json& object, const char* name, std::int64_t highest, const std::string& source)
{
    const json& value = Member(object, name, source);
    if (!value.is_number_integer() || value < 0 || value > highest)
        Refuse(source,
               std::string("\"") + name + "\" is not a whole number from 0 to " + std::to_string(highest));
    return value.get<std::int64_t>();
}

const std::string& Text(const json& value, const char* what, const std::string& source)
{
    if (!value.is_string())
        Refuse(source, std::string(what) + " is no text");
    return value.get_ref<const std::string&>();
}

SMaskShape Shape(const json& geometry, const std::string& source)
{
    const auto number = [&](const char* name) {
        return static_cast<int>(Number(geometry, name, std::numeric_limits<int>::max(), source));
    };
    const SMaskShape shape = {
        number("colorCount"), number("positionCount"),          number("MaskHeight_IncludeRes"),
        number("MaskWidth"),  number("MaskLineBytes_OneColor"), number("BitsPerPixel")};
    if (!MaskShape_IsPossible(shape))
        Refuse(source, "\"geometry\" is that of no mask");
    return shape;
}

/// A name that stays in its folder on every system.
bool IsPlainName(std::string_view name)
{
    return !name.empty() && name != "." && name != ".." &&
           name.find_first_of(std::string_view("/\\:\0", 4)) == std::string_view::npos;
}

std::uint32_t Checksum(const json& file, const std::string& source)
{
    constexpr std::size_t DIGITS = 8;
    const std::string& text = Text(Member(file, "crc32", source), "\"crc32\"", source);
    std::uint32_t checksum = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), checksum, 16);
    if (text.size() != DIGITS || read.ptr != text.data() + text.size())
        Refuse(source, R"("crc32" is ")" + Text_Quote(text) + "\" instead of eight hexadecimal digits");
    return checksum;
}

SResultFile File(const json& file, const std::string& source)
{
    const std::string& name = Text(Member(file, "name", source), "\"name\" of a file", source);
    if (!IsPlainName(name))
        Refuse(source, '"' + Text_Quote(name) + "\" is not the name of a file in its folder");
    return {name, Number(file, "bytes", std::numeric_limits<std::int64_t>::max(), source),
            Checksum(file, source)};
}

} // namespace

SResultRecord MaskJson_Read(std::istream& stream, const std::string& source)
{
    const json object = json::parse(stream, nullptr, false);
    if (object.is_discarded())
        Refuse(source, "no JSON");
    SResultRecord result = {RECORD_DEFAULT, Shape(Member(object, "geometry", source), source), {}, {}};
    Record_FromJson(Member(object, "input", source), source, result.param);
    for (const char* name : {"warnings", "files"})
        if (!Member(object, name, source).is_array())
            Refuse(source, std::string("\"") + name + "\" is no list");
    for (const json& warning : object["warnings"])
        result.warnings.push_back(Text_Quote(Text(warning, "a warning", source)));
    for (const json& file : object["files"])
        result.files.push_back(File(file, source));
    return result;
}

} // namespace dotweave
