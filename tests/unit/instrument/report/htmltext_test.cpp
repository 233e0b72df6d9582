#include "report/htmltext.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

using namespace dotweave;

TEST(HtmlText, EscapesWhatHtmlReads)
{
    EXPECT_EQ(Html_Escape(R"(a<b> & "c" 'd')"), "a&lt;b&gt; &amp; &quot;c&quot; &#39;d&#39;");
    EXPECT_EQ(Html_Escape(""), "");
}

TEST(HtmlText, WritesTheBase64OfRfc4648)
{
    const auto text = [](const std::string& bytes) {
        return Base64_Text(std::vector<std::uint8_t>(bytes.begin(), bytes.end()));
    };
    // Section 10, test vectors.
    EXPECT_EQ(text(""), "");
    EXPECT_EQ(text("f"), "Zg==");
    EXPECT_EQ(text("fo"), "Zm8=");
    EXPECT_EQ(text("foo"), "Zm9v");
    EXPECT_EQ(text("foob"), "Zm9vYg==");
    EXPECT_EQ(text("fooba"), "Zm9vYmE=");
    EXPECT_EQ(text("foobar"), "Zm9vYmFy");
    EXPECT_EQ(text("\xfb\xff\xfe"), "+//+"); // the two letters beyond digits
}

TEST(HtmlText, WritesNumbersWithoutNegativeZeros)
{
    EXPECT_EQ(Number_Text(1.25, 1), "1.2"); // a tie goes to the even digit
    EXPECT_EQ(Number_Text(-0.001, 2), "0.00");
    EXPECT_EQ(Number_Text(-0.0, 0), "0");
    EXPECT_EQ(Number_Text(-12.5, 2), "-12.50");
    EXPECT_EQ(Number_Text(std::numeric_limits<double>::max(), 0).size(), 309U);
}

TEST(HtmlText, CountsOneAndMany)
{
    EXPECT_EQ(Count_Text(1, "line", "lines"), "1 line");
    EXPECT_EQ(Count_Text(0, "line", "lines"), "0 lines");
}

TEST(HtmlText, EscapesTheCellsOfATable)
{
    EXPECT_EQ(Table_Html("a<b", {"x", "y"}, {{"1", "&"}}),
              "<div class='table'><table>\n<caption>a&lt;b</caption>\n<thead><tr><th scope='col'>x</th>"
              "<th scope='col'>y</th></tr></thead>\n<tbody>\n<tr><th scope='row'>1</th><td>&amp;</td>"
              "</tr>\n</tbody></table></div>\n");
}
