#include "DeckOnDisk.h"
#include "engine/SearchFunctions.h"
#include "model/Project.h"
#include "support/Fixtures.h"
#include "support/WarningRecorder.h"

namespace tessarine::test
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

const std::string links1 = "ppt/slides/_rels/slide1.xml.rels";

Shape Linked(Hyperlink link)
{
    return TextBox(Paragraph(TextRun(u"link").Click(std::move(link))));
}

void PutAddress(powerpoint::Presentation& presentation, std::size_t link, const String& address)
{
    HyperlinksOf(presentation).at(link - 1)->PutAddress(address);
}

/// How often a text stands in another.
std::size_t CountIn(const std::string& text, const std::string& what)
{
    std::size_t count = 0;
    for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1))
        ++count;
    return count;
}

TEST(Hyperlinks, HoldLinksFilesPresentationsAndJumpsAndNoOtherActions)
{
    const DeckOnDisk deck(fixtures::Links());

    EXPECT_THAT(AddressesOf(*deck.Open()),
                ElementsAre("https://www.fabrikam.com/a?b=1&c=%26%2F",
                            "mailto:sales@fabrikam.com?subject=Fabrikam%20offer&cc=a@b", "C:\\Fabrikam\\A B.docx",
                            "\\\\server\\Fabrikam\\a.xlsx", "..\\Fabrikam\\a b.docx", "other Fabrikam.pptx", "", "",
                            "http://[fabrikam"));
}

TEST(Hyperlinks, StandInTheOrderOfShapesAndTexts)
{
    const DeckOnDisk deck(fixtures::Links());

    EXPECT_THAT(AddressesOf(*deck.Open(), 2),
                ElementsAre("http://fabrikam.com/picture", "http://fabrikam.com/hover", "http://fabrikam.com/shared",
                            "http://fabrikam.com/text-hover", "http://fabrikam.com/shared", "http://fabrikam.com/group",
                            "http://fabrikam.com/deep", "http://fabrikam.com/cell", "http://fabrikam.com/line",
                            "http://fabrikam.com/chart"));
}

TEST(Hyperlinks, OfOneRunAreItsClickThenItsHover)
{
    const DeckOnDisk deck(
        Deck().Slide(TextBox(Paragraph(TextRun(u"x").Click(LinkTo(u"http://click")).Hover(LinkTo(u"http://hover"))))
                         .Click(LinkTo(u"http://shape-click"))
                         .Hover(LinkTo(u"http://shape-hover"))));

    EXPECT_THAT(AddressesOf(*deck.Open()),
                ElementsAre("http://shape-click", "http://shape-hover", "http://click", "http://hover"));
}

TEST(Hyperlinks, MergeNeighboursWithEqualTargetsOnly)
{
    const auto shared = [] { return LinkTo(u"http://a").Shared(); };
    const DeckOnDisk deck(
        Deck().Slide(TextBox(Paragraph(TextRun(u"1").Click(shared()), TextRun(u"2").Bold().Click(shared()), LineBreak(),
                                       TextRun(u"3").Click(shared()), TextRun(u"4").Click(shared().Tooltip(u"tip")),
                                       u"between", TextRun(u"5").Click(shared())),
                             Paragraph(TextRun(u"6").Click(shared())))));

    EXPECT_EQ(AddressesOf(*deck.Open()).size(), 4u);
}

TEST(Hyperlinks, ReachFieldsAndLineBreaks)
{
    const DeckOnDisk deck(
        Deck().Slide(TextBox(Paragraph(Field("slidenum", TextRun(u"1").Click(LinkTo(u"http://field"))),
                                       LineBreak(TextRun(u"").Click(LinkTo(u"http://break")))))));

    EXPECT_THAT(AddressesOf(*deck.Open()), ElementsAre("http://field", "http://break"));
}

TEST(Hyperlinks, OfLayoutsMastersAndNotesAreNotTheSlides)
{
    const DeckOnDisk deck(Deck()
                              .Master(SlideMaster(u"Theme", Linked(LinkTo(u"http://master")),
                                                  Layout("obj", Linked(LinkTo(u"http://layout")))))
                              .Slide(Title(u"x"), NotesPage(Linked(LinkTo(u"http://notes")))));

    EXPECT_THAT(AddressesOf(*deck.Open()), IsEmpty());
}

