#include "sheet/dotplacement.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <stdexcept>
#include <vector>

using namespace dotweave;

namespace {

/// 544 nozzle rows, 4 passes: moves of 136 row pitches.
constexpr SMaskParam MODE = {544, 4, 1, 1, 1, 1, 0, 0, 0, 1, 100, 0};

class DotPlacement : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(mask.Create(MODE)); }
    CDotPlacement Placement() const { return {CPassLayout(mask), errors}; }
    /// How far pass `number` is off.
    double Shift(std::int64_t number) const
    {
        const CDotPlacement placement = Placement();
        for (const SPlacedPass& pass : placement.Passes(number * 136 + 68, 1)) {
            if (pass.pass.number == number)
                return pass.shift;
        }
        ADD_FAILURE() << "pass " << number << " is not there";
        return 0;
    }
    SRowPlace Row(std::int64_t number, int row) const
    {
        const CDotPlacement placement = Placement();
        return placement.Row({placement.Layout().Pass(number), 0}, row);
    }

    CMaskData_Base mask;
    SSheetErrors errors;
};

} // namespace

TEST_F(DotPlacement, LeavesEverythingInPlaceWithoutErrors)
{
    EXPECT_EQ(Shift(-3), 0);
    EXPECT_EQ(Shift(100), 0);
    EXPECT_EQ(Row(7, 543).shiftX, 0);
    EXPECT_EQ(Row(7, 543).shiftY, 0);
    EXPECT_EQ(Row(7, 543).volume, 1);
    EXPECT_EQ(Placement().RowShiftY_Max(), 0);
}

/// Each move is a quarter of a pitch too long: pass 10 is 2.5 pitches too far down, pass -2 half a pitch too
/// far up.
TEST_F(DotPlacement, AddsUpTheConstantErrorOfMoves)
{
    errors.advanceConstant = 0.25;
    EXPECT_DOUBLE_EQ(Shift(0), 0);
    EXPECT_DOUBLE_EQ(Shift(1), 0.25);
    EXPECT_DOUBLE_EQ(Shift(10), 2.5);
    EXPECT_DOUBLE_EQ(Shift(-2), -0.5);
}

/// With a period of 4 moves and an amplitude of 0.5 the moves to passes 1, 2, 3, 4 are off by 0.5, 0, -0.5, 0.
TEST_F(DotPlacement, TurnsAnEccentricRoller)
{
    errors.advancePeriodic = 0.5;
    errors.periodMoves = 4;
    const std::vector<double> shifts = {0, 0.5, 0.5, 0, 0, 0.5, 0.5, 0, 0};
    for (std::size_t pass = 0; pass < shifts.size(); ++pass)
        EXPECT_NEAR(Shift(static_cast<std::int64_t>(pass)), shifts[pass], 1e-12) << "pass " << pass;
    EXPECT_NEAR(Shift(-1), 0, 1e-12);   // the move to pass 0 is off by sin 0
    EXPECT_NEAR(Shift(-2), 0.5, 1e-12); // that to pass -1 by -0.5
    errors.periodPhase = 0.25;          // now 0, -0.5, 0, 0.5
    EXPECT_NEAR(Shift(1), 0, 1e-12);
    EXPECT_NEAR(Shift(2), -0.5, 1e-12);
    EXPECT_NEAR(Shift(4), 0, 1e-12);
}

TEST_F(DotPlacement, DrawsAnErrorForEveryMove)
{
    errors.advanceSigma = 0.3;
    const CDotPlacement placement = Placement();
    constexpr int COUNT = 20000;
    double mean = 0, square = 0, neighbours = 0;
    for (int move = 1; move <= COUNT; ++move) {
        const double error = placement.MoveError(move);
        mean += error / COUNT;
        square += error * error / COUNT;
        neighbours += error * placement.MoveError(move + 1) / COUNT;
    }
    EXPECT_NEAR(mean, 0, 4 * 0.3 / std::sqrt(COUNT));
    EXPECT_NEAR(std::sqrt(square), 0.3, 4 * 0.3 / std::sqrt(2.0 * COUNT));
    EXPECT_NEAR(neighbours, 0, 4 * 0.09 / std::sqrt(COUNT)); // one move knows nothing of the next
    double sum = 0;
    for (int move = 1; move <= 30; ++move)
        sum += placement.MoveError(move);
    EXPECT_NEAR(Shift(30), sum, 1e-12);
}

