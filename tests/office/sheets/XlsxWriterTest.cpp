#include "office/sheets/XlsxWriter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "office/sheets/Table.h"
#include "office/sheets/XlsxReader.h"
#include "platform/Failure.h"
#include "support/PackageReader.h"

namespace tessarine::sheets
{

namespace
{

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

std::string PartOf(const Sheet& sheet, const std::string& name)
{
    return test::PackageReader(WriteXlsx(sheet)).Entry(name).bytes;
}

}  // namespace

TEST(XlsxWriter, MakesAPackageThatOthersRead)
{
    Sheet sheet;
    sheet.Put(0, 0, StringView(u"a"));

    const test::PackageReader package(WriteXlsx(sheet));

    EXPECT_THAT(package.Names(),
                ElementsAre("[Content_Types].xml", "_rels/.rels", "xl/workbook.xml", "xl/_rels/workbook.xml.rels",
                            "xl/worksheets/sheet1.xml", "xl/styles.xml", "xl/sharedStrings.xml"));
    EXPECT_THAT(test::ValidityFaults(package), IsEmpty());
    EXPECT_EQ(package.TargetOfType("", "officeDocument"), "xl/workbook.xml");
    EXPECT_EQ(package.TargetOfType("xl/workbook.xml", "worksheet"), "xl/worksheets/sheet1.xml");
}

TEST(XlsxWriter, WritesEachKindOfCell)
{
    Sheet sheet;
    sheet.Put(0, 0, StringView(u"head"));
    sheet.Put(2, 1, true);
    sheet.Put(2, 3, 0.1);
    sheet.Put(2, 27, StringView(u"=1+1"));
    sheet.Put(2, 702, CellError{0x07});
    sheet.Put(3, 0, StringView(u"head"));

    const std::string part = PartOf(sheet, "xl/worksheets/sheet1.xml");

    EXPECT_THAT(part,
                HasSubstr("<dimension ref=\"A1:AAA4\"/><sheetData>"
                          "<row r=\"1\"><c r=\"A1\" s=\"2\" t=\"s\"><v>0</v></c></row>"
                          "<row r=\"3\"><c r=\"B3\" t=\"b\"><v>1</v></c><c r=\"D3\" t=\"n\"><v>0.1</v></c>"
                          "<c r=\"AB3\" s=\"1\" t=\"s\"><v>1</v></c><c r=\"AAA3\" t=\"e\"><v>#DIV/0!</v></c></row>"
                          "<row r=\"4\"><c r=\"A4\" s=\"1\" t=\"s\"><v>0</v></c></row></sheetData>"));
    EXPECT_THAT(PartOf(sheet, "xl/sharedStrings.xml"),
                HasSubstr("count=\"3\" uniqueCount=\"2\"><si><t>head</t></si><si><t>=1+1</t></si></sst>"));
}

TEST(XlsxWriter, KeepsBlanksAndEscapesWhatXmlCanNotHold)
{
    Sheet sheet;
    sheet.Put(0, 0, StringView(u" a<&\r\n\v_x0041_\xD800"));

    EXPECT_THAT(PartOf(sheet, "xl/sharedStrings.xml"),
                HasSubstr("<si><t xml:space=\"preserve\"> a&lt;&amp;_x000D_\n_x000B__x005F_x0041__xD800_</t></si>"));
}

TEST(XlsxWriter, WritesTheSameBytesForTheSameSheet)
{
    Sheet sheet;
    sheet.Put(1, 1, true);

    EXPECT_EQ(WriteXlsx(sheet), WriteXlsx(sheet));
}

TEST(XlsxWriter, RefusesATextThatACellCanNotHold)
{
    Sheet longest, beyond;
    const String text(32768, u'x');
    longest.Put(0, 0, StringView(text).substr(1));
    beyond.Put(0, 0, StringView(text));

    EXPECT_EQ(ReadXlsx(WriteXlsx(longest)).At(0, 0), longest.At(0, 0));
    EXPECT_THROW(WriteXlsx(beyond), Failure);
}

TEST(XlsxWriter, TurnsInfinityAndNanIntoErrors)
{
    Sheet sheet;
    sheet.Put(0, 0, std::numeric_limits<double>::quiet_NaN());
    sheet.Put(0, 1, std::numeric_limits<double>::infinity());

    EXPECT_EQ(TableOf(ReadXlsx(WriteXlsx(sheet))), (Rows{{"#NUM!", "#NUM!"}}));
}

TEST(XlsxWriter, KeepsTheLastCellOfASheet)
{
    Sheet sheet;
    sheet.Put(Sheet::maxRows - 1, Sheet::maxColumns - 1, StringView(u"last"));

    const Sheet back = ReadXlsx(WriteXlsx(sheet));

    EXPECT_EQ(back.At(Sheet::maxRows - 1, Sheet::maxColumns - 1), Cell(StringView(u"last")));
    EXPECT_EQ(back.UsedRange(), sheet.UsedRange());
}

TEST(XlsxWriter, KeepsEveryTextThatLooksLikeAnEscape)
{
    const std::vector<String> texts{
        u"_x0041_", u"_x0041_x0042_", u"_x005F_x0041_",    u"_x0041\x01",   u"__x000D_",        u"_x005F\r", u"_x",
        u"_x004",   u"_X0041_",       u"_x0041_\r_x0042_", u"\uFFFE\uFFFF", String(u"a\0b", 3), u"\x7F\x85"};
    Sheet sheet;
    for (std::uint32_t row = 0; row < texts.size(); ++row)
        sheet.Put(row, 0, StringView(texts[row]));

    const Sheet back = ReadXlsx(WriteXlsx(sheet));

    for (std::uint32_t row = 0; row < texts.size(); ++row)
        EXPECT_EQ(back.At(row, 0), Cell(StringView(texts[row]))) << ToUtf8(texts[row]);
}

}  // namespace tessarine::sheets
