#include "support/Deck.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/PackageReader.h"

namespace tessarine::test
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

TEST(Deck, IsTheSmallestValidPackageByDefault)
{
    const PackageReader package = Deck();

    EXPECT_THAT(ValidityFaults(package), IsEmpty());
    EXPECT_THAT(package.Names(),
                ElementsAre("[Content_Types].xml", "_rels/.rels", "ppt/presentation.xml",
                            "ppt/_rels/presentation.xml.rels", "ppt/slideMasters/slideMaster1.xml",
                            "ppt/slideMasters/_rels/slideMaster1.xml.rels", "ppt/slideLayouts/slideLayout1.xml",
                            "ppt/slideLayouts/_rels/slideLayout1.xml.rels", "ppt/theme/theme1.xml"));
}

TEST(Deck, GivesTheSameBytesForTheSameCalls)
{
    const auto make = [] { return Deck().Slide(Title(u"Hello"), NotesPage(u"Hi")).Media("ppt/media/a.mp4", 5000, 7); };

    EXPECT_EQ(make().Bytes(), make().Bytes());
}

TEST(Deck, HoldsTheRunsOfASlide)
{
    const auto deck = Deck().Slide(TextBox(Paragraph(TextRun(u"Fab").Bold(), TextRun(u"rikam <&> GmbH").Size(24))));

    EXPECT_THAT(RunsOf(deck, 1), ElementsAre(TextRun(u"Fab").Bold(), TextRun(u"rikam <&> GmbH").Size(24)));
    EXPECT_THAT(TextsOf(deck, 1), ElementsAre(u"Fabrikam <&> GmbH"));
}

TEST(Deck, TellsRunsOfDifferentFormattingApart)
{
    EXPECT_FALSE(TextRun(u"a").Bold() == TextRun(u"a"));
    EXPECT_FALSE(TextRun(u"a").Size(24) == TextRun(u"a").Size(25));
    EXPECT_FALSE(TextRun(u"a") == TextRun(u"b"));
    EXPECT_TRUE(TextRun(u"a").Misspelled() == TextRun(u"a").Dirty(false));
}

TEST(Deck, WritesBreaksFieldsTabsCDataAndControlCharacters)
{
    const auto deck = Deck().Slide(
        TextBox(Paragraph(u"a\tb", LineBreak(), Field("slidenum", u"7"), TextRun(u"<c>").AsCData()), Paragraph(),
                Paragraph(u"x\u000By\U0001F600"), Paragraph(RawRun("d<!-- no -->&#101;<![CDATA[f]]>"))));

    EXPECT_THAT(TextsOf(deck, 1), ElementsAre(u"a\tb\v7<c>\r\rx\u000By\U0001F600\rdef"));
    EXPECT_NE(deck.EntryBytes("ppt/slides/slide1.xml").find("x_x000B_y"), std::string::npos);
}

TEST(Deck, KeepsEveryKindOfShapeValid)
{
    const auto deck = Deck().Slide(
        Title(u"1"), TextBox(u"2"), AutoShape("ellipse", u"3"), Freeform(u"4"), WordArt(u"5"), LineShape(), Connector(),
        Group(TextBox(u"8"), Group(TextBox(u"deep"))), Table({{Paragraph(u"9"), Paragraph(u"b")}}), Chart(), ChartEx(),
        Diagram(u"12"), Picture(), LinkedPicture(u"file:///C:\\a.png"), SvgPicture(), Video(u"file:///C:\\a.mp4"),
        EmbeddedOle(), EmbeddedOle(OleForm::Bare), LinkedOle(u"file:///C:\\a.xlsx!A1"), OleControl(), Ink(),
        ContentApp(), Model3D(), WithoutTextBody(), SlideNumber(u"25"),
        Alternate("p14", "http://schemas.microsoft.com/office/powerpoint/2010/main", TextBox(u"26"), TextBox(u"old")));

    EXPECT_THAT(ValidityFaults(deck), IsEmpty());
    EXPECT_EQ(TextOf(deck, 1, 4), u"4");
    EXPECT_EQ(TextOf(deck, 1, 8), u"");
    EXPECT_EQ(TextOf(deck, 1, 25), u"25");
    EXPECT_EQ(TextOf(deck, 1, 26), u"26");
    EXPECT_THROW(TextOf(deck, 1, 27), std::runtime_error);
    EXPECT_THAT(OleLinksOf(deck, 1), ElementsAre(u"file:///C:\\a.xlsx!A1"));
    EXPECT_THAT(TextsOf(deck, 1), testing::IsSupersetOf({u"8", u"deep", u"9", u"b"}));
}

