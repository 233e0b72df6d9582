#pragma once

#include "cuttables.h"
#include "dotweave/maskdata_base.h"
#include "logcapture.h"
#include "peek.h"

#include <gtest/gtest.h>

#include <ostream>
#include <vector>

/// @file
/// Calls the cut table builders on mask objects that have a band and nothing else.

/// The numbers that the builders read.
struct SBand {
    int basePass = 1;
    int colorTimes = 1;
    int stepRows = 0;
    int levelPercent = 100;
    int featherRows = 0; ///< of a smooth-2 zone
    int passRows = 0;    ///< of a smooth-2 zone
};

inline std::ostream& operator<<(std::ostream& stream, const SBand& band)
{
    return stream << band.basePass << " passes, " << band.colorTimes << " times, step " << band.stepRows
                  << ", level " << band.levelPercent << "%, zones " << band.featherRows << " + "
                  << band.passRows;
}

inline void Band_Set(CMaskData_Base& mask, const SBand& band)
{
    SMaskData_Base_Peek peek = {mask};
    peek.Current().basePass = band.basePass;
    peek.Current().colorTimes = band.colorTimes;
    peek.Current().featherLevelPercent = band.levelPercent;
    peek.StepHeight_NoneRes() = band.stepRows;
    peek.MaskHeight_NoneRes() = band.basePass * band.stepRows;
    peek.Smooth2FeatherHeight() = band.featherRows;
    peek.Smooth2FeatherHeightTotal() = (band.basePass + 1) * band.featherRows;
    peek.Smooth2PassHeight() = band.passRows;
    peek.Smooth2PassHeightTotal() = band.basePass * band.passRows;
}

/// What a builder returns, writes and logs.
struct SBuilt {
    bool isBuilt = false;
    CRanges ranges;
    std::vector<SLogRecord> records = {};

    friend bool operator==(const SBuilt&, const SBuilt&) = default;
    friend std::ostream& operator<<(std::ostream& stream, const SBuilt& built)
    {
        return stream << (built.isBuilt ? "built " : "not built ") << testing::PrintToString(built.ranges)
                      << testing::PrintToString(built.records);
    }
};

using CBuilder = bool (CMaskData_Base::*)(SCutTable*, int);

/// Lets a member builder fill `rows` entries.
/// @param count  handed to the builder
inline SBuilt Table_Build(CMaskData_Base& mask, int rows, CBuilder builder, int count)
{
    const CLogCapture log;
    SBuilt built;
    built.ranges =
        BuiltRanges(rows, [&](SCutTable* table) { built.isBuilt = (mask.*builder)(table, count); });
    built.records = log.Records();
    return built;
}

inline SBuilt Table_Build(const SBand& band, int rows, CBuilder builder, int count)
{
    CMaskData_Base mask;
    Band_Set(mask, band);
    return Table_Build(mask, rows, builder, count);
}

/// The rows that a builder fills; expects success without a record.
inline CRanges Table_Of(const SBand& band, int rows, CBuilder builder, int count)
{
    SBuilt built = Table_Build(band, rows, builder, count);
    EXPECT_TRUE(built.isBuilt && built.records.empty()) << band;
    return built.ranges;
}

inline CRanges OneTimes(int passCount, int rowsPerPass, int count)
{
    return BuiltRanges(passCount * rowsPerPass, [&](SCutTable* table) {
        EXPECT_TRUE(
            CMaskData_Base::CreateCutTable_FeatherNone_ColorOneTimes(table, count, rowsPerPass, passCount));
    });
}

inline CRanges MultipleTimes(int basePass, int colorTimes, int stepRows)
{
    return Table_Of({.basePass = basePass, .colorTimes = colorTimes, .stepRows = stepRows},
                    basePass * stepRows, &CMaskData_Base::CreateCutTable_FeatherNone_ColorMultipleTimes, -1);
}

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
    return Table_Of(
        {.basePass = basePass, .colorTimes = colorTimes, .stepRows = stepRows, .levelPercent = levelPercent},
        n, &CMaskData_Base::CreateCutTable_Smooth_3_ColorMultipleTimes_Style_1, n);
}

inline CRanges MultipleStyle2(int n, int colorTimes, int stepRows, int levelPercent)
{
    return Table_Of({.colorTimes = colorTimes, .stepRows = stepRows, .levelPercent = levelPercent}, n,
                    &CMaskData_Base::CreateCutTable_Smooth_3_ColorMultipleTimes_Style_2, n);
}

/// The smooth-2 table of these zones and its two parts.
class CZonedMask {
public:
    CZonedMask(int basePass, int colorTimes, int featherRows, int passRows)
        : m_band{.basePass = basePass,
                 .colorTimes = colorTimes,
                 .featherRows = featherRows,
                 .passRows = passRows},
          m_passRows(basePass * passRows), m_featherRows((basePass + 1) * featherRows)
    {}

    CRanges Whole(int count = -1) const
    {
        return Table_Of(m_band, m_passRows + m_featherRows, &CMaskData_Base::CreateCutTable_Smooth_2, count);
    }
    CRanges Pass(int count = -1) const
    {
        return Table_Of(m_band, m_passRows, &CMaskData_Base::CreateCutTable_Smooth_2_Pass, count);
    }
    CRanges Feather() const
    {
        return Table_Of(m_band, m_featherRows, &CMaskData_Base::CreateCutTable_Smooth_2_Feather,
                        m_featherRows);
    }

private:
    SBand m_band;
    int m_passRows;
    int m_featherRows;
};
