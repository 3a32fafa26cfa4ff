// Shared texts that go on in another record: each kind of seam.
#include <gtest/gtest.h>

#include "office/sheets/BiffReader.h"
#include "office/sheets/Table.h"
#include "support/BiffBook.h"

namespace tessarine::sheets
{

using namespace test::biff;

namespace
{

/// Reads a table of two texts, the second of which is "end", from the data of its record and of one after it.
std::vector<std::string> ReadSplit(const std::string& data, const std::string& continued)
{
    BiffBook book;
    book.Global(Record(0x00FC, Long(2) + Long(2) + data) + Record(0x003C, continued));
    book.Cells(Record(0x00FD, At(0, 0) + Long(0)) + Record(0x00FD, At(0, 1) + Long(1)));
    return TableOf(ReadBiff(book.Stream()))[0];
}

using Cells = std::vector<std::string>;

}  // namespace

TEST(SharedTextSeam, MayLieBetweenTexts)
{
    EXPECT_EQ(ReadSplit(Text("abc"), Text("end")), (Cells{"'abc'", "'end'"}));
}

TEST(SharedTextSeam, MayLieWithinACompressedText)
{
    EXPECT_EQ(ReadSplit(Short(4) + Byte(0) + "ab", Byte(0) + "cd" + Text("end")), (Cells{"'abcd'", "'end'"}));
}

TEST(SharedTextSeam, MayLieWithinAWideText)
{
    EXPECT_EQ(ReadSplit(Short(2) + Byte(1) + Wide(u"中"), Byte(1) + Wide(u"文") + Text("end")),
              (Cells{"'中文'", "'end'"}));
}

TEST(SharedTextSeam, MayChangeFromCompressedToWideAndBack)
{
    EXPECT_EQ(ReadSplit(Short(4) + Byte(0) + "ab", Byte(1) + Wide(u"中文") + Text("end")),
              (Cells{"'ab中文'", "'end'"}));
    EXPECT_EQ(ReadSplit(Short(4) + Byte(1) + Wide(u"中文"), Byte(0) + "ab" + Text("end")),
              (Cells{"'中文ab'", "'end'"}));
}

TEST(SharedTextSeam, MayLieWithinASurrogatePair)
{
    EXPECT_EQ(ReadSplit(Short(2) + Byte(1) + Short(0xD83D), Byte(1) + Short(0xDE00) + Text("end")),
              (Cells{"'😀'", "'end'"}));
}

TEST(SharedTextSeam, MayLieInFrontOfTheFirstCharacter)
{
    EXPECT_EQ(ReadSplit(Short(2) + Byte(0), Byte(0) + "ab" + Text("end")), (Cells{"'ab'", "'end'"}));
}

TEST(SharedTextSeam, AfterTheLastCharacterHasNoFlags)
{
    EXPECT_EQ(ReadSplit(Short(2) + Byte(8) + Short(1) + "ab", Short(0) + Short(1) + Text("end")),
              (Cells{"'ab'", "'end'"}));
}

TEST(SharedTextSeam, MayLieWithinFormattingRunsAndPhonetics)
{
    const std::string head = Short(2) + Byte(8 | 4) + Short(2) + Long(6) + "ab";

    EXPECT_EQ(ReadSplit(head + Long(1) + Short(2), Short(3) + "phonet" + Text("end")), (Cells{"'ab'", "'end'"}));
    EXPECT_EQ(ReadSplit(head + Long(1) + Long(2) + "pho", "net" + Text("end")), (Cells{"'ab'", "'end'"}));
}

TEST(SharedTextSeam, MayFollowAnEmptyText)
{
    EXPECT_EQ(ReadSplit(Text(""), Text("end")), (Cells{"''", "'end'"}));
}

TEST(SharedTextSeam, MayLieAtEachByteOfARichText)
{
    const std::string text = Short(3) + Byte(8) + Short(1) + "abc" + Short(1) + Short(5);
    constexpr std::size_t firstCharacter = 5, lastCharacter = 7;

    for (std::size_t cut = 0; cut <= text.size(); ++cut) {
        const bool isWithinCharacters = cut >= firstCharacter && cut <= lastCharacter;
        const std::string rest = (isWithinCharacters ? Byte(0) : "") + text.substr(cut) + Text("end");

        EXPECT_EQ(ReadSplit(text.substr(0, cut), rest), (Cells{"'abc'", "'end'"})) << "cut at " << cut;
    }
}

TEST(SharedTextSeam, MayComeAgainAndAgain)
{
    std::string records = Record(0x00FC, Long(1) + Long(1) + Short(20) + Byte(0) + "a");
    for (char letter = 'b'; letter <= 't'; ++letter)
        records += Record(0x003C, Byte(0) + letter);
    BiffBook book;

    book.Global(records).Cells(Record(0x00FD, At(0, 0) + Long(0)));

    EXPECT_EQ(TableOf(ReadBiff(book.Stream())), (Rows{{"'abcdefghijklmnopqrst'"}}));
}

}  // namespace tessarine::sheets
