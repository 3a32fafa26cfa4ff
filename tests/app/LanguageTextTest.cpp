#include "app/LanguageText.h"

#include <gmock/gmock.h>

#include "app/ChosenLanguage.h"
#include "support/ErrorLogRecorder.h"
#include "support/OrdinaryUser.h"
#include "support/TemporaryFolder.h"

namespace tessarine
{

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

class LanguageTextTest : public testing::Test
{
protected:
    /// Looks up the key that a language file gives the value `written`.
    String TextWritten(const std::string& written)
    {
        Write("[frmMain]\ncmdAdd.caption=" + written + "\n");
        return GetLngString(u"frmMain", u"cmdAdd.caption");
    }

    void Write(const std::string& content) { folder_.Write(u"Languages/Test.lng", content); }

    const TemporaryFolder folder_;
    const ChosenLanguage language_{folder_.Path(), u"Test.lng"};
    const ErrorLogRecorder log_;
};

TEST_F(LanguageTextTest, StandsInTheFolderBesideTheExecutable)
{
    EXPECT_EQ(LanguageFolder(), folder_.PathOf(u"Languages"));
}

TEST_F(LanguageTextTest, ComesFromTheSectionAndKeyAskedFor)
{
    Write("[Global Msg]\n1001=Go on?\n[frmMain]\n1001=no\n");

    EXPECT_EQ(GetLngString(u"Global Msg", u"1001"), u"Go on?");
    EXPECT_EQ(GetLngString(u"global msg", u"1001"), u"Go on?");
}

TEST_F(LanguageTextTest, IsEmptyForAMissingKeySectionOrFile)
{
    Write("[frmMain]\n106=Open\n");

    EXPECT_EQ(GetLngString(u"frmMain", u"107"), u"");
    EXPECT_EQ(GetLngString(u"frmChangeLanguage", u"106"), u"");
    CurrentLanguageFile = u"Missing.lng";
    EXPECT_EQ(GetLngString(u"frmMain", u"106"), u"");
    EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(LanguageTextTest, IsEmptyForALanguageWithoutAName)
{
    Write("[frmMain]\n106=Open\n");
    CurrentLanguageFile = u".lng";

    EXPECT_EQ(GetLngString(u"frmMain", u"106"), u"");
    EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(LanguageTextTest, IsEmptyWhenNoLanguageIsSettled)
{
    CurrentLanguageFile.clear();

    EXPECT_EQ(GetLngString(u"frmMain", u"106"), u"");
    EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(LanguageTextTest, FollowsAChangeOfLanguageAtOnce)
{
    folder_.Write(u"Languages/Other.lng", "[frmMain]\ncmdAdd.caption=other\n");
    const String first = TextWritten("first");

    const String changed = TextWritten("changed");
    CurrentLanguageFile = u"Other.lng";

    EXPECT_EQ(first, u"first");
    EXPECT_EQ(changed, u"changed");
    EXPECT_EQ(GetLngString(u"frmMain", u"cmdAdd.caption"), u"other");
}

TEST_F(LanguageTextTest, DropsBlanksAroundAnUnquotedValue)
{
    EXPECT_EQ(TextWritten("  Add  "), u"Add");
}

TEST_F(LanguageTextTest, KeepsBlanksAtTheEndOfAQuotedValue)
{
    EXPECT_EQ(TextWritten("\"Process read only File \""), u"Process read only File ");
}

TEST_F(LanguageTextTest, LosesACharacterForEachLeadingSpace)
{
    EXPECT_EQ(TextWritten("\"  word\""), u"  wo");
    EXPECT_EQ(TextWritten("' word '"), u" word");
    EXPECT_EQ(TextWritten("\"    ab\""), u"  ");
}

TEST_F(LanguageTextTest, IsEmptyForSpacesAlone)
{
    EXPECT_EQ(TextWritten("\"   \""), u"");
}

TEST_F(LanguageTextTest, CountsTabsAsCharactersNotAsLeadingSpaces)
{
    EXPECT_EQ(TextWritten("\"\tword\""), u"\tword");
}

TEST_F(LanguageTextTest, LosesWholeCharacters)
{
    EXPECT_EQ(TextWritten("\"  語😀😀\""), u"  語");
}

TEST_F(LanguageTextTest, IsCutTo4095Characters)
{
    EXPECT_EQ(TextWritten(std::string(4095, 'x')).size(), 4095u);
    EXPECT_EQ(TextWritten(std::string(4096, 'x')).size(), 4095u);
    EXPECT_EQ(TextWritten('"' + std::string(5, ' ') + std::string(5000, 'x') + '"').size(), 4090u);
}

TEST_F(LanguageTextTest, TakesANumberForEachPlaceholder)
{
    Write("[Global Msg]\n1057=%d of %d%%d, %i\n");

    EXPECT_EQ(GetLngString(u"Global Msg", u"1057", 12), u"12 of 12%12, %i");
    EXPECT_EQ(GetLngString(u"Global Msg", u"missing", 12), u"");
}

// Links, pipes, modes and other users are different things on Windows.
#ifndef _WIN32

TEST_F(LanguageTextTest, IsEmptyForAFileThatCannotBeRead)
{
    SetMode(folder_.Path(), 0755);
    Write("[frmMain]\n106=Open\n");
    SetMode(folder_.PathOf(u"Languages"), 0755);
    SetMode(folder_.PathOf(u"Languages/Test.lng"), 0);
    const OrdinaryUser user;

    const String text = GetLngString(u"frmMain", u"106");

    EXPECT_EQ(text, u"");
    EXPECT_THAT(log_.Lines(), ElementsAre(StartsWith("Error 70 (")));
    EXPECT_THAT(log_.Bytes(), HasSubstr(") in procedure GetLngString at Line No. 0 of Module modLanguage"));
}

#endif

}  // namespace tessarine
