#include "TextBoxOnDisk.h"

namespace tessarine::test
{
namespace
{

using testing::ElementsAre;

TEST(Replace, ReplacesTheFirstHitAfterAPosition)
{
    EXPECT_EQ(Replaced(P(R("cat cat cat")), u"cat", u"dog"), P(R("dog cat cat")));
    EXPECT_EQ(Replaced(P(R("cat cat cat")), u"cat", u"dog", {.after = 1}), P(R("cat dog cat")));
    EXPECT_EQ(Replaced(P(R("cat cat cat")), u"cat", u"dog", {.after = 8}), P(R("cat cat dog")));
    EXPECT_EQ(Replaced(P(R("cat cat cat")), u"cat", u"dog", {.after = 9}), "<no hit>");
}

TEST(Replace, WithoutAHitGivesNothingAndLeavesTheFile)
{
    const TextBoxOnDisk box(P(R("abc")));
    const std::string before = box.File().Bytes();

    EXPECT_EQ(box.Replace(u"x", u"y"), 0);

    EXPECT_EQ(box.File().Bytes(), before);
}

TEST(Replace, RespectsCaseAndWholeWords)
{
    EXPECT_EQ(Replaced(P(R("CAT cat")), u"cat", u"dog"), P(R("CAT dog")));
    EXPECT_EQ(Replaced(P(R("CAT cat")), u"cat", u"dog", {.matchCase = false}), P(R("dog cat")));
    EXPECT_EQ(Replaced(P(R("cats cat")), u"cat", u"dog", {.wholeWords = true}), P(R("cats dog")));
}

TEST(Replace, PutsTheTextInAsItIs)
{
    EXPECT_EQ(Replaced(P(R("FABRIKAM")), u"fabrikam", u"\"contoso\" -- $1 \\n", {.matchCase = false}),
              P(R("\"contoso\" -- $1 \\n")));
}

TEST(Replace, GivesTheRangeOfTheNewText)
{
    const DeckOnDisk deck(Deck().Slide(TextBox(u"a Fabrikam b")));
    const auto presentation = deck.Open();

    const auto range =
        ShapeOf(*presentation, 1, 1)->TextFrame()->TextRange()->Replace(u"Fabrikam", u"Contoso Ltd", 0, 1, 0);

    EXPECT_EQ(range->Start(), 3);
    EXPECT_EQ(range->Find(u"Contoso Ltd", 0, 1, 0)->Start(), 3);
    EXPECT_EQ(range->Find(u" b", 0, 1, 0), nullptr) << "the range ends with the new text";
}

TEST(Replace, ByNothingGivesAnEmptyRangeAtTheHit)
{
    const DeckOnDisk deck(Deck().Slide(TextBox(u"ab")));
    const auto presentation = deck.Open();
    const auto text = ShapeOf(*presentation, 1, 1)->TextFrame()->TextRange();

    const auto second = text->Replace(u"b", u"", 0, 1, 0);
    const auto first = text->Replace(u"a", u"", 0, 1, 0);

    EXPECT_EQ(second->Start(), 2);
    EXPECT_EQ(first->Start(), 1);
    EXPECT_EQ(first->Find(u"a", 0, 1, 0), nullptr);
}

TEST(Replace, ByTheSameTextCountsAndLeavesTheBytes)
{
    const TextBoxOnDisk box(P(R("Fab", bold) + R("&#114;ikam") + Br + R("x")) + P(R("y")));
    const std::string before = box.File().Bytes();

    EXPECT_EQ(box.Replace(u"Fabrikam", u"Fabrikam"), 1);
    EXPECT_EQ(box.Replace(u"\vx\ry", u"\vx\ny"), 9);

    EXPECT_EQ(box.File().Bytes(), before);
}

TEST(Replace, InsideARunTouchesNothingElse)
{
    EXPECT_EQ(Replaced(P("<a:pPr lvl=\"1\"/>" + R("one") + R("see Fabrikam now", bold) + R("three") +
                         "<a:endParaRPr lang=\"de-DE\"/>"),
                       u"Fabrikam", u"Contoso"),
              P("<a:pPr lvl=\"1\"/>" + R("one") + R("see Contoso now", bold) + R("three") +
                "<a:endParaRPr lang=\"de-DE\"/>"));
}

TEST(Replace, TakesTheFormattingOfTheFirstReplacedCharacter)
{
    EXPECT_EQ(Replaced(P(R("a Fab", bold) + R("rikam b", small)), u"Fabrikam", u"Contoso"),
              P(R("a Contoso", bold) + R(" b", small)));
}

TEST(Replace, RemovesTheRunsThatAHitCovers)
{
    EXPECT_EQ(Replaced(P(R("Fa", bold) + R("bri", small) + R("kam")), u"Fabrikam", u"Contoso"), P(R("Contoso", bold)));
}

TEST(Replace, SpansManyRuns)
{
    std::string runs;
    for (const char letter : std::string("Fabrikam"))
        runs += R(std::string(1, letter), "sz=\"" + std::to_string(letter) + "00\"");

    EXPECT_EQ(Replaced(P(R("x") + runs + R("y")), u"Fabrikam", u"Contoso"),
              P(R("x") + R("Contoso", R"(sz="7000")") + R("y")));
}

TEST(Replace, AtASeamTakesTheFormattingAfterIt)
{
    EXPECT_EQ(Replaced(P(R("a", bold) + R("Fabrikam", small)), u"Fabrikam", u"Contoso"),
              P(R("a", bold) + R("Contoso", small)));
}

TEST(Replace, KeepsEmptyRunsInsideAHit)
{
    EXPECT_EQ(Replaced(P(R("Fab", bold) + "<a:r><a:rPr i=\"1\"/><a:t/></a:r>" + R("rikam", small)), u"Fabrikam", u"x"),
              P(R("x", bold) + "<a:r><a:rPr i=\"1\"/><a:t/></a:r>"));
}

TEST(Replace, KeepsAttributesOfTheTextAndChildrenOfTheProperties)
{
    const std::string open =
        "<a:r ><a:rPr sz='900' ><a:solidFill><a:srgbClr val=\"C00000\"/></a:solidFill><a:extLst/></a:rPr>"
        "<a:t xml:space=\"preserve\" >";

    EXPECT_EQ(Replaced(P(open + " Fabrikam </a:t ></a:r>"), u"Fabrikam", u"Contoso"),
              P(open + " Contoso </a:t ></a:r>"));
}

TEST(Replace, LeavesWhiteSpaceAndCommentsBetweenElements)
{
    EXPECT_EQ(Replaced("\n <a:p>\n  <!-- 1 -->" + R("Fab", bold) + "\n  <!-- 2 -->" + R("rikam") + "\n </a:p>\n",
                       u"Fabrikam", u"x"),
              "\n <a:p>\n  <!-- 1 -->" + R("x", bold) + "\n  <!-- 2 -->\n </a:p>\n");
}

TEST(Replace, LeavesOtherShapesOfTheSlideByteForByte)
{
    const Deck before = Deck().Slide(TextBox(u"Fabrikam"), TextBox(Paragraph(RawRun("F&#97;brikam"))), Picture());
    const DeckOnDisk deck(before);

    deck.Change([](powerpoint::Presentation& presentation) { ReplaceInShape(presentation, 1, 1, u"Fabrikam", u"x"); });

    EXPECT_EQ(
        deck.Package().Entry("ppt/slides/slide1.xml").bytes,
        Deck(before).Edit("ppt/slides/slide1.xml", "<a:t>Fabrikam", "<a:t>x").EntryBytes("ppt/slides/slide1.xml"));
}

TEST(Replace, ByNothingRemovesARunThatIsLeftEmpty)
{
    EXPECT_EQ(Replaced(P(R("a") + R("Fabrikam", bold) + R("b")), u"Fabrikam", u""), P(R("a") + R("b")));
}

TEST(Replace, ByNothingKeepsTheHeightOfAnEmptiedLine)
{
    EXPECT_EQ(Replaced(P("<a:pPr lvl=\"1\"/>" + R("Fabrikam", small)), u"Fabrikam", u""),
              P(R"(<a:pPr lvl="1"/><a:endParaRPr sz="900"/>)"));
    EXPECT_EQ(Replaced(P(R("Fab", small) + R("rikam", bold)), u"Fabrikam", u""), P(R"(<a:endParaRPr sz="900"/>)"));
    EXPECT_EQ(Replaced(P("<a:r><a:rPr sz=\"900\"><a:noFill/></a:rPr><a:t>x</a:t></a:r>"), u"x", u""),
              P("<a:endParaRPr sz=\"900\"><a:noFill/></a:endParaRPr>"));
}

TEST(Replace, ByNothingKeepsTheEndPropertiesThatAParagraphHas)
{
    EXPECT_EQ(Replaced(P(R("Fabrikam", small) + "<a:endParaRPr sz=\"4000\"/>"), u"Fabrikam", u""),
              P("<a:endParaRPr sz=\"4000\"/>"));
}

TEST(Replace, ByNothingLeavesAnEmptyParagraphWithoutProperties)
{
    EXPECT_EQ(Replaced(P(R("Fabrikam")), u"Fabrikam", u""), "<a:p></a:p>");
}

TEST(Replace, ByNothingKeepsTheHeightOfALineAfterABreak)
{
    EXPECT_EQ(Replaced(P(Br + R("Fabrikam", small)), u"Fabrikam", u""), P(Br + R"(<a:endParaRPr sz="900"/>)"));
}

TEST(Replace, OfTheWholeTextByNothingLeavesOneParagraph)
{
    const TextBoxOnDisk box(P("<a:pPr algn=\"ctr\"/>" + R("a", small) + Br) + "<a:p/>" + P(R("b", bold)));

    EXPECT_EQ(box.Replace(u"a\v\r\rb", u""), 1);

    EXPECT_EQ(box.Paragraphs(), P(R"(<a:pPr algn="ctr"/><a:endParaRPr sz="900"/>)"));
    EXPECT_EQ(box.Text(), u"");
}

std::string Linked(const std::string& text)
{
    return "<a:r><a:rPr sz=\"900\"><a:hlinkClick r:id=\"\" action=\"ppaction://noaction\"/></a:rPr><a:t>" + text +
           "</a:t></a:r>";
}

TEST(Replace, KeepsTheLinkOfTheFirstReplacedCharacter)
{
    EXPECT_EQ(Replaced(P(Linked("see Fab") + R("rikam")), u"Fabrikam", u"Contoso"), P(Linked("see Contoso")));
    EXPECT_EQ(Replaced(P(R("Fab") + Linked("rikam now")), u"Fabrikam", u"Contoso"), P(R("Contoso") + Linked(" now")));
}

TEST(Replace, OfALinksWholeTextByNothingRemovesTheLink)
{
    EXPECT_EQ(Replaced(P(R("a") + Linked("Fabrikam")), u"Fabrikam", u""), P(R("a")));
    EXPECT_EQ(Replaced(P(Linked("Fabrikam")), u"Fabrikam", u""), P("<a:endParaRPr sz=\"900\"></a:endParaRPr>"));
}

TEST(Replace, OfLinkedTextLeavesTheCollectionOfLinksRight)
{
    const auto link = [](const char16_t* to) { return TextRun(u"Fabrikam").Click(LinkTo(to)); };
    const DeckOnDisk deck(Deck().Slide(TextBox(Paragraph(link(u"http://a/"), u" ", link(u"http://b/")))));

    deck.Change([](powerpoint::Presentation& presentation) { ReplaceInShape(presentation, 1, 1, u"Fabrikam ", u""); });

    EXPECT_THAT(AddressesOf(*deck.Open()), ElementsAre("http://b/"));
}

TEST(Replace, SeesWhatEarlierOnesInTheSessionPutThere)
{
    const TextBoxOnDisk box(P(R("one", bold) + R(" two")));

    box.File().Change([](powerpoint::Presentation& presentation) {
        ReplaceInShape(presentation, 1, 1, u"one two", u"three");
        ReplaceInShape(presentation, 1, 1, u"re", u"ree\nfo");
        ReplaceInShape(presentation, 1, 1, u"e\rf", u"-");
    });

    EXPECT_EQ(box.Text(), u"thre-oe");
    EXPECT_EQ(box.Paragraphs(), P(R("thre-", bold) + R("o", bold) + R("e", bold)));
}

TEST(Replace, AgainAfterASaveGoesOnFromThere)
{
    const TextBoxOnDisk box(P(R("one", bold)));

    box.File().Change([](powerpoint::Presentation& presentation) {
        ReplaceInShape(presentation, 1, 1, u"one", u"two");
        presentation.Save();
        ReplaceInShape(presentation, 1, 1, u"two", u"three");
    });

    EXPECT_EQ(box.Paragraphs(), P(R("three", bold)));
}

TEST(Replace, InLongTextsOfManyHitsGivesEveryOne)
{
    std::string before;
    std::string after;
    for (int i = 0; i < 500; ++i) {
        before += P(R("Fab" + std::to_string(i), bold) + R("Fabrikam,"));
        after += P(R("Fab" + std::to_string(i), bold) + R("Contoso,"));
    }
    const TextBoxOnDisk box(before);

    EXPECT_EQ(box.ReplaceAll(u"Fabrikam", u"Contoso"), 500);

    EXPECT_EQ(box.Paragraphs(), after);
}

}  // namespace
}  // namespace tessarine::test
