#include "office/sheets/XlsxReader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "office/sheets/Table.h"
#include "platform/Failure.h"
#include "support/XlsxBook.h"

namespace tessarine::sheets
{

namespace
{

using test::Strict;
using test::XlsxBook;
using test::XlsxKind;
using testing::HasSubstr;
using testing::StartsWith;

Rows Read(const XlsxBook& book)
{
    return TableOf(ReadXlsx(book.File()));
}

/// Why a file is refused, always under the application's number.
std::string RefusalOf(const std::string& file, const Limits& limits = Limits::Default())
{
    try {
        ReadXlsx(file, limits);
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.number, 1004);
        return ToUtf8(failure.description);
    }
    return "taken";
}

std::string RefusalOf(const XlsxBook& book)
{
    return RefusalOf(book.File());
}

std::string Inline(const std::string& content)
{
    return "<c t=\"inlineStr\"><is>" + content + "</is></c>";
}

}  // namespace

TEST(XlsxReader, ReadsEveryKindOfValue)
{
    const XlsxBook book =
        XlsxBook()
            .Texts("<si><t>shared</t></si><si><t/></si>")
            .Cells(
                "<c r=\"A1\" t=\"s\"><v>0</v></c><c r=\"B1\" t=\"inlineStr\"><is><t>inline</t></is></c>"
                "<c r=\"C1\" t=\"b\"><v>1</v></c><c r=\"D1\" t=\"b\"><v>0</v></c>"
                "<c r=\"E1\"><v>2024</v></c><c r=\"F1\" t=\"n\"><v>-1.5E-2</v></c>"
                "<c r=\"G1\" t=\"e\"><v>#N/A</v></c><c r=\"H1\" t=\"e\"><v>#SPILL!</v></c>"
                "<c r=\"I1\" t=\"s\"><v>1</v></c><c r=\"J1\" s=\"0\"/><c r=\"K1\"><v> 7 </v></c>");

    EXPECT_EQ(Read(book),
              (Rows{{"'shared'", "'inline'", "TRUE", "FALSE", "2024", "-0.015", "#N/A", "#UNKNOWN!", "''", "", "7"}}));
}

TEST(XlsxReader, ReadsStrictFilesAsTransitionalOnes)
{
    EXPECT_EQ(Read(XlsxBook(Strict()).Texts("<si><t>a</t></si>").Cells("<c t=\"s\"><v>0</v></c>")), (Rows{{"'a'"}}));
}

TEST(XlsxReader, TakesRunsAsOneTextWithoutPhoneticOnes)
{
    const XlsxBook book =
        XlsxBook()
            .Texts(
                "<si><r><rPr><b/></rPr><t>Fab</t></r><r><t xml:space=\"preserve\">rikam </t></r><r><t>GmbH</t></r>"
                "<rPh sb=\"0\" eb=\"1\"><t>fa</t></rPh><phoneticPr fontId=\"1\"/></si>")
            .Cells("<c t=\"s\"><v>0</v></c>" + Inline("<r><t>a</t></r><r/><r><t>b</t></r><rPh><t>c</t></rPh>"));

    EXPECT_EQ(Read(book), (Rows{{"'Fabrikam GmbH'", "'ab'"}}));
}

TEST(XlsxReader, KeepsBlanksAroundATextWhereTheFileSaysSo)
{
    const XlsxBook book = XlsxBook()
                              .Texts(
                                  "<si><t> \n a b\t</t></si><si><t xml:space=\"preserve\"> a </t></si>"
                                  "<si xml:space=\"preserve\"><t> b </t></si>"
                                  "<si xml:space=\"preserve\"><t xml:space=\"default\"> c </t></si>")
                              .Cells(
                                  "<c t=\"s\"><v>0</v></c><c t=\"s\"><v>1</v></c><c t=\"s\"><v>2</v></c>"
                                  "<c t=\"s\"><v>3</v></c>");

    EXPECT_EQ(Read(book), (Rows{{"'a b'", "' a '", "' b '", "'c'"}}));
}

TEST(XlsxReader, JoinsEscapesReferencesAndCData)
{
    const XlsxBook book = XlsxBook().Cells(Inline("<t>a_x000D_b_x0041__x005F_x0041_</t>") +
                                           Inline("<t>&lt;&amp;&#x20AC;<![CDATA[<b>]]><!-- c --></t>") +
                                           Inline("<t>_xD83D__xDE00_ _x12 _xGGGG_ _x000A_</t>"));

    EXPECT_EQ(Read(book), (Rows{{"'a\rbA_x0041_'", "'<&€<b>'", "'😀 _x12 _xGGGG_ \n'"}}));
}

