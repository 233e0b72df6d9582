#include "dotweave/maskdata_base.h"

#include "logscopes.h"
#include "nozzlelayout.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>
#include <vector>

namespace {

using Records = std::vector<SLogRecord>;

/// Largest multiple of `unit` that is not above `rows`, found by counting.
int MultipleNotAbove(int rows, int unit)
{
    int multiple = 0;
    while (multiple + unit <= rows)
        multiple += unit;
    return multiple;
}

/// A head and the passes it prints in.
struct SHead {
    int rows, passes, x, y;
};

/// Every head of up to 130 rows in up to 8 passes, with 1, 2, 3 and 4 resolution passes.
std::vector<SHead> SmallHeads()
{
    std::vector<SHead> heads;
    for (int rows = 1; rows <= 130; ++rows) {
        for (int passes = 1; passes <= 8; ++passes) {
            for (const auto& [x, y] : {std::pair(1, 1), std::pair(2, 1), std::pair(1, 3), std::pair(2, 2)})
                heads.push_back({rows, passes, x, y});
        }
    }
    return heads;
}

/// Shares of the head in quarters, which single precision holds exactly.
constexpr int QUARTERS[] = {0, 1, 2, 3, 4};

} // namespace

TEST(MaskDataBaseGeometryFeatherLaw, HardEdgesSwitchExactlyWhenRowsAreLeftOver)
{
    for (const auto& [rows, passes, x, y] : SmallHeads()) {
        const SMaskParam param = FeatherNone(rows, passes, x, y);
        SCOPED_TRACE(testing::Message() << param);
        const SSetUp setUp = SetUp_Of(param);
        const int step = rows / (passes * x * y) * x * y; // whole resolution shares of one pass
        EXPECT_EQ(setUp.isDone, step > 0);
        if (step == 0) {
            EXPECT_EQ(setUp.layout, HardLayout(0, UNTOUCHED, UNTOUCHED));
            EXPECT_EQ(setUp.records, Records({Failure(UNIT_MASK, SCOPE_FEATHER_NONE, 237)}));
            continue;
        }
        EXPECT_EQ(setUp.records, Records());
        if (rows % (passes * x * y) == 0) {
            EXPECT_EQ(setUp.layout, HardLayout(step, rows, rows - step));
            EXPECT_EQ(setUp.featherMode, FeatherMode_None);
            EXPECT_EQ(setUp.featherNozzleType, FeatherNozzle_Smooth_3);
            continue;
        }
        const int feather = std::min(rows - passes * step, step);
        EXPECT_EQ(setUp.layout, (SLayout{step, passes * step + feather, passes * step, feather,
                                         step - feather, (passes + 1) * feather, passes * (step - feather)}));
        EXPECT_EQ(setUp.featherMode, FeatherMode_Nozzle);
        EXPECT_EQ(setUp.featherNozzleType, FeatherNozzle_Smooth_2);
    }
}

TEST(MaskDataBaseGeometryFeatherLaw, Smooth2LayoutsCoverTheHead)
{
    for (const auto& [rows, passes, x, y] : SmallHeads()) {
        for (const int quarters : QUARTERS) {
            const float percent = 25.0F * static_cast<float>(quarters);
            const SMaskParam param = Feathered(FeatherNozzle_Smooth_2, rows, passes, x, y, percent);
            SCOPED_TRACE(testing::Message() << param);
            const SSetUp setUp = SetUp_Of(param);
            const int amount = rows * 3 * quarters / 16; // three quarters of the head, of those the share
            const int step = MultipleNotAbove((rows - amount / (passes + 1)) / passes, x * y);
            const int feather = rows - passes * step;
            const bool hasRoom = step > 0 && feather <= step; // for pass zones
            EXPECT_EQ(setUp.isDone, hasRoom);
            if (!hasRoom) {
                EXPECT_EQ(setUp.records, Records({Failure(UNIT_MASK, SCOPE_SMOOTH_2, 205)}));
                continue;
            }
            EXPECT_EQ(setUp.layout, (SLayout{step, rows, rows - feather, feather, step - feather,
                                             (passes + 1) * feather, passes * (step - feather)}));
            EXPECT_EQ(setUp.records, Records());
        }
    }
}

TEST(MaskDataBaseGeometryFeatherLaw, Smooth3LayoutsTakeTheWholeFeatherAmountOff)
{
    for (const auto& [rows, passes, x, y] : SmallHeads()) {
        for (const int quarters : QUARTERS) {
            const float percent = 25.0F * static_cast<float>(quarters);
            const SMaskParam param = Feathered(FeatherNozzle_Smooth_3, rows, passes, x, y, percent);
            SCOPED_TRACE(testing::Message() << param);
            const SSetUp setUp = SetUp_Of(param);
            const int amount = rows * 3 * quarters / 16;
            const int step = MultipleNotAbove((rows - amount) / passes, x * y);
            EXPECT_EQ(setUp.isDone, step > 0);
            if (step == 0) {
                EXPECT_EQ(setUp.records, Records({Failure(UNIT_MASK, SCOPE_SMOOTH_3)}));
                continue;
            }
            // The lead blank is all whole steps but the last, which may be the rows left over.
            EXPECT_EQ(setUp.layout, HardLayout(step, rows, MultipleNotAbove(rows - 1, step)));
            EXPECT_EQ(setUp.records, Records());
        }
    }
}
