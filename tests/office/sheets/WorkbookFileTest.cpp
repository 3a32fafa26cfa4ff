#include "office/sheets/WorkbookFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "office/sheets/Table.h"
#include "platform/Failure.h"
#include "support/BiffBook.h"
#include "support/CompoundFile.h"

namespace tessarine::sheets
{

using namespace test::biff;

using namespace std::string_view_literals;

namespace
{

std::string FailureOf(std::string_view file)
{
    try {
        ReadWorkbook(file);
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.number, 1004);
        return ToUtf8(failure.description);
    }
    return {};
}

std::string StreamWith(double number, std::uint32_t version = 0x0600)
{
    return BiffBook(version).Cells(Record(0x0203, At(0, 0) + Double(number))).Stream();
}

Rows ReadStreams(const std::vector<std::pair<std::string, std::string>>& streams)
{
    return TableOf(ReadWorkbook(test::CompoundFile(streams)));
}

}  // namespace

TEST(WorkbookFile, HoldsItsStreamUnderEitherNameInAnyCase)
{
    EXPECT_EQ(ReadStreams({{"Workbook", StreamWith(1)}}), (Rows{{"1"}}));
    EXPECT_EQ(ReadStreams({{"Book", StreamWith(2, 0x0500)}}), (Rows{{"2"}}));
    EXPECT_EQ(ReadStreams({{"BOOK", StreamWith(3)}}), (Rows{{"3"}}));
}

TEST(WorkbookFile, ForBothVersionsIsReadAsTheNewerOne)
{
    EXPECT_EQ(ReadStreams({{"Book", StreamWith(5, 0x0500)}, {"Workbook", StreamWith(8)}}), (Rows{{"8"}}));
}

TEST(WorkbookFile, MayBeABareStream)
{
    EXPECT_EQ(TableOf(ReadWorkbook(StreamWith(1))), (Rows{{"1"}}));
    EXPECT_EQ(TableOf(ReadWorkbook(StreamWith(1, 0x0500))), (Rows{{"1"}}));
}

TEST(WorkbookFile, IsWrittenAsOneStreamThatIsNotSmall)
{
    Sheet sheet;
    sheet.Put(0, 0, true);

    const std::string file = WriteWorkbook(sheet);

    EXPECT_TRUE(IsCompoundOrZip(file));
    EXPECT_GT(file.size(), 4096u);
    EXPECT_EQ(TableOf(ReadWorkbook(file)), (Rows{{"TRUE"}}));
}

TEST(WorkbookFile, SaysWhatAFileIsInstead)
{
    EXPECT_EQ(FailureOf(""), "The file is empty");
    EXPECT_THAT(FailureOf("PK\x03\x04\x14\0\x06\0"sv), testing::StartsWith("The file is damaged"));
    EXPECT_THAT(
        FailureOf("PK\x03\x04" + std::string(26, '\0') + "mimetypeapplication/vnd.oasis.opendocument.spreadsheet"),
        testing::StartsWith("The file is an OpenDocument file"));
    EXPECT_THAT(FailureOf("<html><table>"), testing::StartsWith("The file is a web page"));
    EXPECT_THAT(FailureOf("\xEF\xBB\xBF\r\n <!DOCTYPE HTML><body>"), testing::StartsWith("The file is a web page"));
    EXPECT_THAT(FailureOf("<table><tr>"), testing::StartsWith("The file is a web page"));
    EXPECT_THAT(FailureOf("<?xml version=\"1.0\"?><Workbook xmlns=\"urn:schemas-microsoft-com:office:spreadsheet\">"),
                testing::StartsWith("The file is an XML spreadsheet"));
    EXPECT_THAT(FailureOf("<?xml version=\"1.0\"?><a/>"), testing::StartsWith("The file is an XML file"));
    EXPECT_THAT(FailureOf("Find What\tReplace With\n"), testing::StartsWith("The file is text"));
    EXPECT_THAT(FailureOf("\xFF\xFE"
                          "F\0i\0"sv),
                testing::StartsWith("The file is text"));
    EXPECT_THAT(FailureOf("\x09\x04\x06\0\0\0\x10\0\0\0"sv), testing::StartsWith("The file is a workbook of Excel 4"));
    EXPECT_EQ(FailureOf("\x01\0\0"sv), "The file is not a workbook");
}

TEST(WorkbookFile, SaysWhatACompoundFileIsInstead)
{
    EXPECT_EQ(FailureOf(test::CompoundFile({{"EncryptedPackage", "x"}})),
              "The workbook is encrypted and needs a password to be opened");
    EXPECT_EQ(FailureOf(test::CompoundFile({{"PowerPoint Document", "x"}})),
              "The file is some other Office document, not a workbook");
}

TEST(WorkbookFile, ThatIsDamagedFailsAsDamaged)
{
    const std::string file = WriteWorkbook(Sheet());

    EXPECT_THAT(FailureOf(file.substr(0, 100)), testing::StartsWith("The file is damaged"));
    EXPECT_THAT(FailureOf(file.substr(0, 512)), testing::StartsWith("The file is damaged"));
    EXPECT_THAT(FailureOf(test::CompoundFile({{"Workbook", "not one"}})), testing::StartsWith("The file is damaged"));
    EXPECT_THAT(FailureOf(test::CompoundFile({{"Workbook", ""}})), testing::StartsWith("The file is damaged"));
}

TEST(WorkbookFile, WithAFalseStreamSizeFailsAndPrintsNothing)
{
    std::string file = test::CompoundFile({{"Workbook", "short"}});
    const std::size_t entry = file.find("W\0o\0r\0k\0b\0o\0o\0k\0"sv);
    ASSERT_NE(entry, std::string::npos);
    constexpr std::size_t sizeInEntry = 120;
    file.replace(entry + sizeInEntry, 4, Long(2000));

    testing::internal::CaptureStderr();
    const std::string failure = FailureOf(file);

    EXPECT_THAT(failure, testing::StartsWith("The file is damaged"));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(WorkbookFile, CutAnywhereIsReadOrRefused)
{
    Sheet sheet;
    sheet.Put(0, 0, StringView(String(6000, u'x')));
    const std::string whole = WriteWorkbook(sheet);

    // The blocks lie in the file in any order, so that even half a file may hold the whole stream.
    for (std::size_t length = 0; length < whole.size(); length += 64) {
        try {
            EXPECT_EQ(TableOf(ReadWorkbook(whole.substr(0, length))), TableOf(sheet)) << length;
        } catch (const Failure& failure) {
            EXPECT_EQ(failure.number, 1004);
        }
    }
}

}  // namespace tessarine::sheets
