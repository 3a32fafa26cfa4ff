#include "platform/CaseFolding.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "platform/Locale.h"
#include "support/ScopedEnvironment.h"

namespace tessarine
{

TEST(FoldCase, MakesUpperAndLowerCaseEqualInAnyScript)
{
    EXPECT_EQ(FoldCase(u"Fabrikam"), u"fabrikam");
    EXPECT_EQ(FoldCase(u"ÄÖÜ"), FoldCase(u"äöü"));
    EXPECT_EQ(FoldCase(u"ΣΊΣΥΦΟΣ"), FoldCase(u"σίσυφος"));
    EXPECT_EQ(FoldCase(u"ПРИВЕТ"), FoldCase(u"привет"));
}

TEST(FoldCase, IsIndependentOfTheTurkishI)
{
    EXPECT_EQ(FoldCase(u"I"), u"i");
    EXPECT_NE(FoldCase(u"İ"), u"i");
    EXPECT_NE(FoldCase(u"ı"), u"i");
}

/// The system's locale for the time of a test.
class LocaleOfName
{
public:
    explicit LocaleOfName(const std::string& name)
    {
        all_.emplace("LC_ALL", name);
        UseSystemLocale();
    }
    ~LocaleOfName()
    {
        all_.reset();
        UseSystemLocale();
    }
    LocaleOfName(const LocaleOfName&) = delete;
    LocaleOfName& operator=(const LocaleOfName&) = delete;

private:
    std::optional<ScopedEnvironment> all_;
};

TEST(FoldCaseWidely, IsEqualWhereEitherOtherIs)
{
    EXPECT_EQ(FoldCaseWidely(u"İIıi Äß"), u"iiii äß");
    EXPECT_EQ(FoldCaseWidely(u'ı'), u'i');
}

TEST(FoldCase, KeepsSharpSApartFromDoubleS)
{
    EXPECT_NE(FoldCase(u"STRASSE"), FoldCase(u"straße"));
    EXPECT_EQ(FoldCase(u"STRAẞE"), FoldCase(u"straße"));
}

TEST(FoldCase, FoldsSurrogatePairsByTheirCodePoint)
{
    EXPECT_EQ(FoldCase(u"\U00010400"), u"\U00010428");
    EXPECT_EQ(FoldCase(u"😀"), u"😀");
}

TEST(FoldCase, LeavesLoneSurrogatesAndNulAlone)
{
    const String odd{u'A', char16_t{0xD800}, u'B', char16_t{0xDCE9}, u'\0', u'C', char16_t{0xD83D}};
    const String folded{u'a', char16_t{0xD800}, u'b', char16_t{0xDCE9}, u'\0', u'c', char16_t{0xD83D}};

    EXPECT_EQ(FoldCase(odd), folded);
}

TEST(FoldCase, FoldsAUnitAsATextOfOneUnit)
{
    for (int unit = 0; unit <= 0xFFFF; ++unit) {
        const String text(1, static_cast<char16_t>(unit));

        ASSERT_EQ(FoldCase(text), String(1, FoldCase(text[0]))) << unit;
        ASSERT_EQ(ToUpper(text).size(), 1u) << unit;
        ASSERT_EQ(FoldCase(FoldCase(text[0])), FoldCase(text[0])) << unit;
    }
}

TEST(FoldCase, KeepsTheLengthOfEveryPair)
{
    for (char32_t codePoint = 0x10000; codePoint <= 0x1FFFF; ++codePoint) {
        const String text{static_cast<char16_t>(0xD7C0 + (codePoint >> 10)),
                          static_cast<char16_t>(0xDC00 + (codePoint & 0x3FF))};

        ASSERT_EQ(FoldCase(text).size(), 2u) << static_cast<std::uint32_t>(codePoint);
        ASSERT_EQ(ToUpper(text).size(), 2u) << static_cast<std::uint32_t>(codePoint);
    }
}

TEST(ToUpper, RaisesLettersOneByOne)
{
    EXPECT_EQ(ToUpper(u"*.Ppt*"), u"*.PPT*");
    EXPECT_EQ(ToUpper(u"é\U00010428"), u"É\U00010400");
    EXPECT_EQ(ToUpper(u"straße"), u"STRAßE");
}

TEST(WordCharacter, IsALetterDigitMarkOrUnderscore)
{
    for (const char32_t yes : {U'a', U'z', U'A', U'Z', U'0', U'9', U'_', U'\u00E9', U'\u00DF', U'\u0627', U'\u0663',
                               U'\u4E2D', U'\u0301', U'\U00010400'})
        EXPECT_TRUE(IsWordCharacter(yes)) << static_cast<std::uint32_t>(yes);
    for (const char32_t no :
         {U' ', U'.', U'-', U',', U'@', U'[', U'`', U'{', U'\0', U'\u00A0', U'\u2019', U'\u20AC', U'\U0001F600'})
        EXPECT_FALSE(IsWordCharacter(no)) << static_cast<std::uint32_t>(no);
}

// Links, pipes, modes and other users are different things on Windows.
#ifndef _WIN32

TEST(FoldCaseLocally, TellsTheDottedIInTurkishAndAzeri)
{
    for (const char* const name : {"tr_TR.UTF-8", "az_AZ", "tr", "az@latin"}) {
        const LocaleOfName locale(name);

        EXPECT_EQ(FoldCaseLocally(u"İSTANBUL"), FoldCaseLocally(u"istanbul")) << name;
        EXPECT_EQ(FoldCaseLocally(u"ISPARTA"), FoldCaseLocally(u"ısparta")) << name;
        EXPECT_NE(FoldCaseLocally(u"ISPARTA"), FoldCaseLocally(u"isparta")) << name;
        EXPECT_EQ(FoldCase(u"I"), u"i") << "file names and keys don't change with the user's language";
    }
}

TEST(FoldCaseLocally, IsFoldCaseElsewhere)
{
    for (const char* const name : {"C", "de_DE.UTF-8", "trv_TW"}) {
        const LocaleOfName locale(name);

        EXPECT_EQ(FoldCaseLocally(u"İIıi Fabrikam"), FoldCase(u"İIıi Fabrikam")) << name;
    }
}

#endif

}  // namespace tessarine
