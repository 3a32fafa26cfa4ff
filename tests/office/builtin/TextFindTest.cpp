#include <limits>

#include "TextBoxOnDisk.h"

namespace tessarine::test
{
namespace
{

std::int32_t FindIn(const std::string& textXml, const String& what, How how = {})
{
    return TextBoxOnDisk(P(R(textXml))).Find(what, how);
}

constexpr How anyCase{.matchCase = false};

TEST(Find, BeginsAfterThePositionGiven)
{
    const TextBoxOnDisk box(P(R("abcabcabc")));

    EXPECT_EQ(box.Find(u"abc", {.after = 0}), 1);
    EXPECT_EQ(box.Find(u"abc", {.after = 1}), 4);
    EXPECT_EQ(box.Find(u"abc", {.after = 3}), 4);
    EXPECT_EQ(box.Find(u"abc", {.after = 4}), 7);
    EXPECT_EQ(box.Find(u"abc", {.after = 6}), 7);
}

TEST(Find, DoesNotGoOnFromTheFront)
{
    const TextBoxOnDisk box(P(R("abcabc")));

    EXPECT_EQ(box.Find(u"abc", {.after = 4}), 0);
}

TEST(Find, GivesNothingFromTheEndOnAndBeyond)
{
    const TextBoxOnDisk box(P(R("abc")));

    EXPECT_EQ(box.Find(u"c", {.after = 2}), 3);
    EXPECT_EQ(box.Find(u"c", {.after = 3}), 0);
    EXPECT_EQ(box.Find(u"c", {.after = 4}), 0);
    EXPECT_EQ(box.Find(u"c", {.after = std::numeric_limits<std::int32_t>::max()}), 0);
}

TEST(Find, TakesANegativeAfterForZero)
{
    const TextBoxOnDisk box(P(R("abc")));

    EXPECT_EQ(box.Find(u"a", {.after = -1}), 1);
    EXPECT_EQ(box.Find(u"a", {.after = std::numeric_limits<std::int32_t>::min()}), 1);
}

TEST(Find, GivesNothingForAnEmptyText)
{
    EXPECT_EQ(FindIn("abc", u""), 0);
    EXPECT_EQ(TextBoxOnDisk("<a:p/>").Find(u""), 0);
}

TEST(Find, GivesNothingInAShapeWithoutTextBody)
{
    const DeckOnDisk deck(Deck().Slide(WithoutTextBody()));

    const auto text = ShapeOf(*deck.Open(), 1, 1)->TextFrame()->TextRange();

    EXPECT_EQ(text->Find(u"a", 0, 0, 0), nullptr);
    EXPECT_EQ(text->Replace(u"a", u"b", 0, 0, 0), nullptr);
}

TEST(Find, InTheRangeOfAHitStaysInsideIt)
{
    const DeckOnDisk deck(Deck().Slide(TextBox(u"abc abc")));
    const auto presentation = deck.Open();
    const auto hit = ShapeOf(*presentation, 1, 1)->TextFrame()->TextRange()->Find(u"bc a", 0, 1, 0);

    EXPECT_EQ(hit->Start(), 2);
    EXPECT_EQ(hit->Find(u"c", 0, 1, 0)->Start(), 3);
    EXPECT_EQ(hit->Find(u"c", 2, 1, 0), nullptr);
}

TEST(Find, SpansAnyNumberOfRuns)
{
    const TextBoxOnDisk box(P(R("x") + R("F", R"(b="1")") + R("a") + R("b", R"(sz="900")") + R("rikam!")));

    EXPECT_EQ(box.Find(u"Fabrikam"), 2);
}

TEST(Find, TakesControlCharactersForBreaks)
{
    const TextBoxOnDisk box(P(R("a") + Br + R("b")) + P(R("c\td")));

    EXPECT_EQ(box.Find(u"a\vb\rc\td"), 1);
    EXPECT_EQ(box.Find(u"\r"), 4);
    EXPECT_EQ(box.Find(u"\v"), 2);
    EXPECT_EQ(box.Find(u"\t"), 6);
}

TEST(Find, TakesALineFeedForNoBreak)
{
    const TextBoxOnDisk box(P(R("a") + Br + R("b")) + P(R("c")));

    EXPECT_EQ(box.Find(u"\n"), 0);
    EXPECT_EQ(box.Find(u"b\nc"), 0);
    EXPECT_EQ(box.Find(u"b\r\nc"), 0);
}

TEST(Find, IsLiteral)
{
    EXPECT_EQ(FindIn("cat c.t c?t c*t ^p ^t", u"c?t"), 9);
    EXPECT_EQ(FindIn("cat c.t c?t c*t ^p ^t", u"c.t"), 5);
    EXPECT_EQ(FindIn("cat c.t c?t c*t ^p ^t", u"c*t"), 13);
    EXPECT_EQ(FindIn("a", u"^p"), 0);
}

TEST(Find, TellsCasesApartOnlyWhenAsked)
{
    EXPECT_EQ(FindIn("FABRIKAM Fabrikam", u"Fabrikam"), 10);
    EXPECT_EQ(FindIn("FABRIKAM Fabrikam", u"Fabrikam", anyCase), 1);
}

struct CasePair {
    const char* name;
    const char* text;
    const char16_t* find;
    bool matches;
};

void PrintTo(const CasePair& pair, std::ostream* out)
{
    *out << pair.name;
}

class FindInAnyCase : public testing::TestWithParam<CasePair>
{
};

TEST_P(FindInAnyCase, FoldsOneCharacterToOneWithoutALocale)
{
    EXPECT_EQ(FindIn("x" + std::string(GetParam().text), GetParam().find, anyCase), GetParam().matches ? 2 : 0);
}

INSTANTIATE_TEST_SUITE_P(
    Characters, FindInAnyCase,
    testing::Values(CasePair{"Umlauts", "ÄÖÜ", u"äöü", true}, CasePair{"Cyrillic", "Фабрика", u"ФАБРИКА", true},
                    CasePair{"Greek", "ΩΣΑΣ", u"ωσας", true}, CasePair{"FinalSigma", "σ", u"ς", true},
                    CasePair{"Armenian", "Ա", u"ա", true}, CasePair{"Deseret", "𐐀", u"𐐨", true},
                    CasePair{"SharpSAndDoubleS", "Straße", u"STRASSE", false},
                    CasePair{"SharpSAndCapitalSharpS", "Straße", u"STRAẞE", true},
                    CasePair{"TurkishDottedCapital", "İ", u"i", false}, CasePair{"TurkishDotless", "ı", u"I", false},
                    CasePair{"PlainI", "I", u"i", true}, CasePair{"Ligature", "ﬁ", u"fi", false},
                    CasePair{"KelvinSign", "\u212A", u"k", true}, CasePair{"LongS", "ſ", u"S", true},
                    CasePair{"AccentMatters", "é", u"E", false}, CasePair{"Fullwidth", "Ａ", u"ａ", true},
                    CasePair{"WidthMatters", "Ａ", u"a", false}, CasePair{"KanaMatter", "ア", u"あ", false}),
    [](const auto& tested) { return std::string(tested.param.name); });

TEST(Find, TellsFormsOfTheSameLetterApart)
{
    EXPECT_EQ(FindIn("caf\u00E9", u"cafe\u0301"), 0);
    EXPECT_EQ(FindIn("cafe\u0301", u"caf\u00E9"), 0);
    EXPECT_EQ(FindIn("cafe\u0301", u"cafe\u0301"), 1);
}

TEST(Find, TellsBlanksHyphensAndQuotesApart)
{
    EXPECT_EQ(FindIn("a\u00A0b", u"a b"), 0);
    EXPECT_EQ(FindIn("a\u00A0b", u"a\u00A0b"), 1);
    EXPECT_EQ(FindIn("a\u2011b a\u00ADb", u"a-b"), 0);
    EXPECT_EQ(FindIn("\u201Ca\u201D \u2019", u"\"a\""), 0);
    EXPECT_EQ(FindIn("\u201Ca\u201D \u2019", u"'"), 0);
    EXPECT_EQ(FindIn("Fabri\u200Bkam", u"Fabrikam"), 0);
}

TEST(Find, MatchesWholeSurrogatePairsOnly)
{
    const String emoji = u"\U0001F600";

    EXPECT_EQ(FindIn("a\U0001F600b", emoji), 2);
    EXPECT_EQ(FindIn("a\U0001F600b", emoji.substr(0, 1)), 0);
    EXPECT_EQ(FindIn("a\U0001F600b", emoji.substr(1)), 0);
    EXPECT_EQ(FindIn("a\U0001F601b", emoji), 0);
}

TEST(Find, MatchesWhatReferencesAndCharacterDataStandFor)
{
    EXPECT_EQ(FindIn("R&amp;D <![CDATA[<Fab]]>rik&#97;m", u"R&D <Fabrikam"), 1);
    EXPECT_EQ(FindIn("R&amp;D", u"amp"), 0);
}

struct Neighbours {
    const char* name;
    const char* text;  ///< Holds "cat" once.
    bool isWord;
};

void PrintTo(const Neighbours& neighbours, std::ostream* out)
{
    *out << neighbours.name;
}

class FindWholeWord : public testing::TestWithParam<Neighbours>
{
};

TEST_P(FindWholeWord, GoesByTheCharactersOnBothSides)
{
    const TextBoxOnDisk box(P(R(GetParam().text)));

    const bool found = box.Find(u"cat", {.wholeWords = true}) != 0;

    ASSERT_NE(box.Find(u"cat"), 0);
    EXPECT_EQ(found, GetParam().isWord);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, FindWholeWord,
    testing::Values(
        Neighbours{"Alone", "cat", true}, Neighbours{"Blanks", "a cat b", true},
        Neighbours{"LetterBefore", "xcat", false}, Neighbours{"LetterBehind", "cats", false},
        Neighbours{"DigitBefore", "1cat", false}, Neighbours{"DigitBehind", "cat1", false},
        Neighbours{"ArabicDigit", "cat\u0661", false}, Neighbours{"UnderscoreBefore", "_cat", false},
        Neighbours{"UnderscoreBehind", "cat_", false}, Neighbours{"Hyphens", "a-cat-b", true},
        Neighbours{"Apostrophe", "cat's", true}, Neighbours{"TypographicApostrophe", "l\u2019cat\u2019s", true},
        Neighbours{"FullStop", "a.cat.", true}, Neighbours{"Quotes", "\u201Ecat\u201C", true},
        Neighbours{"Umlaut", "\u00E4cat", false}, Neighbours{"Cyrillic", "cat\u0436", false},
        Neighbours{"Ideograph", "cat\u732B", false}, Neighbours{"CombiningMark", "cat\u0301", false},
        Neighbours{"NoBreakSpace", "\u00A0cat\u00A0", true}, Neighbours{"ZeroWidthSpace", "\u200Bcat\u200B", true},
        Neighbours{"Emoji", "\U0001F600cat\U0001F600", true},
        Neighbours{"LetterBeyondThePlane", "cat\U00010400", false},
        Neighbours{"LetterBeyondThePlaneBefore", "\U00010400cat", false}, Neighbours{"Tab", "\tcat\t", true},
        Neighbours{"Reference", "&amp;cat&lt;", true}, Neighbours{"Plus", "+cat+", true}),
    [](const auto& tested) { return std::string(tested.param.name); });

TEST(FindWholeWords, EndsWordsAtBreaks)
{
    const TextBoxOnDisk box(P(R("x")) + P(R("cat") + Br + R("cat")) + P(R("x")));

    EXPECT_EQ(box.Find(u"cat", {.wholeWords = true}), 3);
    EXPECT_EQ(box.Find(u"cat", {.after = 3, .wholeWords = true}), 7);
}

TEST(FindWholeWords, DoesNotEndAWordAtASeamOfRuns)
{
    const TextBoxOnDisk box(P(R("con") + R("cat", R"(b="1")") + R("enate cat")));

    EXPECT_EQ(box.Find(u"cat", {.wholeWords = true}), 13);
}

TEST(FindWholeWords, LooksAtTheNeighboursWhateverTheTextItselfBeginsWith)
{
    EXPECT_EQ(FindIn("a-b -b", u"-b", {.wholeWords = true}), 5);
    EXPECT_EQ(FindIn("C++ C++", u"C++", {.wholeWords = true}), 1);
}

}  // namespace
}  // namespace tessarine::test
