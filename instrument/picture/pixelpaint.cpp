#include "picture/pixelpaint.h"

#include "picture/pixelletters.h"

#include <algorithm>
#include <cstddef>

namespace dotweave {

namespace {

constexpr int GLYPH_COLUMNS = 5;
constexpr int GLYPH_ROWS = 9;
constexpr char FIRST_LETTER = ' ';
constexpr char LAST_LETTER = '~';

bool IsInk(char letter, int column, int row)
{
    if (letter < FIRST_LETTER || letter > LAST_LETTER)
        return row < GLYPH_ROWS - 2; // a box
    return PIXEL_LETTERS[letter - FIRST_LETTER][row * (GLYPH_COLUMNS + 1) + column] == '#';
}

} // namespace

SPixelPicture Picture_Make(int width, int height, int channelCount, std::uint8_t value)
{
    const std::size_t count = static_cast<std::size_t>(width) * static_cast<std::size_t>(height) *
                              static_cast<std::size_t>(channelCount);
    return {width, height, channelCount, std::vector<std::uint8_t>(count, value)};
}

void Rect_Paint(SPixelPicture& picture, int x, int y, int width, int height, std::uint8_t value)
{
    const int left = std::max(x, 0), right = std::min(x + width, picture.width);
    const int top = std::max(y, 0), bottom = std::min(y + height, picture.height);
    if (left >= right)
        return;
    const std::ptrdiff_t channels = picture.channelCount;
    for (int row = top; row < bottom; ++row)
        std::fill_n(picture.pixels.begin() + (std::ptrdiff_t{row} * picture.width + left) * channels,
                    (right - left) * channels, value);
}

void Text_Paint(SPixelPicture& picture, int x, int y, std::string_view text, std::uint8_t value, int scale)
{
    for (const char letter : text) {
        for (int row = 0; row < GLYPH_ROWS; ++row)
            for (int column = 0; column < GLYPH_COLUMNS; ++column)
                if (IsInk(letter, column, row))
                    Rect_Paint(picture, x + column * scale, y + row * scale, scale, scale, value);
        x += LETTER_WIDTH * scale;
    }
}

int Text_Width(std::string_view text, int scale)
{
    return text.empty() ? 0 : (static_cast<int>(text.size()) * LETTER_WIDTH - 1) * scale;
}

int Ruler_Step(int least)
{
    for (int power = 1;; power *= 10)
        for (const int factor : {1, 2, 5})
            if (least <= factor * power)
                return factor * power;
}

} // namespace dotweave
