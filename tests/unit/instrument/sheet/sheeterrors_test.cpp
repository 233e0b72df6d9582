#include "sheet/sheeterrors.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

using namespace dotweave;

TEST(SheetErrors, AreNoneAtFirst)
{
    EXPECT_TRUE(SSheetErrors().IsNone());
    EXPECT_EQ(SheetErrors_Refusal({}, 1), "");
}

TEST(SheetErrors, AreSomeWithAnyFieldSet)
{
    for (const SErrorField& field : ErrorFields()) {
        SSheetErrors errors;
        errors.*field.member = field.highest;
        const std::string name = field.name;
        EXPECT_EQ(errors.IsNone(), name == "periodMoves" || name == "periodPhase") << name;
    }
    SSheetErrors dead, weak;
    dead.deadRows = {0};
    weak.weakRows = {{0, 0.5}};
    EXPECT_FALSE(dead.IsNone());
    EXPECT_FALSE(weak.IsNone());
}

TEST(SheetErrors, RefusesANumberBesideItsRange)
{
    for (const SErrorField& field : ErrorFields()) {
        for (const double good : {field.lowest, field.highest}) {
            SSheetErrors errors;
            errors.*field.member = good;
            EXPECT_EQ(SheetErrors_Refusal(errors, 8), "") << field.name << ' ' << good;
        }
        for (const double bad :
             {std::nextafter(field.lowest, -1e9), std::nextafter(field.highest, 1e9),
              std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
            SSheetErrors errors;
            errors.*field.member = bad;
            EXPECT_EQ(SheetErrors_Refusal(errors, 8).find(std::string(field.name) + ' '), 0U) << field.name;
        }
    }
    SSheetErrors errors;
    errors.advanceConstant = -1.5;
    EXPECT_EQ(SheetErrors_Refusal(errors, 8), "advanceConstant -1.5 is not from -1 to 1");
}

TEST(SheetErrors, RefusesRowsThatTheHeadDoesNotHave)
{
    SSheetErrors errors;
    errors.deadRows = {0, 7};
    EXPECT_EQ(SheetErrors_Refusal(errors, 8), "");
    EXPECT_EQ(SheetErrors_Refusal(errors, 7), "deadRows: nozzle row 7 is not from 0 to 6");
    errors.deadRows = {};
    errors.weakRows = {{-1, 0.5}};
    EXPECT_EQ(SheetErrors_Refusal(errors, 8), "weakRows: nozzle row -1 is not from 0 to 7");
    errors.weakRows = {{1, 2.5}};
    EXPECT_EQ(SheetErrors_Refusal(errors, 8), "weakRows: volume 2.5 is not from 0 to 2");
}
