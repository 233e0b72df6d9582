#include "view/maskshape.h"

#include "view/maskview.h"

#include <limits>

namespace dotweave {

SMaskShape MaskShape_Of(const CMaskData_Base& mask)
{
    const CMaskView view(mask);
    return {view.ColorCount(), view.PositionCount(),          mask.MaskHeight_IncludeRes(),
            mask.MaskWidth(),  mask.MaskLineBytes_OneColor(), mask.BitsPerPixel()};
}

bool MaskShape_IsPossible(const SMaskShape& shape)
{
    std::int64_t bytes = 1;
    for (const int factor : {shape.colorCount, shape.positionCount, shape.height, shape.lineBytes}) {
        if (factor < 1 || bytes > std::numeric_limits<std::int64_t>::max() / factor)
            return false;
        bytes *= factor;
    }
    constexpr int BYTE_BITS = 8;
    return shape.width >= 1 && (shape.bitsPerPixel == 1 || shape.bitsPerPixel == 2) &&
           std::int64_t{shape.width} * shape.bitsPerPixel <= std::int64_t{shape.lineBytes} * BYTE_BITS;
}

} // namespace dotweave
