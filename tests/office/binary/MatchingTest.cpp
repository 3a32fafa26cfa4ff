#include <gmock/gmock.h>

#include "BinaryOnDisk.h"

/// What counts as an occurrence in texts of shapes and in plain values of binary presentations, how many are counted,
/// and how replacements go on behind one another.
namespace tessarine::test::ppt
{
namespace
{

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

const std::vector<Location> textBoxes{Location::ShapesAndTextboxes};
const std::vector<Location> values{Location::CustomProperties};

BinaryDeck WithTextBox(const String& text)
{
    return BinaryDeck().Slide(TextBox(text));
}

BinaryDeck WithValue(const std::string& text)
{
    return BinaryDeck().Custom("Client", TextValue(text));
}

std::string OnlyText(const BinaryOnDisk& deck)
{
    const std::string line = deck.Texts().at(0);
    return line.substr(line.find(": ") + 2);
}

String OnlyValue(const BinaryOnDisk& deck)
{
    return std::get<String>(deck.CustomValue(u"Client"));
}

TEST(BinaryTextMatch, IsCountedOnceWhereOneIsEnough)
{
    const BinaryOnDisk deck(WithTextBox(u"cat, cat, cat\rcat\vcat"));
    const std::string before = deck.Bytes();
    const std::vector<BinaryPair> pairs{{u"cat", u"", textBoxes}};

    EXPECT_EQ(deck.Process(pairs, {.isFindOnly = true, .countsAll = false}).Count(textBoxes[0]), 1);
    EXPECT_EQ(deck.Process(pairs, {.isFindOnly = true, .countsAll = true}).Count(textBoxes[0]), 5);

    EXPECT_EQ(deck.Bytes(), before);
}

TEST(BinaryTextMatch, IsCountedAndReplacedEachTimeInAReplaceRun)
{
    for (const bool countsAll : {false, true}) {
        const BinaryOnDisk deck(WithTextBox(u"cat, cat, cat\rcat\vcat"));

        EXPECT_EQ(deck.Process({{u"cat", u"dog", textBoxes}}, {.countsAll = countsAll}).Count(textBoxes[0]), 5);

        EXPECT_EQ(OnlyText(deck), "dog, dog, dog\rdog\vdog");
    }
}

TEST(BinaryTextMatch, ThatBeginsItsReplacementIsReplacedOnce)
{
    const BinaryOnDisk deck(WithTextBox(u"cat and cat"));

    EXPECT_EQ(deck.Replace(textBoxes[0], u"cat", u"cats"), 2);

    EXPECT_EQ(OnlyText(deck), "cats and cats");
}

TEST(BinaryTextMatch, FartherOnInItsReplacementIsReplacedUntilTheTextIsFull)
{
    const BinaryOnDisk deck(WithTextBox(u"one cat"));
    const String growing = String(8000, u'a') + u" cat";

    const BinaryOutcome outcome = deck.Process({{u"cat", growing, textBoxes}});

    // What has been replaced until then stays.
    EXPECT_EQ(outcome.Count(textBoxes[0]), 0);
    EXPECT_THAT(outcome.log, Contains(testing::AllOf(StartsWith("Error "), HasSubstr("in procedure SearchFunction"))));
    const std::string text = OnlyText(deck);
    EXPECT_GT(text.size(), 50 * growing.size());
    EXPECT_THAT(text, StartsWith("one aaaa"));
    EXPECT_TRUE(text.ends_with("aaaa cat"));
}

TEST(BinaryTextMatch, OfAWholeWordEndsAtBlanksBreaksAndPunctuation)
{
    const BinaryOnDisk deck(WithTextBox(u"cat catalog concat\rcat\vcat-cat cat7 _cat_ \u00E9cat"));

    const BinaryOutcome outcome =
        deck.Process({{.find = u"cat", .with = u"dog", .locations = textBoxes, .matchesWholeWords = true}});

    EXPECT_EQ(outcome.Count(textBoxes[0]), 4);
    EXPECT_EQ(OnlyText(deck),
              "dog catalog concat\rdog\vdog-dog cat7 _cat_ \xC3\xA9"
              "cat");
}

TEST(BinaryTextMatch, GoesByCaseWhereThePairDoes)
{
    const BinaryOnDisk deck(WithTextBox(u"CAT Cat cat"));

    EXPECT_EQ(deck.Find(textBoxes[0], u"cAT"), 3);
    EXPECT_EQ(deck.Process({{.find = u"Cat", .with = u"Dog", .locations = textBoxes, .matchesCase = true}})
                  .Count(textBoxes[0]),
              1);

    EXPECT_EQ(OnlyText(deck), "CAT Dog cat");
}

TEST(BinaryValueMatch, OfAWholeWordTouchesNoLetterFromAToZ)
{
    const BinaryOnDisk deck(
        WithValue("cat catalog concat cat cat7 _cat_ \xE9"
                  "cat"));

    const BinaryOutcome outcome =
        deck.Process({{.find = u"cat", .with = u"dog", .locations = values, .matchesWholeWords = true}});

    EXPECT_EQ(outcome.Count(values[0]), 5);
    EXPECT_EQ(OnlyValue(deck), u"dog catalog concat dog dog7 _dog_ \u00E9dog");
}

TEST(BinaryValueMatch, OfAWholeWordFollowsTheSameRuleInAddresses)
{
    const std::vector<Location> addresses{Location::HyperlinkAddresses};
    const BinaryOnDisk deck(BinaryDeck().Slide(AutoShape(1, u"a").Click(LinkTo(u"http://cat.example/catalog/cat7"))));

    const BinaryOutcome outcome =
        deck.Process({{.find = u"CAT", .with = u"Dog", .locations = addresses, .matchesWholeWords = true}});

    EXPECT_EQ(outcome.Count(addresses[0]), 2);
    EXPECT_THAT(AddressesOf(*deck.Open()), ElementsAre("http://Dog.example/catalog/Dog7"));
}

TEST(BinaryValueMatch, IsNotSoughtInWhatReplacesIt)
{
    for (const bool isWholeWord : {false, true}) {
        const BinaryOnDisk deck(WithValue("a a"));

        const BinaryOutcome outcome =
            deck.Process({{.find = u"a", .with = u"aa", .locations = values, .matchesWholeWords = isWholeWord}});

        EXPECT_EQ(outcome.Count(values[0]), 2);
        EXPECT_EQ(OnlyValue(deck), u"aa aa");
    }
}

TEST(BinaryValueMatch, IsReplacedEachTimeAndCountedOnceWhereOneIsEnough)
{
    for (const bool countsAll : {false, true}) {
        const BinaryOnDisk deck(WithValue("aaa"));

        EXPECT_EQ(deck.Process({{u"a", u"b", values}}, {.countsAll = countsAll}).Count(values[0]), countsAll ? 3 : 1);

        EXPECT_EQ(OnlyValue(deck), u"bbb");
    }
}

TEST(BinaryValueMatch, OfWholeWordsIsAlwaysCounted)
{
    const BinaryOnDisk deck(WithValue("a a a"));

    const BinaryOutcome outcome =
        deck.Process({{.find = u"a", .with = u"b", .locations = values, .matchesWholeWords = true}},
                     {.isFindOnly = true, .countsAll = false});

    EXPECT_EQ(outcome.Count(values[0]), 3);
    EXPECT_EQ(OnlyValue(deck), u"a a a");
}

TEST(BinaryValueMatch, MayBeginAndEndTheText)
{
    const BinaryOnDisk deck(WithValue("xax"));

    EXPECT_EQ(deck.Replace(values[0], u"x", u"yy"), 2);

    EXPECT_EQ(OnlyValue(deck), u"yyayy");
}

TEST(BinaryValueMatch, ThatThereIsNotLeavesTheText)
{
    const BinaryOnDisk deck(WithValue("cat"));
    const std::string before = deck.Bytes();

    const BinaryOutcome outcome = deck.Process({{u"dog", u"lion", values}});

    EXPECT_EQ(outcome.Count(values[0]), 0);
    EXPECT_THAT(outcome.log, IsEmpty());
    EXPECT_EQ(deck.Bytes(), before);
}

TEST(BinaryValueMatch, IsNeverInAnEmptyText)
{
    const std::vector<Location> plain{Location::CustomProperties, Location::HyperlinkAddresses, Location::NotesMaster,
                                      Location::Footer, Location::BuiltinProperies};
    const BinaryOnDisk deck(WithValue("")
                                .Summary(2, TextValue(""))
                                .NotesFooters(HeadersFooters().Header(u"").FooterWithoutText())
                                .Slide(AutoShape(1, u"a").Click(LinkToSlide(1)), HeadersFooters().Footer(u"")));
    ASSERT_THAT(AddressesOf(*deck.Open()), ElementsAre(""));
    const std::string before = deck.Bytes();

    const BinaryOutcome outcome = deck.Process({{u"cat", u"dog", plain}});

    for (const Location location : plain)
        EXPECT_EQ(outcome.Count(location), 0);
    EXPECT_THAT(outcome.log, IsEmpty());
    EXPECT_EQ(deck.Bytes(), before);
}

TEST(BinaryValueMatch, GoesByNoCaseAndPutsTheReplacementAsItIs)
{
    const BinaryOnDisk deck(WithValue("a cat, a Cat"));

    EXPECT_EQ(deck.Replace(values[0], u"CAT", u"dOG"), 2);

    EXPECT_EQ(OnlyValue(deck), u"a dOG, a dOG");
}

TEST(BinaryValueMatch, GoesByCaseWhereThePairDoes)
{
    const BinaryOnDisk deck(WithValue("a cat, a Cat"));

    EXPECT_EQ(
        deck.Process({{.find = u"Cat", .with = u"dog", .locations = values, .matchesCase = true}}).Count(values[0]), 1);

    EXPECT_EQ(OnlyValue(deck), u"a cat, a dog");
}

}  // namespace
}  // namespace tessarine::test::ppt
