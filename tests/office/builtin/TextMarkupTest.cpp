#include "TextBoxOnDisk.h"

namespace tessarine::test
{
namespace
{

const std::string drawingNamespace = "http://schemas.openxmlformats.org/drawingml/2006/main";
const std::string foreign = R"( xmlns:x="http://example.com/x")";
const std::string ownDrawing = " xmlns:d=\"" + drawingNamespace + "\"";

/// Paragraphs after a pair's run, which has to find just one hit.
std::string ReplacedOnce(const std::string& paragraphs, const String& what, const String& with)
{
    const TextBoxOnDisk box(paragraphs);
    EXPECT_EQ(box.CountAll(what), 1);
    EXPECT_EQ(box.ReplaceAll(what, with), 1);
    return box.Paragraphs();
}

TEST(ForeignMarkup, InARunIsNotItsText)
{
    const auto run = [](const std::string& text) {
        return P("<a:r" + foreign + "><x:t>cat</x:t><a:t>" + text + "</a:t></a:r>");
    };

    EXPECT_EQ(ReplacedOnce(run("cat"), u"cat", u"dog"), run("dog"));
}

TEST(ForeignMarkup, InARunIsNotItsProperties)
{
    const std::string open = "<a:r" + foreign + "><x:rPr/><a:rPr b=\"1\"/><a:t>";

    EXPECT_EQ(Replaced(P(open + "one, two</a:t></a:r>"), u", ", u"\ra\r"),
              P(open + "one</a:t></a:r>") + P("<a:r><a:rPr" + foreign + " b=\"1\"/><a:t>a</a:t></a:r>") +
                  P(open + "two</a:t></a:r>"));
}

TEST(ForeignMarkup, InAParagraphIsNoRun)
{
    const std::string other = "<x:r" + foreign + "><x:t>cat</x:t></x:r>";

    EXPECT_EQ(ReplacedOnce(P(other + R("cat")), u"cat", u"dog"), P(other + R("dog")));
    EXPECT_EQ(ReplacedOnce(P(R("cat") + other), u"cat", u"dog"), P(R("dog") + other));
}

TEST(ForeignMarkup, InAParagraphIsNoFieldAndNoBreak)
{
    const std::string others = "<x:fld" + foreign + " type=\"slidenum\"><x:t>cat</x:t></x:fld><x:br" + foreign + "/>";

    EXPECT_EQ(ReplacedOnce(P(others + R("a cat")), u"a cat", u"dog"), P(others + R("dog")));
}

TEST(ForeignMarkup, InAParagraphIsNotItsProperties)
{
    const std::string other = "<x:pPr" + foreign + "/>";
    const std::string end = "<x:endParaRPr" + foreign + "/>";

    EXPECT_EQ(Replaced(P(other + R("a")) + P(other + R("b") + end), u"\r", u"-"),
              P(other + R("a") + R("-") + other + R("b") + end));
    EXPECT_EQ(Replaced(P(other + R("a, b") + end), u", ", u"\r"), P(other + R("a")) + P(R("b") + end));
}

TEST(ForeignMarkup, InATextIsNoParagraph)
{
    const std::string other = "<x:p" + foreign + "><a:r><a:t>cat</a:t></a:r></x:p>";

    EXPECT_EQ(ReplacedOnce(other + P(R("cat")) + other, u"cat", u"dog"), other + P(R("dog")) + other);
}

TEST(ForeignMarkup, BetweenJoinedParagraphsStays)
{
    const std::string between = "<!-- c --><x:y" + foreign + "/>";

    EXPECT_EQ(Replaced(P(R("a")) + between + P(R("b")) + P(R("c")), u"a\rb", u"x"), between + P(R("x")) + P(R("c")));
}

TEST(ForeignMarkup, InsideTheCharactersOfARunStays)
{
    const std::string inner = "<x:y" + foreign + "><x:t>cat</x:t></x:y>";

    EXPECT_EQ(TextReadFrom(P(R("Fab" + inner + "rikam"))), u"Fabrikam");
    EXPECT_EQ(ReplacedOnce(P(R("a Fab" + inner + "rikam b")), u"Fabrikam", u"cat"), P(R("a cat" + inner + " b")));
}

TEST(ForeignMarkup, LinkInPropertiesStaysWithAnEmptyLine)
{
    const std::string link = "<x:hlinkClick" + foreign + "/>";

    EXPECT_EQ(Replaced(P("<a:r><a:rPr>" + link + "</a:rPr><a:t>x</a:t></a:r>"), u"x", u""),
              P("<a:endParaRPr>" + link + "</a:endParaRPr>"));
}

TEST(Prefixes, RedeclaredInARunMakeItForeign)
{
    const std::string other = R"(<a:r xmlns:a="http://example.com/x"><a:t>cat</a:t></a:r>)";

    EXPECT_EQ(ReplacedOnce(P(other + R("cat")), u"cat", u"dog"), P(other + R("dog")));
}

TEST(Prefixes, OfNewRunsAreThoseOfTheirParagraph)
{
    const std::string first = "<d:p" + ownDrawing + "><d:r><d:t>a</d:t></d:r></d:p>";

    EXPECT_EQ(Replaced(first + P(Br), u"\v", u"x"), first + P(R("x")));
    EXPECT_EQ(Replaced(P(R("a")) + "<d:p" + ownDrawing + "><d:br/></d:p>", u"\v", u"x"),
              P(R("a")) + "<d:p" + ownDrawing + "><d:r><d:t>x</d:t></d:r></d:p>");
    EXPECT_EQ(Replaced(first + "<a:p/>" + P(R("b")), u"\rb", u"x"), first + P(R("x")));
}

TEST(Prefixes, MayBeNone)
{
    const std::string open = "<p xmlns=\"" + drawingNamespace + "\">";

    EXPECT_EQ(Replaced(open + "<r><rPr b=\"1\"/><t>one, two</t></r></p>", u", ", u"\ra\v"),
              open + "<r><rPr b=\"1\"/><t>one</t></r></p>" + open +
                  "<r><rPr b=\"1\"/><t>a</t></r><br><rPr b=\"1\"/></br><r><rPr b=\"1\"/><t>two</t></r></p>");
}

TEST(Prefixes, GoAlongWhenParagraphsAreJoined)
{
    EXPECT_EQ(Replaced(P(R("one")) + "<d:p" + ownDrawing + "><d:r><d:rPr b=\"1\"/><d:t>two</d:t></d:r> <d:br/></d:p>",
                       u"e\rt", u"-"),
              P(R("on-") + "<d:r" + ownDrawing + "><d:rPr b=\"1\"/><d:t>wo</d:t></d:r> <d:br" + ownDrawing + "/>"));
}

TEST(Prefixes, AreNotRepeatedWhereJoinedParagraphsAgree)
{
    const std::string open = "<d:p" + ownDrawing + ">";

    EXPECT_EQ(Replaced(open + "<d:r><d:t>a</d:t></d:r></d:p>" + open + "<d:r><d:t>b</d:t></d:r></d:p>", u"\r", u""),
              open + "<d:r><d:t>a</d:t></d:r><d:r><d:t>b</d:t></d:r></d:p>");
}

TEST(Prefixes, KeepTheirMeaningUnderAParagraphThatGivesThemAnother)
{
    const std::string open = R"(<a:p xmlns:q="http://example.com/q">)";
    const std::string sound = "<q:y/>";
    const std::string second = R"(<a:p xmlns:q="http://example.com/other">)" + R("b") + sound + "</a:p>";

    EXPECT_EQ(Replaced(open + R("a") + "</a:p>" + second, u"a\rb", u"x"),
              open + R("x") + R"(<q:y xmlns:q="http://example.com/other"/>)" + "</a:p>");
}

TEST(Prefixes, GoAlongWithCopiedProperties)
{
    const std::string relationships =
        R"( xmlns:q="http://schemas.openxmlformats.org/officeDocument/2006/relationships")";
    const std::string link = "<a:hlinkClick q:id=\"\" action=\"ppaction://noaction\"/>";
    const auto linked = [&](const std::string& text) {
        return "<a:r" + relationships + "><a:rPr>" + link + "</a:rPr><a:t>" + text + "</a:t></a:r>";
    };

    EXPECT_EQ(
        Replaced(P(linked("axb")), u"x", u"\rc\r"),
        P(linked("a")) + P("<a:r><a:rPr" + relationships + ">" + link + "</a:rPr><a:t>c</a:t></a:r>") + P(linked("b")));
    EXPECT_EQ(Replaced("<a:p/><d:p" + ownDrawing + "><d:r><d:rPr b=\"1\"/><d:t>two</d:t></d:r></d:p>", u"\rtwo", u"x"),
              P("<a:r><d:rPr" + ownDrawing + " b=\"1\"/><a:t>x</a:t></a:r>"));
}

TEST(FieldTypes, WrittenWithReferencesAreReadAsSuch)
{
    const std::string field = "<a:fld id=\"{1}\" type=\"slide&#110;um\"><a:t>7</a:t></a:fld>";
    const TextBoxOnDisk box(P(R("cat ") + field + R(" 7")));

    box.File().Change([](powerpoint::Presentation& presentation) {
        ReplaceInShape(presentation, 1, 1, u"cat", u"dog");
        ReplaceInShape(presentation, 1, 1, u"7", u"8");
    });

    EXPECT_EQ(box.Paragraphs(), P(R("dog ") + field + R(" 8")));
}

TEST(EscapesInText, AreReadThroughReferences)
{
    EXPECT_EQ(TextReadFrom(P(R("&#95;x000B&#95;a_x&#48;009_b"))), u"\va\tb");
    EXPECT_EQ(TextReadFrom(P(R("a&#95;x005F&#95;x000B&#95;"))), u"a_x000B_");
}

TEST(EscapesInText, WrittenWithReferencesStayInFrontOfAHit)
{
    EXPECT_EQ(ReplacedOnce(P(R("&#95;x000B&#95; cat and more text")), u"cat", u"dog"),
              P(R("&#95;x000B&#95; dog and more text")));
}

TEST(MarkupBetweenElements, IsPassedOverAndStays)
{
    const std::string between = "<!-- <a:r> --><?x <a:t>?><![CDATA[ <a:br/> ]]>\n";

    EXPECT_EQ(ReplacedOnce(between + P(between + R("Fab", bold) + between + R("rikam") + between) + between,
                           u"Fabrikam", u"x"),
              between + P(between + R("x", bold) + between + between) + between);
}

}  // namespace
}  // namespace tessarine::test
