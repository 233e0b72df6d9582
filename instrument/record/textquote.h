#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace dotweave {

/// Characters of foreign text that a message shows at most.
inline constexpr std::size_t TEXT_QUOTE_MAX = 200;

/// Foreign text made safe for a message of one line: control characters, characters that turn the direction
/// of text and bytes that are no UTF-8 are escaped ("\x0a", "\u202e"). A text longer than TEXT_QUOTE_MAX
/// characters keeps its beginning and its end; three dots stand for the middle.
std::string Text_Quote(std::string_view text);

} // namespace dotweave
