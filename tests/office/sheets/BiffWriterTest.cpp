#include "office/sheets/BiffWriter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <vector>

#include "platform/Failure.h"
#include "support/BiffBook.h"

namespace tessarine::sheets
{

using namespace test::biff;

namespace
{

struct FoundRecord {
    std::size_t offset;
    unsigned type;
    std::string data;
};

unsigned ShortAt(const std::string& bytes, std::size_t at)
{
    return static_cast<unsigned char>(bytes.at(at)) |
           static_cast<unsigned>(static_cast<unsigned char>(bytes.at(at + 1))) << 8;
}

std::vector<FoundRecord> RecordsOf(const std::string& stream)
{
    std::vector<FoundRecord> records;
    for (std::size_t at = 0; at < stream.size();) {
        const unsigned length = ShortAt(stream, at + 2);
        records.push_back({at, ShortAt(stream, at), stream.substr(at + 4, length)});
        at += 4 + length;
    }
    return records;
}

std::vector<unsigned> TypesOf(const std::string& stream)
{
    std::vector<unsigned> types;
    for (const FoundRecord& record : RecordsOf(stream))
        if (types.empty() || types.back() != record.type)
            types.push_back(record.type);
    return types;
}

std::vector<std::string> DataOf(const std::string& stream, unsigned type)
{
    std::vector<std::string> data;
    for (const FoundRecord& record : RecordsOf(stream))
        if (record.type == type)
            data.push_back(record.data);
    return data;
}

std::optional<std::int32_t> FailureNumberOf(const Sheet& sheet)
{
    try {
        WriteBiff(sheet);
    } catch (const Failure& failure) {
        return failure.number;
    }
    return std::nullopt;
}

constexpr unsigned bof = 0x809, eof = 0x0A, codePage = 0x42, window1 = 0x3D, font = 0x31, xf = 0xE0, style = 0x293,
                   boundSheet = 0x85, sst = 0xFC, continued = 0x3C, dimensions = 0x200, labelSst = 0xFD,
                   boolErr = 0x205, number = 0x203, window2 = 0x23E;

}  // namespace

TEST(BiffWriter, WritesTheRecordsThatAWorkbookNeedsInTheirOrder)
{
    Sheet sheet;
    sheet.Put(0, 0, StringView(u"text"));
    sheet.Put(0, 1, true);
    sheet.Put(0, 2, 1.0);

    EXPECT_THAT(TypesOf(WriteBiff(sheet)),
                testing::ElementsAre(bof, codePage, window1, font, xf, style, boundSheet, sst, eof, bof, dimensions,
                                     labelSst, boolErr, number, window2, eof));
}

TEST(BiffWriter, TellsWhereTheSheetBegins)
{
    const std::string stream = WriteBiff(Sheet());

    std::vector<std::size_t> begins;
    for (const FoundRecord& record : RecordsOf(stream))
        if (record.type == bof)
            begins.push_back(record.offset);

    ASSERT_EQ(begins.size(), 2u);
    EXPECT_EQ(DataOf(stream, boundSheet)[0].substr(0, 4), Long(static_cast<std::uint32_t>(begins[1])));
}

TEST(BiffWriter, WritesBooleansAndNumbersAsSuch)
{
    Sheet sheet;
    sheet.Put(1, 2, true);
    sheet.Put(1, 3, false);
    sheet.Put(1, 4, 1.0);

    const std::string stream = WriteBiff(sheet);

    EXPECT_THAT(DataOf(stream, boolErr),
                testing::ElementsAre(At(1, 2, 15) + Byte(1) + Byte(0), At(1, 3, 15) + Byte(0) + Byte(0)));
    EXPECT_THAT(DataOf(stream, number), testing::ElementsAre(At(1, 4, 15) + Double(1)));
}

TEST(BiffWriter, MakesTheFirstRowBold)
{
    Sheet sheet;
    sheet.Put(0, 0, StringView(u"head"));
    sheet.Put(1, 0, StringView(u"head"));

    const std::string stream = WriteBiff(sheet);

    EXPECT_THAT(DataOf(stream, labelSst), testing::ElementsAre(At(0, 0, 16) + Long(0), At(1, 0, 15) + Long(0)));
    EXPECT_EQ(DataOf(stream, xf)[16].substr(0, 2), Short(5));
    EXPECT_EQ(DataOf(stream, font)[4].substr(6, 2), Short(700));
}

TEST(BiffWriter, WritesEachTextOnce)
{
    Sheet sheet;
    sheet.Put(1, 0, StringView(u"same"));
    sheet.Put(1, 1, StringView(u"same"));
    sheet.Put(1, 2, StringView(u"é中"));

    EXPECT_EQ(DataOf(WriteBiff(sheet), sst)[0], Long(3) + Long(2) + Text("same") + Short(2) + Byte(1) + Wide(u"é中"));
}

TEST(BiffWriter, SplitsLongTextsWithFlagsAtEachSeam)
{
    Sheet sheet;
    sheet.Put(0, 0, StringView(String(maxCellText, u'x')));

    const std::string stream = WriteBiff(sheet);

    const std::vector<std::string> seams = DataOf(stream, continued);
    EXPECT_EQ(DataOf(stream, sst)[0], Long(1) + Long(1) + Short(32767) + Byte(0) + std::string(8213, 'x'));
    ASSERT_EQ(seams.size(), 3u);
    EXPECT_EQ(seams[0], Byte(0) + std::string(8223, 'x'));
    EXPECT_EQ(seams[2], Byte(0) + std::string(32767 - 8213 - 2 * 8223, 'x'));
}

TEST(BiffWriter, KeepsCountAndFirstCharacterOfATextTogether)
{
    Sheet sheet;
    const String first(8224 - 8 - 3 - 4, u'x');  // leaves four bytes of the record, one too few for a wide text
    sheet.Put(0, 0, StringView(first));
    sheet.Put(0, 1, StringView(u"中"));

    const std::string stream = WriteBiff(sheet);

    EXPECT_THAT(DataOf(stream, continued), testing::ElementsAre(Short(1) + Byte(1) + Wide(u"中")));
}

TEST(BiffWriter, RefusesMoreThanASheetHolds)
{
    const auto numberFor = [](std::uint32_t row, std::uint32_t column, const Cell& value) {
        Sheet sheet;
        sheet.Put(row, column, value);
        return FailureNumberOf(sheet);
    };

    EXPECT_EQ(numberFor(65535, 255, true), std::nullopt);
    EXPECT_EQ(numberFor(65536, 0, true), 1004);
    EXPECT_EQ(numberFor(0, 256, true), 1004);
    EXPECT_EQ(numberFor(0, 0, StringView(String(32768, u'x'))), 1004);
}

}  // namespace tessarine::sheets
