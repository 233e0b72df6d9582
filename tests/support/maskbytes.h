#pragma once

#include "dotweave/maskdata_base.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

/// All bytes of a created mask object, from the first position of the first colour on.
inline std::vector<std::uint8_t> MaskBytes(const CMaskData_Base& mask)
{
    int position = -1;
    const std::uint8_t* first = mask.MaskData_Get(0, position);
    const std::ptrdiff_t count =
        std::ptrdiff_t{mask.MaskBytes_OneColor()} * mask.MaskParam_Current().colorCount;
    return {first, first + count};
}

/// The bytes of the mode as an undisturbed creation makes them.
inline std::vector<std::uint8_t> MaskBytes_Undisturbed(const SMaskParam& param)
{
    CMaskData_Base mask;
    return mask.Create(param) ? MaskBytes(mask) : std::vector<std::uint8_t>();
}

/// Work items of a mask: one per colour, position and Y resolution pass.
inline int ItemCount(const CMaskData_Base& mask)
{
    return mask.MaskParam_Current().colorCount * mask.YResPass() *
           (mask.MaskBytes_OneColor() / mask.MaskBytes_OnePosition());
}

struct SItemLines {
    int right = 0; ///< items whose lines are all as expected
    int blank = 0; ///< lost items: all their lines are zero
    int wrong = 0; ///< all others
    bool operator==(const SItemLines&) const = default;
};

/// Looks at the lines of each work item by itself: line y * yResPass + r belongs to resolution pass r.
inline SItemLines ItemLines_Compare(const CMaskData_Base& mask, const std::vector<std::uint8_t>& bytes,
                                    const std::vector<std::uint8_t>& expected)
{
    SItemLines lines;
    const std::ptrdiff_t lineBytes = mask.MaskLineBytes_OneColor();
    for (int item = 0; item < ItemCount(mask); ++item) {
        bool isRight = true;
        bool isBlank = true;
        for (int line = item % mask.YResPass(); line < mask.MaskHeight_IncludeRes();
             line += mask.YResPass()) {
            const std::ptrdiff_t first =
                (std::ptrdiff_t{item / mask.YResPass()} * mask.MaskHeight_IncludeRes() + line) * lineBytes;
            const auto begin = bytes.begin() + first;
            isRight = isRight && std::equal(begin, begin + lineBytes, expected.begin() + first);
            isBlank =
                isBlank && std::all_of(begin, begin + lineBytes, [](std::uint8_t byte) { return byte == 0; });
        }
        ++(isRight ? lines.right : isBlank ? lines.blank : lines.wrong);
    }
    return lines;
}
