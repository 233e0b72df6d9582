#include "record/textquote.h"

#include <gtest/gtest.h>

using namespace dotweave;

TEST(TextQuote, EscapesWhatDisturbsALine)
{
    const struct {
        std::string text;
        const char* quoted;
    } CASES[] = {
        {"", ""},
        {"plain 'text' \"\\", "plain 'text' \"\\"},
        {"gr\xC3\xBC\xC3\x9F \xE2\x82\xAC \xF0\x9F\x96\xA8",
         "gr\xC3\xBC\xC3\x9F \xE2\x82\xAC \xF0\x9F\x96\xA8"},
        {"a\nb\tc\x1B[31m\x7F", R"(a\x0ab\x09c\x1b[31m\x7f)"},
        {std::string("a\0b", 3), R"(a\x00b)"},
        {"\xC2\x85\xC2\x9F", R"(\u0085\u009f)"},
        {"\xE2\x80\xAE"
         "abc\xE2\x81\xA6\xE2\x80\x8F\xD8\x9C",
         R"(\u202eabc\u2066\u200f\u061c)"},
        {"\xE2\x80\xA8", R"(\u2028)"},
        {"\xFF\xFEx", R"(\xff\xfex)"},
        {"x\xE2\x82", R"(x\xe2\x82)"},                       // cut off
        {"\xC0\x8A\xED\xA0\x80", R"(\xc0\x8a\xed\xa0\x80)"}, // overlong line feed, surrogate
    };
    for (const auto& [text, quoted] : CASES)
        EXPECT_EQ(Text_Quote(text), quoted);
}

TEST(TextQuote, ALongTextKeepsItsTwoEnds)
{
    const std::string most(200, 'x');
    EXPECT_EQ(Text_Quote(most), most);
    EXPECT_EQ(Text_Quote("a" + most + "z"), "a" + std::string(97, 'x') + "..." + std::string(97, 'x') + "z");
    std::string euros;
    for (int i = 0; i < 201; ++i)
        euros += "\xE2\x82\xAC";
    EXPECT_EQ(Text_Quote(euros), euros.substr(0, 98 * 3) + "..." + euros.substr(0, 98 * 3));
    EXPECT_EQ(Text_Quote("a" + std::string(20000000, '\n') + "z").size(), 1 + 97 * 4 + 3 + 97 * 4 + 1);
}
