#include "record/textquote.h"

#include <boost/locale/utf.hpp>

#include <array>
#include <cstdint>
#include <cstdio>
#include <numeric>
#include <vector>

namespace dotweave {

namespace {

constexpr std::string_view ELLIPSIS = "...";
constexpr std::size_t PART_MAX = (TEXT_QUOTE_MAX - ELLIPSIS.size()) / 2; // characters kept at either end
constexpr std::size_t NEAR_BYTES = 4 * (TEXT_QUOTE_MAX + 1); // always more than TEXT_QUOTE_MAX characters

bool IsUnsafe(std::uint32_t code)
{
    const auto isIn = [code](std::uint32_t first, std::uint32_t last) {
        return code >= first && code <= last;
    };
    return code < 0x20 || isIn(0x7F, 0x9F) || // control characters
           code == 0x61C || isIn(0x200E, 0x200F) || isIn(0x2028, 0x202E) ||
           isIn(0x2066, 0x2069); // direction, line ends
}

std::string Escape(const char* format, std::uint32_t code)
{
    std::array<char, 16> text = {};
    static_cast<void>(std::snprintf(text.data(), text.size(), format, code));
    return text.data();
}

/// The characters of a text, one by one, those that are unsafe escaped.
std::vector<std::string> Characters(std::string_view text)
{
    std::vector<std::string> characters;
    for (const char* next = text.data(); next != text.data() + text.size();) {
        const char* const start = next;
        const auto code = boost::locale::utf::utf_traits<char>::decode(next, text.data() + text.size());
        if (code == boost::locale::utf::illegal || code == boost::locale::utf::incomplete) {
            next = start + 1;
            characters.push_back(Escape("\\x%02x", static_cast<unsigned char>(*start)));
        } else if (IsUnsafe(code))
            characters.push_back(Escape(code < 0x80 ? "\\x%02x" : "\\u%04x", code));
        else
            characters.emplace_back(start, next);
    }
    return characters;
}

} // namespace

std::string Text_Quote(std::string_view text)
{
    const std::vector<std::string> head = Characters(text.substr(0, NEAR_BYTES));
    if (head.size() <= TEXT_QUOTE_MAX)
        return std::accumulate(head.begin(), head.end(), std::string());
    const std::vector<std::string> tail =
        Characters(text.substr(text.size() - std::min(text.size(), NEAR_BYTES)));
    const auto part = static_cast<std::ptrdiff_t>(PART_MAX);
    return std::accumulate(tail.end() - part, tail.end(),
                           std::accumulate(head.begin(), head.begin() + part, std::string()) +
                               std::string(ELLIPSIS));
}

} // namespace dotweave
