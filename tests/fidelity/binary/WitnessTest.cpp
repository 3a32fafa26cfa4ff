#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>

#include "support/BinaryDeck.h"
#include "support/BinaryEncryption.h"
#include "support/BinaryRecords.h"
#include "support/TemporaryFolder.h"

/// The builder of binary decks and read-binary each say what the format is, and neither knows the other or the engine.
namespace tessarine::test::ppt
{
namespace
{

using testing::HasSubstr;

/// What read-binary prints of a deck.
std::string Seen(const BinaryDeck& deck)
{
    const TemporaryFolder folder;
    const std::string file = ToUtf8(folder.PathOf(u"deck.ppt"));
    const std::string seen = ToUtf8(folder.PathOf(u"seen"));
    deck.WriteTo(file);
    const std::string command = std::string(TESSARINE_READ_BINARY) + " '" + file + "' >'" + seen + "'";
    EXPECT_EQ(std::system(command.c_str()), 0);
    std::ostringstream line;
    line << std::ifstream(seen).rdbuf();
    return line.str();
}

TEST(Witness, SeesShapesByTheirTypesWithOutlineAndOwnTexts)
{
    const std::string seen = Seen(BinaryDeck().Slide(
        Title(u"Title"), Body(u"One\rTwo"), TextBox(u"Box \u20AC"), AutoShape(3, u"Ellipse"), Freeform(u"Free"), Line(),
        Picture(), LinkedPicture(u"a.png"), Movie(u"a.avi"), EmbeddedOle(), LinkedOle(u"C:\\a.xls", u"Sheet1!R1C1"),
        WordArt(u"Art"), Group(TextBox(u"a"), Group(TextBox(u"b"))), Table({{Text(u"c"), Text(u"d")}}),
        TextBox(u"Deleted").Deleted(), Title(u"Own").OwnText()));

    EXPECT_THAT(seen,
                HasSubstr(R"("shapes": [{"type": 14, "text": "Title"}, {"type": 14, "text": "One\rTwo"}, )"
                          R"({"type": 17, "text": "Box \u20ac"}, {"type": 1, "text": "Ellipse"}, )"
                          R"({"type": 5, "text": "Free"}, {"type": 9}, {"type": 13}, {"type": 11}, {"type": 16}, )"
                          R"({"type": 7}, {"type": 10, "source": "C:\\a.xls!Sheet1!R1C1"}, {"type": 15}, )"
                          R"({"type": 6, "inside": ["a", "b"]}, {"type": 19, "inside": ["c", "d"]}, )"
                          R"({"type": 14, "text": "Own"}])"));
}

TEST(Witness, SeesTheNewestEdit)
{
    const BinaryDeck first = BinaryDeck().Slide(Title(u"Old")).Slide(Title(u"Same"));
    const BinaryDeck second = BinaryDeck().Slide(Title(u"New"), TextBox(u"Box")).Slide(Title(u"Same")).After(first);

    EXPECT_THAT(Seen(second), AllOf(HasSubstr(R"("edits": 2)"), HasSubstr("New"), Not(HasSubstr("Old"))));
    EXPECT_THAT(Seen(BinaryDeck(second).WithoutCurrentUser()), AllOf(HasSubstr("New"), Not(HasSubstr("Old"))));
    EXPECT_THAT(Seen(BinaryDeck(first).PersistStep(3).Junk("junk").PaddedCurrentUser()), HasSubstr("Old"));
    EXPECT_THAT(Seen(BinaryDeck(first).DualStorage()), HasSubstr("Old"));
}

TEST(Witness, GoesOnWithTheEditBeforeWhereOneNamesNone)
{
    const BinaryDeck first = BinaryDeck().Slide(Title(u"Same"), TextBox(u"First"));
    const BinaryDeck second =
        BinaryDeck().Slide(Title(u"Other"), TextBox(u"First")).After(first).ChangeEdit([](UserEdit& edit) {
            edit.lastEdit = 0x7FFFFFF0;
        });

    EXPECT_THAT(Seen(second), AllOf(HasSubstr(R"("edits": 2)"), HasSubstr("Other"), HasSubstr("First")));
}

TEST(Witness, SeesDesignsTitleMastersAndPageMasters)
{
    const std::string seen = Seen(BinaryDeck()
                                      .Master(MainMaster(u"Plain", TextBox(u"M")).TitleMaster(TextBox(u"T")))
                                      .Master(MainMaster(u"", TextBox(u"N")).Nameless().Theme(u"Themed").Original(1))
                                      .Master(MainMaster(u"1_Themed").CopyOf(1))
                                      .NotesMaster(TextBox(u"NM"))
                                      .HandoutMaster(TextBox(u"HM"))
                                      .NotesFooters(HeadersFooters().Header(u"Head").FooterWithoutText())
                                      .Slide(OnTitleMaster{1}, NotesPage(u"Note"))
                                      .Slide(OnMaster{3}));

    EXPECT_THAT(seen, HasSubstr(R"("designs": [{"id": 2147483648, "name": "Plain", "shapes": )"
                                R"([{"type": 17, "text": "M"}], "titleMaster": [{"type": 17, "text": "T"}]}, )"
                                R"({"id": 2147483650, "name": "Themed", "shapes": [{"type": 17, "text": "N"}], )"
                                R"("titleMaster": null}], "notesMaster": {"shapes": [{"type": 17, "text": "NM"}], )"
                                R"("header": "Head", "footer": ""}, "handoutMaster": {"shapes": )"
                                R"([{"type": 17, "text": "HM"}], "header": "Head", "footer": ""})"));
    EXPECT_THAT(seen, HasSubstr(R"({"id": 256, "design": 2147483648, )"));
    EXPECT_THAT(seen, HasSubstr(R"("notes": [{"type": 14}, {"type": 14, "text": "Note"}])"));
    EXPECT_THAT(seen, HasSubstr(R"({"id": 257, "design": 2147483650, )"));
}

TEST(Witness, SeesFootersInTheirOrder)
{
    const BinaryDeck deck = BinaryDeck()
                                .SlideFooters(HeadersFooters().Footer(u"all"))
                                .Slide(Title(u"1"))
                                .Slide(HeadersFooters().Footer(u"own"))
                                .Slide(HeadersFooters().Footer(u"gone").FooterNotShown())
                                .Slide(HeadersFooters().Footer(u"own"), FooterShape(u"shape"));

    const std::string seen = Seen(deck);
    std::string footers;
    for (std::size_t at = seen.find("\"footer\""); at != std::string::npos; at = seen.find("\"footer\"", at + 1))
        footers += seen.substr(at, seen.find(',', at) - at) + ";";
    EXPECT_EQ(footers, R"("footer": "all";"footer": "own";"footer": null;"footer": "shape";)");
}

TEST(Witness, SeesLinksInTheOrderOfTheCollection)
{
    const std::string seen = Seen(BinaryDeck().Slide(
        Body(u"go ", TextRun(u"there").Click(LinkTo(u"http://a/")), TextRun(u"!").Hover(LinkToFile(u"b.doc"))),
        TextBox(u"x").Hover(LinkToSlide(1)).Click(JumpTo(1)),
        Group(TextBox(u"y").Click(LinkToPresentation(u"c.ppt", u"-1,2,T"))),
        TextBox(u"z").Click(LinkWithoutAddress())));

    EXPECT_THAT(seen, HasSubstr(R"("links": [{"address": "http://a/", "subAddress": ""}, )"
                                R"({"address": "b.doc", "subAddress": ""}, {"address": "", "subAddress": "256,1,"}, )"
                                R"({"address": "c.ppt", "subAddress": "-1,2,T"}, {"address": "", "subAddress": ""}])"));
}

TEST(Witness, SeesTheListOfLinksOfOldVersions)
{
    const std::string seen = Seen(BinaryDeck()
                                      .Slide(TextBox(u"x").Click(LinkWithoutAddress()))
                                      .Custom("_PID_HLINKS", LinksValue({{u"mailto:a@b", u"at"}})));

    EXPECT_THAT(seen, HasSubstr(R"("listed": {"address": "mailto:a@b", "subAddress": "at"})"));
}

TEST(Witness, SeesPropertiesInTheirCodePages)
{
    const std::string seen = Seen(BinaryDeck()
                                      .CodePage(1251)
                                      .CustomCodePage(1252)
                                      .Summary(2, TextValue("\xCF\xF0"))
                                      .Summary(10, TimeValue(90 * 600'000'000ULL))
                                      .DocumentSummary(15, WideValue(u"\u20AC"))
                                      .DocumentSummary(7, NumberValue(3))
                                      .Custom("Gr\xFC\xDF"
                                              "e",
                                              TruthValue(true))
                                      .Custom("Half", RealValue(0.5))
                                      .Custom("_PID_LINKBASE", BlobValue(Wide(u"C:\\") + Short(0))));

    EXPECT_THAT(seen, HasSubstr(R"("builtIn": {"Title": "\u041f\u0440", "Total editing time": 90, )"
                                R"("Number of slides": 3, "Company": "\u20ac", "Hyperlink base": "C:\\"}, )"
                                R"("custom": [{"name": "Gr\u00fc\u00dfe", "value": true}, )"
                                R"({"name": "Half", "value": 0.5}])"));
}

TEST(Witness, OpensWhatIsOnlyProtectedOfChanges)
{
    const BinaryDeck deck = BinaryDeck().Slide(Title(u"Readable"));

    EXPECT_THAT(Seen(BinaryDeck(deck).Encrypted(String(SilentPassword))), HasSubstr("Readable"));
    EXPECT_THAT(Seen(BinaryDeck(deck).Encrypted(String(SilentPassword), true)), HasSubstr("Readable"));
    EXPECT_THAT(Seen(BinaryDeck(deck).Encrypted(u"secret")), HasSubstr(R"("error": "password")"));
}

}  // namespace
}  // namespace tessarine::test::ppt
