#include "report/htmltext.h"

#include <array>
#include <charconv>
#include <cstddef>

namespace dotweave {

std::string Html_Escape(std::string_view text)
{
    std::string html;
    for (const char c : text) {
        switch (c) {
        case '&':
            html += "&amp;";
            break;
        case '<':
            html += "&lt;";
            break;
        case '>':
            html += "&gt;";
            break;
        case '"':
            html += "&quot;";
            break;
        case '\'':
            html += "&#39;";
            break;
        default:
            html += c;
        }
    }
    return html;
}

std::string Base64_Text(std::span<const std::uint8_t> bytes)
{
    static constexpr char LETTERS[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        const std::size_t count = bytes.size() - i;
        const std::uint32_t three = std::uint32_t{bytes[i]} << 16U |
                                    (count > 1 ? std::uint32_t{bytes[i + 1]} << 8U : 0U) |
                                    (count > 2 ? std::uint32_t{bytes[i + 2]} : 0U);
        text += LETTERS[three >> 18U];
        text += LETTERS[three >> 12U & 63U];
        text += count > 1 ? LETTERS[three >> 6U & 63U] : '=';
        text += count > 2 ? LETTERS[three & 63U] : '=';
    }
    return text;
}

std::string DataUri_Png(std::span<const std::uint8_t> bytes)
{
    return "data:image/png;base64," + Base64_Text(bytes);
}

std::string DataUri_Svg(std::string_view text)
{
    const std::vector<std::uint8_t> bytes(text.begin(), text.end());
    return "data:image/svg+xml;base64," + Base64_Text(bytes);
}

std::string Number_Text(double value, int decimals)
{
    std::array<char, 400> digits = {};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value,
                                   std::chars_format::fixed, decimals);
    const std::string text(digits.data(), end.ptr);
    const bool isZero = text.find_first_not_of("-0.") == std::string::npos;
    return isZero && text.starts_with('-') ? text.substr(1) : text;
}

std::string Count_Text(std::int64_t count, const std::string& one, const std::string& many)
{
    return std::to_string(count) + ' ' + (count == 1 ? one : many);
}

std::string Table_Html(const std::string& caption, const std::vector<std::string>& head,
                       const std::vector<std::vector<std::string>>& rows)
{
    std::string html =
        "<div class='table'><table>\n<caption>" + Html_Escape(caption) + "</caption>\n<thead><tr>";
    for (const std::string& cell : head)
        html += "<th scope='col'>" + Html_Escape(cell) + "</th>";
    html += "</tr></thead>\n<tbody>\n";
    for (const std::vector<std::string>& row : rows) {
        html += "<tr>";
        for (std::size_t i = 0; i < row.size(); ++i)
            html += i == 0 ? "<th scope='row'>" + Html_Escape(row[i]) + "</th>"
                           : "<td>" + Html_Escape(row[i]) + "</td>";
        html += "</tr>\n";
    }
    return html + "</tbody></table></div>\n";
}

std::string Figure_Html(const std::string& uri, const std::string& style, const std::string& alt,
                        const std::string& caption)
{
    std::string html =
        "<figure class='" + Html_Escape(style) + "'><img alt='" + Html_Escape(alt) + "' src='" + uri + "'>";
    if (!caption.empty())
        html += "<figcaption>" + Html_Escape(caption) + "</figcaption>";
    return html + "</figure>\n";
}

} // namespace dotweave
