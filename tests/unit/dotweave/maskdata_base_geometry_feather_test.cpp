#include "dotweave/maskdata_base.h"

#include "logscopes.h"
#include "nozzlelayout.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <utility>
#include <vector>

namespace {

constexpr int SMOOTH_2 = FeatherNozzle_Smooth_2;
constexpr int SMOOTH_3 = FeatherNozzle_Smooth_3;
constexpr int SINE = FeatherNozzle_Smooth_3_Sine;

/// A set-up that is done and has switched nothing.
SSetUp Done(const SMaskParam& param, const SLayout& layout)
{
    return {true, layout, param.featherMode, param.featherNozzleType};
}

/// A set-up that fails with one record, switches nothing and leaves the members of the layout.
SSetUp Refused(const SMaskParam& param, const SLayout& layout, const char* scope, unsigned int line)
{
    return {false, layout, param.featherMode, param.featherNozzleType, {Failure(UNIT_MASK, scope, line)}};
}

/// The largest multiple of `unit` that is not above `rows`, found by counting.
int MultipleNotAbove(int rows, int unit)
{
    int multiple = 0;
    while (multiple + unit <= rows)
        multiple += unit;
    return multiple;
}

/// Calls `check(rows, passes, x, y)` for every head of up to 130 rows in up to 8 passes and the resolution
/// passes 1 x 1, 2 x 1, 1 x 3 and 2 x 2.
template <typename TCheck>
void ForSmallHeads(TCheck check)
{
    for (int rows = 1; rows <= 130; ++rows)
        for (int passes = 1; passes <= 8; ++passes)
            for (const auto& [x, y] : {std::pair(1, 1), std::pair(2, 1), std::pair(1, 3), std::pair(2, 2)})
                check(rows, passes, x, y);
}

} // namespace

TEST(NozzleLayout, HeadsAsWorkedByHand)
{
    struct SCase {
        SMaskParam param;
        SLayout layout;
    };
    const std::vector<SCase> cases = {
        {Head_Hard(544, 4, 1, 1), Layout_Hard(136, 544, 408)},
        {Head_Feathered(SMOOTH_2, 544, 4, 1, 1, 50.0F), {126, 544, 504, 40, 86, 200, 344}},
        {Head_Feathered(SMOOTH_2, 544, 4, 2, 2, 50.0F), {124, 544, 496, 48, 76, 240, 304}},
        {Head_Feathered(SMOOTH_2, 544, 4, 1, 4, 50.0F), {124, 544, 496, 48, 76, 240, 304}},
        {Head_Feathered(SMOOTH_3, 544, 4, 1, 1, 50.0F), Layout_Hard(85, 544, 510)},
        {Head_Feathered(SINE, 544, 4, 1, 1, 50.0F), Layout_Hard(85, 544, 510)},
        {Head_Feathered(SMOOTH_3, 544, 4, 2, 2, 50.0F), Layout_Hard(84, 544, 504)},
        {Head_Feathered(SMOOTH_3, 180, 4, 2, 2, 0.0F), Layout_Hard(44, 180, 176)},
        // no percent, no feather zone: the resolution set-up refuses it later
        {Head_Feathered(SMOOTH_2, 544, 4, 1, 1, 0.0F), {136, 544, 544, 0, 136, 0, 544}},
        // 33.3 % of three quarters of 100 rows are 24.975, truncated to 24, of which each of 5 zones takes 4
        {Head_Feathered(SMOOTH_3, 100, 1, 1, 1, 33.3F), Layout_Hard(76, 100, 76)},
        {Head_Feathered(SMOOTH_2, 100, 4, 1, 1, 33.3F), {24, 100, 96, 4, 20, 20, 80}},
        // 84 % of 75 rows are 63, but the agreed order in single precision ends just below, at 62
        {Head_Feathered(SMOOTH_3, 100, 1, 1, 1, 84.0F), Layout_Hard(38, 100, 76)},
        {Head_Feathered(SMOOTH_2, 100, 2, 1, 1, 84.0F), {40, 100, 80, 20, 20, 60, 40}}};
    for (const SCase& c : cases)
        EXPECT_EQ(SetUp_Of(c.param), Done(c.param, c.layout)) << c.param;
}

