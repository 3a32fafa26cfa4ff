#include "DeckOnDisk.h"
#include "log/Warnings.h"

/// The list of titles in docProps/app.xml, which must not keep a name that was replaced in a title.
namespace tessarine::test
{
namespace
{

const std::string appPart = "docProps/app.xml";

std::string ListOf(const std::vector<std::string>& titles)
{
    std::string entries;
    for (const std::string& title : titles)
        entries += "<vt:lpstr>" + title + "</vt:lpstr>";
    return "<TitlesOfParts><vt:vector size=\"" + std::to_string(titles.size()) + "\" baseType=\"lpstr\">" + entries +
           "</vt:vector></TitlesOfParts>";
}

std::string AppWith(const std::vector<std::string>& titles)
{
    return "<Properties xmlns=\"http://schemas.openxmlformats.org/officeDocument/2006/extended-properties\" "
           "xmlns:vt=\"http://schemas.openxmlformats.org/officeDocument/2006/docPropsVTypes\"><Company>Fabrikam</"
           "Company>" +
           ListOf(titles) + "<Manager>Fabrikam</Manager></Properties>";
}

Deck WithTitles(Deck deck, const std::vector<std::string>& titles)
{
    return deck.App("Company", u"Fabrikam").Entry(appPart, AppWith(titles));
}

/// The part after "Fabrikam" was replaced once in the first shape of each of these slides.
std::string AppAfter(const Deck& before, const std::vector<std::size_t>& slides, const String& with = u"Contoso")
{
    const DeckOnDisk deck(before);
    deck.Change([&](powerpoint::Presentation& presentation) {
        for (const std::size_t slide : slides)
            ReplaceInShape(presentation, slide, 1, u"Fabrikam", with);
    });
    EXPECT_THAT(ValidityFaults(deck.Package()), testing::IsEmpty());
    return deck.Package().Entry(appPart).bytes;
}

TEST(TitlesOfParts, FollowTheTitlesOfSlides)
{
    const Deck deck =
        Deck().Slide(Title(u"About Fabrikam")).Slide(CenteredTitle(u"Fabrikam & Co")).Slide(Title(u"End"));

    EXPECT_EQ(AppAfter(WithTitles(deck, {"Arial", "About Fabrikam", "Fabrikam &amp; Co", "End"}), {1, 2}, u"<C>"),
              AppWith({"Arial", "About &lt;C&gt;", "&lt;C&gt; &amp; Co", "End"}));
}

TEST(TitlesOfParts, OfEqualTitlesChangeThatOfTheSlide)
{
    const Deck deck = Deck().Slide(Title(u"Fabrikam")).Slide(Title(u"Fabrikam")).Slide(Title(u"Fabrikam"));

    EXPECT_EQ(AppAfter(WithTitles(deck, {"Fabrikam", "Fabrikam", "Fabrikam", "Fabrikam"}), {2}),
              AppWith({"Fabrikam", "Fabrikam", "Contoso", "Fabrikam"}));
}

TEST(TitlesOfParts, InAnotherOrderFollowToo)
{
    const Deck deck = Deck().Slide(Title(u"Fabrikam")).Slide(Title(u"End"));

    EXPECT_EQ(AppAfter(WithTitles(deck, {"End", "Fabrikam", "show"}), {1}), AppWith({"End", "Contoso", "show"}));
    EXPECT_EQ(AppAfter(WithTitles(deck, {"Fabrikam"}), {1}), AppWith({"Contoso"}));
}

TEST(TitlesOfParts, HaveTitlesInOneLine)
{
    const Deck deck = Deck().Slide(Title(Paragraph(u"Fabrikam", LineBreak(), u"Inc.")));

    EXPECT_EQ(AppAfter(WithTitles(deck, {"Fabrikam Inc."}), {1}, u"A\rB"), AppWith({"A B Inc."}));
    EXPECT_EQ(AppAfter(WithTitles(deck, {"Fabrikam_x000B_Inc."}), {1}), AppWith({"Contoso Inc."}));
}

TEST(TitlesOfParts, KeepTheBlanksAroundThem)
{
    const Deck deck = Deck().Slide(Title(u"About Fabrikam"));

    EXPECT_EQ(AppAfter(WithTitles(deck, {" About Fabrikam   "}), {1}), AppWith({" About Contoso   "}));
}

TEST(TitlesOfParts, StayWhereNoTitleOfASlideChanged)
{
    const Deck deck = Deck().Slide(TextBox(u"Fabrikam"), Title(u"Fabrikam"));

    EXPECT_EQ(AppAfter(WithTitles(deck, {"Fabrikam"}), {1}), AppWith({"Fabrikam"}));
    EXPECT_EQ(AppAfter(WithTitles(Deck().Slide(Title(u"Fabrikam!")), {"Fabrikam", "Fabrikam"}), {1}),
              AppWith({"Fabrikam", "Fabrikam"}));
}

TEST(TitlesOfParts, ChangeTogetherWithProperties)
{
    const DeckOnDisk deck(WithTitles(Deck().Slide(Title(u"Fabrikam")), {"Fabrikam"}));

    deck.Change([](powerpoint::Presentation& presentation) {
        PropertyOf(*presentation.BuiltInDocumentProperties(), u"Company")->PutValue(String(u"Contoso"));
        ReplaceInShape(presentation, 1, 1, u"Fabrikam", u"Contoso");
        presentation.Save();
        ReplaceInShape(presentation, 1, 1, u"Contoso", u"Northwind");
    });

    std::string expected = AppWith({"Northwind"});
    expected.replace(expected.find("Fabrikam"), 8, "Contoso");
    EXPECT_EQ(deck.Package().Entry(appPart).bytes, expected);
}

TEST(TitlesOfParts, ThatCannotBeReadAreAWarning)
{
    const DeckOnDisk deck(Deck().Slide(Title(u"Fabrikam")).App("Company", u"x").Entry(appPart, "<Properties>"));
    std::vector<std::string> warnings;
    const auto before =
        SetWarningReceiver([&](const String&, const String& text) { warnings.push_back(ToUtf8(text)); });

    deck.Change([](auto& presentation) { ReplaceInShape(presentation, 1, 1, u"Fabrikam", u"Contoso"); });

    SetWarningReceiver(before);
    EXPECT_EQ(TextOf(deck.Package(), 1, 1), u"Contoso");
    EXPECT_THAT(warnings, testing::ElementsAre(testing::HasSubstr("The list of titles in the properties")));
}

}  // namespace
}  // namespace tessarine::test
