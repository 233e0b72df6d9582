#include "sheet/builtcheck.h"

#include "view/maskview.h"

#include <cstddef>
#include <vector>

namespace dotweave {

namespace {

/// Bits after the last pixel of a line that are set.
int PaddingBits(const SMaskLines& lines, int line)
{
    const std::uint8_t* const bytes = lines.bytes + static_cast<std::ptrdiff_t>(line) * lines.lineBytes;
    int count = 0;
    for (int bit = lines.width * lines.bitsPerPixel; bit < lines.lineBytes * 8; ++bit)
        count += bytes[bit / 8] >> (7 - bit % 8) & 1;
    return count;
}

/// Checks one line and notes the first fault of all.
void Line_Check(const SMaskLines& lines, int line, const SMaskLawLine& law, std::vector<std::uint8_t>& pixels,
                SBuiltCheck& check)
{
    const int dotValue = (1 << lines.bitsPerPixel) - 1;
    lines.Line_Unpack(line, pixels.data());
    int firstWrong = -1;
    for (std::size_t column = 0; column < pixels.size(); ++column) {
        if (pixels[column] == law.dots[column] * dotValue)
            continue;
        ++check.wrongPixelCount;
        firstWrong = firstWrong < 0 ? static_cast<int>(column) : firstWrong;
    }
    const int paddingBits = PaddingBits(lines, line);
    check.paddingBitCount += paddingBits;
    check.pixelCount += lines.width;
    if (check.line < 0 && (firstWrong >= 0 || paddingBits > 0)) {
        check.line = line;
        check.column = firstWrong;
    }
}

SBuiltCheck Position_Check(const SMaskLines& lines, const CMaskLaw& law, int color, int position)
{
    SBuiltCheck check;
    SMaskLawLine lawLine;
    std::vector<std::uint8_t> pixels(static_cast<std::size_t>(lines.width));
    for (int line = 0; line < lines.height; ++line) {
        law.Line(color, position, line, lawLine);
        Line_Check(lines, line, lawLine, pixels, check);
    }
    check.position = check.line < 0 ? -1 : position;
    return check;
}

} // namespace

void SBuiltCheck::Add(const SBuiltCheck& other)
{
    pixelCount += other.pixelCount;
    wrongPixelCount += other.wrongPixelCount;
    paddingBitCount += other.paddingBitCount;
    wrapsWithoutSeam = wrapsWithoutSeam && other.wrapsWithoutSeam;
    if (position < 0) {
        position = other.position;
        line = other.line;
        column = other.column;
    }
}

SBuiltCheck Built_Check(const CMaskData_Base& mask, const CMaskLaw& law, int color)
{
    const CMaskView view(mask);
    std::vector<SBuiltCheck> checks(static_cast<std::size_t>(view.PositionCount()));
    for (int position = 0; position < view.PositionCount(); ++position)
        checks[static_cast<std::size_t>(position)] =
            Position_Check(view.Lines(color, position), law, color, position);
    SBuiltCheck check;
    for (const SBuiltCheck& one : checks)
        check.Add(one);
    int afterLast = view.PositionCount() - 1; // the library's own counter, too, must come back to the start
    check.wrapsWithoutSeam = view.PositionCount() % law.RepeatBands() == 0 &&
                             mask.MaskData_Get(color, afterLast) == view.Lines(color, 0).bytes &&
                             afterLast == 0;
    return check;
}

} // namespace dotweave