TEST(Hyperlinks, OfAChoiceComeFromTheBranchThatIsShown)
{
    const DeckOnDisk deck(
        Deck().Slide(Alternate("p14", "http://schemas.microsoft.com/office/powerpoint/2010/main",
                               Linked(LinkTo(u"http://choice")), Linked(LinkTo(u"http://fallback")))));

    EXPECT_THAT(AddressesOf(*deck.Open()), ElementsAre("http://choice"));
}

TEST(HyperlinkPut, OfEveryAddressAsItIsChangesNoByte)
{
    const DeckOnDisk deck(fixtures::Links());

    deck.Change([](auto& presentation) {
        for (const std::size_t slide : {1u, 2u})
            for (const auto& link : HyperlinksOf(presentation, slide))
                link->PutAddress(link->Address());
    });

    EXPECT_TRUE(SameBytes(PackageReader(fixtures::Links()), deck.Package()));
}

TEST(HyperlinkPut, ChangesTheBytesOfTheTargetAlone)
{
    const DeckOnDisk deck(fixtures::Links());
    const PackageReader before = deck.Package();

    deck.Change([](auto& presentation) {
        PutAddress(presentation, 1, u"https://www.contoso.com/a?b=1&c=%26%2F");
        PutAddress(presentation, 3, u"C:\\Contoso\\A B.docx");
    });

    const PackageReader after = deck.Package();
    EXPECT_THAT(EntriesThatDiffer(before, after), ElementsAre(links1));
    EXPECT_EQ(LinksOf(after, 1)[0], u"https://www.contoso.com/a?b=1&c=%26%2F#top");
    EXPECT_EQ(LinksOf(after, 1)[2], u"file:///C:\\Contoso\\A%20B.docx");
    EXPECT_THAT(UnexpectedDifferences(before, after, {{u"Fabrikam", u"contoso"}, {u"Fabrikam", u"Contoso"}}),
                IsEmpty());
}

TEST(HyperlinkPut, OnASharedRelationshipLeavesTheOtherLinks)
{
    const DeckOnDisk deck(fixtures::Links());

    deck.Change(
        [](auto& presentation) { HyperlinksOf(presentation, 2).at(2)->PutAddress(u"http://contoso.com/merged"); });

    EXPECT_THAT(AddressesOf(*deck.Open(), 2),
                ElementsAre("http://fabrikam.com/picture", "http://fabrikam.com/hover", "http://contoso.com/merged",
                            "http://fabrikam.com/text-hover", "http://fabrikam.com/shared", "http://fabrikam.com/group",
                            "http://fabrikam.com/deep", "http://fabrikam.com/cell", "http://fabrikam.com/line",
                            "http://fabrikam.com/chart"));
    EXPECT_THAT(ValidityFaults(deck.Package()), IsEmpty());
}

TEST(HyperlinkPut, AddsOnlyTheRelationshipsThatSharingLinksNeed)
{
    const auto shared = [] { return Linked(LinkTo(u"http://a").Shared()); };
    const DeckOnDisk deck(Deck().Slide(shared(), shared(), shared()));
    const std::size_t before = deck.Package().Relationships(slide1).size();

    deck.Change([](auto& presentation) {
        const auto links = HyperlinksOf(presentation);
        for (std::size_t i = 0; i < links.size(); ++i)
            links[i]->PutAddress(u"http://b" + FromUtf8(std::to_string(i)));
    });

    EXPECT_THAT(AddressesOf(*deck.Open()), ElementsAre("http://b0", "http://b1", "http://b2"));
    EXPECT_EQ(deck.Package().Relationships(slide1).size(), before + 2);
}

