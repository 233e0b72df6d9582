#include "helpformat.h"

#include <gtest/gtest.h>

using namespace dotweave;

TEST(TextWrap, BreaksBetweenWords)
{
    EXPECT_EQ(Text_Wrap("", 10, 2), "");
    EXPECT_EQ(Text_Wrap("ten rows a", 10, 2), "ten rows a");
    EXPECT_EQ(Text_Wrap("ten rows an", 10, 2), "ten rows\n  an");
    EXPECT_EQ(Text_Wrap("  ten   rows\nof it ", 4, 0), "ten\nrows\nof\nit");
    EXPECT_EQ(Text_Wrap("a passwidewords b", 4, 1), "a\n passwidewords\n b");
}
