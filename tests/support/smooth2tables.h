#pragma once

#include "cuttables.h"
#include "dotweave/maskdata_base.h"
#include "peek.h"

#include <gtest/gtest.h>

/// @file
/// Smooth-2 tables and their parts, with the builder's success expected.

/// A mask object with the zones of a smooth-2 layout and nothing else.
class CZonedMask {
public:
    CZonedMask(int basePass, int colorTimes, int featherRows, int passRows)
        : m_passRows(basePass * passRows), m_featherRows((basePass + 1) * featherRows)
    {
        SMaskData_Base_Peek peek = {m_mask};
        peek.Current().basePass = basePass;
        peek.Current().colorTimes = colorTimes;
        peek.Smooth2FeatherHeight() = featherRows;
        peek.Smooth2FeatherHeightTotal() = m_featherRows;
        peek.Smooth2PassHeight() = passRows;
        peek.Smooth2PassHeightTotal() = m_passRows;
    }

    CRanges Whole(int count = -1)
    {
        return BuiltRanges(m_passRows + m_featherRows, [&](SCutTable* table) {
            EXPECT_TRUE(m_mask.CreateCutTable_Smooth_2(table, count));
        });
    }
    CRanges Pass(int count = -1)
    {
        return BuiltRanges(m_passRows, [&](SCutTable* table) {
            EXPECT_TRUE(m_mask.CreateCutTable_Smooth_2_Pass(table, count));
        });
    }
    CRanges Feather()
    {
        return BuiltRanges(m_featherRows, [&](SCutTable* table) {
            EXPECT_TRUE(m_mask.CreateCutTable_Smooth_2_Feather(table, m_featherRows));
        });
    }

    CMaskData_Base m_mask;
    int m_passRows;
    int m_featherRows;
};
