#include "run/WildcardPattern.h"

#include <gtest/gtest.h>

#include "log/Treatments.h"

namespace tessarine
{

namespace
{

bool Matches(StringView pattern, StringView subject)
{
    return WildcardPattern(pattern).Matches(subject);
}

}  // namespace

TEST(WildcardPattern, WithoutWildcardsStandsForItself)
{
    EXPECT_TRUE(Matches(u".PPT", u".PPT"));
    EXPECT_FALSE(Matches(u".PPT", u".PPTX"));
    EXPECT_FALSE(Matches(u".PPT", u".ppt"));
    EXPECT_TRUE(Matches(u"", u""));
    EXPECT_FALSE(Matches(u"", u"a"));
}

TEST(WildcardPattern, StarTakesAnyRun)
{
    EXPECT_TRUE(Matches(u"*", u""));
    EXPECT_TRUE(Matches(u"*.P*T*", u".PPT*"));
    EXPECT_TRUE(Matches(u"*ab*ab", u"xababyab"));
    EXPECT_FALSE(Matches(u"*ab*ab", u"xaby"));
    EXPECT_TRUE(Matches(u"a**b", u"ab"));
    EXPECT_TRUE(Matches(u"*😀*", u"a😀b"));
}

TEST(WildcardPattern, QuestionMarkTakesOneCharacter)
{
    EXPECT_TRUE(Matches(u"a?c", u"abc"));
    EXPECT_TRUE(Matches(u"?", u"*"));
    EXPECT_FALSE(Matches(u"a?c", u"ac"));
    EXPECT_FALSE(Matches(u"?", u""));
}

TEST(WildcardPattern, NumberSignTakesOneDigit)
{
    EXPECT_TRUE(Matches(u"V#.#", u"V1.0"));
    EXPECT_FALSE(Matches(u"V#", u"VX"));
    EXPECT_FALSE(Matches(u"#", u"٣"));
}

TEST(WildcardPattern, BracketsTakeOneCharacterOfASet)
{
    EXPECT_TRUE(Matches(u".PP[TS]", u".PPS"));
    EXPECT_FALSE(Matches(u".PP[TS]", u".PPX"));
    EXPECT_TRUE(Matches(u"[A-C0-9]", u"B"));
    EXPECT_FALSE(Matches(u"[A-C]", u"D"));
    EXPECT_TRUE(Matches(u"[*]", u"*"));
    EXPECT_FALSE(Matches(u"[*]", u"a"));
    EXPECT_TRUE(Matches(u"[?#[]", u"["));
}

TEST(WildcardPattern, ExclamationMarkTurnsASetRound)
{
    EXPECT_TRUE(Matches(u"[!A-C]", u"D"));
    EXPECT_FALSE(Matches(u"[!A-C]", u"B"));
    EXPECT_FALSE(Matches(u"[!A]", u""));
    EXPECT_TRUE(Matches(u"[A!]", u"!"));
    EXPECT_TRUE(Matches(u"[!]", u"!"));
    EXPECT_TRUE(Matches(u"a!", u"a!"));
}

TEST(WildcardPattern, HyphenAtAnEndOfASetIsAHyphen)
{
    EXPECT_TRUE(Matches(u"[-A]", u"-"));
    EXPECT_TRUE(Matches(u"[A-]", u"-"));
    EXPECT_FALSE(Matches(u"[A-]", u"B"));
}

TEST(WildcardPattern, EmptySetStandsForNothing)
{
    EXPECT_TRUE(Matches(u"a[]b", u"ab"));
    EXPECT_TRUE(Matches(u"]", u"]"));
}

TEST(WildcardPattern, ThatIsBrokenRaises)
{
    EXPECT_EQ(Skip([] { WildcardPattern(u"*.[PT"); }), 93);
    EXPECT_EQ(Skip([] { WildcardPattern(u"["); }), 93);
    EXPECT_EQ(Skip([] { WildcardPattern(u"[Z-A]"); }), 93);
}

TEST(WildcardPattern, OfManyStarsEndsSoon)
{
    String pattern;
    for (int i = 0; i < 100; ++i)
        pattern += u"*a";

    EXPECT_FALSE(Matches(pattern + u"b", String(5000, u'a')));
}

}  // namespace tessarine