TEST(XlsxReader, TakesTheLastResultsOfFormulas)
{
    const XlsxBook book = XlsxBook().Cells(
        "<c t=\"str\"><f>A1&amp;B1</f><v>both</v></c><c><f>1+1</f><v>2</v></c><c t=\"b\"><f>TRUE()</f><v>1</v></c>"
        "<c t=\"str\"><f>\"\"</f><v></v></c><c><f>\"0\"&amp;\"07\"</f><v>7</v></c><c><f>\"a\"\"b\"</f><v/></c>");

    EXPECT_EQ(Read(book), (Rows{{"'both'", "2", "TRUE", "''", "7", "'a\"b'"}}));
}

TEST(XlsxReader, RefusesAFormulaThatWasNeverCalculated)
{
    EXPECT_EQ(RefusalOf(XlsxBook().Rows("<row r=\"3\"><c r=\"B3\"><f>A3</f><v></v></c></row>")),
              "Row 3 has a formula in column 2 that was never calculated; open the workbook in a spreadsheet program "
              "and save it");
    EXPECT_THAT(RefusalOf(XlsxBook().Cells("<c t=\"str\"><f>A3&amp;\"a\"</f></c>")), HasSubstr("never calculated"));
}

TEST(XlsxReader, ShowsNumbersInDateFormatsAsDates)
{
    const std::string styles =
        "<numFmts><numFmt numFmtId=\"164\" formatCode=\"yyyy\\-mm\\-dd\"/><numFmt numFmtId=\"165\" "
        "formatCode=\"0.00&quot; days&quot;\"/></numFmts><cellStyleXfs><xf numFmtId=\"14\"/></cellStyleXfs>"
        "<cellXfs><xf numFmtId=\"0\"/><xf numFmtId=\"14\"/><xf numFmtId=\"164\"/><xf numFmtId=\"165\"/></cellXfs>";
    const std::string cells =
        "<c s=\"0\"><v>45292</v></c><c s=\"1\"><v>45292</v></c><c s=\"2\"><v>45292.5</v></c>"
        "<c s=\"3\"><v>45292</v></c><c s=\"1\"><v>0.5</v></c><c s=\"9\"><v>45292</v></c>";

    const auto shown = Read(XlsxBook().Styles(styles).Cells(cells));
    const auto of1904 = Read(
        XlsxBook()
            .Workbook("<workbookPr date1904=\"1\"/><sheets><sheet name=\"a\" sheetId=\"1\" r:id=\"rId1\"/></sheets>")
            .Styles(styles)
            .Cells("<c s=\"1\"><v>43830</v></c>"));

    ASSERT_EQ(shown.front().size(), 6u);
    EXPECT_EQ(shown.front()[0], "45292");
    EXPECT_THAT(shown.front()[1], HasSubstr("24"));
    EXPECT_THAT(shown.front()[2], StartsWith(shown.front()[1].substr(0, shown.front()[1].size() - 1)));
    EXPECT_EQ(shown.front()[3], "45292");
    EXPECT_EQ(shown.front()[4], "0.5");
    EXPECT_EQ(shown.front()[5], "45292");
    EXPECT_EQ(of1904.front()[0], shown.front()[1]);
}

TEST(XlsxReader, ShowsDatesOfStrictFilesAsTheSameNumbers)
{
    const std::string styles = "<cellXfs><xf numFmtId=\"0\"/><xf numFmtId=\"14\"/></cellXfs>";
    const auto numbers = Read(XlsxBook().Styles(styles).Cells(
        "<c s=\"1\"><v>45292</v></c><c s=\"1\"><v>45292.75</v></c><c s=\"1\"><v>1</v></c><c s=\"1\"><v>61</v></c>"));

    const auto dates =
        Read(XlsxBook(Strict()).Cells("<c t=\"d\"><v>2024-01-01</v></c><c t=\"d\"><v>2024-01-01T18:00:00.000Z</v></c>"
                                      "<c t=\"d\"><v>1900-01-01T00:00:00</v></c><c t=\"d\"><v>1900-03-01</v></c>"));

    EXPECT_EQ(dates, numbers);
    for (const std::string date : {"2024", "2024-02-30", "2024-01-01 12:00", "2024/01/01", "later"})
        EXPECT_THAT(RefusalOf(XlsxBook().Cells("<c t=\"d\"><v>" + date + "</v></c>")), HasSubstr("a date that is none"))
            << date;
}

