// The fixtures whose point is the package around the slides, and the lists of all.
#include <ostream>

#include "support/Fixtures.h"

namespace tessarine::test::fixtures
{
namespace
{

Deck TwoSlides()
{
    return Deck()
        .Slide(Title(u"Fabrikam"), TextBox(Paragraph(TextRun(u"Fab").Bold(), u"rikam Größe")),
               NotesPage(u"Fabrikam notes"))
        .Slide(TextBox(Paragraph(TextRun(u"Fabrikam").Click(LinkTo(u"http://fabrikam.com/")))))
        .Core("dc:title", u"Fabrikam")
        .Custom(u"Client", "lpwstr", u"Fabrikam");
}

}  // namespace

Deck NullRelationships()
{
    return TwoSlides()
        .Slide(TextBox(u"Fabrikam"), Related{"rId90", "slide", u"../slides/NULL"}, Related{"rId91", "image", u"NULL"},
               Related{"rId92", "hyperlink", u"NULL", true})
        .Edit("ppt/_rels/presentation.xml.rels", "</Relationships>",
              "<Relationship Id=\"rId99\" Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/"
              "printerSettings\" Target=\"/ppt/NULL\"/></Relationships>");
}

Deck BackslashNames()
{
    return TwoSlides().Backslashes();
}

Deck DuplicateSlide()
{
    const Deck deck = Deck().Slide(Title(u"Fabrikam"));
    const Deck first = Deck().Slide(Title(u"an older state"));
    return Deck(deck)
        .Entry(fixtureSlide, first.EntryBytes(fixtureSlide))
        .DuplicateEntry(fixtureSlide, deck.EntryBytes(fixtureSlide));
}

Deck Utf16Slide()
{
    return TwoSlides().Utf16(fixtureSlide);
}

Deck ByteOrderMarks()
{
    return TwoSlides()
        .Bom(fixtureSlide)
        .Bom("ppt/presentation.xml")
        .Bom("[Content_Types].xml")
        .Bom("docProps/custom.xml");
}

Deck OddPrefixes()
{
    return TwoSlides().Prefixes({{"p", ""}, {"a", "ns0"}, {"r", "rel"}});
}

Deck RenamedMainPart()
{
    return TwoSlides()
        .MainPart("ppt/presentation2.xml")
        .SlideOrder({2, 1})
        .Edit("_rels/.rels", "Target=\"ppt/", "Target=\"/ppt/")
        .Edit("ppt/_rels/presentation2.xml.rels", "Target=\"slides/slide2", "Target=\"./../ppt/slides/slide2");
}

Deck StrictNames()
{
    return TwoSlides().App("Company", u"Fabrikam").Strict();
}

Deck StreamedPackage()
{
    return TwoSlides().DataDescriptor();
}

Deck Zip64Package()
{
    return TwoSlides().Zip64();
}

Deck PrefixedPackage()
{
    return TwoSlides().Prefix("MZ bytes in front of the package").Comment("made by hand");
}

Deck StoredAndDated()
{
    return TwoSlides()
        .ModifiedAll(MakeDosDateTime(2024, 5, 6, 7, 8, 10))
        .Modified(fixtureSlide, MakeDosDateTime(2099, 12, 31, 23, 59, 58))
        .ExternalAttributes(fixtureSlide, 0x81A40020)
        .Extra(fixtureSlide, ExtraField(0xCAFE, "kept"))
        .EntryComment("ppt/slides/slide2.xml", "kept as well")
        .Store("ppt/slides/slide2.xml")
        .Store("ppt/theme/theme1.xml");
}

Deck PrettyPrinted()
{
    return TwoSlides()
        .Edit(fixtureSlide, "<a:p>", "\r\n  <a:p\n   >\n\t")
        .Edit(fixtureSlide, "<a:r>", "<!-- run --><a:r >\n")
        .Edit(fixtureSlide, "standalone=\"yes\"", "standalone = 'yes'");
}

Deck WithMedia()
{
    return TwoSlides().Media("ppt/media/film1.mp4", 300000, 1);
}

Deck ModifyPassword()
{
    return TwoSlides().ModifyVerifier();
}

Deck Signed()
{
    return TwoSlides().Signed();
}

Deck MacroEnabled()
{
    return TwoSlides().Macros().Kind(DeckKind::Pptm);
}

Deck ReadOnlyRecommended()
{
    return TwoSlides().ReadOnlyRecommended();
}

Deck MarkedAsFinal()
{
    return TwoSlides().MarkAsFinal();
}

void PrintTo(const NamedDeck& deck, std::ostream* out)
{
    *out << deck.name;
}

void PrintTo(const NamedFile& file, std::ostream* out)
{
    *out << file.name;
}

std::vector<NamedDeck> ReadableDecks()
{
    return {{"Runs", Runs()},
            {"Breaks", Breaks()},
            {"Shapes", Shapes()},
            {"Notes", Notes()},
            {"Footers", Footers()},
            {"FootersWithoutMasters", FootersWithoutMasters()},
            {"FootersWithoutHeader", FootersWithoutHeader()},
            {"Links", Links()},
            {"Masters", Masters()},
            {"AllProperties", AllProperties()},
            {"NoProperties", NoProperties()},
            {"CustomProperties", CustomProperties()},
            {"Ole", Ole()},
            {"NullRelationships", NullRelationships()},
            {"BackslashNames", BackslashNames()},
            {"DuplicateSlide", DuplicateSlide()},
            {"Utf16Slide", Utf16Slide()},
            {"ByteOrderMarks", ByteOrderMarks()},
            {"OddPrefixes", OddPrefixes()},
            {"RenamedMainPart", RenamedMainPart()},
            {"StrictNames", StrictNames()},
            {"StreamedPackage", StreamedPackage()},
            {"Zip64Package", Zip64Package()},
            {"PrefixedPackage", PrefixedPackage()},
            {"StoredAndDated", StoredAndDated()},
            {"PrettyPrinted", PrettyPrinted()},
            {"WithMedia", WithMedia()},
            {"Signed", Signed()},
            {"MacroEnabled", MacroEnabled()},
            {"ReadOnlyRecommended", ReadOnlyRecommended()},
            {"MarkedAsFinal", MarkedAsFinal()}};
}

std::vector<NamedFile> UnreadableFiles()
{
    return {{"ModifyPassword", ModifyPassword().Bytes()},
            {"EncryptedAgile", EncryptedAgile()},
            {"EncryptedStandard", EncryptedStandard()},
            {"LegacyPresentation", LegacyPresentation()},
            {"OtherCompoundFile", OtherCompoundFile()},
            {"TruncatedPackage", TruncatedPackage()},
            {"PackageWithMissingSlide", PackageWithMissingSlide()},
            {"PackageWithBrokenXml", PackageWithBrokenXml()},
            {"PackageWithEntityDeclaration", PackageWithEntityDeclaration()},
            {"PackageWithoutContentTypes", PackageWithoutContentTypes()},
            {"PackageWithoutMainPart", PackageWithoutMainPart()},
            {"PackageWithWrongCrc", PackageWithWrongCrc()},
            {"EmptyFile", EmptyFile()},
            {"Workbook", Workbook()},
            {"TextFile", TextFile()}};
}

}  // namespace tessarine::test::fixtures