TEST(HyperlinkPut, KeepsTooltipSoundAndExtensions)
{
    const DeckOnDisk deck(fixtures::Links());
    const std::string before = deck.Package().Entry("ppt/slides/slide2.xml").bytes;

    deck.Change([](auto& presentation) { HyperlinksOf(presentation, 2).at(0)->PutAddress(u"http://contoso.com/p"); });

    EXPECT_TRUE(deck.Package().Entry("ppt/slides/slide2.xml").bytes == before);
}

TEST(HyperlinkPut, PutsAndTakesTheActionOfAFile)
{
    const DeckOnDisk deck(Deck().Slide(Linked(LinkTo(u"http://a"))));
    const std::string before = deck.Package().Entry(slide1).bytes;

    deck.Change([](auto& presentation) { PutAddress(presentation, 1, u"C:\\a.docx"); });
    const std::string asFile = deck.Package().Entry(slide1).bytes;
    deck.Change([](auto& presentation) { PutAddress(presentation, 1, u"http://a"); });

    EXPECT_EQ(CountIn(asFile, "action=\"ppaction://hlinkfile\""), 1u);
    EXPECT_EQ(deck.Package().Entry(slide1).bytes, before);
    EXPECT_THAT(AddressesOf(*deck.Open()), ElementsAre("http://a"));
}

TEST(HyperlinkPut, OverAFragmentAloneGivesAFileItsAction)
{
    const DeckOnDisk deck(Deck().Slide(Linked(LinkTo(u"#Slide 3"))));

    deck.Change([](auto& presentation) { PutAddress(presentation, 1, u"a.pptx"); });

    EXPECT_EQ(LinksOf(deck.Package(), 1), std::vector<String>{u"a.pptx#Slide 3"});
    EXPECT_EQ(CountIn(deck.Package().Entry(slide1).bytes, "action=\"ppaction://hlinkfile\""), 1u);
}

TEST(HyperlinkPut, OfNothingTakesTheLinkAndItsRelationshipAway)
{
    const DeckOnDisk deck(Deck().Slide(Linked(LinkTo(u"http://a")), Linked(LinkTo(u"http://b"))));

    deck.Change([](auto& presentation) {
        PutAddress(presentation, 1, u"");
        EXPECT_THAT(AddressesOf(presentation), ElementsAre("http://b"));
    });

    EXPECT_THAT(AddressesOf(*deck.Open()), ElementsAre("http://b"));
    EXPECT_EQ(deck.Package().Entry(links1).bytes.find("http://a"), std::string::npos);
    EXPECT_EQ(CountIn(deck.Package().Entry(slide1).bytes, "<a:hlinkClick"), 1u);
    EXPECT_THAT(ValidityFaults(deck.Package()), IsEmpty());
}

TEST(HyperlinkPut, OfNothingKeepsALinkToAPlace)
{
    const DeckOnDisk deck(Deck().Slide(Linked(LinkTo(u"http://a/#top"))));

    deck.Change([](auto& presentation) { PutAddress(presentation, 1, u""); });

    EXPECT_EQ(LinksOf(deck.Package(), 1), std::vector<String>{u"#top"});
}

TEST(HyperlinkPut, OfNothingKeepsARelationshipThatAnotherLinkUses)
{
    const auto shared = [] { return Linked(LinkTo(u"http://a").Shared()); };
    const DeckOnDisk deck(Deck().Slide(shared(), shared()));

    deck.Change([](auto& presentation) { PutAddress(presentation, 1, u""); });

    EXPECT_THAT(AddressesOf(*deck.Open()), ElementsAre("http://a"));
}

TEST(HyperlinkPut, ReachesWhatIsNoUrl)
{
    const DeckOnDisk deck(Deck().Slide(Linked(LinkWithoutTarget().InvalidUrl(u"http://[a&b"))));

    deck.Change([](auto& presentation) { PutAddress(presentation, 1, u"http://[c&d"); });

    EXPECT_THAT(AddressesOf(*deck.Open()), ElementsAre("http://[c&d"));
    EXPECT_EQ(CountIn(deck.Package().Entry(slide1).bytes, "invalidUrl=\"http://[c&amp;d\""), 1u);
}

