#include "logcase.h"
#include "logscopes.h"

#include "dotweave/maskdata_base.h"
#include "maskparams.h"
#include "peek.h"

#include <utility>

namespace {

using Records = std::vector<SLogRecord>;
using Builder = bool (CMaskData_Base::*)(SCutTable*, int);

/// Calls one builder of a mask object that has these parameters.
bool IsBuilt(const SMaskParam& current, Builder builder)
{
    CMaskData_Base mask;
    SMaskData_Base_Peek peek{mask};
    peek.Current() = current;
    peek.StepHeight_NoneRes() = 4;
    peek.MaskHeight_NoneRes() = 8;
    std::vector<SCutTable> table(8);
    return (mask.*builder)(table.data(), 8);
}

SMaskParam Current(int featherMode, int featherNozzleType, int colorTimes)
{
    SMaskParam param = MaskParam_Plain();
    param.basePass = 2;
    param.featherMode = featherMode;
    param.featherNozzleType = featherNozzleType;
    param.colorTimes = colorTimes;
    return param;
}

SLogCase BuilderCase(const std::string& name, const SMaskParam& current, Builder builder, Records records)
{
    return {name, [current, builder] { return IsBuilt(current, builder); }, std::move(records)};
}

} // namespace

std::vector<SLogCase> LogCases_CutTables()
{
    constexpr Builder DISPATCH = &CMaskData_Base::CreateCutTable;
    const auto mode = [](const std::string& value) {
        return Records{
            FailureValue(UNIT_MASK, SCOPE_CUT_TABLE, "m_maskParam_Current.featherMode = " + value)};
    };
    const auto type = [](const std::string& value) {
        return Records{
            FailureValue(UNIT_MASK, SCOPE_CUT_TABLE, "m_maskParam_Current.featherNozzleType = " + value)};
    };
    const Records times = {Failure(UNIT_MASK, SCOPE_TABLE_NONE_TIMES)};
    return {
        BuilderCase("ModeTwo", Current(2, FeatherNozzle_Smooth_2, 1), DISPATCH, mode("2")),
        BuilderCase("ModeNegative", Current(-1, FeatherNozzle_Smooth_2, 1), DISPATCH, mode("-1")),
        BuilderCase("ModeLeast", Current(-2147483647 - 1, 1, 1), DISPATCH, mode("-2147483648")),
        BuilderCase("ProfileZero", Current(1, 0, 1), DISPATCH, type("0")),
        BuilderCase("ProfileFive", Current(1, 5, 1), DISPATCH, type("5")),
        BuilderCase("ProfileNegative", Current(1, -7, 1), DISPATCH, type("-7")),
        BuilderCase("ProfileReservedIsSilent", Current(1, FeatherNozzle_Reserved, 1), DISPATCH, {}),
        BuilderCase("HardEdgesTimesZero", Current(0, 0, 0), DISPATCH, times),
        BuilderCase("HardEdgesTimesNegative", Current(0, 0, -3), DISPATCH, times),
        BuilderCase("FamilyTimesZero", Current(0, 0, 0), &CMaskData_Base::CreateCutTable_FeatherNone, times),
        BuilderCase("SeveralTimesOnce", Current(0, 0, 1),
                    &CMaskData_Base::CreateCutTable_FeatherNone_ColorMultipleTimes, times),
        BuilderCase("SeveralTimesNegative", Current(0, 0, -1),
                    &CMaskData_Base::CreateCutTable_FeatherNone_ColorMultipleTimes, times),
    };
}