TEST(XlsxReader, CountsRowsAndCellsThatDoNotSayWhereTheyAre)
{
    EXPECT_EQ(Read(XlsxBook().Rows("<row><c><v>1</v></c><c r=\"C1\"><v>2</v></c><c><v>3</v></c></row>"
                                   "<row r=\"3\"><c r=\"B3\"><v>4</v></c></row><row><c><v>5</v></c></row>")),
              (Rows{{"1", "", "2", "3"}, {"", "", "", ""}, {"", "4", "", ""}, {"5", "", "", ""}}));
}

TEST(XlsxReader, ReadsTheFirstWorksheetOfTheWorkbooksOrder)
{
    XlsxBook book;
    book.Workbook(
            "<sheets><sheet name=\"chart\" sheetId=\"1\" r:id=\"rId9\"/><sheet name=\"b\" sheetId=\"7\" "
            "state=\"hidden\" "
            "r:id=\"rId5\"/><sheet name=\"a\" sheetId=\"2\" r:id=\"rId1\"/></sheets>")
        .WorkbookLinks({{"rId1", "worksheet", "worksheets/sheet1.xml"},
                        {"rId9", "chartsheet", "chartsheets/sheet1.xml"},
                        {"rId5", "worksheet", "/xl/worksheets/sheet2.xml"}})
        .Rows("<row><c><v>1</v></c></row>", "sheet1")
        .Rows("<row><c><v>2</v></c></row>", "sheet2");

    EXPECT_EQ(Read(book), (Rows{{"2"}}));
    EXPECT_EQ(RefusalOf(XlsxBook().Workbook("<sheets/>")), "The workbook has no worksheet");
}

TEST(XlsxReader, NeedsNeitherStylesNorSharedTexts)
{
    XlsxBook book;
    book.WorkbookLinks({{"rId1", "worksheet", "worksheets/sheet1.xml"}}).Cells("<c s=\"3\"><v>45292</v></c>");

    EXPECT_EQ(Read(book), (Rows{{"45292"}}));
}

TEST(XlsxReader, SaysWhatAZipFileIsInstead)
{
    EXPECT_EQ(RefusalOf(test::ZipBuilder().Bytes()), "The file is a zip file, not a workbook");
    EXPECT_EQ(RefusalOf(XlsxBook().Part("xl/workbook.xml", "<p:presentation xmlns:p=\"x\"/>")),
              "The file is some other Office document, not a workbook");
    XlsxBook binary;
    binary
        .Part("_rels/.rels",
              "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\"><Relationship "
              "Id=\"a\" Target=\"xl/workbook.bin\" Type=\"" +
                  XlsxKind().relationships + "/officeDocument\"/></Relationships>")
        .Part("xl/workbook.bin", "x");
    EXPECT_THAT(RefusalOf(binary), HasSubstr("(.xlsb)"));
}

TEST(XlsxReader, RefusesCellsThatCanNotBe)
{
    const auto refusal = [](const std::string& rows) { return RefusalOf(XlsxBook().Rows(rows)); };
    const std::string sheet = "The file is damaged: xl/worksheets/sheet1.xml: ";

    EXPECT_EQ(refusal("<row r=\"2\"/><row r=\"2\"/>"), sheet + "its rows are not in order");
    EXPECT_EQ(refusal("<row r=\"1048577\"/>"), sheet + "\"1048577\" is no number of a row");
    EXPECT_EQ(refusal("<row r=\"0\"/>"), sheet + "\"0\" is no number of a row");
    EXPECT_EQ(refusal("<row r=\"99999999999999999999\"/>"), sheet + "\"99999999999999999999\" is no number of a row");
    EXPECT_EQ(refusal("<row r=\"1048576\"/><row/>"), sheet + "a row lies beyond the last one");
    EXPECT_EQ(refusal("<row><c r=\"B1\"/><c r=\"A1\"/></row>"), sheet + "the cells of row 1 are not in order");
    EXPECT_EQ(refusal("<row><c r=\"XFD1\"/><c/></row>"), sheet + "a cell of row 1 lies beyond the last column");
    EXPECT_EQ(refusal("<row><c r=\"XFE1\"/></row>"), sheet + "\"XFE1\" is no cell of row 1");
    EXPECT_EQ(refusal("<row><c r=\"AAAAAAAAAAAA1\"/></row>"), sheet + "\"AAAAAAAAAAAA1\" is no cell of row 1");
    EXPECT_EQ(refusal("<row><c r=\"A2\"/></row>"), sheet + "\"A2\" is no cell of row 1");
    EXPECT_THAT(refusal("<row><c r=\"1\"/></row>"), HasSubstr("is no cell"));
    const std::string first = sheet + "column 1 of row 1 has ";
    EXPECT_EQ(refusal("<row><c t=\"s\"><v>0</v></c></row>"), first + "a text that is not there");
    EXPECT_EQ(refusal("<row><c t=\"s\"><v>-1</v></c></row>"), first + "a text that is not there");
    EXPECT_EQ(refusal("<row><c><v>1x</v></c></row>"), first + "a number that is none");
    EXPECT_EQ(refusal("<row><c t=\"b\"><v>2</v></c></row>"), first + "a boolean that is none");
    EXPECT_EQ(refusal("<row><c t=\"z\"><v>2</v></c></row>"), first + "a value of an unknown kind");
}

