#include "support/PackageCompare.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tessarine::test
{
namespace
{

using testing::ElementsAre;
using testing::Field;
using testing::HasSubstr;
using testing::IsEmpty;

const std::string Slide1 = "ppt/slides/slide1.xml";
const std::vector<Replacement> FabrikamToContoso = {{u"Fabrikam", u"Contoso"}};

Deck DeckOf(Paragraph paragraph)
{
    return Deck().Slide(TextBox(std::move(paragraph)));
}

std::vector<Difference> Compare(const Deck& before, const Deck& after)
{
    return UnexpectedDifferences(before, after, FabrikamToContoso);
}

TEST(PackageCompare, FindsNothingBetweenEqualPackages)
{
    const auto deck = Deck().Slide(Title(u"Fabrikam"), NotesPage(u"n")).Core("dc:title", u"t");

    EXPECT_THAT(EntriesThatDiffer(deck, deck), IsEmpty());
    EXPECT_TRUE(OnlyTheTextDiffers(deck, deck, {}));
    EXPECT_TRUE(SameBytes(deck, deck));
}

TEST(PackageCompare, AllowsAHitInOneRun)
{
    const auto before = DeckOf(Paragraph(TextRun(u"The Fabrikam GmbH").Bold().Misspelled()));
    const auto after = DeckOf(Paragraph(TextRun(u"The Contoso GmbH").Bold().Dirty(true)));

    EXPECT_THAT(EntriesThatDiffer(before, after), ElementsAre(Slide1));
    EXPECT_TRUE(OnlyTheTextDiffers(before, after, FabrikamToContoso));
}

TEST(PackageCompare, AllowsAHitOverSeveralRuns)
{
    const auto before =
        DeckOf(Paragraph(TextRun(u"The Fab").Bold(), TextRun(u"rik"), TextRun(u"am GmbH").Size(12), TextRun(u"!")));
    const auto after = DeckOf(Paragraph(TextRun(u"The Contoso").Bold(), TextRun(u" GmbH").Size(12), TextRun(u"!")));

    EXPECT_THAT(Compare(before, after), IsEmpty());
}

TEST(PackageCompare, AllowsRunsWithoutPropertiesToBeTakenTogether)
{
    const auto before = DeckOf(Paragraph(u"Fab", u"rik", u"am x"));
    const auto after = DeckOf(Paragraph(u"Contoso", u" x"));

    EXPECT_THAT(Compare(before, after), IsEmpty());
}

TEST(PackageCompare, AllowsALastRunToBecomeTheParagraphsEnd)
{
    const auto before = DeckOf(Paragraph(TextRun(u"Fabrikam").Size(40)));
    const auto after = DeckOf(Paragraph().EndProperties(TextRun(u"").Size(40)));

    EXPECT_THAT(UnexpectedDifferences(before, after, {{u"fabrikam", u""}}), IsEmpty());
    EXPECT_THAT(UnexpectedDifferences(before, after, {{u"fabrikam", u"", true}}), testing::SizeIs(1));
}

TEST(PackageCompare, ReportsTextThatNoReplacementMakes)
{
    const auto differences = Compare(DeckOf(Paragraph(u"Fabrikam")), DeckOf(Paragraph(u"Litware")));

    ASSERT_THAT(differences, testing::SizeIs(1));
    EXPECT_EQ(differences[0].entry, Slide1);
    EXPECT_THAT(differences[0].reason, HasSubstr("makes \"Litware\" of \"Fabrikam\""));
}

TEST(PackageCompare, ReportsFormattingOfAnotherRun)
{
    const auto before = DeckOf(Paragraph(TextRun(u"Fab").Bold(), TextRun(u"rikam")));

    EXPECT_THAT(Compare(before, DeckOf(Paragraph(TextRun(u"Contoso").Bold()))), IsEmpty());
    EXPECT_THAT(Compare(before, DeckOf(Paragraph(TextRun(u"Contoso")))), testing::SizeIs(1));
    EXPECT_THAT(Compare(before, DeckOf(Paragraph(TextRun(u"Con").Bold(), TextRun(u"toso")))), testing::SizeIs(1));
}

TEST(PackageCompare, ReportsRunsThatWereMergedOrSplitWithoutNeed)
{
    const auto before = DeckOf(Paragraph(u"Fabrikam ", u"a", u"b"));

    EXPECT_THAT(Compare(before, DeckOf(Paragraph(u"Contoso ", u"ab"))), testing::SizeIs(1));
    EXPECT_THAT(Compare(before, DeckOf(Paragraph(u"Contoso", u" ", u"a", u"b"))), testing::Not(IsEmpty()));
}

TEST(PackageCompare, ReportsOffsetAndFortyBytesOfBothSides)
{
    const auto before = DeckOf(Paragraph(TextRun(u"x").Language("en-US"), TextRun(u"Fabrikam")));
    const auto after = DeckOf(Paragraph(TextRun(u"x").Language("de-DE"), TextRun(u"Contoso")));

    const auto differences = Compare(before, after);

    ASSERT_THAT(differences, testing::SizeIs(1));
    EXPECT_EQ(differences[0].offset, before.EntryBytes(Slide1).find("en-US"));
    EXPECT_EQ(differences[0].before, "en-US\"/><a:t>x</a:t></a:r><a:r><a:t>Fabr");
    EXPECT_EQ(differences[0].after, "de-DE\"/><a:t>x</a:t></a:r><a:r><a:t>Cont");
    EXPECT_THAT(testing::PrintToString(differences[0]), HasSubstr(Slide1 + " at byte "));
}

TEST(PackageCompare, ReportsOtherSpellingsOfTheSameXml)
{
    const auto before = DeckOf(Paragraph(RawRun("&#228; Fabrikam &quot;x&quot;")));

    EXPECT_THAT(Compare(before, DeckOf(Paragraph(RawRun("&#228; Contoso &quot;x&quot;")))), IsEmpty());
    EXPECT_THAT(Compare(before, DeckOf(Paragraph(RawRun("ä Contoso &quot;x&quot;")))), testing::SizeIs(1));
    EXPECT_THAT(Compare(before, DeckOf(Paragraph(RawRun("&#228; Contoso \"x\"")))), testing::SizeIs(1));
}

TEST(PackageCompare, ReportsMarkupOutsideTheText)
{
    const auto before = DeckOf(Paragraph(u"Fabrikam"));
    const auto edited = [&](const char* from, const char* to) {
        return Compare(before, Deck(before).Edit(Slide1, "Fabrikam", "Contoso").Edit(Slide1, from, to));
    };

    EXPECT_THAT(edited("standalone=\"yes\"", "standalone='yes'"), testing::SizeIs(1));
    EXPECT_THAT(edited("<p:cNvPr id=\"2\"", "<p:cNvPr  id=\"2\""), testing::SizeIs(1));
    EXPECT_THAT(edited("<a:bodyPr/>", "<a:bodyPr></a:bodyPr>"), testing::SizeIs(1));
    EXPECT_THAT(edited("</p:sld>", "</p:sld>\n"), testing::SizeIs(1));
    EXPECT_THAT(edited("<a:p>", "<a:p>\n"), testing::SizeIs(1));
    EXPECT_THAT(edited("</p:spTree>", "<p:extLst/></p:spTree>"), testing::SizeIs(1));
}

TEST(PackageCompare, ComparesHitsOnParagraphEndsByTextAlone)
{
    const auto before = Deck().Slide(TextBox(u"Fabrikam\nGmbH"));
    const auto after = Deck().Slide(TextBox(u"Contoso"));

    EXPECT_THAT(UnexpectedDifferences(before, after, {{u"Fabrikam\rGmbH", u"Contoso"}}), IsEmpty());
    EXPECT_THAT(UnexpectedDifferences(before, after, {{u"Fabrikam\rGmb", u"Contoso"}}), testing::SizeIs(1));
}

TEST(PackageCompare, ComparesHeadersAndFootersByTextAlone)
{
    const auto before = Deck().Slide(Footer(Paragraph(TextRun(u"Fab").Bold(), u"rikam ", TextRun(u"2024").Italic())));

    EXPECT_THAT(Compare(before, Deck().Slide(Footer(Paragraph(TextRun(u"Contoso 2024").Bold())))), IsEmpty());
    EXPECT_THAT(Compare(before, Deck().Slide(Footer(Paragraph(TextRun(u"Contoso 2025").Bold())))), testing::SizeIs(1));
}

TEST(PackageCompare, AllowsTargetsOfRelationships)
{
    const auto with = [](String target) { return Deck().Slide(Picture().Click(LinkTo(std::move(target)))); };
    const auto before = with(u"file:///C:\\Fabrikam%20Ltd\\a.docx");

    EXPECT_THAT(Compare(before, with(u"file:///C:\\Contoso%20Ltd\\a.docx")), IsEmpty());
    EXPECT_THAT(UnexpectedDifferences(before, with(u"file:///C:\\New%20Co\\a.docx"), {{u"Fabrikam Ltd", u"New Co"}}),
                IsEmpty());
    EXPECT_THAT(Compare(before, with(u"file:///C:\\Litware%20Ltd\\a.docx")),
                ElementsAre(Field(&Difference::entry, "ppt/slides/_rels/slide1.xml.rels")));
}

TEST(PackageCompare, AllowsLinksToStopSharingARelationship)
{
    const auto linked = [](Hyperlink first, Hyperlink second) {
        return Deck().Slide(TextBox(Paragraph(TextRun(u"a").Click(std::move(first)))),
                            TextBox(Paragraph(TextRun(u"b").Click(std::move(second)))));
    };
    const auto before = linked(LinkTo(u"http://fabrikam").Shared(), LinkTo(u"http://fabrikam").Shared());

    EXPECT_THAT(Compare(before, linked(LinkTo(u"http://fabrikam"), LinkTo(u"http://Contoso"))), IsEmpty());
    EXPECT_THAT(Compare(before, linked(LinkTo(u"http://fabrikam"), LinkTo(u"http://litware"))),
                ElementsAre(Field(&Difference::entry, "ppt/slides/_rels/slide1.xml.rels")));
}

TEST(PackageCompare, AllowsValuesOfProperties)
{
    const auto with = [](String title, String company, const std::string& kind, String client) {
        return Deck()
            .Core("dc:title", title)
            .Core("dc:subject", u"s")
            .App("Company", company)
            .Custom(u"C", kind, client);
    };
    const auto before = with(u"Fabrikam", u"Fabrikam AG", "lpstr", u"fabrikam");

    EXPECT_THAT(Compare(before, with(u"Contoso", u"Contoso AG", "lpwstr", u"Contoso")), IsEmpty());
    EXPECT_THAT(Compare(before, with(u"Contoso!", u"Contoso", "lpwstr", u"fabrikam")), testing::SizeIs(3));
}

TEST(PackageCompare, ReportsChangesInEntriesThatNoReplacementReaches)
{
    const auto before = Deck().Slide(Chart());
    const auto after = Deck(before).Edit("ppt/charts/chart1.xml", "Fabrikam", "Contoso");

    const auto differences = Compare(before, after);

    ASSERT_THAT(differences, testing::SizeIs(1));
    EXPECT_THAT(differences[0].before, testing::StartsWith("Fabrikam sales"));
    EXPECT_THAT(differences[0].after, testing::StartsWith("Contoso sales"));
}

TEST(PackageCompare, ReportsLostAndNewEntries)
{
    const auto before = Deck().Slide(Title(u"a"));
    const auto after = Deck(before).Without("ppt/theme/theme1.xml").Entry("new.xml", "<a/>");

    EXPECT_THAT(EntriesThatDiffer(before, after), ElementsAre("ppt/theme/theme1.xml", "new.xml"));
    EXPECT_THAT(Compare(before, after), ElementsAre(Field(&Difference::reason, "the entry is lost"),
                                                    Field(&Difference::reason, "a new entry")));
}

TEST(PackageCompare, ReportsPackaging)
{
    const auto before = Deck().Slide(Title(u"a"));

    EXPECT_THAT(PackagingDifferences(before, Deck(before).Edit(Slide1, "a", "b")), IsEmpty());
    EXPECT_THAT(PackagingDifferences(before, Deck(before).MoveToFront(Slide1)), testing::SizeIs(1));
    EXPECT_THAT(PackagingDifferences(before, Deck(before).Modified(Slide1, MakeDosDateTime(2024, 1, 1))),
                ElementsAre(Field(&Difference::reason, "date and time differ")));
    EXPECT_THAT(PackagingDifferences(before, Deck(before).ExternalAttributes(Slide1, 1)),
                ElementsAre(Field(&Difference::reason, "attributes differ")));
    EXPECT_THAT(PackagingDifferences(before, Deck(before).Extra(Slide1, ExtraField(0xCAFE, ""))), testing::SizeIs(1));
    EXPECT_THAT(PackagingDifferences(before, Deck(before).Store(Slide1)), testing::SizeIs(2));
    EXPECT_THAT(PackagingDifferences(before, Deck(before).Entry("new.xml", "<a/>")),
                ElementsAre(Field(&Difference::reason, "a new entry")));
}

TEST(PackageCompare, SeesThatFilesDifferAroundEqualEntries)
{
    const auto before = Deck().Slide(Title(u"a"));

    const testing::AssertionResult result = SameBytes(before, Deck(before).Comment("c"));

    EXPECT_FALSE(result);
    EXPECT_THAT(result.message(), HasSubstr("the files around them are not"));
}

}  // namespace
}  // namespace tessarine::test
