#include "TextBoxOnDisk.h"

namespace tessarine::test
{
namespace
{

TEST(TextOfAShape, IsThatOfItsRunsWithoutSeams)
{
    EXPECT_EQ(TextReadFrom(P(R("Fab", R"(b="1")") + R("rik", R"(err="1" dirty="0")") + R("am"))), u"Fabrikam");
}

TEST(TextOfAShape, HasACarriageReturnBetweenParagraphsOnly)
{
    EXPECT_EQ(TextReadFrom(P(R("one")) + P(R("two")) + P(R("three"))), u"one\rtwo\rthree");
}

TEST(TextOfAShape, HasAnEmptyLineForAnEmptyParagraph)
{
    EXPECT_EQ(
        TextReadFrom("<a:p/>" + P(R("a")) + "<a:p></a:p>" + P("<a:endParaRPr sz=\"4000\"/>") + P(R("b")) + "<a:p/>"),
        u"\ra\r\r\rb\r");
}

TEST(TextOfAShape, OfOneEmptyParagraphIsEmpty)
{
    EXPECT_EQ(TextReadFrom("<a:p/>"), u"");
}

TEST(TextOfAShape, HasAVerticalTabForALineBreak)
{
    EXPECT_EQ(TextReadFrom(P(R("a") + Br + R("b") + "<a:br><a:rPr sz=\"1200\"/></a:br>" + Br)), u"a\vb\v\v");
}

TEST(TextOfAShape, HoldsTheCachedTextOfFields)
{
    EXPECT_EQ(TextReadFrom(P(R("Page ") + "<a:fld id=\"{1}\" type=\"slidenum\"><a:rPr/><a:t>12</a:t></a:fld>" +
                             R(" of ") + "<a:fld id=\"{2}\" type=\"x\"><a:pPr/><a:t>many</a:t></a:fld>")),
              u"Page 12 of many");
}

TEST(TextOfAShape, HasNothingForAFieldThatHoldsNoText)
{
    EXPECT_EQ(TextReadFrom(P(R("a") + "<a:fld id=\"{1}\" type=\"datetime1\"><a:rPr/></a:fld>" + R("b"))), u"ab");
}

TEST(TextOfAShape, KeepsTabs)
{
    EXPECT_EQ(TextReadFrom(P(R("\ta\t\tb&#9;"))), u"\ta\t\tb\t");
}

TEST(TextOfAShape, HasNothingForPropertiesAndBullets)
{
    EXPECT_EQ(
        TextReadFrom(P("<a:pPr lvl=\"1\"><a:buChar char=\"x\"/></a:pPr>" + R("a") + "<a:endParaRPr lang=\"de-DE\"/>")),
        u"a");
}

TEST(TextOfAShape, DecodesControlCharactersWrittenAsEscapes)
{
    EXPECT_EQ(TextReadFrom(P(R("a_x000B_b_x000b_c_x0009_d_x001F_"))), u"a\vb\vc\td\u001F");
}

TEST(TextOfAShape, LeavesOtherTextInTheFormOfAnEscape)
{
    EXPECT_EQ(TextReadFrom(P(R("_x0041_ _x000G_ _x000B _X000B_ _x00B_"))), u"_x0041_ _x000G_ _x000B _X000B_ _x00B_");
}

TEST(TextOfAShape, ReadsAnEscapeThatIsEscapedAsPlainText)
{
    EXPECT_EQ(TextReadFrom(P(R("_x005F_x000B_ and _x005F_"))), u"_x000B_ and _x005F_");
}

TEST(TextOfAShape, KeepsBlanksAtTheEndsAndRunsOfBlanksAlone)
{
    EXPECT_EQ(TextReadFrom(P(R(" a") + R(" ") + R("b ") + "<a:r><a:t xml:space=\"preserve\">  </a:t></a:r>")),
              u" a b   ");
}

TEST(TextOfAShape, IgnoresWhiteSpaceBetweenElements)
{
    EXPECT_EQ(TextReadFrom("\r\n  <a:p>\r\n    <a:r>\r\n      <a:t>a</a:t>\r\n    </a:r>\r\n  </a:p>\r\n"), u"a");
}

TEST(TextOfAShape, HasNothingForARunWithoutText)
{
    EXPECT_EQ(TextReadFrom(P(R("a") + "<a:r><a:rPr/></a:r><a:r><a:t/></a:r><a:r><a:t></a:t></a:r>" + R("b"))), u"ab");
}

TEST(TextOfAShape, ReadsReferences)
{
    EXPECT_EQ(TextReadFrom(P(R("&amp;&lt;&gt;&quot;&apos;&#65;&#x42;&#x1F600;&#0000000000067;"))),
              u"&<>\"'AB\U0001F600C");
}

TEST(TextOfAShape, ReadsCharacterDataAsItStands)
{
    EXPECT_EQ(TextReadFrom(P(R("a<![CDATA[<b> &amp; ]]>c<![CDATA[d]]><![CDATA[]]>"))), u"a<b> &amp; cd");
}

TEST(TextOfAShape, JoinsTextAroundCommentsAndInstructions)
{
    EXPECT_EQ(TextReadFrom(P(R("Fab<!-- <a:t>no</a:t> -->ri<?x y?>kam"))), u"Fabrikam");
}

TEST(TextOfAShape, ReadsAnyLineEndAsOneLineFeed)
{
    EXPECT_EQ(TextReadFrom(P(R("a\r\nb\nc\rd"))), u"a\nb\nc\nd");
}

TEST(TextOfAShape, CountsASurrogatePairAsTwo)
{
    const TextBoxOnDisk box(P(R("\U0001F600a")));

    EXPECT_EQ(box.Find(u"a"), 3);
}

TEST(TextOfAShape, IsInTheTypedCaseWhereFormattingShowsCapitals)
{
    EXPECT_EQ(TextReadFrom(P(R("Fabrikam", R"(cap="all")"))), u"Fabrikam");
}

TEST(TextOfAShape, IsTheSameInATitle)
{
    const DeckOnDisk deck(Deck().Slide(Title(u"one\ntwo")));

    const auto text = ShapeOf(*deck.Open(), 1, 1)->TextFrame()->TextRange();

    EXPECT_EQ(text->Find(u"one\rtwo", 0, 1, 0)->Start(), 1);
    EXPECT_EQ(text->Find(u"one\vtwo", 0, 1, 0), nullptr);
}

TEST(TextOfAShape, HoldsTheSlideNumberSignOnAMaster)
{
    const DeckOnDisk deck(Deck().Master(SlideMaster(u"Theme", SlideNumber(), Footer(Paragraph(Field("x", u"‹#›"))))));

    const auto footer = All(deck.Open()->Designs()).at(0)->SlideMaster()->HeadersFooters()->Footer();

    EXPECT_EQ(footer->Text(), u"\u2039#\u203A");
}

}  // namespace
}  // namespace tessarine::test