TEST(XlsxReader, RefusesDamagedFiles)
{
    EXPECT_THAT(RefusalOf("PK\x03\x04"), StartsWith("The file is damaged"));
    EXPECT_THAT(RefusalOf(XlsxBook().Without("xl/worksheets/sheet1.xml")), HasSubstr("a sheet of it is missing"));
    EXPECT_THAT(RefusalOf(XlsxBook().Part("xl/worksheets/sheet1.xml", "<worksheet>")),
                StartsWith("The file is damaged"));
    EXPECT_THAT(RefusalOf(XlsxBook().Part("xl/worksheets/sheet1.xml", "<worksheet/>")),
                HasSubstr("it is no worksheet"));
    EXPECT_THAT(RefusalOf(XlsxBook().Part("xl/sharedStrings.xml", "<!DOCTYPE a [<!ENTITY b \"c\">]><a>&b;</a>")),
                StartsWith("The file is damaged"));
    EXPECT_THAT(RefusalOf(XlsxBook().Part("xl/workbook.xml", "")), StartsWith("The file is damaged"));
}

TEST(XlsxReader, CutAnywhereIsRefused)
{
    const std::string whole = XlsxBook().Cells("<c><v>1</v></c>").File();

    for (std::size_t length = 0; length < whole.size(); length += 7)
        EXPECT_NE(RefusalOf(whole.substr(0, length)), "taken") << length;
}

TEST(XlsxReader, RefusesMoreThanTheLimitsAllow)
{
    const std::string row = "<row>" + Inline("<t>abcdef</t>") + Inline("<t>ghi</t>") + "</row>";
    const std::string book = XlsxBook().Rows(row + row).File();

    EXPECT_EQ(RefusalOf(book, {.cells = 4}), "taken");
    EXPECT_EQ(RefusalOf(book, {.cells = 3}), "The sheet holds more text than can be read");
    EXPECT_EQ(RefusalOf(book, {.textUnits = 17}), "The sheet holds more text than can be read");
    const XlsxBook shared =
        XlsxBook().Texts("<si><t>abcde</t></si>").Cells("<c t=\"s\"><v>0</v></c><c t=\"s\"><v>0</v></c>");
    EXPECT_EQ(RefusalOf(shared.File(), {.cellUnits = 10}), "taken");
    EXPECT_EQ(RefusalOf(shared.File(), {.cellUnits = 9}), "The sheet holds more text than can be read");
    EXPECT_THAT(RefusalOf(book, {.partBytes = 100}), HasSubstr("more than a part may"));
    EXPECT_THAT(RefusalOf(book, {.allPartBytes = 500}), HasSubstr("more memory than they may"));
    EXPECT_EQ(RefusalOf(XlsxBook().Styles("<cellXfs><xf/><xf/></cellXfs>").File(), {.formats = 1}),
              "The workbook has more cell formats than can be read");
}

TEST(XlsxReader, RefusesAZipBomb)
{
    std::string blanks(60u << 20, ' ');
    EXPECT_THAT(RefusalOf(XlsxBook().Rows(blanks)), HasSubstr("too many for its packed size"));
}

}  // namespace tessarine::sheets
