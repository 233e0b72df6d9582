#include "dotweave/maskdata_base.h"

#include "constants.h"
#include "log.h"
#include "maskdata_base_unit.h"
#include "maskdata_base_usage.h"

#include <algorithm>
#include <cstdint>
#include <vector>

using namespace dotweave;

namespace {

/// Rows of the sample table, and the rows at either end whose bound is the end of the scale.
constexpr int SAMPLE_ROWS = 80;
constexpr int SAMPLE_STEP_ROWS = 30;
/// The ramp of the sample table: 51 steps of 1285 span the whole threshold scale exactly.
constexpr int SAMPLE_RAMP_STEP = THRESHOLD_LEVEL_MAX / 51;

std::vector<SCutTable> SampleTable()
{
    std::vector<SCutTable> table;
    for (int row = 0; row < SAMPLE_ROWS; ++row) {
        const int upper =
            row < SAMPLE_STEP_ROWS ? THRESHOLD_LEVEL_MAX : (SAMPLE_ROWS - row) * SAMPLE_RAMP_STEP;
        const int lower = std::max(SAMPLE_ROWS - SAMPLE_STEP_ROWS - row, 0) * SAMPLE_RAMP_STEP;
        table.push_back({static_cast<std::uint16_t>(upper), static_cast<std::uint16_t>(lower)});
    }
    return table;
}

} // namespace

SMaskParam dotweave::Usage_Param()
{
    SMaskParam param = {};
    param.nozzleCount = 544;
    param.basePass = 1;
    param.xResPass = 1;
    param.yResPass = 1;
    param.colorCount = 1;
    param.bitsPerPixel = 1;
    param.featherMode = FeatherMode_None;
    param.featherPercent = 50.0F;
    param.colorTimes = 1;
    return param;
}

bool CMaskData_Base::Usage()
{
    CMaskData_Base mask;
    if (!mask.Create(dotweave::Usage_Param()))
        return Log_Failure(MASKDATA_BASE_UNIT, "bool __cdecl CMaskData_Base::Usage(void)", 73);
    return true;
}

bool CMaskData_Base::Usage_Test()
{
    std::vector<SCutTable> table = SampleTable();
    OutputCutTable(table.data(), SAMPLE_ROWS, "I:\\cutTable_1.txt");
    CreateCutTable_Smooth_3_ColorOneTimes_Style_2(table.data(), SAMPLE_ROWS, SAMPLE_STEP_ROWS);
    OutputCutTable(table.data(), SAMPLE_ROWS, "I:\\cutTable_2.txt");
    return true;
}
