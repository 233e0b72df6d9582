#include "dotweave/maskparam_refusal.h"

#include "dotweave/cuttable.h"
#include "dotweave/maskblock.h"
#include "kernels/maskkernels.h"
#include "maskdata_base_refusal.h"
#include "modesearch.h"
#include "modewarning.h"
#include "refusalreason.h"

#include <algorithm>
#include <cstddef>

using namespace dotweave;

namespace {

/// The planes of every mode that can be built are the table's own, so only their addresses take memory.
std::int64_t Planes_Bytes(const SMaskGeometry& geometry)
{
    return geometry.param.colorCount * static_cast<std::int64_t>(sizeof(void*));
}

/// Bytes per pixel that the workers move dots in, and the two buffers of the sine mask.
std::int64_t Sine_Bytes(const SMaskGeometry& geometry)
{
    if (!HasSineEdge(geometry.param))
        return 0;
    const std::int64_t featherRows = FeatherRows(geometry.height, geometry.step);
    const std::int64_t sineRows =
        SineMaskRows(static_cast<int>(featherRows), static_cast<int>(geometry.matrixWidth));
    // The sine part of a band's first feather rows, and that of its last ones as far as they are not the same
    // rows.
    const std::int64_t movedRows = sineRows + std::min(sineRows, geometry.height - featherRows);
    return geometry.matrixWidth *
           (2 * sineRows + std::int64_t{WORKER_COUNT} * geometry.param.xResPass * movedRows);
}

std::int64_t Workers_Bytes(const SMaskGeometry& geometry)
{
    const int width = static_cast<int>(geometry.matrixWidth);
    const std::size_t scratch = MaskKernel_ScratchBytes(width, width, geometry.param.xResPass);
    const std::size_t blocks = static_cast<std::size_t>(geometry.param.xResPass) * sizeof(CMaskBlock);
    return WORKER_COUNT * static_cast<std::int64_t>(scratch + blocks);
}

} // namespace

std::string MaskParam_Refusal(const SMaskParam& param)
{
    SMaskGeometry geometry;
    const SRefusal* refusal = Mode_Try(param, geometry);
    return refusal != nullptr ? refusal->reason(geometry) : std::string();
}

SMaskSize MaskParam_Size(const SMaskParam& param)
{
    SMaskGeometry geometry;
    if (Mode_Try(param, geometry) != nullptr)
        return {0, 0};
    const std::int64_t maskBytes = OneColor_Bytes(geometry) * geometry.param.colorCount;
    const std::int64_t cutTable = geometry.height * static_cast<std::int64_t>(sizeof(SCutTable));
    const std::int64_t offsets = (std::int64_t{geometry.param.xResPass} + geometry.param.yResPass) *
                                 static_cast<std::int64_t>(sizeof(std::int32_t));
    return {maskBytes, maskBytes + Planes_Bytes(geometry) + cutTable + offsets + Sine_Bytes(geometry) +
                           Workers_Bytes(geometry)};
}

std::vector<std::string> MaskParam_Warnings(const SMaskParam& param)
{
    SMaskGeometry geometry;
    if (Mode_Try(param, geometry) != nullptr)
        return {};
    return Mode_Warnings(geometry);
}
