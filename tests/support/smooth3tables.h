#pragma once

#include "cuttables.h"
#include "dotweave/maskdata_base.h"
#include "peek.h"

#include <gtest/gtest.h>

/// @file
/// Smooth-3 tables, each by the builder that its name tells, with the builder's success expected.

/// Feather levels that a sweep takes: the ends of the scale, their neighbours and two in between.
inline constexpr int SMOOTH_3_LEVEL_PERCENTS[] = {0, 1, 33, 50, 99, 100};

/// A mask object of which only the numbers are set that the smooth-3 builders read.
class CRampMask {
public:
    CRampMask(int basePass, int colorTimes, int stepRows, int levelPercent)
    {
        SMaskData_Base_Peek peek = {m_mask};
        peek.Current().basePass = basePass;
        peek.Current().colorTimes = colorTimes;
        peek.Current().featherLevelPercent = levelPercent;
        peek.StepHeight_NoneRes() = stepRows;
    }
    CMaskData_Base m_mask;
};

inline CRanges OnceStyle1(int n, int stepRows, int levelPercent)
{
    return BuiltRanges(n, [&](SCutTable* table) {
        EXPECT_TRUE(
            CMaskData_Base::CreateCutTable_Smooth_3_ColorOneTimes_Style_1(table, n, stepRows, levelPercent));
    });
}

inline CRanges OnceStyle2(int n, int stepRows)
{
    return BuiltRanges(n, [&](SCutTable* table) {
        EXPECT_TRUE(CMaskData_Base::CreateCutTable_Smooth_3_ColorOneTimes_Style_2(table, n, stepRows));
    });
}

inline CRanges MultipleStyle1(int n, int basePass, int colorTimes, int stepRows, int levelPercent)
{
    CRampMask ramp(basePass, colorTimes, stepRows, levelPercent);
    return BuiltRanges(n, [&](SCutTable* table) {
        EXPECT_TRUE(ramp.m_mask.CreateCutTable_Smooth_3_ColorMultipleTimes_Style_1(table, n));
    });
}

inline CRanges MultipleStyle2(int n, int colorTimes, int stepRows, int levelPercent)
{
    CRampMask ramp(4, colorTimes, stepRows, levelPercent);
    return BuiltRanges(n, [&](SCutTable* table) {
        EXPECT_TRUE(ramp.m_mask.CreateCutTable_Smooth_3_ColorMultipleTimes_Style_2(table, n));
    });
}

/// How a range takes its new place when it is widened.
enum class EPlace { Whole, PushedUp, CentredLow, CentredHigh, PushedDown };

struct SWidened {
    SRange range;
    EPlace place;
};

/// The widening on paper: the new width around the old centre, moved back onto the scale at either end. Both
/// halves are rounded down; from 32767 on the range hangs from its upper bound, below it stands on the lower.
inline SWidened WidenedByHand(const SRange& range, int times)
{
    const int width = (range.upper - range.lower) * times;
    if (width >= 65535)
        return {{0, 65535}, EPlace::Whole};
    const int centre = (range.lower + range.upper) / 2;
    if (centre >= 32767) {
        const int upper = centre + width / 2;
        if (upper > 65535)
            return {{65535 - width, 65535}, EPlace::PushedDown};
        return {{upper - width, upper}, EPlace::CentredHigh};
    }
    const int lower = centre - width / 2;
    if (lower < 0)
        return {{0, width}, EPlace::PushedUp};
    return {{lower, lower + width}, EPlace::CentredLow};
}