TEST(NozzleLayout, RowsLeftOverAsWorkedByHand)
{
    const auto switched = [](const SLayout& layout) { return SSetUp{true, layout, 1, 1}; };
    EXPECT_EQ(SetUp_Of(Head_Hard(544, 3, 1, 1)), switched({181, 544, 543, 1, 180, 4, 540}));
    EXPECT_EQ(SetUp_Of(Head_Hard(544, 6, 1, 1)), switched({90, 544, 540, 4, 86, 28, 516}));
    // more rows left over than a step: 12 rows stay unused
    EXPECT_EQ(SetUp_Of(Head_Hard(100, 10, 8, 1)), switched({8, 88, 80, 8, 0, 88, 0}));
    CMaskData_Base mask;
    ASSERT_TRUE(mask.Create(Head_Hard(100, 10, 2, 4)));
    EXPECT_EQ(mask.MaskHeight_IncludeRes(), 88 * 4);
}

TEST(NozzleLayout, HardEdgesSwitchWhenRowsAreLeftOver)
{
    ForSmallHeads([](int rows, int passes, int x, int y) {
        const SMaskParam param = Head_Hard(rows, passes, x, y);
        const int step = rows / (passes * x * y) * x * y; // whole resolution shares of one pass
        const int rest = rows - passes * step;
        SSetUp expected = Done(param, Layout_Hard(step, rows, rows - step));
        if (step == 0)
            expected = Refused(param, Layout_Hard(0, UNTOUCHED, UNTOUCHED), SCOPE_FEATHER_NONE, 237);
        else if (rest > 0)
            expected = {true, Layout_Zones(step, passes, std::min(rest, step)), 1, 1};
        ASSERT_EQ(SetUp_Of(param), expected) << param;
    });
}

TEST(NozzleLayout, FeatheredHeadsGiveUpTheirShareOfRows)
{
    ForSmallHeads([](int rows, int passes, int x, int y) {
        for (int quarters = 0; quarters <= 4;
             ++quarters) { // single precision represents these shares exactly
            const auto percent = static_cast<float>(25 * quarters);
            const int amount = rows * 3 * quarters / 16; // the share of three quarters of the head
            // Smooth-3 takes the whole amount off. The lead blank is all whole steps but the last, which may
            // be the rows left over.
            const SMaskParam smooth3 = Head_Feathered(SMOOTH_3, rows, passes, x, y, percent);
            const int step3 = MultipleNotAbove((rows - amount) / passes, x * y);
            ASSERT_EQ(SetUp_Of(smooth3),
                      step3 > 0 ? Done(smooth3, Layout_Hard(step3, rows, MultipleNotAbove(rows - 1, step3)))
                                : Refused(smooth3, Layout_Hard(0, rows, UNTOUCHED), SCOPE_SMOOTH_3, LINE_ANY))
                << smooth3;
            // Smooth-2 takes the share of one zone off, and the zones must fit into the step.
            const SMaskParam smooth2 = Head_Feathered(SMOOTH_2, rows, passes, x, y, percent);
            const int step2 = MultipleNotAbove((rows - amount / (passes + 1)) / passes, x * y);
            const int feather = rows - passes * step2;
            const SSetUp setUp = SetUp_Of(smooth2);
            ASSERT_EQ(setUp, step2 > 0 && feather <= step2
                                 ? Done(smooth2, Layout_Zones(step2, passes, feather))
                                 : Refused(smooth2, setUp.layout, SCOPE_SMOOTH_2, 205))
                << smooth2;
        }
    });
}

TEST(NozzleLayout, UnknownModesAndTypesSetNothing)
{
    for (const int value :
         {2, 3, 4, 0, 5, -1, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        SMaskParam mode = Head_Hard(544, 3, 1, 1);
        mode.featherMode = value;
        if (value != FeatherMode_None) {
            EXPECT_EQ(SetUp_Of(mode), Refused(mode, SLayout(), SCOPE_INIT_NONE_RES, 163));
        }
        const SMaskParam type = Head_Feathered(value, 544, 4, 1, 1, 50.0F);
        if (value != SMOOTH_3 && value != SINE) {
            EXPECT_EQ(SetUp_Of(type), Refused(type, SLayout(), SCOPE_FEATHER_NOZZLE, 182));
        }
    }
}

TEST(NozzleLayout, MorePassesThanRowsAreRefused)
{
    constexpr int MOST = std::numeric_limits<int>::max();
    for (const auto& [rows, passes] :
         {std::pair(1, 2), std::pair(4, 5), std::pair(544, MOST), std::pair(MOST - 1, MOST)}) {
        for (const int type : {SMOOTH_2, SMOOTH_3}) {
            const SSetUp setUp = SetUp_Of(Head_Feathered(type, rows, passes, 1, 1, 50.0F));
            EXPECT_FALSE(setUp.isDone);
            EXPECT_EQ(setUp.records.size(), 1U);
        }
        EXPECT_FALSE(SetUp_Of(Head_Hard(rows, passes, 1, 1)).isDone);
    }
}
