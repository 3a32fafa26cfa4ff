#include "files/ProfileText.h"

#include <gtest/gtest.h>

#include "platform/CodePage.h"
#include "platform/Failure.h"
#include "support/TemporaryFolder.h"

namespace tessarine
{

namespace
{

constexpr std::size_t longest = 4095;

/// The value of "key" in section "window".
String ValueIn(std::string_view content)
{
    return ProfileValue(content, u"window", u"key", longest);
}

/// The value of "key" whose line reads "key=" and `written`.
String ValueWritten(const std::string& written)
{
    return ValueIn("[window]\nkey=" + written + "\n");
}

std::string Repeated(const std::string& text, std::size_t count)
{
    std::string result;
    for (std::size_t i = 0; i < count; ++i)
        result += text;
    return result;
}

}  // namespace

TEST(ProfileText, FindsAKeyInItsSection)
{
    const char* const content = "[other]\nkey=wrong\n[window]\nanother=wrong\nkey=right\n[third]\nkey=wrong\n";

    EXPECT_EQ(ValueIn(content), u"right");
}

TEST(ProfileText, IsEmptyForAMissingSection)
{
    EXPECT_EQ(ValueIn("[other]\nkey=value\n"), u"");
}

TEST(ProfileText, IsEmptyForAMissingKey)
{
    EXPECT_EQ(ValueIn("[window]\nkeys=value\nke=value\n[other]\nkey=value\n"), u"");
}

TEST(ProfileText, IsEmptyForEmptyContent)
{
    EXPECT_EQ(ValueIn(""), u"");
}

TEST(ProfileText, PassesOverWhatStandsAboveTheFirstSection)
{
    EXPECT_EQ(ProfileValue("key=stray\n[window]\n", u"", u"key", longest), u"");
    EXPECT_EQ(ValueIn("key=stray\n[window]\nkey=right"), u"right");
}

TEST(ProfileText, ComparesNamesWithoutRegardToCase)
{
    const std::string_view content = "[Global Msg]\nCmdOK.Caption=OK\n";

    EXPECT_EQ(ProfileValue(content, u"global msg", u"cmdOK.caption", longest), u"OK");
    EXPECT_EQ(ProfileValue(content, u"GLOBAL MSG", u"CMDOK.CAPTION", longest), u"OK");
}

TEST(ProfileText, ComparesNamesOfOtherScriptsWithoutRegardToCase)
{
    EXPECT_EQ(ProfileValue("[Окно]\nКлюч=да\n", u"ОКНО", u"ключ", longest), u"да");
}

TEST(ProfileText, TakesTheFirstOfTwoKeys)
{
    EXPECT_EQ(ValueIn("[window]\nKEY=first\nkey=second\n"), u"first");
}

TEST(ProfileText, TakesTheFirstOfTwoKeysEvenWhenEmpty)
{
    EXPECT_EQ(ValueIn("[window]\nkey=\nkey=second\n"), u"");
}

TEST(ProfileText, LooksIntoTheFirstOfTwoSectionsOnly)
{
    EXPECT_EQ(ValueIn("[window]\nkey=first\n[WINDOW]\nkey=second\n"), u"first");
    EXPECT_EQ(ValueIn("[window]\nother=first\n[window]\nkey=second\n"), u"");
}

TEST(ProfileText, DropsBlanksAroundValues)
{
    EXPECT_EQ(ValueWritten(" \t a  b \t "), u"a  b");
    EXPECT_EQ(ValueWritten("   "), u"");
}

TEST(ProfileText, KeepsANonBreakingSpaceAtTheEnd)
{
    EXPECT_EQ(ValueWritten("a\xC2\xA0"), u"a\u00A0");
}

TEST(ProfileText, DropsBlanksAroundNames)
{
    EXPECT_EQ(ValueIn("  [ window\t] \n\t key \t=value\n"), u"value");
}

TEST(ProfileText, PassesOverCommentLines)
{
    EXPECT_EQ(ValueIn("[window]\n;key=no\n  ; key=no\n;[other]\nkey=yes\n"), u"yes");
    EXPECT_EQ(ProfileValue("[window]\n;key=no\n", u"window", u";key", longest), u"");
}

TEST(ProfileText, KeepsASemicolonInAValue)
{
    EXPECT_EQ(ValueWritten("a ; b"), u"a ; b");
}

TEST(ProfileText, PassesOverWhatFollowsASectionName)
{
    EXPECT_EQ(ValueIn("[window] ; the main one [sic]\nkey=value\n"), u"value");
}

TEST(ProfileText, FindsASectionOnlyAtTheStartOfALine)
{
    EXPECT_EQ(ValueIn("; [window]\nkey=no\n[window]\nkey=yes\n"), u"yes");
    EXPECT_EQ(ValueIn("[other]\nkey=[window]\nsee [window]\rkey=no\r\n[window]\nkey=yes\n"), u"yes");
    EXPECT_EQ(ValueIn("x [window]\nkey=no\n"), u"");
}

TEST(ProfileText, IgnoresASectionWithoutItsClosingBracket)
{
    EXPECT_EQ(ValueIn("[window]\n[key=no\nkey=value\n"), u"value");
    EXPECT_EQ(ValueIn("[window\nkey=value\n"), u"");
    EXPECT_EQ(ProfileValue("[window]\n[key=no\n", u"window", u"[key", longest), u"");
}

TEST(ProfileText, PassesOverALineWithoutAnEqualsSign)
{
    EXPECT_EQ(ValueIn("[window]\nkey\nkey=value\n"), u"value");
}

TEST(ProfileText, EndsAKeyAtTheFirstEqualsSign)
{
    EXPECT_EQ(ValueWritten("a=b=c"), u"a=b=c");
}

TEST(ProfileText, FindsKeysWithBracketsCommasAndPoints)
{
    const std::string_view content = "[frmMain]\nvsflex.TextMatrix(0,1)=Find\nvsflex.TextMatrix(0,2)=Replace\n";

    EXPECT_EQ(ProfileValue(content, u"frmMain", u"vsflex.TextMatrix(0,2)", longest), u"Replace");
}

TEST(ProfileText, RemovesOnePairOfQuotes)
{
    EXPECT_EQ(ValueWritten("\"  word \""), u"  word ");
    EXPECT_EQ(ValueWritten("'  word '"), u"  word ");
    EXPECT_EQ(ValueWritten("  \"word\"  "), u"word");
    EXPECT_EQ(ValueWritten("\"\"word\"\""), u"\"word\"");
    EXPECT_EQ(ValueWritten("\"'word'\""), u"'word'");
    EXPECT_EQ(ValueWritten("\"\""), u"");
}

TEST(ProfileText, KeepsQuotesThatAreNoPair)
{
    EXPECT_EQ(ValueWritten("\"word"), u"\"word");
    EXPECT_EQ(ValueWritten("word\""), u"word\"");
    EXPECT_EQ(ValueWritten("\"word'"), u"\"word'");
    EXPECT_EQ(ValueWritten("'Revision' property"), u"'Revision' property");
    EXPECT_EQ(ValueWritten("\""), u"\"");
}

TEST(ProfileText, EndsLinesWithLfCrOrBoth)
{
    EXPECT_EQ(ValueIn("[window]\r\nother=no\r\nkey=value\r\n"), u"value");
    EXPECT_EQ(ValueIn("[window]\rother=no\rkey=value\r"), u"value");
    EXPECT_EQ(ValueIn("\n\n[window]\n\nkey=value"), u"value");
}

TEST(ProfileText, EndsAValueAtANul)
{
    EXPECT_EQ(ValueWritten(std::string("ab\0cd", 5)), u"ab");
}

TEST(ProfileText, PassesOverAByteOrderMark)
{
    EXPECT_EQ(ValueIn("\xEF\xBB\xBF[window]\nkey=value\n"), u"value");
}

TEST(ProfileText, ReadsUtf8AndKeepsBytesThatAreNot)
{
    EXPECT_EQ(ValueWritten("Größe 語 😀"), u"Größe 語 😀");
    EXPECT_EQ(ToUtf8(ValueWritten("caf\xE9")), "caf\xE9");
}

TEST(ProfileText, CutsALongValue)
{
    EXPECT_EQ(ValueWritten(Repeated("x", 4095)), String(4095, u'x'));
    EXPECT_EQ(ValueWritten(Repeated("x", 4096)), String(4095, u'x'));
    EXPECT_EQ(ValueWritten('"' + Repeated("x", 4095) + '"'), String(4095, u'x'));
    EXPECT_EQ(ValueWritten('"' + Repeated("x", 4096) + '"'), String(4095, u'x'));
}

TEST(ProfileText, CutsBetweenCharactersWhateverTheirSize)
{
    EXPECT_EQ(ValueWritten(Repeated("ж", 4096)), String(4095, u'ж'));
    EXPECT_EQ(ToUtf8(ValueWritten(Repeated("😀", 4096))), Repeated("😀", 4095));
}

TEST(ProfileText, IsEmptyForAMissingFile)
{
    const TemporaryFolder folder;

    EXPECT_EQ(ReadProfileValue(folder.PathOf(u"missing.lng"), u"window", u"key", longest), u"");
    EXPECT_EQ(ReadProfileValue(folder.PathOf(u"missing/missing.lng"), u"window", u"key", longest), u"");
    EXPECT_EQ(ReadProfileValue(folder.Path(), u"window", u"key", longest), u"");
}

TEST(ProfileText, ReadsAFileAnewEachTime)
{
    const TemporaryFolder folder;
    const String path = folder.Write(u"a.lng", "[window]\nkey=old\n");
    const String before = ReadProfileValue(path, u"window", u"key", longest);

    folder.Write(u"a.lng", "[window]\nkey=new\n");

    EXPECT_EQ(before, u"old");
    EXPECT_EQ(ReadProfileValue(path, u"window", u"key", longest), u"new");
}

class ProfileEncoding : public testing::Test
{
protected:
    String Read(const std::string& content) const
    {
        return ReadProfileValue(folder_.Write(u"a.lng", content), u"window", u"key", longest);
    }

