#include "DeckOnDisk.h"
#include "support/Fixtures.h"
#include "support/WarningRecorder.h"

namespace tessarine::test
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

String SourceOf(powerpoint::Presentation& presentation, std::size_t slide, std::size_t shape)
{
    return ShapeOf(presentation, slide, shape)->LinkFormat()->SourceFullName();
}

void PutSource(powerpoint::Presentation& presentation, std::size_t slide, std::size_t shape, const String& source)
{
    ShapeOf(presentation, slide, shape)->LinkFormat()->PutSourceFullName(source);
}

TEST(LinkedObject, GivesItsSourceAsAPathWithItsItem)
{
    const DeckOnDisk deck(fixtures::Ole());
    const auto presentation = deck.Open();

    EXPECT_EQ(SourceOf(*presentation, 1, 1), u"C:\\Fabrikam Data\\Book 1.xlsx!Sheet1!R1C1:R5C5");
    EXPECT_EQ(SourceOf(*presentation, 1, 2), u"\\\\server\\Fabrikam\\a.docx!OLE_LINK1");
    EXPECT_EQ(SourceOf(*presentation, 3, 1), u"https://fabrikam.sharepoint.com/a%20b.xlsx!Sheet1!R1C1");
}

TEST(LinkedObject, PutBackUnchangedChangesNoByte)
{
    const DeckOnDisk deck(fixtures::Ole());

    deck.Change([](auto& presentation) {
        for (const auto& [slide, shape] : {std::pair{1u, 1u}, std::pair{1u, 2u}, std::pair{3u, 1u}})
            PutSource(presentation, slide, shape, SourceOf(presentation, slide, shape));
        presentation.UpdateLinks();
    });

    EXPECT_EQ(deck.Bytes(), fixtures::Ole().Bytes());
}

TEST(LinkedObject, PutChangesTheTargetAndBothBranchesFollow)
{
    const DeckOnDisk deck(fixtures::Ole());
    const PackageReader before = deck.Package();

    deck.Change([](auto& presentation) {
        PutSource(presentation, 1, 1, u"C:\\Contoso 100%\\Book 1.xlsx!Sheet1!R1C1:R5C5");
        PutSource(presentation, 1, 2, u"\\\\server\\Contoso\\a.docx!OLE_LINK1");
        PutSource(presentation, 3, 1, u"https://contoso.sharepoint.com/a%20b.xlsx!Sheet1!R1C1");
        presentation.UpdateLinks();
    });

    const PackageReader after = deck.Package();
    EXPECT_THAT(OleLinksOf(after, 1), ElementsAre(u"file:///C:\\Contoso%20100%25\\Book%201.xlsx!Sheet1!R1C1:R5C5",
                                                  u"file:///\\\\server\\Contoso\\a.docx!OLE_LINK1"));
    EXPECT_THAT(OleLinksOf(after, 3), ElementsAre(u"https://contoso.sharepoint.com/a%20b.xlsx!Sheet1!R1C1"));
    EXPECT_THAT(EntriesThatDiffer(before, after),
                ElementsAre("ppt/slides/_rels/slide1.xml.rels", "ppt/slides/_rels/slide3.xml.rels"));
}

TEST(LinkedObject, KeepsItsSourceWhereTheNewOneIsTooLong)
{
    const DeckOnDisk deck(Deck().Slide().Slide(TextBox(u"x"), LinkedOle(u"file:///C:\\a.xlsx").Named(u"Sales")));
    const std::string before = deck.Bytes();
    const WarningRecorder warnings;

    deck.Change([](auto& presentation) { PutSource(presentation, 2, 2, u"C:\\" + String(2081, u'a')); });

    EXPECT_EQ(deck.Bytes(), before);
    EXPECT_THAT(warnings.Warnings(),
                ElementsAre(testing::Pair(
                    deck.Path(),
                    "slide 2, shape 2 \"Sales 3\": left as it is. The new source is too long: it has 2084 characters, "
                    "and PowerPoint takes at most 2083")));
}

TEST(LinkedObject, MaySwitchBetweenPathAndWebAddress)
{
    const DeckOnDisk deck(fixtures::Ole());

    deck.Change([](auto& presentation) {
        PutSource(presentation, 1, 1, u"https://contoso.com/Book 1.xlsx!Sheet1");
        PutSource(presentation, 3, 1, u"D:\\a b.xlsx!Sheet1");
    });

    EXPECT_EQ(OleLinksOf(deck.Package(), 1).front(), u"https://contoso.com/Book%201.xlsx!Sheet1");
    EXPECT_THAT(OleLinksOf(deck.Package(), 3), ElementsAre(u"file:///D:\\a%20b.xlsx!Sheet1"));
}

TEST(LinkedObject, SharingItsRelationshipGetsOneOfItsOwn)
{
    Deck deck = Deck().Slide(LinkedOle(u"file:///C:\\a.xlsx!A1"), LinkedOle(u"file:///C:\\b.xlsx!A1"));
    const auto ids = [&](const PackageReader& package) {
        std::vector<std::string> found;
        for (const auto& relationship : package.Relationships(slide1))
            if (relationship.type.ends_with("/oleObject"))
                found.push_back(relationship.id);
        return found;
    }(PackageReader(deck));
    ASSERT_EQ(ids.size(), 2u);
    const DeckOnDisk shared(deck.Edit(slide1, "r:id=\"" + ids[1] + "\"", "r:id=\"" + ids[0] + "\""));

    shared.Change([](auto& presentation) {
        ASSERT_EQ(SourceOf(presentation, 1, 2), u"C:\\a.xlsx!A1");
        PutSource(presentation, 1, 1, u"C:\\c.xlsx!A1");
    });

    const auto presentation = shared.Open();
    EXPECT_EQ(SourceOf(*presentation, 1, 1), u"C:\\c.xlsx!A1");
    EXPECT_EQ(SourceOf(*presentation, 1, 2), u"C:\\a.xlsx!A1");
    EXPECT_THAT(ValidityFaults(shared.Package()), IsEmpty());
}

TEST(LinkedObject, MixesWithEditsOfTextAndLinks)
{
    const DeckOnDisk deck(Deck().Slide(TextBox(Paragraph(TextRun(u"Fabrikam").Click(LinkTo(u"http://a")))),
                                       LinkedOle(u"file:///C:\\a.xlsx!A1")));

    deck.Change([](auto& presentation) {
        ReplaceInShape(presentation, 1, 1, u"Fabrikam", u"Contoso");
        PutSource(presentation, 1, 2, u"C:\\b.xlsx!A1");
        HyperlinksOf(presentation).at(0)->PutAddress(u"C:\\b.docx");
        PutSource(presentation, 1, 2, u"C:\\c.xlsx!A1");
    });

    EXPECT_EQ(TextOf(deck.Package(), 1, 1), u"Contoso");
    EXPECT_THAT(LinksOf(deck.Package(), 1), ElementsAre(u"file:///C:\\b.docx"));
    EXPECT_THAT(OleLinksOf(deck.Package(), 1), ElementsAre(u"file:///C:\\c.xlsx!A1"));
}

}  // namespace
}  // namespace tessarine::test