TEST(HyperlinkPut, OfNothingTakesALinkThatIsNoUrlAway)
{
    const DeckOnDisk deck(Deck().Slide(Linked(LinkWithoutTarget().InvalidUrl(u"http://[a"))));

    deck.Change([](auto& presentation) { PutAddress(presentation, 1, u""); });

    EXPECT_EQ(CountIn(deck.Package().Entry(slide1).bytes, "<a:hlinkClick"), 0u);
    EXPECT_THAT(ValidityFaults(deck.Package()), IsEmpty());
}

TEST(HyperlinkPut, OfMoreThanTheLimitChangesNothingAndWarns)
{
    const String tooLong = u"http://" + String(2083 - 6, u'a');
    const DeckOnDisk deck(
        Deck().Slide().Slide(Linked(LinkTo(u"http://a")), Linked(LinkWithoutTarget().InvalidUrl(u"http://[a"))));
    const std::string before = deck.Bytes();
    const WarningRecorder warnings;

    deck.Change([&](auto& presentation) {
        for (const auto& link : HyperlinksOf(presentation, 2))
            link->PutAddress(tooLong);
    });

    EXPECT_EQ(deck.Bytes(), before);
    const std::string reason =
        ": left as it is. The new address is too long: it has 2084 characters, and PowerPoint takes at most 2083";
    EXPECT_THAT(warnings.Warnings(), ElementsAre(Pair(deck.Path(), "slide 2, hyperlink to \"http://a\"" + reason),
                                                 Pair(deck.Path(), "slide 2, hyperlink to \"http://[a\"" + reason)));
}

TEST(HyperlinkPut, OfMoreThanTheLimitKeepsNoOtherLinkFromItsPlace)
{
    const DeckOnDisk deck(Deck().Slide(Linked(LinkTo(u"http://a")), Linked(LinkTo(u"http://b"))));
    const WarningRecorder warnings;

    deck.Change([](auto& presentation) {
        PutAddress(presentation, 1, String(3000, u'c'));
        PutAddress(presentation, 2, u"http://d");
    });

    EXPECT_THAT(AddressesOf(*deck.Open()), ElementsAre("http://a", "http://d"));
    EXPECT_EQ(warnings.Warnings().size(), 1u);
}

TEST(HyperlinkPut, OnAJumpToASlideIsRefused)
{
    const DeckOnDisk deck(Deck().Slide(Linked(LinkToSlide(1))));
    const auto presentation = deck.Open();

    PutAddress(*presentation, 1, u"");
    EXPECT_NE(RaisedBy([&] { PutAddress(*presentation, 1, u"http://a"); }).number, 0);

    presentation->Save();
    EXPECT_EQ(deck.Bytes(), Deck().Slide(Linked(LinkToSlide(1))).Bytes());
}

/// The id of the one hyperlink relationship of slide 1.
std::string LinkIdOf(const Deck& deck)
{
    for (const auto& relationship : PackageReader(deck).Relationships(slide1))
        if (relationship.type.ends_with("/hyperlink"))
            return relationship.id;
    throw std::logic_error("the slide has no link");
}

TEST(HyperlinkPut, SeesAnIdThatIsWrittenWithReferences)
{
    Deck deck = Deck().Slide(Linked(LinkTo(u"http://a").Shared()), Linked(LinkTo(u"http://a").Shared().Tooltip(u"t")));
    const std::string id = LinkIdOf(deck);
    const std::string asReferences = "&#" + std::to_string(id.front()) + ";" + id.substr(1);
    deck.Edit(slide1, "r:id=\"" + id + "\" tooltip", "r:id=\"" + asReferences + "\" tooltip");
    const DeckOnDisk onDisk(deck);

    onDisk.Change([](auto& presentation) { PutAddress(presentation, 1, u"http://b"); });

    EXPECT_THAT(AddressesOf(*onDisk.Open()), ElementsAre("http://b", "http://a"));
}

