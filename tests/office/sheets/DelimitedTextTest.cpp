#include "office/sheets/DelimitedText.h"

#include <gtest/gtest.h>

#include "office/sheets/Table.h"
#include "platform/Failure.h"

namespace tessarine::sheets
{

namespace
{

Rows Csv(StringView text)
{
    return TableOf(ReadDelimitedText(text, u','));
}

std::string Written(std::initializer_list<Cell> row)
{
    Sheet sheet;
    std::uint32_t column = 0;
    for (const Cell& cell : row)
        sheet.Put(0, column++, cell);
    return WriteCommaSeparated(sheet);
}

}  // namespace

TEST(DelimitedText, SplitsAtCommas)
{
    EXPECT_EQ(Csv(u"a,b\nc,d\n"), (Rows{{"'a'", "'b'"}, {"'c'", "'d'"}}));
}

TEST(DelimitedText, SplitsAtTabsAlone)
{
    EXPECT_EQ(TableOf(ReadDelimitedText(u"a,b\tc\r\n\"d\te\"\tf", u'\t')), (Rows{{"'a,b'", "'c'"}, {"'d\te'", "'f'"}}));
}

TEST(DelimitedText, EndsLinesAtCrAtLfAndAtBoth)
{
    EXPECT_EQ(Csv(u"a\rb\nc\r\nd"), (Rows{{"'a'"}, {"'b'"}, {"'c'"}, {"'d'"}}));
}

TEST(DelimitedText, NeedsNoLastLineEnd)
{
    EXPECT_EQ(Csv(u"a,b"), Csv(u"a,b\r\n"));
}

TEST(DelimitedText, KeepsEmptyLinesBetweenOthers)
{
    EXPECT_EQ(Csv(u"a\n\nb\n\n\n"), (Rows{{"'a'"}, {""}, {"'b'"}}));
}

TEST(DelimitedText, ReadsEmptyFieldsAsEmptyCells)
{
    EXPECT_EQ(Csv(u",\"\",a,,\n"), (Rows{{"", "", "'a'"}}));
}

TEST(DelimitedText, ReadsShortRowsAsEmptyToTheRight)
{
    EXPECT_EQ(Csv(u"a\nb,c"), (Rows{{"'a'", ""}, {"'b'", "'c'"}}));
}

TEST(DelimitedText, TakesQuotesOff)
{
    EXPECT_EQ(Csv(u"\"a\",\"b\""), (Rows{{"'a'", "'b'"}}));
}

TEST(DelimitedText, KeepsSeparatorsWithinQuotes)
{
    EXPECT_EQ(Csv(u"\"a,b\",c"), (Rows{{"'a,b'", "'c'"}}));
}

TEST(DelimitedText, KeepsLineEndsWithinQuotesAsTheyAre)
{
    EXPECT_EQ(Csv(u"\"a\rb\nc\r\nd\",e"), (Rows{{"'a\rb\nc\r\nd'", "'e'"}}));
}

TEST(DelimitedText, ReadsDoubledQuotesAsOne)
{
    EXPECT_EQ(Csv(u"\"a\"\"b\",\"\"\"\",\"\"\"a\"\"\""), (Rows{{"'a\"b'", "'\"'", "'\"a\"'"}}));
}

TEST(DelimitedText, KeepsQuotesWithinAnUnquotedField)
{
    EXPECT_EQ(Csv(u"a\"b\", \"c\""), (Rows{{"'a\"b\"'", "' \"c\"'"}}));
}

TEST(DelimitedText, KeepsWhatFollowsAClosingQuote)
{
    EXPECT_EQ(Csv(u"\"a\"b,c"), (Rows{{"'ab'", "'c'"}}));
}

TEST(DelimitedText, EndsAnOpenQuoteWithTheText)
{
    EXPECT_EQ(Csv(u"a,\"b\nc"), (Rows{{"'a'", "'b\nc'"}}));
    EXPECT_EQ(Csv(u"a,\""), (Rows{{"'a'"}}));
}

TEST(DelimitedText, ReadsBooleansInQuotesOrNot)
{
    EXPECT_EQ(Csv(u"True,\"false\""), (Rows{{"TRUE", "FALSE"}}));
}

TEST(DelimitedText, ReadsNumbersInQuotesAsText)
{
    EXPECT_EQ(Csv(u"007,\"007\",-1,\"-1\""), (Rows{{"7", "'007'", "-1", "'-1'"}}));
}

TEST(DelimitedText, KeepsBlanksAroundTexts)
{
    EXPECT_EQ(Csv(u" a , TRUE"), (Rows{{"' a '", "' TRUE'"}}));
}

TEST(DelimitedText, MayNameItsSeparatorInTheFirstLine)
{
    EXPECT_EQ(Csv(u"sep=;\r\na;b,c\n"), (Rows{{"'a'", "'b,c'"}}));
    EXPECT_EQ(Csv(u"sep=;x\na"), (Rows{{"'sep=;x'"}, {"'a'"}}));
    EXPECT_EQ(Csv(u"sep=\na"), (Rows{{"'sep='"}, {"'a'"}}));
    EXPECT_EQ(Csv(u"\"sep=;\"\na"), (Rows{{"'sep=;'"}, {"'a'"}}));
}

TEST(DelimitedText, OfEmptyFieldsAloneHasNoCells)
{
    EXPECT_EQ(ReadDelimitedText(u"", u',').UsedRange(), Sheet::Extent());
    EXPECT_EQ(ReadDelimitedText(u"\r\n,,\r\n", u',').UsedRange(), Sheet::Extent());
}

TEST(DelimitedText, WithMoreCellsThanTheLimitIsRefused)
{
    const Limits limits{.fileBytes = 0, .cells = 3, .textUnits = 100, .formats = 0};

    EXPECT_NO_THROW(ReadDelimitedText(u"1,2,3", u',', limits));
    EXPECT_THROW(ReadDelimitedText(u"1,2,3,4", u',', limits), Failure);
    EXPECT_THROW(ReadDelimitedText(String(Sheet::maxColumns, u',') + u"x", u','), Failure);
    EXPECT_THROW(ReadDelimitedText(String(Sheet::maxRows, u'\n') + u"x", u','), Failure);
}

TEST(DelimitedText, WithALongerFieldThanTheLimitIsRefused)
{
    Limits limits;
    limits.fieldUnits = 3;

    for (const StringView text : {u"1,abc", u"1,\"abc\"", u"1,\"a\"bc"}) {
        EXPECT_NO_THROW(ReadDelimitedText(text, u',', limits));
        EXPECT_THROW(ReadDelimitedText(String(text) + u"d", u',', limits), Failure);
    }
    EXPECT_THROW(ReadDelimitedText(u"\"abcd", u',', limits), Failure);
}

TEST(CommaSeparated, BeginsWithAMarkAndEndsEachLine)
{
    EXPECT_EQ(Written({u"a", true, false, 2.5}),
              "\xEF\xBB\xBF"
              "a,TRUE,FALSE,2.5\r\n");
}

TEST(CommaSeparated, QuotesOnlyWhatNeedsIt)
{
    EXPECT_EQ(Written({u"a b", u"a,b", u"a\"b", u"a\nb", u"a\rb", u"a\tb"}),
              "\xEF\xBB\xBF"
              "a b,\"a,b\",\"a\"\"b\",\"a\nb\",\"a\rb\",a\tb\r\n");
}

TEST(CommaSeparated, MarksTextsThatWouldReadAsSomethingElse)
{
    EXPECT_EQ(Written({u"007", u"TRUE", u"sep=;"}),
              "\xEF\xBB\xBF"
              "\"=\"\"007\"\"\",\"=\"\"TRUE\"\"\",\"sep=;\"\r\n");
}

TEST(CommaSeparated, WritesErrorsByName)
{
    EXPECT_EQ(Written({CellError{0x2A}}),
              "\xEF\xBB\xBF"
              "#N/A\r\n");
}

TEST(CommaSeparated, WritesEmptyFieldsInFrontOfTheUsedRange)
{
    Sheet sheet;
    sheet.Put(1, 1, true);
    sheet.Put(2, 2, true);

    EXPECT_EQ(WriteCommaSeparated(sheet),
              "\xEF\xBB\xBF"
              ",,\r\n,TRUE,\r\n,,TRUE\r\n");
}

TEST(CommaSeparated, RefusesAUsedRangeOfTooManyCells)
{
    Sheet sheet;
    sheet.Put(Sheet::maxRows - 1, Sheet::maxColumns - 1, true);

    EXPECT_THROW(WriteCommaSeparated(sheet), Failure);
}

}  // namespace tessarine::sheets
