#include "support/SampleDecks.h"

namespace tessarine::test
{
namespace
{

/// A coloured bar without text.
Shape Bar(const std::string& color, Rectangle place)
{
    const auto number = [](std::int64_t value) { return std::to_string(value); };
    return RawShape(
        "<p:sp><p:nvSpPr><p:cNvPr id=\"900\" name=\"Bar\"/><p:cNvSpPr/><p:nvPr userDrawn=\"1\"/></p:nvSpPr>"
        "<p:spPr><a:xfrm><a:off x=\"" +
        number(place.x) + "\" y=\"" + number(place.y) + "\"/><a:ext cx=\"" + number(place.width) + "\" cy=\"" +
        number(place.height) +
        "\"/></a:xfrm><a:prstGeom prst=\"rect\"><a:avLst/></a:prstGeom><a:solidFill><a:srgbClr val=\"" + color +
        "\"/></a:solidFill><a:ln><a:noFill/></a:ln></p:spPr></p:sp>");
}

/// Sizes of titles and of two levels of text, with bullets.
std::string TextStyles(const std::string& color)
{
    const auto level = [](const std::string& element, int margin, int size) {
        return "<a:" + element + " marL=\"" + std::to_string(margin) +
               "\" indent=\"-285750\"><a:spcBef><a:spcPts val=\"900\"/></a:spcBef><a:buFont "
               "typeface=\"Arial\"/><a:buChar "
               "char=\"&#8226;\"/><a:defRPr sz=\"" +
               std::to_string(size) +
               "\"><a:solidFill><a:srgbClr val=\"404040\"/></a:solidFill></a:defRPr></a:" + element + ">";
    };
    return "<p:txStyles><p:titleStyle><a:lvl1pPr algn=\"l\"><a:defRPr sz=\"3600\" b=\"1\"><a:solidFill><a:srgbClr "
           "val=\"" +
           color + "\"/></a:solidFill></a:defRPr></a:lvl1pPr></p:titleStyle><p:bodyStyle>" +
           level("lvl1pPr", 342900, 2400) + level("lvl2pPr", 742950, 2000) +
           "</p:bodyStyle><p:otherStyle><a:lvl1pPr><a:defRPr sz=\"1800\"/></a:lvl1pPr></p:otherStyle></p:txStyles>";
}

/// A design with a title page and a page of title, text and footer.
SlideMaster Design(String name, const std::string& color)
{
    return SlideMaster(std::move(name), Bar(color, At(0, 0, 25, 750)),
                       Title(u"Click to edit Master title style").Place(At(90, 50, 1150, 110)),
                       Body(u"Click to edit Master text styles").Place(At(90, 180, 1150, 470)),
                       Footer(u"").Place(At(90, 690, 800, 40)), SlideNumber().Place(At(1130, 690, 110, 40)),
                       Layout("title", Bar(color, At(0, 480, 1333, 270)),
                              CenteredTitle(u"Click to edit Master title style").Place(At(90, 200, 1150, 160)),
                              Subtitle(u"Click to edit Master subtitle style").Place(At(90, 370, 1150, 90)))
                           .Named(u"Title Slide"),
                       Layout("obj", Title(u"Click to edit Master title style").Place(At(90, 50, 1150, 110)),
                              Body(u"Click to edit Master text styles").Place(At(90, 180, 1150, 470)),
                              Footer(u"").Place(At(90, 690, 800, 40)), SlideNumber().Place(At(1130, 690, 110, 40)))
                           .Named(u"Title and Content"))
        .TextStyles(TextStyles(color));
}

constexpr OnLayout TitlePage{.master = 1, .layout = 1};
constexpr OnLayout ContentPage{.master = 1, .layout = 2};

Paragraph Plain(TextRun run)
{
    return Paragraph(std::move(run)).Properties("<a:pPr marL=\"0\" indent=\"0\"><a:buNone/></a:pPr>");
}

Deck QuarterlyReview()
{
    return Deck()
        .Master(Design(u"Fabrikam Blue", "1F4E79"))
        .HandoutMaster(Header(u"Fabrikam Ltd").Place(At(0, 0, 320, 50)),
                       Footer(u"Fabrikam confidential").Place(At(0, 950, 320, 50)))
        .Core("dc:title", u"Fabrikam quarterly review")
        .Core("dc:creator", u"Kim Abercrombie")
        .Core("cp:keywords", u"Fabrikam; results")
        .App("Company", u"Fabrikam Ltd")
        .Custom(u"Client", "lpwstr", u"Fabrikam")
        .Custom(u"Revision", "i4", u"3")
        .Slide(TitlePage, CenteredTitle(u"Fabrikam quarterly review"),
               Subtitle(Plain(TextRun(u"Second quarter, board meeting"))),
               NotesPage(u"Welcome everybody to the Fabrikam review."))
        .Slide(ContentPage, Title(u"What we achieved"),
               Body(Paragraph(TextRun(u"Fab").Bold(), TextRun(u"rikam").Bold().Misspelled(),
                              TextRun(u" grew by 12 % in the north")),
                    Paragraph(u"Two new sites opened, both under the Fabrikam name"),
                    Paragraph(u"Support of FABRIKAM products moved in house").Level(1),
                    Paragraph(u"More on ",
                              TextRun(u"our pages").Click(LinkTo(u"https://www.fabrikam.com/results?q=2#north")))),
               Footer(u"Fabrikam, internal"), SlideNumber(u"2"), NotesPage(u"Mention the Fabrikam sites by name."))
        .Slide(ContentPage, Title(u"Fabrikam sales by region"), Chart().Place(At(90, 180, 560, 470)),
               Table({{Paragraph(TextRun(u"Region").Bold()), Paragraph(TextRun(u"Fabrikam").Bold())},
                      {Paragraph(u"North"), Paragraph(u"7.0")},
                      {Paragraph(u"South"), Paragraph(u"5.5")}})
                   .Place(At(700, 200, 400, 120)),
               Footer(u"Fabrikam, internal"), SlideNumber(u"3"))
        .Slide(ContentPage, HiddenSlide(), Title(u"Backup: Fabrikam contacts"),
               TextBox(Paragraph(TextRun(u"sales@fabrikam.com").Size(20).Click(LinkTo(u"mailto:sales@fabrikam.com"))))
                   .Place(At(90, 200, 800, 60)));
}

Deck GermanOffer()
{
    return Deck()
        .Master(Design(u"Angebot", "7F3F00"))
        .Core("dc:title", u"Angebot der Fabrikam GmbH")
        .Slide(TitlePage, CenteredTitle(u"Angebot der Fabrikam GmbH"),
               Subtitle(Plain(TextRun(u"für Müller & Söhne, Köln").Language("de-DE"))))
        .Slide(ContentPage, Title(u"Umfang"),
               Body(Paragraph(TextRun(u"Fabrikam liefert Geräte und Zubehör").Language("de-DE")),
                    Paragraph(TextRun(u"Schulung „vor Ort“ durch Fabrikam-Trainer").Language("de-DE")),
                    Paragraph(TextRun(u"Preise gültig bis 31.").Language("de-DE"), LineBreak(),
                              TextRun(u"Dezember").Language("de-DE"))),
               Footer(u"© Fabrikam GmbH"), SlideNumber(u"2"), NotesPage(u"Größe und Lieferzeit mit Fabrikam klären."));
}

Deck JapaneseProduct()
{
    return Deck()
        .Master(Design(u"製品", "00695C"))
        .Core("dc:title", u"Fabrikam 製品紹介")
        .Slide(TitlePage, CenteredTitle(Paragraph(TextRun(u"Fabrikam 製品紹介").Language("ja-JP"))),
               Subtitle(Plain(TextRun(u"二〇二四年版"))))
        .Slide(ContentPage, Title(u"株式会社Fabrikamについて"),
               Body(u"創業は1998年です\nFabrikamの製品は世界中で使われています 🌏\n品質第一 ✅"),
               Footer(u"株式会社Fabrikam"), SlideNumber(u"2"));
}

Deck ArabicIntroduction()
{
    const auto line = [](String text) {
        return Paragraph(TextRun(std::move(text)).Language("ar-SA")).RightToLeft().Align("r");
    };
    return Deck()
        .Master(Design(u"عرض", "4A148C"))
        .Core("dc:title", u"شركة Fabrikam")
        .Slide(TitlePage, CenteredTitle(line(u"شركة Fabrikam")), Subtitle(line(u"عرض تقديمي")))
        .Slide(ContentPage, Title(line(u"من نحن")),
               Body(line(u"تأسست شركة Fabrikam عام 1998"), line(u"خدمات Fabrikam متاحة في كل مكان")),
               NotesPage(u"ملاحظات عن Fabrikam"));
}

Deck FrenchLaunch()
{
    return Deck()
        .Master(Design(u"Lancement", "B71C1C"))
        .Core("dc:title", u"Lancement 🚀 chez Fabrikam")
        .App("Manager", u"Direction Fabrikam")
        .Slide(TitlePage, CenteredTitle(u"Lancement 🚀 chez Fabrikam"),
               Subtitle(Plain(TextRun(u"L’été prochain, à Genève"))))
        .Slide(ContentPage, Title(u"Les étapes"),
               Body(Paragraph(u"1️⃣ ", TextRun(u"Fabri").Color("B71C1C"), TextRun(u"kam").Color("1B5E20"),
                              u" choisit ses partenaires"),
                    Paragraph(u"👩‍💻 Développement avec Fabrikam Labs"), Paragraph(u"🎉 Fête de lancement")),
               Group(TextBox(u"Fabrikam").Place(At(950, 600, 150, 50)),
                     AutoShape("ellipse", u"✔").Place(At(1110, 600, 60, 50))),
               Footer(u"Fabrikam – diffusion restreinte"), SlideNumber(u"2"))
        .Slide(ContentPage, Title(u"Les chiffres"),
               LinkedOle(u"file:///C:\\Fabrikam%20Data\\Chiffres%202024.xlsx!Feuil1!R1C1:R5C5")
                   .Place(At(90, 200, 500, 300)),
               Footer(u"Fabrikam – diffusion restreinte"), SlideNumber(u"3"));
}

Deck Template()
{
    return Deck()
        .Kind(DeckKind::Potx)
        .Master(Design(u"Fabrikam template", "37474F").Add(TextBox(u"Fabrikam").Place(At(1130, 10, 160, 40))))
        .NotesMaster(Header(u"Fabrikam").Place(At(0, 0, 320, 50)), SlideImage().Place(At(100, 100, 550, 300)),
                     Body(u"Click to edit Master text styles").Place(At(70, 450, 600, 450)),
                     Footer(u"Fabrikam").Place(At(0, 950, 320, 50)))
        .Slide(TitlePage, CenteredTitle(u"Title of a Fabrikam talk"), Subtitle(Plain(TextRun(u"Name, date"))));
}

Deck WithoutMention()
{
    return Deck()
        .Master(Design(u"Plain", "455A64"))
        .Slide(TitlePage, CenteredTitle(u"Fire drill"), Subtitle(Plain(TextRun(u"Please read before Friday"))))
        .Slide(ContentPage, Title(u"Where to go"),
               Body(u"Leave by the nearest stairs\nMeet at the flag pole\nWait to be counted"));
}

/// A shape without a line around it.
ppt::Shape Plain(ppt::Shape shape)
{
    constexpr std::uint32_t lineFlags = 0x1FF;
    constexpr std::uint32_t noLine = 0x80000;
    return shape.Property(lineFlags, noLine);
}

ppt::BinaryDeck OldOffer()
{
    using namespace ppt;
    const ppt::Text what(ppt::TextRun(u"Fab").Bold(), u"rikam machines and training\rSee ",
                         ppt::TextRun(u"our pages").Click(ppt::LinkTo(u"https://www.fabrikam.com/offer")));
    return BinaryDeck()
        .Master(MainMaster(u"Fabrikam 2003",
                           ppt::Placeholder(MasterTitle, TitleText, u"Click to edit Master title style"),
                           ppt::Placeholder(MasterBody, BodyText, u"Click to edit Master text styles")))
        .Slide(Plain(ppt::CenterTitle(u"Fabrikam offer, 2003").Place(430, 1300, 5330, 2100)),
               Plain(ppt::Subtitle(u"As our customers still keep it").Place(860, 2300, 4900, 3100)),
               ppt::NotesPage(u"Fabrikam still answers calls about it."))
        .Slide(Plain(ppt::Title(u"What Fabrikam delivers").Place(430, 200, 5330, 900)),
               Plain(ppt::Body(what).Place(430, 1100, 5330, 3900)), HeadersFooters().Footer(u"Fabrikam, 2003"))
        .Summary(2, TextValue("Fabrikam offer"))
        .Summary(4, TextValue("Kim Abercrombie"))
        .DocumentSummary(15, TextValue("Fabrikam Ltd"))
        .Custom("Client", TextValue("Fabrikam"));
}

}  // namespace

std::vector<SampleDeck> SampleDecks()
{
    const auto path = [](StringView name) { return std::filesystem::path(std::u16string(name)); };
    return {{path(u"Quarterly review.pptx"), QuarterlyReview()},
            {path(u"Kunden und Märkte/Angebot für Müller & Söhne.pptx"), GermanOffer()},
            {path(u"製品紹介.pptx"), JapaneseProduct()},
            {path(u"عرض الشركة.pptx"), ArabicIntroduction()},
            {path(u"Lancement été.pptx"), FrenchLaunch()},
            {path(u"Templates/Talk.potx"), Template()},
            {path(u"Fire drill.pptx"), WithoutMention()}};
}

std::vector<BinarySampleDeck> BinarySampleDecks()
{
    return {{"Archive/Offer 2003.ppt", OldOffer()}};
}

void WriteSampleDecks(const std::filesystem::path& folder)
{
    const auto write = [&](const auto& samples) {
        for (const auto& sample : samples) {
            const std::filesystem::path path = folder / sample.path;
            std::filesystem::create_directories(path.parent_path());
            sample.deck.WriteTo(path);
        }
    };
    write(SampleDecks());
    write(BinarySampleDecks());
}

}  // namespace tessarine::test
