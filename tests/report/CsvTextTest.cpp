#include "report/CsvText.h"

#include <gtest/gtest.h>

namespace tessarine
{
namespace
{

TEST(CsvField, QuotesATextAndDoublesItsQuotes)
{
    EXPECT_EQ(CsvField(u"a, \"b\""), R"("a, ""b""")");
    EXPECT_EQ(CsvField(u""), R"("")");
}

TEST(CsvField, StaysOnOneLine)
{
    EXPECT_EQ(CsvField(u"a\r\nb\vc\td"), "\"a⏎⏎b⏎c d\"");
    EXPECT_EQ(CsvField(StringView(u"\0\x1B", 2)), "\"␀␛\"");
}

TEST(CsvField, ReplacesLoneSurrogates)
{
    EXPECT_EQ(CsvField(u"\xD800 😀"), "\"\uFFFD 😀\"");
}

class FormulaInCsv : public testing::TestWithParam<const char16_t*>
{
};

TEST_P(FormulaInCsv, IsATextByItsApostrophe)
{
    EXPECT_EQ(CsvField(GetParam()).substr(0, 2), "\"'");
}

INSTANTIATE_TEST_SUITE_P(AllForms, FormulaInCsv,
                         testing::Values(u"=1+1", u"+1", u"-1", u"@SUM(A1)", u"＝1+1", u"＋1", u"－1", u"＠A1",
                                         u"=cmd|' /C calc'!A0", u"\t=1", u"\r=1", u"\n=1", u"\v=1", u" =1", u"\u00A0=1",
                                         u"\u3000=1", u"\u200B=1", u"\uFEFF=1", u"\"=1", u" \" \"@A1"));

TEST(CsvField, LeavesSignsInsideOfATextAlone)
{
    EXPECT_EQ(CsvField(u"a=b+c-d@e"), "\"a=b+c-d@e\"");
    EXPECT_EQ(CsvField(u"x, =1"), "\"x, =1\"");
    EXPECT_EQ(CsvField(u"'=1"), "\"'=1\"");
}

TEST(CsvField, GuardsTheCellThatASemicolonWouldBegin)
{
    EXPECT_EQ(CsvField(u"a;=1;b;\"@c; d"), "\"a;'=1;b;'\"\"@c; d\"");
}

TEST(CsvField, TellsSignsFromCharactersOfOtherPlanes)
{
    // Its low surrogate is no sign, and neither is its code point modulo 65,536 (U+1003D).
    EXPECT_EQ(CsvField(u"\xD800\xDC3D"), "\"\xF0\x90\x80\xBD\"");
}

}  // namespace
}  // namespace tessarine