TEST_F(DotPlacement, RepeatsItselfForASeed)
{
    errors.advanceSigma = errors.rowSigmaX = errors.rowSigmaY = 0.3;
    const double shift = Shift(9), rowX = Row(0, 5).shiftX, rowY = Row(0, 5).shiftY;
    EXPECT_EQ(Shift(9), shift);
    EXPECT_NE(rowX, rowY);
    errors.seed = 2;
    EXPECT_NE(Shift(9), shift);
    EXPECT_NE(Row(0, 5).shiftX, rowX);
    EXPECT_NE(Row(0, 5).shiftY, rowY);
}

/// The head of 544 rows turns about the middle between rows 271 and 272.
TEST_F(DotPlacement, TiltsTheHeadAboutItsMiddle)
{
    errors.tilt = 0.01;
    EXPECT_NEAR(Row(0, 0).shiftX, -2.715, 1e-12);
    EXPECT_NEAR(Row(0, 271).shiftX, -0.005, 1e-12);
    EXPECT_NEAR(Row(0, 272).shiftX, 0.005, 1e-12);
    EXPECT_NEAR(Row(0, 543).shiftX, 2.715, 1e-12);
    EXPECT_EQ(Row(0, 543).shiftY, 0);
}

TEST_F(DotPlacement, ShiftsEverySecondPassSideways)
{
    errors.bidirectional = -1.25;
    for (const std::int64_t even : {-2, 0, 6})
        EXPECT_EQ(Row(even, 3).shiftX, 0) << even;
    for (const std::int64_t odd : {-3, -1, 1, 7})
        EXPECT_EQ(Row(odd, 3).shiftX, -1.25) << odd;
}

TEST_F(DotPlacement, KeepsEachRowsOwnErrorInAllPasses)
{
    errors.rowSigmaX = 0.2;
    errors.rowSigmaY = 0.4;
    double squareX = 0, squareY = 0, most = 0;
    for (int row = 0; row < 544; ++row) {
        const SRowPlace place = Row(0, row);
        EXPECT_EQ(Row(11, row).shiftX, place.shiftX);
        EXPECT_EQ(Row(11, row).shiftY, place.shiftY);
        squareX += place.shiftX * place.shiftX / 544;
        squareY += place.shiftY * place.shiftY / 544;
        most = std::max(most, std::abs(place.shiftY));
    }
    EXPECT_NEAR(std::sqrt(squareX), 0.2, 4 * 0.2 / std::sqrt(2 * 544));
    EXPECT_NEAR(std::sqrt(squareY), 0.4, 4 * 0.4 / std::sqrt(2 * 544));
    EXPECT_EQ(Placement().RowShiftY_Max(), most);
}

TEST_F(DotPlacement, SilencesDeadRowsAndWeakensOthers)
{
    errors.weakRows = {{5, 0.25}, {6, 1.5}, {5, 0.75}, {7, 1.9}};
    errors.deadRows = {7, 3};
    EXPECT_EQ(Row(0, 3).volume, 0);
    EXPECT_EQ(Row(0, 4).volume, 1);
    EXPECT_EQ(Row(0, 5).volume, 0.75); // the last entry
    EXPECT_EQ(Row(0, 6).volume, 1.5);
    EXPECT_EQ(Row(0, 7).volume, 0); // dead is dead
}

/// Lines of the paper far away meet the passes that errors have carried there.
TEST_F(DotPlacement, ListsThePassesThatReachSomeLines)
{
    errors.advanceConstant = 1;
    const CDotPlacement placement = Placement();
    std::vector<std::int64_t> numbers;
    for (const SPlacedPass& pass : placement.Passes(137000, 10)) // pass n is at 137 n
        numbers.push_back(pass.pass.number);
    EXPECT_EQ(numbers, (std::vector<std::int64_t>{997, 998, 999, 1000}));
    numbers.clear();
    for (const SPlacedPass& pass : placement.Passes(-1370, 1))
        numbers.push_back(pass.pass.number);
    EXPECT_EQ(numbers, (std::vector<std::int64_t>{-13, -12, -11, -10}));
}

TEST_F(DotPlacement, RefusesWhatNoPressDoes)
{
    errors.tilt = 1;
    EXPECT_THROW(Placement(), std::invalid_argument);
    errors.tilt = 0;
    errors.deadRows = {544};
    EXPECT_THROW(Placement(), std::invalid_argument);
    CMaskData_Base small; // a move of one pitch, which the error takes back
    ASSERT_TRUE(small.Create({4, 4, 1, 1, 1, 1, 0, 0, 0, 1, 100, 0}));
    errors.deadRows = {};
    errors.advanceConstant = -1;
    EXPECT_THROW(CDotPlacement(CPassLayout(small), errors), std::invalid_argument);
    EXPECT_NO_THROW(Placement());
}
