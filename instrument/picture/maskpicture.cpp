#include "picture/maskpicture.h"

#include "picture/pngencode.h"

#include <algorithm>

namespace dotweave {

std::vector<std::uint8_t> MaskPicture_Png(const SMaskLines& lines)
{
    return Png_Encode({lines.width, lines.height, 1, 1}, [&lines](int y, std::uint8_t* row) {
        lines.Line_Unpack(y, row);
        std::transform(row, row + lines.width, row,
                       [](std::uint8_t pixel) { return static_cast<std::uint8_t>(pixel == 0 ? 1 : 0); });
    });
}

} // namespace dotweave
