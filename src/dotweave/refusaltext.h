#pragma once

#include <charconv>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

/// @file
/// Sentences about print modes: numbers as a record file has them, whatever the process's locale.

namespace dotweave {

inline void Text_Append(std::string& text, std::string_view part)
{
    text += part;
}

/// The shortest digits that read back as the same number.
template <typename TNumber>
std::enable_if_t<std::is_arithmetic_v<TNumber>> Text_Append(std::string& text, TNumber number)
{
    char digits[32] = {};
    text.append(digits, std::to_chars(digits, digits + sizeof digits, number).ptr);
}

template <typename... TParts>
std::string Text_Of(const TParts&... parts)
{
    std::string text;
    (Text_Append(text, parts), ...);
    return text;
}

/// "1 row", "2 rows"
inline std::string Text_Rows(std::int64_t count)
{
    return Text_Of(count, count == 1 ? " row" : " rows");
}

} // namespace dotweave