TEST(Deck, LinksShapesAndTextEverywhere)
{
    const auto deck =
        Deck()
            .Slide(TextBox(Paragraph(TextRun(u"a").Click(LinkTo(u"http://a/?x=1&y=2").Shared()),
                                     TextRun(u"b").Hover(LinkTo(u"http://a/?x=1&y=2").Shared())))
                       .Click(LinkTo(u"mailto:x@example.com").Tooltip(u"\"Write\"")),
                   Group(TextBox(Paragraph(TextRun(u"c").Click(LinkToSlide(2))))),
                   Table({{Paragraph(TextRun(u"d").Click(LinkTo(u"a.docx").Action("ppaction://hlinkfile")))}}))
            .Slide();

    const PackageReader package = deck;

    EXPECT_THAT(ValidityFaults(package), IsEmpty());
    EXPECT_THAT(LinksOf(package, 1), ElementsAre(u"mailto:x@example.com", u"http://a/?x=1&y=2", u"http://a/?x=1&y=2",
                                                 u"slide2.xml", u"a.docx"));
    EXPECT_EQ(package.Relationships("ppt/slides/slide1.xml").size(), 5U);  // the layout, and one shared by two runs
}

TEST(Deck, HasNotesMastersDesignsAndHandouts)
{
    const auto deck = Deck()
                          .Master(SlideMaster(u"One", Title(u"Click"), Layout("title", CenteredTitle(u"Title page")),
                                              Layout("obj", Title(u"Content"))))
                          .Master(SlideMaster(u"Two", Layout("blank")).Preserve())
                          .HandoutMaster(Header(u"Head"), Footer(u"Foot"))
                          .Slide(Title(u"A"), NotesPage(u"Speak slowly"))
                          .Slide(Title(u"B"), OnLayout{.master = 1, .layout = 2}, HiddenSlide());

    const PackageReader package = deck;

    EXPECT_THAT(ValidityFaults(package), IsEmpty());
    EXPECT_THAT(NotesOf(package, 1), ElementsAre(u"Speak slowly"));
    EXPECT_THAT(NotesOf(package, 2), IsEmpty());
    EXPECT_EQ(package.TargetOfType("ppt/slides/slide2.xml", "slideLayout"), "ppt/slideLayouts/slideLayout2.xml");
    EXPECT_THAT(TextsOfPart(package, "ppt/handoutMasters/handoutMaster1.xml"), ElementsAre(u"Head", u"Foot"));
    EXPECT_TRUE(package.Has("ppt/slideLayouts/slideLayout3.xml"));
}

TEST(Deck, ShowsSlidesInTheOrderOfTheList)
{
    const auto deck = Deck().Slide(Title(u"first part")).Slide(Title(u"second part")).SlideOrder({2, 1});

    EXPECT_THAT(TextsOf(deck, 1), ElementsAre(u"second part"));
}

TEST(Deck, CarriesProperties)
{
    const auto deck = Deck()
                          .Core("dc:title", u"Fabrikam & Co")
                          .Core("dcterms:created", u"2024-05-06T07:08:09Z")
                          .App("Company", u"Fabrikam")
                          .Custom(u"Client", "lpwstr", u"F")
                          .Custom(u"Größe", "i4", u"3");

    EXPECT_THAT(ValidityFaults(deck), IsEmpty());
    EXPECT_EQ(CoreProperty(deck, "dc:title"), u"Fabrikam & Co");
    EXPECT_EQ(AppProperty(deck, "Company"), u"Fabrikam");
    EXPECT_EQ(CustomProperty(deck, u"Größe"), (CustomValue{"i4", u"3"}));
    EXPECT_THROW(CustomProperty(deck, u"Other"), std::runtime_error);
}

TEST(Deck, TakesStrictNamesOtherPrefixesAndAnotherMainPart)
{
    const auto deck = Deck()
                          .Slide(TextBox(Paragraph(TextRun(u"a:t <p:x>").Bold())), NotesPage(u"n"))
                          .App("Company", u"F")
                          .MainPart("ppt/presentation2.xml")
                          .Kind(DeckKind::Potm)
                          .Strict()
                          .Prefixes({{"p", ""}, {"a", "d"}, {"r", "rel"}});

    const PackageReader package = deck;

    EXPECT_THAT(ValidityFaults(package), IsEmpty());
    EXPECT_THAT(RunsOf(package, 1), ElementsAre(TextRun(u"a:t <p:x>").Bold()));
    EXPECT_EQ(AppProperty(package, "Company"), u"F");
    const std::string& slide = package.Entry("ppt/slides/slide1.xml").bytes;
    EXPECT_EQ(slide.find("schemas.openxmlformats.org"), std::string::npos);
    EXPECT_NE(slide.find("<sld xmlns:d=\"http://purl.oclc.org/ooxml/drawingml/main\""), std::string::npos);
    EXPECT_NE(package.Entry("[Content_Types].xml").bytes.find("template.macroEnabled.main+xml"), std::string::npos);
}

