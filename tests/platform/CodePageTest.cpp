#include "platform/CodePage.h"

#include <gtest/gtest.h>

namespace tessarine
{

TEST(CodePage, ReadsSingleAndDoubleByteTexts)
{
    EXPECT_EQ(FromCodePage("caf\xE9 \x80", "windows-1252"), u"café €");
    EXPECT_EQ(FromCodePage("\xCF\xF0\xE8", "windows-1251"), u"При");
    EXPECT_EQ(FromCodePage("\xA4\xA4\xA4\xE5", "windows-950"), u"中文");
}

TEST(CodePage, ReadsATextOfAnyLength)
{
    EXPECT_EQ(FromCodePage(std::string(10000, '\xE9'), "windows-1252"), String(10000, u'é'));
    EXPECT_EQ(FromCodePage("", "windows-1252"), u"");
}

TEST(CodePage, PutsAReplacementForBytesWithoutMeaning)
{
    EXPECT_EQ(FromCodePage("a\xA4", "windows-950"), u"a\xFFFD");
    EXPECT_EQ(FromCodePage("\xA4\x20z\xA4\xA4", "windows-950"), u"\xFFFD z中");
    EXPECT_EQ(FromCodePage("\xFF\xB0\xA1", "windows-949"), u"\xFFFD가");
}

TEST(CodePage, GivesControlCharactersToBytesThatWindowsUsesForNothing)
{
    EXPECT_EQ(FromCodePage("a\x81z\x9D", "windows-1252"), u"a\x81z\x9D");
    EXPECT_EQ(FromCodePage("\x98", "windows-1251"), u"\x98");
}

TEST(CodePage, KeepsACharacterThatMayBeJoinedWithTheNext)
{
    // In Hebrew and Vietnamese a mark may follow, and letter and mark be one character; none does at the end.
    EXPECT_EQ(FromCodePage("\xE0", "windows-1255"), u"א");
    EXPECT_EQ(FromCodePage("Viet", "windows-1258"), u"Viet");
}

TEST(CodePage, ReadsAsianTextsOfWindows)
{
    EXPECT_EQ(FromCodePage("\x93\xFA\x96\x7B \x87\x40", "windows-932"), u"日本 ①");
    EXPECT_EQ(FromCodePage("\xD6\xD0\xB9\xFA", "windows-936"), u"中国");
    EXPECT_EQ(FromCodePage("\xC7\xD1\xB1\xDB", "windows-949"), u"한글");
}

TEST(CodePage, ReadsThoseOfDosAndTheMacintosh)
{
    EXPECT_EQ(FromCodePage("\x81", "cp437"), u"ü");
    EXPECT_EQ(FromCodePage("\x8A", "macintosh"), u"ä");
}

TEST(CodePage, TakesAnUnknownNameForWindows1252)
{
    EXPECT_EQ(FromCodePage("\xE9", "no such page"), u"é");
}

TEST(CodePage, OfTheSystemReadsAsciiAsItIs)
{
    EXPECT_EQ(FromCodePage("Fabrikam, Inc. (1)", SystemCodePage()), u"Fabrikam, Inc. (1)");
}

}  // namespace tessarine
