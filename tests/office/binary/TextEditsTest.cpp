#include "office/builtin/binary/TextEdits.h"

#include <gtest/gtest.h>

#include "support/LittleEndian.h"

/// What becomes of formats and positions when a text is edited.
namespace tessarine::test
{
namespace
{

using builtin::AppendRuns;
using builtin::FormatRun;
using builtin::ReadSpecialInfoRuns;
using builtin::ReadStyleRuns;
using builtin::TextEdits;

/// Runs as "3a 2b".
std::string Told(const std::vector<FormatRun>& runs)
{
    std::string told;
    for (const FormatRun& run : runs)
        told += (told.empty() ? "" : " ") + std::to_string(run.units) + std::string(run.format);
    return told;
}

/// A text that is edited as a search does it.
struct Edited {
    String text;
    TextEdits edits;

    explicit Edited(const String& old) : text(old), edits(old) {}

    void Replace(const String& what, const String& with)
    {
        const std::size_t at = text.find(what);
        text.replace(at, what.size(), with);
        edits.Replace(at, what.size(), with.size());
    }
};

const std::vector<FormatRun> threeRuns{{4, "a"}, {4, "b"}, {4, "c"}};  // of "one two tre" and its end

TEST(TextEdits, GiveNewTextTheFormatOfTheFirstReplacedUnit)
{
    Edited edited(u"one two tre");
    edited.Replace(u"e two t", u"E");

    EXPECT_EQ(edited.text, u"onEre");
    EXPECT_EQ(Told(edited.edits.Characters(threeRuns)), "3a 3c");
}

TEST(TextEdits, DropRunsThatHaveNoUnitLeft)
{
    Edited edited(u"one two tre");
    edited.Replace(u"two ", u"");

    EXPECT_EQ(Told(edited.edits.Characters(threeRuns)), "4a 4c");
}

TEST(TextEdits, KeepARunForTheEndOfAnEmptyText)
{
    Edited edited(u"one two tre");
    edited.Replace(u"one two tre", u"");

    EXPECT_EQ(Told(edited.edits.Characters(threeRuns)), "1c");
    EXPECT_EQ(Told(edited.edits.Paragraphs({{12, "p"}}, edited.text)), "1p");
}

TEST(TextEdits, ReplaceWhatWasPutInBefore)
{
    Edited edited(u"one two tre");
    edited.Replace(u"two", u"twenty");
    edited.Replace(u"went", u"");
    edited.Replace(u"ty t", u"T");

    EXPECT_EQ(edited.text, u"one Tre");
    EXPECT_EQ(Told(edited.edits.Characters(threeRuns)), "4a 1b 3c");
}

TEST(TextEdits, MakeUpForAMissingEndOfTheLastParagraph)
{
    Edited edited(u"one");
    edited.Replace(u"one", u"three");

    EXPECT_EQ(Told(edited.edits.Characters({{3, "a"}})), "6a");
}

TEST(TextEdits, GiveANewParagraphTheFormatOfTheOneThatItIsIn)
{
    Edited edited(u"ab\rcd");
    edited.Replace(u"b", u"x\ry");

    EXPECT_EQ(Told(edited.edits.Paragraphs({{3, "p"}, {3, "q"}}, edited.text)), "5p 3q");
}

TEST(TextEdits, GiveAJoinedParagraphTheFormatOfItsBeginning)
{
    Edited edited(u"ab\rcd\ref");
    edited.Replace(u"b\rc", u"");

    EXPECT_EQ(edited.text, u"ad\ref");
    EXPECT_EQ(Told(edited.edits.Paragraphs({{3, "p"}, {3, "q"}, {3, "r"}}, edited.text)), "3p 3r");
    EXPECT_EQ(Told(edited.edits.Characters({{3, "p"}, {3, "q"}, {3, "r"}})), "1p 2q 3r");
}

TEST(TextEdits, MovePositionsAlong)
{
    Edited edited(u"see here now");
    edited.Replace(u"see", u"look");

    EXPECT_EQ(edited.edits.PositionOf(4), 5u);
    EXPECT_EQ(edited.edits.PositionOf(8), 9u);
    EXPECT_EQ(edited.edits.PositionOf(12), 13u);
    EXPECT_EQ(edited.edits.PositionOf(0), 0u);
    EXPECT_EQ(edited.edits.PositionOf(13), 14u) << "behind the end of the last paragraph";
}

TEST(TextEdits, LeaveNothingBetweenPositionsWhoseTextHasGone)
{
    Edited edited(u"see here now");
    edited.Replace(u"e here n", u"");

    EXPECT_EQ(edited.edits.PositionOf(4), edited.edits.PositionOf(8));
}

TEST(TextEdits, KeepAUnitThatNobodyReplaced)
{
    Edited edited(u"page * of");
    edited.Replace(u"page", u"sheet");
    EXPECT_TRUE(edited.edits.Keeps(5));
    edited.Replace(u"*", u"*");
    EXPECT_FALSE(edited.edits.Keeps(5));
}

TEST(TextEdits, AreMadeInTimeThatGrowsWithTheText)
{
    constexpr std::size_t units = 400'000;
    Edited edited(String(units, u'a'));
    for (std::size_t at = 0; at < units; ++at)
        edited.edits.Replace(at, 1, 1);
    const String breaks(units, u'\r');

    EXPECT_EQ(edited.edits.Paragraphs({{units + 1, "p"}}, breaks).front().units, units + 1);
}

/// A run's bytes: how many units, the level of a paragraph, the mask, and fields.
std::string ParagraphRun(std::uint32_t units, std::uint32_t mask, const std::string& fields)
{
    return little::Long(units) + little::Short(0) + little::Long(mask) + fields;
}

std::string CharacterRun(std::uint32_t units, std::uint32_t mask, const std::string& fields)
{
    return little::Long(units) + little::Long(mask) + fields;
}

TEST(FormatRuns, HaveFieldsAsTheirMasksTell)
{
    // Bullet flags, its character and colour, alignment, two tab stops; bold and colour.
    const std::string tabs = little::Short(2) + "12345678";
    const std::string content = ParagraphRun(3, 0x0010'08A1,
                                             "ff"
                                             "ch"
                                             "colr"
                                             "al" +
                                                 tabs) +
                                ParagraphRun(3, 0, "") +
                                CharacterRun(4, 0x0004'0001,
                                             "st"
                                             "colr") +
                                CharacterRun(2, 0x0002'0000, "sz");
    const auto style = ReadStyleRuns(content, 5);

    ASSERT_TRUE(style);
    EXPECT_EQ(style->paragraphs.size(), 2u);
    EXPECT_EQ(style->characters.size(), 2u);
    EXPECT_EQ(style->characters[1].units, 2u);
    EXPECT_EQ(style->rest, "");
    std::string again;
    AppendRuns(again, style->paragraphs);
    AppendRuns(again, style->characters);
    EXPECT_EQ(again, content);
}

TEST(FormatRuns, ThatAreCutAreNone)
{
    const std::string content = ParagraphRun(6, 0x0000'0800, "al") + CharacterRun(6, 0x0002'0000, "sz");

    EXPECT_TRUE(ReadStyleRuns(content, 5));
    EXPECT_FALSE(ReadStyleRuns(content.substr(0, content.size() - 1), 5));
    EXPECT_FALSE(ReadSpecialInfoRuns(little::Long(1) + "\xFF"));
}

TEST(FormatRuns, OfSpecialInfoMayHaveManySmartTags)
{
    const std::string run = CharacterRun(3, 0x0000'0203,
                                         "sp"
                                         "la" +
                                             little::Long(2) + "12345678");
    const auto runs = ReadSpecialInfoRuns(run + CharacterRun(1, 0, ""));
    ASSERT_TRUE(runs);
    EXPECT_EQ(runs->size(), 2u);

    EXPECT_FALSE(ReadSpecialInfoRuns(CharacterRun(3, 0x0000'0200, little::Long(0xFFFF'FFFF))));
}

}  // namespace
}  // namespace tessarine::test
