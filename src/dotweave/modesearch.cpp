#include "modesearch.h"

#include "constants.h"
#include "refusaltext.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace dotweave {

namespace {

/// Rows that the search for another head goes up and down, so that a reason is a matter of milliseconds.
constexpr int NOZZLE_COUNTS_TRIED = 300;

std::string Nearest_Text(std::string_view name, std::int64_t value)
{
    return Text_Of("; nearest that builds: ", name, " ", value);
}

bool Percent_Builds(const SMaskParam& param, int percent)
{
    return Mode_Builds(param, &SMaskParam::featherPercent, static_cast<float>(percent));
}

/// Lays out the head in nozzle rows.
const SRefusal* Layout_Try(SMaskGeometry& geometry)
{
    if (const SRefusal* refusal = Refusal_Find(ECreationStep::FeatherMode, geometry); refusal != nullptr)
        return refusal;
    if (const SRefusal* refusal = Refusal_Find(ECreationStep::FeatherNozzle, geometry); refusal != nullptr)
        return refusal;
    const ELayout layout = Layout_Of(geometry.param);
    if (layout == ELayout::None)
        Geometry_FeatherNone(geometry);
    else if (layout == ELayout::Smooth_2)
        Geometry_Smooth_2(geometry);
    else
        Geometry_Smooth_3(geometry);
    return Refusal_Find(ECreationStep::Layout, geometry);
}

} // namespace

const SRefusal* Mode_Try(const SMaskParam& param, SMaskGeometry& geometry)
{
    geometry = {};
    geometry.input = param;
    geometry.param = param;
    if (const SRefusal* refusal = Refusal_Find(ECreationStep::ColorTimes, geometry); refusal != nullptr)
        return refusal;
    Geometry_Split(geometry);
    if (const SRefusal* refusal = Refusal_Find(ECreationStep::Param, geometry); refusal != nullptr)
        return refusal;
    geometry.matrixHeight = THRESHOLD_MATRIX_SIZE;
    geometry.matrixWidth = THRESHOLD_MATRIX_SIZE;
    if (const SRefusal* refusal = Layout_Try(geometry); refusal != nullptr)
        return refusal;
    if (const SRefusal* refusal = Refusal_Find(ECreationStep::Band, geometry); refusal != nullptr)
        return refusal;
    if (const SRefusal* refusal = Refusal_Find(ECreationStep::Lead, geometry); refusal != nullptr)
        return refusal;
    Geometry_MaskSize(geometry);
    return Refusal_Find(ECreationStep::MaskSize, geometry);
}

std::string Nearest_Field(const SMaskGeometry& geometry, std::int32_t SMaskParam::*field,
                          std::string_view name, std::int32_t value)
{
    return Mode_Builds(geometry.input, field, value) ? Nearest_Text(name, value) : std::string();
}

std::string Nearest_NozzleCount(const SMaskGeometry& geometry)
{
    const SMaskParam& param = geometry.param;
    // A step takes at least one row per pass, X and Y resolution pass.
    const std::int64_t leastStep = std::int64_t{param.xResPass} * param.yResPass;
    if (leastStep > (std::numeric_limits<std::int32_t>::max() - NOZZLE_COUNTS_TRIED) / param.basePass)
        return {}; // no head has that many rows
    const std::int64_t first = std::max<std::int64_t>(param.nozzleCount, leastStep * param.basePass);
    for (std::int64_t distance = 0; distance < NOZZLE_COUNTS_TRIED; ++distance) {
        for (const std::int64_t count : {first - distance, first + distance}) {
            if (Mode_Builds(geometry.input, &SMaskParam::nozzleCount, static_cast<std::int32_t>(count)))
                return Nearest_Text("nozzleCount", count);
        }
    }
    return {};
}

std::string Nearest_Percent(const SMaskGeometry& geometry)
{
    const bool isAbove = geometry.input.featherPercent > 100.0F;
    const int percent = isAbove ? NearestPercent_Below(geometry.input) : NearestPercent_Above(geometry.input);
    return percent >= 0 ? Nearest_Text("featherPercent", percent) : std::string();
}

int NearestPercent_Below(const SMaskParam& param)
{
    for (int percent = static_cast<int>(std::min(param.featherPercent, 100.0F)); percent >= 0; --percent)
        if (Percent_Builds(param, percent))
            return percent;
    return -1;
}

int NearestPercent_Above(const SMaskParam& param)
{
    const float first = std::isnan(param.featherPercent) ? 0.0F : std::max(param.featherPercent, 0.0F);
    for (int percent = static_cast<int>(std::ceil(first)); percent <= 100; ++percent)
        if (Percent_Builds(param, percent))
            return percent;
    return -1;
}

} // namespace dotweave
