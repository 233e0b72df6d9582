#pragma once

#include "cuttables.h"
#include "dotweave/maskdata_base.h"
#include "peek.h"

#include <gtest/gtest.h>

/// @file
/// Hard-edged tables, each by the builder that its name tells, with the builder's success expected.

/// A mask object of which only the numbers are set that a hard-edged cut table reads.
class CHardMask {
public:
    CHardMask(int basePass, int colorTimes, int stepRows)
    {
        SMaskData_Base_Peek peek = {m_mask};
        peek.Current().basePass = basePass;
        peek.Current().colorTimes = colorTimes;
        peek.StepHeight_NoneRes() = stepRows;
        peek.MaskHeight_NoneRes() = basePass * stepRows;
    }
    CMaskData_Base m_mask;
};

inline CRanges OneTimes(int passCount, int rowsPerPass, int count)
{
    return BuiltRanges(passCount * rowsPerPass, [&](SCutTable* table) {
        EXPECT_TRUE(
            CMaskData_Base::CreateCutTable_FeatherNone_ColorOneTimes(table, count, rowsPerPass, passCount));
    });
}

inline CRanges MultipleTimes(int basePass, int colorTimes, int stepRows)
{
    CHardMask hard(basePass, colorTimes, stepRows);
    return BuiltRanges(basePass * stepRows, [&](SCutTable* table) {
        EXPECT_TRUE(hard.m_mask.CreateCutTable_FeatherNone_ColorMultipleTimes(table, -1));
    });
}
