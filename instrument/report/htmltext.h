#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace dotweave {

/// @file
/// Pieces of an HTML page as text. What is called html in a parameter is taken as it is; everything else is
/// escaped here.

/// A text that means itself in HTML, also inside a quoted attribute.
std::string Html_Escape(std::string_view text);

/// Bytes in base64 (RFC 4648), with padding.
std::string Base64_Text(std::span<const std::uint8_t> bytes);

/// A file inside a page, for src attributes: a PNG or an SVG file.
std::string DataUri_Png(std::span<const std::uint8_t> bytes);
std::string DataUri_Svg(std::string_view text);

/// A number with so many decimals and a point, whatever the locale. A negative zero loses its sign.
std::string Number_Text(double value, int decimals);

/// A count and its unit: "1 line", "2 lines".
std::string Count_Text(std::int64_t count, const std::string& one, const std::string& many);

/// A table whose columns all but the first hold numbers.
/// @param caption  says what the table shows
/// @param head     a cell for each column
/// @param rows     as many cells in each; the first one names the row
std::string Table_Html(const std::string& caption, const std::vector<std::string>& head,
                       const std::vector<std::vector<std::string>>& rows);

/// A picture with its text alternative and a caption. A report's pictures go on white paper.
/// @param uri      from DataUri_Png or DataUri_Svg
/// @param style    class names of the figure
/// @param alt      what the picture shows, for who cannot see it
/// @param caption  one or more sentences; "" for none
std::string Figure_Html(const std::string& uri, const std::string& style, const std::string& alt,
                        const std::string& caption);

} // namespace dotweave