TEST(HyperlinkPut, GivesNoIdThatABrokenLinkNames)
{
    const auto shared = [] { return Linked(LinkTo(u"http://a").Shared()); };
    Deck deck = Deck().Slide(shared(), shared(), Linked(LinkTo(u"http://gone")));
    // The next one that an added relationship would get.
    deck.Edit(slide1, "r:id=\"rId3\"", "r:id=\"rId4\"");
    const DeckOnDisk onDisk(deck);

    onDisk.Change([](auto& presentation) { PutAddress(presentation, 1, u"http://b"); });

    EXPECT_THAT(AddressesOf(*onDisk.Open()), ElementsAre("http://b", "http://a", ""));
}

TEST(HyperlinkPut, TakesNoOtherAttributeForAUseOfTheRelationship)
{
    Deck deck = Deck().Slide(Linked(LinkTo(u"http://a")), Linked(LinkTo(u"http://b")));
    const std::string id = LinkIdOf(deck);
    deck.Edit(slide1, "<p:cSld>", "<p:cSld name=\"" + id + "\">");
    const DeckOnDisk onDisk(deck);
    const std::size_t before = onDisk.Package().Relationships(slide1).size();

    onDisk.Change([](auto& presentation) { PutAddress(presentation, 1, u"http://c"); });

    EXPECT_THAT(AddressesOf(*onDisk.Open()), ElementsAre("http://c", "http://b"));
    EXPECT_EQ(onDisk.Package().Relationships(slide1).size(), before);
}

TEST(HyperlinkPut, FindsTheIdAfterATooltipThatLooksLikeOne)
{
    Deck deck = Deck().Slide(Linked(LinkTo(u"http://a").Shared()), Linked(LinkTo(u"http://a").Shared()));
    const std::string id = LinkIdOf(deck);
    deck.Edit(slide1, "<a:hlinkClick r:id=", "<a:hlinkClick tooltip=\"the :id= of it\" r:id=");
    const DeckOnDisk onDisk(deck);

    onDisk.Change([](auto& presentation) { PutAddress(presentation, 1, u"http://b"); });

    EXPECT_THAT(AddressesOf(*onDisk.Open()), ElementsAre("http://b", "http://a"));
    EXPECT_EQ(CountIn(onDisk.Package().Entry(slide1).bytes, "tooltip=\"the :id= of it\" r:id=\"" + id + "\""), 1u);
}

TEST(HyperlinkPut, MixesWithEditsOfTheTextInAnyOrder)
{
    const DeckOnDisk deck(Deck().Slide(
        TextBox(Paragraph(u"Fabrikam ", TextRun(u"Fabrikam").Click(LinkTo(u"http://a").Shared()), u" Fabrikam")),
        Linked(LinkTo(u"http://a").Shared()), Linked(LinkTo(u"http://b"))));

    deck.Change([](auto& presentation) {
        PutAddress(presentation, 1, u"http://link-one");
        ReplaceInShape(presentation, 1, 1, u"Fabrikam", u"Contoso Limited");
        PutAddress(presentation, 2, u"C:\\two.docx");
        ReplaceInShape(presentation, 1, 1, u"Fabrikam", u"Tailspin");
        PutAddress(presentation, 3, u"");
        ReplaceInShape(presentation, 1, 3, u"link", u"plain");
        PutAddress(presentation, 1, u"http://link-one/again");
    });

    const PackageReader after = deck.Package();
    EXPECT_THAT(TextsOf(after, 1), ElementsAre(u"Contoso Limited Tailspin Fabrikam", u"link", u"plain"));
    EXPECT_THAT(LinksOf(after, 1), ElementsAre(u"http://link-one/again", u"file:///C:\\two.docx"));
    EXPECT_THAT(ValidityFaults(after), IsEmpty());
}

TEST(HyperlinkPut, OnALinkWhoseTextIsGoneIsAFailure)
{
    const DeckOnDisk deck(Deck().Slide(TextBox(Paragraph(u"x ", TextRun(u"gone").Click(LinkTo(u"http://a"))))));
    const auto presentation = deck.Open();
    const auto link = HyperlinksOf(*presentation).at(0);
    ReplaceInShape(*presentation, 1, 1, u"x gone", u"x");
    ASSERT_THAT(HyperlinksOf(*presentation), IsEmpty());

    EXPECT_NE(RaisedBy([&] { link->Address(); }).number, 0);
    EXPECT_NE(RaisedBy([&] { link->PutAddress(u"http://b"); }).number, 0);

    presentation->Save();
    EXPECT_THAT(ValidityFaults(deck.Package()), IsEmpty());
}

