#include "platform/CodePage.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

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

TEST(CodePage, WritesTheBytesThatItReads)
{
    const std::vector<std::pair<std::string, std::string>> texts{{"caf\xE9 \x80", "windows-1252"},
                                                                 {"a\x81z\x9D", "windows-1252"},
                                                                 {"\xCF\xF0\xE8", "windows-1251"},
                                                                 {"\xE0", "windows-1255"},
                                                                 {"\x93\xFA\x96\x7B", "windows-932"},
                                                                 {"\xD6\xD0\xB9\xFA", "windows-936"},
                                                                 {"\xA4\xA4\xA4\xE5", "windows-950"},
                                                                 {"\x8E", "macintosh"},
                                                                 {"\x81", "cp437"}};
    for (const auto& [bytes, name] : texts)
        EXPECT_EQ(ToCodePage(FromCodePage(bytes, name), name), bytes) << name;
    EXPECT_EQ(ToCodePage(u"", "windows-1252"), "");
}

TEST(CodePage, WritesATextOfAnyLength)
{
    EXPECT_EQ(ToCodePage(String(10000, u'é'), "windows-1252"), std::string(10000, '\xE9'));
    EXPECT_EQ(ToCodePage(String(10000, u'日'), "windows-932"), [] {
        std::string bytes;
        for (int i = 0; i < 10000; ++i)
            bytes += "\x93\xFA";
        return bytes;
    }());
}

TEST(CodePage, WritesNothingOfATextThatItCannotHold)
{
    EXPECT_EQ(ToCodePage(u"Größe 日本", "windows-1252"), std::nullopt);
    EXPECT_EQ(ToCodePage(u"\u0141", "windows-1252"), std::nullopt);  // looks like an L
    EXPECT_EQ(ToCodePage(u"a\xFFFD", "windows-932"), std::nullopt);
    EXPECT_EQ(ToCodePage(u"a\xD83D", "windows-1252"), std::nullopt);
    EXPECT_EQ(ToCodePage(u"\U0001F600", "windows-1252"), std::nullopt);
}

TEST(CodePage, HasTheNameOfItsNumber)
{
    EXPECT_EQ(FromCodePage("\x8E", CodePageName(10000)), u"é");
    EXPECT_EQ(FromCodePage("\x9D", CodePageName(10029)), u"Ě");
    EXPECT_EQ(FromCodePage("\x81", CodePageName(437)), u"ü");
    EXPECT_EQ(FromCodePage("\xCF", CodePageName(1251)), u"П");
}

}  // namespace tessarine