TEST(Deck, ChangesEncodings)
{
    const auto deck = Deck().Slide(Title(u"Grüße \U0001F600")).Slide(Title(u"b"));

    const PackageReader changed = Deck(deck).Utf16("ppt/slides/slide1.xml").Bom("ppt/slides/slide2.xml");

    EXPECT_TRUE(changed.Entry("ppt/slides/slide1.xml").bytes.starts_with("\xFF\xFE<"));
    EXPECT_TRUE(changed.Entry("ppt/slides/slide2.xml").bytes.starts_with("\xEF\xBB\xBF<"));
    EXPECT_THAT(TextsOf(changed, 1), ElementsAre(u"Grüße \U0001F600"));
}

TEST(Deck, WritesStrangePackagesThatReadersOfTheDirectoryOpen)
{
    const auto deck = Deck().Slide(Title(u"a"), NotesPage(u"n"));
    const std::vector<Deck> strange = {Deck(deck).Zip64(),
                                       Deck(deck).DataDescriptor(),
                                       Deck(deck).Zip64().DataDescriptor(),
                                       Deck(deck).Backslashes(),
                                       Deck(deck).Prefix("MZ junk"),
                                       Deck(deck).Comment("PK"),
                                       Deck(deck).Store("ppt/slides/slide1.xml"),
                                       Deck(deck).EntryComment("ppt/slides/slide1.xml", "c")};

    for (const Deck& each : strange) {
        EXPECT_THAT(TextsOf(each, 1), ElementsAre(u"a"));
        EXPECT_NE(each.Bytes(), deck.Bytes());
    }
}

TEST(Deck, SetsTheHeadersOfAnEntry)
{
    const PackageReader package = Deck()
                                      .Slide(Title(u"a"))
                                      .Modified("ppt/slides/slide1.xml", MakeDosDateTime(2024, 5, 6, 7, 8, 10))
                                      .ExternalAttributes("ppt/slides/slide1.xml", 0x81A40020)
                                      .Extra("ppt/slides/slide1.xml", ExtraField(0xCAFE, "xyz"))
                                      .DataDescriptor("ppt/slides/slide1.xml")
                                      .Store("ppt/theme/theme1.xml");

    const PackageEntry& slide = package.Entry("ppt/slides/slide1.xml");
    EXPECT_EQ(slide.modified, MakeDosDateTime(2024, 5, 6, 7, 8, 10));
    EXPECT_EQ(slide.externalAttributes, 0x81A40020U);
    EXPECT_EQ(slide.extraField, ExtraField(0xCAFE, "xyz"));
    EXPECT_EQ(slide.flags, 8);
    EXPECT_EQ(package.Entry("ppt/theme/theme1.xml").method, 0);
    EXPECT_EQ(package.Entry("ppt/theme/theme1.xml").packed, package.Entry("ppt/theme/theme1.xml").bytes);
}

TEST(Deck, HasRawDoorsToEntries)
{
    const auto deck = Deck().Slide(Title(u"Fabrikam")).Slide(Title(u"b"));

    const PackageReader package = Deck(deck)
                                      .Edit("ppt/slides/slide1.xml", "Fabrikam", "Contoso")
                                      .Entry("new.bin", "x")
                                      .Without("ppt/slides/slide2.xml")
                                      .DuplicateEntry("ppt/theme/theme1.xml", "second")
                                      .MoveToFront("new.bin");

    EXPECT_THAT(TextsOf(package, 1), ElementsAre(u"Contoso"));
    EXPECT_EQ(package.Names().front(), "new.bin");
    EXPECT_EQ(package.Entry("ppt/theme/theme1.xml").bytes, "second");
    EXPECT_FALSE(package.Has("ppt/slides/slide2.xml"));
    EXPECT_THROW(Deck(deck).Edit("ppt/slides/slide1.xml", "absent", "").Bytes(), std::invalid_argument);
    EXPECT_THROW(Deck(deck).Without("absent").Bytes(), std::invalid_argument);
}

TEST(ValidityFaults, NamesEachFault)
{
    const auto deck = Deck().Slide(Title(u"a"));

    EXPECT_THAT(ValidityFaults(Deck(deck).Without("ppt/theme/theme1.xml")), testing::SizeIs(2));
    EXPECT_THAT(ValidityFaults(Deck(deck).Edit("ppt/slides/slide1.xml", "</p:sld>", "")),
                ElementsAre("ppt/slides/slide1.xml is not well formed"));
    EXPECT_THAT(ValidityFaults(Deck(deck).Entry("a.bin", "")), ElementsAre("a.bin has no content type"));
    EXPECT_THAT(ValidityFaults(Deck(deck).MoveToFront("ppt/presentation.xml")),
                ElementsAre("[Content_Types].xml is not the first entry"));
    EXPECT_THAT(ValidityFaults(Deck(deck).DuplicateEntry("ppt/theme/theme1.xml", "<a/>")),
                ElementsAre("a name stands twice in the directory"));
}

}  // namespace
}  // namespace tessarine::test
