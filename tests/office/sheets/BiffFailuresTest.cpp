#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>

#include "office/sheets/BiffReader.h"
#include "platform/Failure.h"
#include "support/BiffBook.h"

namespace tessarine::sheets
{

using namespace test::biff;

namespace
{

/// The text of the failure that reading raises, "" when it raises none. Its number is 1004, or the test fails.
std::string FailureOf(const std::string& stream, const Limits& limits = Limits::Default())
{
    try {
        ReadBiff(stream, limits);
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.number, 1004);
        return ToUtf8(failure.description);
    }
    return {};
}

/// Some of everything that the reader looks at.
BiffBook Sample()
{
    BiffBook book;
    book.Global(Record(0x041E, Short(164) + Text("yyyy")))
        .Global(Record(0x00E0, Short(0) + Short(164) + std::string(16, '\0')))
        .Global(Sst(2, Text("one") + Short(2) + Byte(13) + Short(1) + Long(2) + Wide(u"ab") + Long(0) + Short(0)));
    book.Cells(Record(0x00FD, At(0, 0) + Long(1)))
        .Cells(Record(0x0203, At(0, 1) + Double(45292)))
        .Cells(Record(0x00BD, Short(1) + Short(0) + Short(0) + Long(6) + Short(0) + Long(6) + Short(1)))
        .Cells(Record(0x0205, At(2, 0) + Byte(1) + Byte(0)))
        .Cells(Record(0x0006, At(2, 1) + std::string(6, '\0') + Short(0xFFFF) + std::string(8, '\0')))
        .Cells(Record(0x0207, Text("result")));
    return book;
}

}  // namespace

TEST(BiffFailures, AnEncryptedWorkbookNeedsItsPassword)
{
    BiffBook book;
    book.Global(Record(0x002F, std::string(6, '\0')));

    EXPECT_EQ(FailureOf(book.Stream()), "The workbook is encrypted and needs a password to be opened");
}

TEST(BiffFailures, AWorkbookWithoutAWorksheetIsRefused)
{
    EXPECT_EQ(FailureOf(BiffBook().SheetKind(2).Stream()), "The workbook has no worksheet");
    EXPECT_EQ(FailureOf(Bof(0x0600, 5) + Eof), "The workbook has no worksheet");
}

TEST(BiffFailures, AnUnknownVersionIsRefused)
{
    EXPECT_EQ(FailureOf(BiffBook(0x0700).Stream()), "The workbook is of an unknown version");
}

TEST(BiffFailures, AMissingSharedTextIsDamage)
{
    EXPECT_EQ(FailureOf(BiffBook().Cells(Record(0x00FD, At(0, 0) + Long(0))).Stream()),
              "The file is damaged: a cell has a text that is not there");
}

TEST(BiffFailures, ACellBeyondTheLastColumnIsDamage)
{
    EXPECT_EQ(FailureOf(BiffBook().Cells(Record(0x0203, At(0, 255) + Double(1))).Stream()), "");
    EXPECT_THAT(FailureOf(BiffBook().Cells(Record(0x0203, At(0, 256) + Double(1))).Stream()),
                testing::HasSubstr("beyond the last column"));
}

TEST(BiffFailures, ASheetAtAWrongOffsetIsDamage)
{
    const auto withSheetAt = [](std::uint32_t offset) {
        return Bof(0x0600, 5) + Record(0x0085, Long(offset) + Short(0) + Byte(1) + Byte(0) + "S") + Eof;
    };

    EXPECT_THAT(FailureOf(withSheetAt(4)), testing::HasSubstr("damaged"));
    EXPECT_THAT(FailureOf(withSheetAt(0xFFFFFFFF)), testing::HasSubstr("damaged"));
}

TEST(BiffFailures, ASharedTextTableOfFalseSizeIsDamage)
{
    BiffBook book;
    book.Global(Record(0x00FC, Long(1) + Long(0xFFFFFFFF) + Text("one")));

    EXPECT_THAT(FailureOf(book.Stream()), testing::HasSubstr("ends too early"));
}

TEST(BiffFailures, HugePhoneticsAreDamage)
{
    BiffBook book;
    book.Global(Sst(1, Short(1) + Byte(4) + Long(0xFFFFFFFF) + "a"));

    EXPECT_THAT(FailureOf(book.Stream()), testing::HasSubstr("ends too early"));
}

TEST(BiffFailures, EachTruncationIsDamage)
{
    const std::string whole = Sample().Stream();
    ASSERT_EQ(FailureOf(whole), "");

    for (std::size_t length = 0; length < whole.size(); ++length)
        EXPECT_NE(FailureOf(whole.substr(0, length)), "") << "cut to " << length;
}

TEST(BiffFailures, EachAlteredByteIsReadOrRefused)
{
    const std::string whole = Sample().Stream();
    int refused = 0;

    for (std::size_t at = 0; at < whole.size(); ++at) {
        for (const char value : {'\0', '\x01', '\x7F', '\xFF'}) {
            std::string altered = whole;
            altered[at] = value;
            refused += FailureOf(altered).empty() ? 0 : 1;
        }
    }

    EXPECT_GT(refused, 0);
}

TEST(BiffFailures, LimitsHoldForCellsTextsAndFormats)
{
    const std::string stream = Sample().Stream();
    const std::string number = Record(0x0203, At(0, 0) + Double(1));
    const std::string twoNumbers = BiffBook().Cells(number + Record(0x0203, At(0, 1) + Double(2))).Stream();

    EXPECT_EQ(FailureOf(stream, Limits::Small()), "");
    EXPECT_THAT(FailureOf(stream, {.cells = 2}), testing::HasSubstr("more text than"));
    EXPECT_THAT(FailureOf(stream, {.textUnits = 4}), testing::HasSubstr("more text than"));
    EXPECT_THAT(FailureOf(twoNumbers, {.cells = 1}), testing::HasSubstr("more cells than"));
    EXPECT_THAT(FailureOf(stream, {.formats = 0}), testing::HasSubstr("formats than"));
}

TEST(BiffFailures, LoneCellsInFarCornersTakeLittleMemory)
{
    std::string cells;
    for (std::uint32_t row = 0; row < 65536; ++row)
        cells += Record(0x0203, At(row, 255) + Double(1));

    const Sheet sheet = ReadBiff(BiffBook().Cells(cells).Stream(), {.cells = 65536});

    EXPECT_EQ(sheet.UsedRange(), (Sheet::Extent{0, 65536, 255, 1}));
}

}  // namespace tessarine::sheets