    const TemporaryFolder folder_;
};

TEST_F(ProfileEncoding, IsTheCodePageThatTheFirstLineNames)
{
    EXPECT_EQ(Read("; code page 1251\n[window]\nkey=\xDF\xE7\xFB\xEA\n"), u"Язык");
    EXPECT_EQ(Read("; Polish, on Windows code page 1250; see there\r\n[window]\r\nkey=Po\xB3\xB9"
                   "cz\r\n"),
              u"Połącz");
}

TEST_F(ProfileEncoding, IsTheSystemsWhereTheFirstLineNamesNone)
{
    EXPECT_EQ(Read("[window]\nkey=\xC4ndern \x80\n"), FromCodePage("\xC4ndern \x80", SystemCodePage()));
    EXPECT_EQ(Read("; by hand\n; code page 1251\n[window]\nkey=\xC4ndern\n"),
              FromCodePage("\xC4ndern", SystemCodePage()));
}

TEST_F(ProfileEncoding, IsUtf8WhateverTheFirstLineNames)
{
    EXPECT_EQ(Read("; code page 1251\n[window]\nkey=Język\n"), u"Język");
}

TEST_F(ProfileEncoding, IsDecidedByTheWholeFile)
{
    // The key's own bytes would be "ß" in UTF-8.
    EXPECT_EQ(Read("; code page 1251\n[window]\nkey=\xC3\x9F\nother=\xFF\n"), u"Гџ");
}

TEST_F(ProfileEncoding, TakesBracketsInsideALetterForThatLetter)
{
    // In code page 950 the second byte of these letters is that of "[", "]", "\\" and "|".
    EXPECT_EQ(Read("; code page 950\n[window]\nother=\xA8\x5B \xA5\x5D\nkey=\xA8\x5B\xA5\x5D\xA5\x5C\xA5\x7C\n"),
              FromCodePage("\xA8\x5B\xA5\x5D\xA5\x5C\xA5\x7C", "windows-950"));
    EXPECT_EQ(Read("; code page 950\n[window]\nkey=\"\xA5\x5C \"\n"), u"功 ");
}

}  // namespace tessarine
