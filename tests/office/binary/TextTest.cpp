#include <gmock/gmock.h>

#include "BinaryOnDisk.h"
#include "office/builtin/binary/FormatRuns.h"
#include "office/builtin/records/Record.h"
#include "office/builtin/records/RecordTypes.h"
#include "support/BinaryReader.h"
#include "support/BinaryRecords.h"

/// Texts of binary presentations: what an edit makes of them and of the atoms that go by their units.
namespace tessarine::test::ppt
{
namespace
{

using builtin::record::InteractiveInfo;
using builtin::record::StyleTextPropAtom;
using builtin::record::TextBookmarkAtom;
using builtin::record::TextBytesAtom;
using builtin::record::TextCharsAtom;
using builtin::record::TextInteractiveInfoAtom;
using builtin::record::TextSpecialInfoAtom;
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

constexpr std::uint16_t english = 0x409;

/// Characters with a size and a language, so with all atoms that tell of them.
TextRun Sized(String characters, int size)
{
    return TextRun(std::move(characters)).Size(size).Language(english);
}

Text Formatted(String characters)
{
    return Text(Sized(std::move(characters), 18));
}

/// A deck with one text box.
BinaryDeck DeckOf(Text text)
{
    return BinaryDeck().Slide(TextBox(std::move(text)));
}

/// The first text box's atoms after a replacement in it.
class EditedText
{
public:
    EditedText(const ppt::Text& text, const String& find, const String& with) : deck_(DeckOf(text))
    {
        count = deck_.Replace(Location::ShapesAndTextboxes, find, with);
        slide_ = SlidesOf(deck_.Bytes()).at(0);
        EXPECT_THAT(TextFaults(slide_), IsEmpty());
    }

    std::int32_t count = 0;

    String Text() const { return ShapeOf(*deck_.Open(), 1, 1)->TextFrame()->TextRange()->TextAt(1, 1'000'000).value(); }

    /// Contents of the atoms of a type, in the slide.
    std::vector<std::string> Atoms(std::uint32_t type) const
    {
        std::vector<std::string> contents;
        for (const BinaryRecord& record : FindRecords(slide_, type))
            contents.push_back(record.data);
        return contents;
    }

    /// Units and sizes of the characters' runs: "4x20 3x30".
    std::string Sizes() const
    {
        const std::string atom = Atoms(StyleTextPropAtom).at(0);
        return Told(builtin::ReadStyleRuns(atom, Text().size()).value().characters, 4);
    }
    std::string Levels() const
    {
        const std::string atom = Atoms(StyleTextPropAtom).at(0);
        return Told(builtin::ReadStyleRuns(atom, Text().size()).value().paragraphs, 0);
    }
    /// Of the runs of languages.
    std::uint32_t SpecialUnits() const
    {
        std::uint32_t units = 0;
        const std::string atom = Atoms(TextSpecialInfoAtom).at(0);
        const auto runs = builtin::ReadSpecialInfoRuns(atom);
        for (const builtin::FormatRun& run : runs.value())
            units += run.units;
        return units;
    }

    const BinaryOnDisk& Deck() const { return deck_; }

private:
    /// Units of each run, and the number that stands in its format.
    static std::string Told(const std::vector<builtin::FormatRun>& runs, std::size_t at)
    {
        std::string told;
        for (const builtin::FormatRun& run : runs)
            told += (told.empty() ? "" : " ") + std::to_string(run.units) + "x" +
                    std::to_string(At(std::string(run.format), at, 2));
        return told;
    }

