// What a sheet holds, written and read back by all formats.
#include <gtest/gtest.h>

#include <limits>

#include "office/sheets/DelimitedText.h"
#include "office/sheets/Table.h"
#include "office/sheets/TextEncoding.h"
#include "office/sheets/WorkbookFile.h"
#include "office/sheets/XlsxReader.h"
#include "office/sheets/XlsxWriter.h"
#include "platform/Failure.h"

namespace tessarine::sheets
{

namespace
{

struct Format {
    const char* name;
    Sheet (*writtenAndRead)(const Sheet& sheet);
};

const Format workbook{"Workbook", [](const Sheet& sheet) { return ReadWorkbook(WriteWorkbook(sheet)); }};
const Format xlsx{"Xlsx", [](const Sheet& sheet) { return ReadXlsx(WriteXlsx(sheet)); }};
const Format commaSeparated{"CommaSeparated", [](const Sheet& sheet) {
                                return ReadDelimitedText(DecodeText(WriteCommaSeparated(sheet)), u',');
                            }};

class SheetRoundTrip : public testing::TestWithParam<Format>
{
protected:
    static void ExpectToKeep(const std::vector<String>& texts)
    {
        Sheet sheet;
        for (std::uint32_t row = 0; row < texts.size(); ++row) {
            sheet.Put(row, 0, StringView(texts[row]));
            sheet.Put(row, 1, true);
        }

        const Sheet back = GetParam().writtenAndRead(sheet);

        for (std::uint32_t row = 0; row < texts.size(); ++row) {
            EXPECT_EQ(back.At(row, 0), Cell(StringView(texts[row]))) << ToUtf8(texts[row]).substr(0, 80);
            EXPECT_EQ(back.At(row, 1), Cell(true));
        }
        EXPECT_EQ(back.UsedRange(), sheet.UsedRange());
    }
};

}  // namespace

TEST_P(SheetRoundTrip, KeepsEveryScript)
{
    ExpectToKeep({u"café", u"שלום עולם", u"مرحبا", u"中文字符", u"日本語", u"한국어", u"नमस्ते", u"e\u0301\u0323",
                  u"😀👩‍👩‍👧", u"𝒳"});
}

TEST_P(SheetRoundTrip, KeepsLineBreaksTabsAndQuotes)
{
    ExpectToKeep(
        {u"a\nb", u"a\rb", u"a\r\nb", u"\n", u"a\tb", u"\"", u"\"a\"", u"a\"b", u",", u"a,b", u"'", u"\v", u"\\"});
}

TEST_P(SheetRoundTrip, KeepsBlanksAround)
{
    ExpectToKeep({u" ", u" a", u"a ", u"\u00A0a", u"\u3000"});
}

TEST_P(SheetRoundTrip, KeepsTextsThatLookLikeSomethingElse)
{
    ExpectToKeep({u"007", u"2024", u"-1", u"1e3", u"TRUE", u"false", u"=SUM(A1)", u"=", u"=\"a\"", u"+5", u"-x", u"@a",
                  u"#N/A", u"50%", u"1/2/2024", u"sep=;", u"\uFEFFa", u"'a"});
}

TEST_P(SheetRoundTrip, KeepsTextsOfAnyLength)
{
    ExpectToKeep({String(255, u'x'), String(256, u'é'), String(8224, u'y'), String(32767, u'z'), String(32767, u'中')});
}

TEST_P(SheetRoundTrip, KeepsALoneSurrogateThatStandsForAByte)
{
    ExpectToKeep({u"caf\xDCE9"});
}

TEST_P(SheetRoundTrip, KeepsNumbersBooleansAndEmptyCells)
{
    Sheet sheet;
    std::uint32_t column = 0;
    for (const double number : {0.0, 1.0, -1.0, 2024.0, 0.1, 1e300, 1e-300, -2.5, 123456789012345.0})
        sheet.Put(0, column++, number);
    sheet.Put(2, 1, true);
    sheet.Put(2, 3, false);

    EXPECT_EQ(TableOf(GetParam().writtenAndRead(sheet)), TableOf(sheet));
}

TEST_P(SheetRoundTrip, KeepsAnEmptySheet)
{
    EXPECT_EQ(GetParam().writtenAndRead(Sheet()).UsedRange(), Sheet::Extent());
}

TEST_P(SheetRoundTrip, KeepsTheLastRowOfAWorkbook)
{
    Sheet sheet;
    sheet.Put(0, 0, true);
    sheet.Put(65535, 255, StringView(u"last"));

    const Sheet back = GetParam().writtenAndRead(sheet);

    EXPECT_EQ(back.At(65535, 255), Cell(StringView(u"last")));
    EXPECT_EQ(back.UsedRange(), sheet.UsedRange());
}

INSTANTIATE_TEST_SUITE_P(Formats, SheetRoundTrip, testing::Values(workbook, xlsx, commaSeparated),
                         [](const auto& parameter) { return parameter.param.name; });

TEST(WorkbookRoundTrip, KeepsErrorsAndEmptyTexts)
{
    Sheet sheet;
    sheet.Put(0, 0, CellError{0x2A});
    sheet.Put(0, 1, StringView());
    sheet.Put(0, 2,
              StringView(u"\xD800"
                         u"a"));
    sheet.Put(0, 3, StringView(u"a\0b", 3));

    const Sheet back = ReadWorkbook(WriteWorkbook(sheet));

    for (std::uint32_t column = 0; column < 4; ++column)
        EXPECT_EQ(back.At(0, column), sheet.At(0, column));
}

TEST(WorkbookRoundTrip, TurnsInfinityAndNanIntoErrors)
{
    Sheet sheet;
    sheet.Put(0, 0, std::numeric_limits<double>::quiet_NaN());
    sheet.Put(0, 1, std::numeric_limits<double>::infinity());

    EXPECT_EQ(TableOf(ReadWorkbook(WriteWorkbook(sheet))), (Rows{{"#NUM!", "#NUM!"}}));
}

TEST(WorkbookRoundTrip, KeepsTextsWhereverTheirRecordEnds)
{
    // A first text of each length moves the seam of the table's records over a wide and a narrow text.
    for (std::size_t length = 8180; length < 8224; ++length) {
        Sheet sheet;
        const std::vector<String> texts{String(length, u'x'), u"中文中文中文", u"", u"narrow", u"😀😀😀"};
        for (std::uint32_t row = 0; row < texts.size(); ++row)
            sheet.Put(row, 0, StringView(texts[row]));

        const Sheet back = ReadWorkbook(WriteWorkbook(sheet));

        for (std::uint32_t row = 0; row < texts.size(); ++row)
            EXPECT_EQ(back.At(row, 0), Cell(StringView(texts[row]))) << length;
    }
}

}  // namespace tessarine::sheets
