#include "office/sheets/BiffReader.h"

#include <gtest/gtest.h>

#include "office/sheets/Table.h"
#include "platform/Failure.h"
#include "support/BiffBook.h"

namespace tessarine::sheets
{

using namespace test::biff;

namespace
{

Rows Read(const BiffBook& book)
{
    return TableOf(ReadBiff(book.Stream()));
}

Rows ReadCells(const std::string& records)
{
    return Read(BiffBook().Cells(records));
}

/// A formula with a result that is no number.
std::string Formula(const std::string& place, std::uint32_t kind, std::uint32_t value = 0)
{
    return Record(0x0006, place + Byte(kind) + Byte(0) + Byte(value) + std::string(3, '\0') + Short(0xFFFF) + Short(0) +
                              Long(0) + Short(0));
}

constexpr std::uint32_t textResult = 0, booleanResult = 1, errorResult = 2, emptyResult = 3;

}  // namespace

TEST(BiffReader, ReadsNumbers)
{
    EXPECT_EQ(ReadCells(Record(0x0203, At(0, 0) + Double(2024)) + Record(0x0203, At(0, 1) + Double(-0.25))),
              (Rows{{"2024", "-0.25"}}));
}

TEST(BiffReader, ReadsNumbersOf30Bits)
{
    const auto rk = [](std::uint32_t column, std::uint32_t bits) { return Record(0x027E, At(0, column) + Long(bits)); };

    EXPECT_EQ(ReadCells(rk(0, 2024u << 2 | 2) + rk(1, 0xFFFFFFFC | 2) + rk(2, 150u << 2 | 3) + rk(3, 0x3FF80000) +
                        rk(4, 0x3FF80001)),
              (Rows{{"2024", "-1", "1.5", "1.5", "0.015"}}));
}

TEST(BiffReader, ReadsSeveralNumbersOfOneRecord)
{
    EXPECT_EQ(ReadCells(Record(0x00BD, Short(1) + Short(2) + Short(0) + Long(7u << 2 | 2) + Short(0) +
                                           Long(8u << 2 | 2) + Short(3))),
              (Rows{{"", "", "", ""}, {"", "", "7", "8"}}));
}

TEST(BiffReader, TellsBooleansFromNumbersAndErrors)
{
    EXPECT_EQ(ReadCells(Record(0x0205, At(0, 0) + Byte(1) + Byte(0)) + Record(0x0205, At(0, 1) + Byte(0) + Byte(0)) +
                        Record(0x0205, At(0, 2) + Byte(0x07) + Byte(1)) + Record(0x0203, At(0, 3) + Double(1))),
              (Rows{{"TRUE", "FALSE", "#DIV/0!", "1"}}));
}

TEST(BiffReader, ReadsSharedTexts)
{
    BiffBook book;
    book.Global(Sst(2, Text("one") + Text("two")))
        .Cells(Record(0x00FD, At(0, 0) + Long(1)) + Record(0x00FD, At(0, 1) + Long(0)) +
               Record(0x00FD, At(1, 0) + Long(1)));

    EXPECT_EQ(Read(book), (Rows{{"'two'", "'one'"}, {"'two'", ""}}));
}

TEST(BiffReader, ReadsTextsWithinTheirCells)
{
    const std::string wide = Short(2) + Byte(1) + Wide(u"中文");
    const std::string rich = Short(3) + Byte(8) + Short(1) + "abc" + Short(1) + Short(5);

    EXPECT_EQ(ReadCells(Record(0x0204, At(0, 0) + Text("caf\xE9")) + Record(0x0204, At(0, 1) + wide) +
                        Record(0x00D6, At(0, 2) + rich)),
              (Rows{{"'café'", "'中文'", "'abc'"}}));
}

TEST(BiffReader, ReadsTheLastResultsOfFormulas)
{
    EXPECT_EQ(ReadCells(Record(0x0006, At(0, 0) + Double(4.5) + Short(0) + Long(0) + Short(0)) +
                        Formula(At(0, 1), booleanResult, 1) + Formula(At(0, 2), errorResult, 0x2A) +
                        Formula(At(0, 3), emptyResult)),
              (Rows{{"4.5", "TRUE", "#N/A", "''"}}));
}

TEST(BiffReader, ReadsTheTextThatFollowsAFormula)
{
    const std::string sharedFormula = Record(0x04BC, std::string(10, '\0'));

    EXPECT_EQ(ReadCells(Formula(At(0, 0), textResult) + Record(0x0207, Text("one")) + Formula(At(0, 1), textResult) +
                        sharedFormula + Record(0x0207, Text("two"))),
              (Rows{{"'one'", "'two'"}}));
}

TEST(BiffReader, ReadsALongTextThatFollowsAFormula)
{
    const std::string longText(10000, 'x');

    EXPECT_EQ(
        ReadCells(Formula(At(0, 0), textResult) + Record(0x0207, Short(10000) + Byte(0) + longText.substr(0, 8000)) +
                  Record(0x003C, Byte(0) + longText.substr(8000))),
        (Rows{{'\'' + longText + '\''}}));
}

TEST(BiffReader, ReadsAFormulaThatIsATextAsTheText)
{
    const auto formula = [](std::uint32_t column, const std::string& tokens) {
        return Record(0x0006, At(0, column) + Double(0) + Short(0) + Long(0) +
                                  Short(static_cast<std::uint32_t>(tokens.size())) + tokens);
    };
    const std::string narrow = Byte(0x17) + Byte(3) + Byte(0) + "007";
    const std::string wide = Byte(0x17) + Byte(2) + Byte(1) + Wide(u"中文");
    const std::string joined = Byte(0x17) + Byte(1) + Byte(0) + "a" + Byte(0x17) + Byte(1) + Byte(0) + "b" + Byte(0x08);

    EXPECT_EQ(ReadCells(formula(0, narrow) + formula(1, wide) + formula(2, joined) + formula(3, Byte(0x17))),
              (Rows{{"'007'", "'中文'", "0", "0"}}));
}

TEST(BiffReader, IgnoresATextThatFollowsNoFormula)
{
    EXPECT_EQ(ReadCells(Record(0x0203, At(0, 0) + Double(1)) + Record(0x0207, Text("one"))), (Rows{{"1"}}));
}

TEST(BiffReader, CountsFormattedBlankCellsAsEmpty)
{
    EXPECT_EQ(ReadCells(Record(0x0203, At(0, 0) + Double(1)) + Record(0x0201, At(5, 5)) +
                        Record(0x00BE, Short(9) + Short(0) + Short(0) + Short(0) + Short(1))),
              (Rows{{"1"}}));
}

TEST(BiffReader, IgnoresTheStatedDimensions)
{
    const std::string stated = Record(0x0200, Long(0) + Long(65536) + Short(0) + Short(256) + Short(0));

    EXPECT_EQ(ReadCells(stated + Record(0x0203, At(1, 0) + Double(1))), (Rows{{""}, {"1"}}));
}

TEST(BiffReader, PassesOverCellsOfEmbeddedCharts)
{
    EXPECT_EQ(ReadCells(Record(0x0203, At(0, 0) + Double(1)) + Bof(0x0600, 0x0020) +
                        Record(0x0203, At(7, 7) + Double(2)) + Eof + Record(0x0203, At(1, 0) + Double(3))),
              (Rows{{"1"}, {"3"}}));
}

TEST(BiffReader, TakesTheFirstWorksheetInTheOrderOfSheets)
{
    const std::string first = Bof(0x0600, 0x0010) + Record(0x0203, At(0, 0) + Double(1)) + Eof;
    const std::string second = Bof(0x0600, 0x0010) + Record(0x0203, At(0, 0) + Double(2)) + Eof;
    const auto boundSheet = [](std::size_t offset, std::uint32_t kind) {
        return Record(0x0085,
                      Long(static_cast<std::uint32_t>(offset)) + Byte(1) + Byte(kind) + Byte(1) + Byte(0) + "S");
    };
    const std::size_t globals = Bof(0x0600, 5).size() + 3 * boundSheet(0, 0).size() + Eof.size();

    // A chart comes first, and the worksheets lie in the other order.
    const std::string stream = Bof(0x0600, 5) + boundSheet(globals, 2) + boundSheet(globals + first.size(), 0) +
                               boundSheet(globals, 0) + Eof + first + second;

    EXPECT_EQ(TableOf(ReadBiff(stream)), (Rows{{"2"}}));
}

TEST(BiffReader, ShowsNumbersFormattedAsDatesAsDates)
{
    const auto xf = [](std::uint32_t format) {
        return Record(0x00E0, Short(0) + Short(format) + std::string(16, '\0'));
    };
    BiffBook book;
    book.Global(Record(0x041E, Short(164) + Text("yyyy\\-mm\\-dd")))
        .Global(Record(0x041E, Short(165) + Text("0.0 \"days\"")))
        .Global(xf(0) + xf(14) + xf(164) + xf(165));

    book.Cells(Record(0x0203, At(0, 0, 0) + Double(45292)) + Record(0x0203, At(0, 1, 1) + Double(45292)) +
               Record(0x027E, At(0, 2, 2) + Long(45292u << 2 | 2)) + Record(0x0203, At(0, 3, 3) + Double(45292)) +
               Record(0x0203, At(0, 4, 1) + Double(0.5)) + Record(0x0203, At(0, 5, 99) + Double(45292)));

    EXPECT_EQ(Read(book), (Rows{{"45292", "'01/01/24'", "'01/01/24'", "45292", "0.5", "45292"}}));
}

TEST(BiffReader, CountsDaysFrom1904WhereTheWorkbookDoes)
{
    BiffBook book;
    book.Global(Record(0x0022, Short(1))).Global(Record(0x00E0, Short(0) + Short(14) + std::string(16, '\0')));

    book.Cells(Record(0x0203, At(0, 0, 0) + Double(43830)));

    EXPECT_EQ(Read(book), (Rows{{"'01/01/24'"}}));
}

TEST(BiffReader, ReadsWorkbooksOfExcel95InTheirCodePage)
{
    BiffBook book(0x0500);
    book.Global(Record(0x0042, Short(1251)))
        .Global(Record(0x041E, Short(164) + Byte(2) + "yy"))
        .Global(Record(0x00E0, Short(0) + Short(164) + std::string(12, '\0')));

    book.Cells(Record(0x0204, At(0, 0) + Short(3) + "\xCF\xF0\xE8") +
               Record(0x00D6, At(0, 1) + Short(2) + "ab" + Byte(1) + Short(0)) +
               Record(0x0203, At(0, 2) + Double(45292)) + Formula(At(0, 3), textResult) +
               Record(0x0207, Short(1) + "\xFF"));

    EXPECT_EQ(Read(book), (Rows{{"'При'", "'ab'", "'01/01/24'", "'я'"}}));
}

TEST(BiffReader, KnowsTheCodePagesOfDosAndMacintosh)
{
    const auto read = [](std::uint32_t codePage, const char* bytes) {
        BiffBook book(0x0500);
        book.Global(Record(0x0042, Short(codePage))).Cells(Record(0x0204, At(0, 0) + Short(1) + bytes));
        return Read(book)[0][0];
    };

    EXPECT_EQ(read(850, "\x82"), "'é'");
    EXPECT_EQ(read(10000, "\x8E"), "'é'");
    EXPECT_EQ(read(0x8001, "\xE9"), "'é'");
    EXPECT_EQ(read(1250, "\xB9"), "'ą'");
}

}  // namespace tessarine::sheets