const Deck oneLinkedRun = Deck().Slide(TextBox(Paragraph(TextRun(u"AMIDB").Click(LinkTo(u"http://one/")))));

/// Retargets the link, divides it by a paragraph break in its text, and gives its first part an address.
void DivideLink(const DeckOnDisk& deck, const String& addressOfFirstPart)
{
    deck.Change([&](auto& presentation) {
        PutAddress(presentation, 1, u"http://two/");
        ReplaceInShape(presentation, 1, 1, u"MID", u"x\ry");
        PutAddress(presentation, 1, addressOfFirstPart);
    });
}

TEST(HyperlinkPut, OfOnePartOfADividedLinkLeavesTheOther)
{
    const DeckOnDisk deck(oneLinkedRun);

    DivideLink(deck, u"http://three/");

    EXPECT_THAT(AddressesOf(*deck.Open()), ElementsAre("http://three/", "http://two/"));
}

TEST(HyperlinkPut, RemovesOnePartOfADividedLink)
{
    const DeckOnDisk deck(oneLinkedRun);

    DivideLink(deck, u"");

    EXPECT_THAT(AddressesOf(*deck.Open()), ElementsAre("http://two/"));
    EXPECT_THAT(ValidityFaults(deck.Package()), IsEmpty());
}

/// Runs the location over a deck and gives its count.
std::int32_t Search(powerpoint::Presentation& presentation, const String& find, const String& with, bool findOnly)
{
    const ProjectOwner project;
    SearchFunctions engine;
    engine.xPresentation = {&presentation, [](auto*) {}};
    engine.mItem = std::make_shared<FindAndReplaceItem>();
    engine.mItem->FindWhat = find;
    engine.mItem->ReplaceWith = with;
    engine.mIsFindOnly = findOnly;
    engine.IsRequiredCount = true;
    return engine.Hyperlinks();
}

TEST(HyperlinkLocation, FindsWithoutChangingAnything)
{
    const DeckOnDisk deck(fixtures::Links());
    std::int32_t count = 0;

    deck.Change([&](auto& presentation) { count = Search(presentation, u"fabrikam", u"", true); });

    EXPECT_EQ(count, 18);
    EXPECT_TRUE(SameBytes(PackageReader(fixtures::Links()), deck.Package()));
}

TEST(HyperlinkLocation, ReplacesInEveryAddressAndNothingBeside)
{
    const DeckOnDisk deck(fixtures::Links());
    const PackageReader before = deck.Package();

    deck.Change([&](auto& presentation) { Search(presentation, u"fabrikam", u"contoso", false); });

    const PackageReader after = deck.Package();
    EXPECT_THAT(PackagingDifferences(before, after), IsEmpty());
    const auto others = UnexpectedDifferences(before, after, {{u"fabrikam", u"contoso"}});
    ASSERT_EQ(others.size(), 1u);  // the text of the link that is no URL, which stands in the slide itself
    EXPECT_EQ(others[0].entry, slide1);
    std::string expected = before.Entry(slide1).bytes;
    expected.replace(expected.find("http://[fabrikam"), 16, "http://[contoso");
    EXPECT_EQ(after.Entry(slide1).bytes, expected);
    EXPECT_THAT(
        AddressesOf(*deck.Open()),
        ElementsAre("https://www.contoso.com/a?b=1&c=%26%2F", "mailto:sales@contoso.com?subject=contoso%20offer&cc=a@b",
                    "C:\\contoso\\A B.docx", "\\\\server\\contoso\\a.xlsx", "..\\contoso\\a b.docx",
                    "other contoso.pptx", "", "", "http://[contoso"));
    EXPECT_EQ(LinksOf(after, 1)[6], u"#Fabrikam");
    EXPECT_THAT(ValidityFaults(after), testing::ContainerEq(ValidityFaults(before)));
}

}  // namespace
}  // namespace tessarine::test