    BinaryOnDisk deck_;
    std::string slide_;
};

TEST(BinaryText, KeepsFormatsAroundAReplacement)
{
    const EditedText edited(Text(Sized(u"Fab ", 20), Sized(u"rikam ", 30), Sized(u"GmbH", 40)), u"rikam", u"Contoso");

    EXPECT_EQ(edited.count, 1);
    EXPECT_EQ(edited.Text(), u"Fab Contoso GmbH");
    EXPECT_EQ(edited.Sizes(), "4x20 8x30 5x40");
    EXPECT_EQ(edited.SpecialUnits(), 17u);
}

TEST(BinaryText, TakesTheFormatOfTheFirstReplacedCharacter)
{
    const EditedText edited(Text(Sized(u"Fab", 20), Sized(u"rikam ", 30), Sized(u"GmbH", 40)), u"Fabrikam", u"Contoso");

    EXPECT_EQ(edited.Text(), u"Contoso GmbH");
    EXPECT_EQ(edited.Sizes(), "7x20 1x30 5x40");
}

TEST(BinaryText, ShrinksAndGrows)
{
    EXPECT_EQ(EditedText(Formatted(u"a cat, a cat"), u"cat", u"").Text(), u"a , a ");
    EXPECT_EQ(EditedText(Formatted(u"a cat"), u"a cat", u"").Text(), u"");
    const String long1(60'000, u'x');
    EXPECT_EQ(EditedText(Formatted(u"a cat"), u"cat", long1).Text().size(), 2 + long1.size());
}

TEST(BinaryText, StaysInBytesAsLongAsTheyHoldIt)
{
    const EditedText edited(Formatted(u"a caf\u00E9"), u"caf", u"th\u00FCf");

    EXPECT_THAT(edited.Atoms(TextBytesAtom), ElementsAre("a th\xFC"
                                                         "f\xE9"));
    EXPECT_THAT(edited.Atoms(TextCharsAtom), IsEmpty());
}

TEST(BinaryText, BecomesCharactersWhereBytesCanNotHoldIt)
{
    const EditedText edited(Formatted(u"a caf\u00E9"), u"a", u"\u732B\U0001F600");

    EXPECT_EQ(edited.count, 2);
    EXPECT_EQ(edited.Text(), u"\u732B\U0001F600 c\u732B\U0001F600f\u00E9");
    EXPECT_THAT(edited.Atoms(TextBytesAtom), IsEmpty());
    EXPECT_EQ(edited.SpecialUnits(), edited.Text().size() + 1);
}

TEST(BinaryText, OfCharactersStaysSo)
{
    const EditedText edited(Formatted(u"a \u732B").Wide(), u"\u732B", u"cat");

    EXPECT_EQ(edited.Text(), u"a cat");
    EXPECT_THAT(edited.Atoms(TextBytesAtom), IsEmpty());
}

TEST(BinaryText, HasCharactersBeyondAsciiAsTheyAre)
{
    // In the range where a code page would have other letters.
    const EditedText edited(Formatted(u"\u0093cat\u0094 \u00DF"), u"cat", u"dog");

    EXPECT_EQ(edited.Text(), u"\u0093dog\u0094 \u00DF");
}

TEST(BinaryText, DividesAParagraph)
{
    const EditedText edited(Formatted(u"one two\rthree").Levels({1, 2}), u" ", u"\n");

    EXPECT_EQ(edited.Text(), u"one\rtwo\rthree");
    EXPECT_EQ(edited.Levels(), "8x1 6x2");
}

TEST(BinaryText, JoinsParagraphsUnderTheFormatOfTheFirst)
{
    const EditedText edited(Formatted(u"one\rtwo\rthree").Levels({1, 2, 3}), u"e\rt", u"E T");

    EXPECT_EQ(edited.Text(), u"onE Two\rthree");
    EXPECT_EQ(edited.Levels(), "8x1 6x3");
}

TEST(BinaryText, HasLineBreaksAndTabsAsCharacters)
{
    const EditedText edited(Formatted(u"one\vtwo\tthree"), u"one\vtwo\t", u"x\v\t");

    EXPECT_EQ(edited.count, 1);
    EXPECT_EQ(edited.Text(), u"x\v\tthree");
}

TEST(BinaryText, IsMadeUpForWhereItsEndHasNoFormat)
{
    const EditedText edited(Formatted(u"a cat").ShortStyles(), u"cat", u"lion");

    EXPECT_EQ(edited.Sizes(), "7x18");
}

TEST(BinaryText, LeavesFieldsAloneAndMovesThem)
{
    const Text text(Sized(u"page ", 18), Field(FieldKind::SlideNumber), Sized(u" of a star ", 18),
                    Field(FieldKind::DateTime));

    EXPECT_EQ(BinaryOnDisk(DeckOf(text)).Find(Location::ShapesAndTextboxes, u"*"), 0);
    EXPECT_EQ(BinaryOnDisk(DeckOf(text)).Find(Location::ShapesAndTextboxes, u"e * o"), 0);
    const EditedText edited(text, u"page", u"sheet no.");
    EXPECT_EQ(edited.Text(), u"sheet no. * of a star *");
    EXPECT_THAT(edited.Atoms(4056), ElementsAre(Long(10)));
    EXPECT_EQ(edited.Atoms(4087).at(0).substr(0, 4), Long(22));
}

TEST(BinaryText, MovesLinksAndBookmarks)
{
    const Link link = LinkTo(u"http://one.example/").Shared();
    const EditedText edited(
        Formatted(u"see here and there").Range(4, 8, link).Range(13, 18, link, true).Bookmark(9, 12, 7), u"see",
        u"look");

    EXPECT_THAT(edited.Atoms(TextInteractiveInfoAtom), ElementsAre(Long(5) + Long(9), Long(14) + Long(19)));
    EXPECT_THAT(edited.Atoms(TextBookmarkAtom), ElementsAre(Long(10) + Long(13) + Long(7)));
}

TEST(BinaryText, GivesALinkToWhatTakesThePlaceOfItsBeginning)
{
    const EditedText edited(Formatted(u"see here now").Range(4, 8, LinkTo(u"http://one.example/")), u"here",
                            u"over yonder");

    EXPECT_THAT(edited.Atoms(TextInteractiveInfoAtom), ElementsAre(Long(4) + Long(15)));
}

TEST(BinaryText, LosesALinkWithItsText)
{
    const EditedText edited(Formatted(u"see here now").Range(4, 8, LinkTo(u"http://one.example/")), u"here ", u"");

    EXPECT_THAT(edited.Atoms(TextInteractiveInfoAtom), IsEmpty());
    EXPECT_THAT(edited.Atoms(InteractiveInfo), IsEmpty());
    EXPECT_THAT(AddressesOf(*edited.Deck().Open()), IsEmpty());
    EXPECT_THAT(edited.Deck().Stream("PowerPoint Document"), Not(HasSubstr(Wide(u"one."))));
}

TEST(BinaryText, CutsALinkThatReachesBeyondTheText)
{
    const EditedText edited(Formatted(u"see here").Range(4, 400, LinkTo(u"http://one.example/")), u"see", u"look");

    EXPECT_THAT(AddressesOf(*edited.Deck().Open()), ElementsAre("http://one.example/"));
}

TEST(BinaryText, OfTitlesAndBodiesIsChangedInTheOutline)
{
    const BinaryOnDisk deck(BinaryDeck()
                                .Slide(Title(Formatted(u"a cat")), Body(Formatted(u"one cat\rtwo cats")))
                                .Slide(Title(Formatted(u"no cat"))));

    EXPECT_EQ(deck.Replace(Location::Slides, u"cat", u"elephant"), 4);

    EXPECT_THAT(deck.Texts(), AllOf(Contains("slide 1 shape 1 (14): a elephant"),
                                    Contains("slide 1 shape 2 (14): one elephant\rtwo elephants"),
                                    Contains("slide 2 shape 1 (14): no elephant")));
    EXPECT_THAT(TextFaults(LiveObjects(deck.Bytes()).at(BinaryDeck::DocumentId)), IsEmpty());
}

TEST(BinaryText, CountsOverlapsAndDeletionsAsInPackages)
{
    EXPECT_EQ(BinaryOnDisk(DeckOf(Formatted(u"aaa"))).Find(Location::ShapesAndTextboxes, u"aa"), 2);
    const EditedText deleted(Formatted(u"catcat"), u"cat", u"");
    EXPECT_EQ(deleted.count, 1);
    EXPECT_EQ(deleted.Text(), u"cat");
    const EditedText doubled(Formatted(u"aaaa"), u"aa", u"b");
    EXPECT_EQ(doubled.count, 2);
    EXPECT_EQ(doubled.Text(), u"bb");
}

TEST(BinaryText, ReplacedByItselfIsNoEdit)
{
    const BinaryOnDisk deck(DeckOf(Formatted(u"a cat")));
    const std::string before = deck.Bytes();

    EXPECT_EQ(deck.Replace(Location::ShapesAndTextboxes, u"cat", u"cat"), 1);

    EXPECT_EQ(deck.Bytes(), before);
}

TEST(BinaryText, ComesBackAsItWas)
{
    const BinaryOnDisk deck(DeckOf(Text(Sized(u"a ca", 20), Sized(u"t and a cat", 30))));
    const std::string before = deck.Stream("PowerPoint Document");

    deck.Replace(Location::ShapesAndTextboxes, u"and", u"or maybe");
    EXPECT_NE(deck.Stream("PowerPoint Document"), before);
    deck.Replace(Location::ShapesAndTextboxes, u"or maybe", u"and");

    EXPECT_EQ(deck.Stream("PowerPoint Document"), before);
}

TEST(BinaryLinkAddresses, AreChangedWhereTheyStand)
{
    const BinaryOnDisk deck(DeckOf(Formatted(u"here")
                                       .Range(0, 2, LinkTo(u"http://one.example/"))
                                       .Range(2, 4, LinkTo(u"http://two.example/").Friendly(u"A name"))));

    EXPECT_EQ(deck.Replace(Location::HyperlinkAddresses, u"example", u"test"), 2);

    EXPECT_THAT(AddressesOf(*deck.Open()), ElementsAre("http://one.test/", "http://two.test/"));
    std::string stream = deck.Stream("PowerPoint Document");
    std::erase(stream, '\0');
    EXPECT_THAT(stream, AllOf(HasSubstr("A name"), Not(HasSubstr("example"))));
}

TEST(BinaryLinkAddresses, ThatOthersShareAreParted)
{
    const Link link = LinkTo(u"http://one.example/").Shared();
    const BinaryOnDisk deck(DeckOf(Formatted(u"here there").Range(0, 4, link).Range(5, 10, link)));

    deck.Change([](powerpoint::Presentation& presentation) {
        HyperlinksOf(presentation)[0]->PutAddress(u"http://other.example/");
    });

    EXPECT_THAT(AddressesOf(*deck.Open()), ElementsAre("http://other.example/", "http://one.example/"));
}

TEST(BinaryLinkAddresses, ThatAreEmptyRemoveTheLink)
{
    const BinaryOnDisk deck(DeckOf(Formatted(u"here there")
                                       .Range(0, 4, LinkTo(u"http://one.example/"))
                                       .Range(5, 10, LinkTo(u"http://two.example/").Location(u"256,1,Title"))));

    deck.Change([](powerpoint::Presentation& presentation) {
        for (const auto& link : HyperlinksOf(presentation))
            link->PutAddress(u"");
    });

    EXPECT_THAT(AddressesOf(*deck.Open()), ElementsAre(""));
}

TEST(BinaryLinkAddresses, OfJumpsInTheShowAreNone)
{
    // A jump to the next slide names no record as a rule, and may name one.
    Link next = LinkWithoutAddress();
    next.type = 0;
    const BinaryOnDisk deck(BinaryDeck().Slide(AutoShape(1, u"a").Click(LinkToSlide(1)).Hover(next),
                                               AutoShape(1, u"a").Click(LinkWithoutAddress().Action(1)),
                                               AutoShape(1, u"a").Click(JumpTo(1))));

    EXPECT_THAT(AddressesOf(*deck.Open()), ElementsAre(""));
}

TEST(BinaryLinkAddresses, OfMembersOfGroupsCount)
{
    const BinaryOnDisk deck(BinaryDeck().Slide(Group(AutoShape(1, u"a").Click(LinkTo(u"http://one.example/")))));

    EXPECT_THAT(AddressesOf(*deck.Open()), ElementsAre("http://one.example/"));
}

TEST(BinaryLinkAddresses, ThatAreTooLongAreLeftWithAWarning)
{
    const BinaryOnDisk deck(DeckOf(Formatted(u"here").Range(0, 4, LinkTo(u"http://one.example/"))));
    const std::string before = deck.Bytes();

    deck.Replace(Location::HyperlinkAddresses, u"one", String(3000, u'x'));

    EXPECT_EQ(deck.Bytes(), before);
}

}  // namespace
}  // namespace tessarine::test::ppt
