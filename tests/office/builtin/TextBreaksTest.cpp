#include "TextBoxOnDisk.h"

namespace tessarine::test
{
namespace
{

TEST(ReplaceOverBreaks, RemovesALineBreakInsideTheHit)
{
    EXPECT_EQ(Replaced(P(R("a Fab", bold) + Br + R("rikam b", small)), u"Fab\vrikam", u"x"),
              P(R("a x", bold) + R(" b", small)));
}

TEST(ReplaceOverBreaks, FromALineBreakTakesTheNextRunsFormatting)
{
    EXPECT_EQ(Replaced(P(R("a", bold) + Br + R("bc", small)), u"\vb", u"x"),
              P(R("a", bold) + R("x", small) + R("c", small)));
}

TEST(ReplaceOverBreaks, OfALineBreakAloneTakesTheFormattingInFront)
{
    EXPECT_EQ(Replaced(P(R("a", bold) + Br + R("b", small)), u"\v", u" "),
              P(R("a", bold) + R(" ", bold) + R("b", small)));
    EXPECT_EQ(Replaced(P(Br + "<a:endParaRPr sz=\"900\"/>"), u"\v", u"x"),
              P(R("x", small) + "<a:endParaRPr sz=\"900\"/>"));
    EXPECT_EQ(Replaced(P(Br), u"\v", u"x"), P(R("x")));
}

TEST(ReplaceOverBreaks, OfALineBreakByNothingLeavesNoEmptyRun)
{
    EXPECT_EQ(Replaced(P(R("a", bold) + Br + R("b", small)), u"\v", u""), P(R("a", bold) + R("b", small)));
}

TEST(ReplaceOverBreaks, JoinsParagraphsUnderThePropertiesOfTheFirst)
{
    EXPECT_EQ(Replaced(P("<a:pPr lvl=\"1\"/>" + R("a Fab", bold) + "<a:endParaRPr sz=\"100\"/>") +
                           P("<a:pPr lvl=\"2\"/>" + R("rikam b", small) + "<a:endParaRPr sz=\"200\"/>"),
                       u"Fab\rrikam", u"x"),
              P("<a:pPr lvl=\"1\"/>" + R("a x", bold) + R(" b", small) + "<a:endParaRPr sz=\"200\"/>"));
}

TEST(ReplaceOverBreaks, KeepsTheFirstParagraphsEndPropertiesForWantOfOthers)
{
    EXPECT_EQ(Replaced(P(R("a") + "<a:endParaRPr sz=\"100\"/>") + P(R("b")), u"a\rb", u"x"),
              P(R("x") + "<a:endParaRPr sz=\"100\"/>"));
}

TEST(ReplaceOverBreaks, PutsTextFromAParagraphMarkAtTheFirstParagraphsEnd)
{
    EXPECT_EQ(Replaced(P(R("a", bold) + "<a:endParaRPr sz=\"100\"/>") + P(R("bc", small)), u"\rb", u"x"),
              P(R("a", bold) + R("x", small) + R("c", small) + "<a:endParaRPr sz=\"100\"/>"));
}

TEST(ReplaceOverBreaks, OfAParagraphMarkByNothingJoins)
{
    EXPECT_EQ(Replaced(P(R("a", bold)) + P(R("b", small)), u"\r", u""), P(R("a", bold) + R("b", small)));
}

TEST(ReplaceOverBreaks, OfAParagraphMarkAloneTakesTheFormattingInFront)
{
    EXPECT_EQ(Replaced(P(R("a", bold)) + P(R("b", small)), u"\r", u" "),
              P(R("a", bold) + R(" ", bold) + R("b", small)));
}

TEST(ReplaceOverBreaks, WorksOnEmptyParagraphs)
{
    EXPECT_EQ(Replaced("<a:p/><a:p/>", u"\r", u"x"), P(R("x")));
    EXPECT_EQ(Replaced("<a:p/>" + P(R("b", small)), u"\rb", u"x"), P(R("x", small)));
    EXPECT_EQ(Replaced(P(R("a", bold)) + "<a:p/>", u"a\r", u"x"), P(R("x", bold)));
    EXPECT_EQ(Replaced(P("<a:endParaRPr sz=\"900\"/>") + "<a:p/>", u"\r", u"x"),
              P(R("x", small) + "<a:endParaRPr sz=\"900\"/>"));
    EXPECT_EQ(Replaced(P(R("a")) + "<a:p/><a:p/>" + P(R("b")), u"\r\r", u"\r"), P(R("a")) + "<a:p></a:p>" + P(R("b")));
}

TEST(ReplaceOverBreaks, JoinsManyParagraphs)
{
    EXPECT_EQ(
        Replaced(P(R("a", bold)) + P(R("b")) + "<a:p/>" + P(R("c") + Br) + P(R("de", small)), u"a\rb\r\rc\v\rd", u"x"),
        P(R("x", bold) + R("e", small)));
}

TEST(ReplaceOverBreaks, DropsWhiteSpaceBetweenJoinedParagraphsOnly)
{
    EXPECT_EQ(Replaced("\n" + P(R("a")) + "\n" + P(R("b")) + "\n" + P(R("c")) + "\n", u"a\rb", u"x"),
              "\n" + P(R("x")) + "\n" + P(R("c")) + "\n");
}

class ReplaceByLineEnd : public testing::TestWithParam<const char16_t*>
{
};

TEST_P(ReplaceByLineEnd, BeginsANewParagraphLikeTheOneItIsIn)
{
    const std::string properties = "<a:pPr marL=\"1\" lvl=\"1\"><a:buNone/></a:pPr>";

    EXPECT_EQ(
        Replaced(P(properties + R("one, two", bold) + R("!", small) + "<a:endParaRPr sz=\"100\"/>"), u", ", GetParam()),
        P(properties + R("one", bold)) + P(properties + R("two", bold) + R("!", small) + "<a:endParaRPr sz=\"100\"/>"));
}

INSTANTIATE_TEST_SUITE_P(Kinds, ReplaceByLineEnd, testing::Values(u"\r", u"\n", u"\r\n"), [](const auto& tested) {
    const String kind = tested.param;
    return kind == u"\r" ? "Return" : kind == u"\n" ? "LineFeed" : "Both";
});

TEST(ReplaceByBreaks, TakesEachLineEndForOneParagraph)
{
    EXPECT_EQ(Replaced(P(R("x")), u"x", u"a\r\nb\n\rc\r"), P(R("a")) + P(R("b")) + P("") + P(R("c")) + P(""));
}

TEST(ReplaceByBreaks, PutsALineBreakForAVerticalTab)
{
    EXPECT_EQ(Replaced(P(R("one, two", bold)), u", ", u"\v"),
              P(R("one", bold) + "<a:br><a:rPr b=\"1\"/></a:br>" + R("two", bold)));
    EXPECT_EQ(Replaced(P(R("x")), u"x", u"a\v\vb"), P(R("a") + Br + Br + R("b")));
}

TEST(ReplaceByBreaks, PutsATabAsItIs)
{
    EXPECT_EQ(Replaced(P(R("a, b")), u", ", u"\t"), P(R("a\tb")));
}

TEST(ReplaceByBreaks, AtTheFrontLeavesAnEmptyParagraphOfThatHeight)
{
    EXPECT_EQ(Replaced(P(R("xa", small)), u"x", u"\r"), P("<a:endParaRPr sz=\"900\"/>") + P(R("a", small)));
}

TEST(ReplaceByBreaks, AtTheEndLeavesAnEmptyParagraphOfThatHeight)
{
    EXPECT_EQ(Replaced(P(R("ax", small)), u"x", u"\r"), P(R("a", small)) + P("<a:endParaRPr sz=\"900\"/>"));
}

TEST(ReplaceByBreaks, InBetweenLeaveEmptyParagraphsOfThatHeight)
{
    EXPECT_EQ(Replaced(P(R("axb", small)), u"x", u"\r\r"),
              P(R("a", small)) + P("<a:endParaRPr sz=\"900\"/>") + P(R("b", small)));
}

TEST(ReplaceByBreaks, KeepsTheLinkOnAllOfTheText)
{
    const auto linked = [](const std::string& text) {
        return "<a:r><a:rPr><a:hlinkClick r:id=\"\" action=\"ppaction://noaction\"/></a:rPr><a:t>" + text +
               "</a:t></a:r>";
    };

    EXPECT_EQ(Replaced(P(linked("ax")), u"x", u"b\rc"), P(linked("ab")) + P(linked("c")));
}

TEST(ReplaceByBreaks, CarriesTheRestOfTheParagraphAlong)
{
    EXPECT_EQ(Replaced(P(R("ax", bold) + Br + R("b") + "<a:fld id=\"{1}\" type=\"slidenum\"><a:t>1</a:t></a:fld>"),
                       u"x", u"\r"),
              P(R("a", bold)) + P(Br + R("b") + "<a:fld id=\"{1}\" type=\"slidenum\"><a:t>1</a:t></a:fld>"));
}

TEST(ReplaceByBreaks, CanBeTakenBack)
{
    const TextBoxOnDisk box(P("<a:pPr lvl=\"1\"/>" + R("one, two", small)));

    box.Replace(u", ", u"\r\r");
    ASSERT_EQ(box.Text(), u"one\r\rtwo");
    box.Replace(u"\r\r", u", ");

    EXPECT_EQ(box.Text(), u"one, two");
}

TEST(ReplaceByBreaks, GivesTheRangeOfTheNewTextInUnits)
{
    const TextBoxOnDisk box(P(R("xab")));

    EXPECT_EQ(box.Replace(u"x", u"\r\n\r\n"), 1);
    EXPECT_EQ(box.Find(u"ab"), 3);
}

TEST(ReplaceByBreaks, RepeatsTheNamespacesThatAParagraphDeclares)
{
    const std::string drawing = "http://schemas.openxmlformats.org/drawingml/2006/main";
    const std::string open = "<d:p xmlns:d=\"" + drawing + "\">";

    EXPECT_EQ(Replaced(open + "<d:r><d:t>axb</d:t></d:r></d:p>", u"x", u"\r"),
              open + "<d:r><d:t>a</d:t></d:r></d:p>" + open + "<d:r><d:t>b</d:t></d:r></d:p>");
}

TEST(ReplaceByBreaks, OpensAnEmptyParagraphElement)
{
    EXPECT_EQ(Replaced("<a:p/>" + P(R("b")), u"\r", u"x\ry\r"), P(R("x")) + P(R("y")) + P(R("b")));
}

}  // namespace
}  // namespace tessarine::test
