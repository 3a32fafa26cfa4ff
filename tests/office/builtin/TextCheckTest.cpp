#include "office/builtin/text/TextCheck.h"

#include <string>

#include <gtest/gtest.h>

#include "support/Deck.h"

/// Texts that are read again without their part: which of them prove it, and what never passes.
namespace tessarine::test
{
namespace
{

using namespace builtin;

const std::string oldParagraphs = "<a:p><a:r><a:t>one</a:t></a:r></a:p><a:p><a:r><a:t>two</a:t></a:r></a:p>";

std::string SlideWith(const std::string& paragraphs, const std::string& declarations = {})
{
    return "<p:sld" + RootNamespaces() + "><p:sp" + declarations + "><p:txBody><a:bodyPr/>" + paragraphs +
           "</p:txBody></p:sp></p:sld>";
}

/// Whether the text is proved that a slide has once `edited` has taken the place of these paragraphs.
bool Proves(const std::string& edited, StringView text, const std::string& slide = SlideWith(oldParagraphs),
            const std::string& paragraphs = oldParagraphs, const Limits& limits = Limits::Default())
{
    const XmlDocument document(slide, "a part", limits);
    const Node body = document.Child(*document.Root().ChildElements().begin(), Ns::Presentation, "txBody");
    const std::size_t begin = slide.find(paragraphs);
    TextCheck check(document, limits);
    return check.Take(body, {begin, begin + paragraphs.size(), edited}, text) && check.AllReadAsTheyShould();
}

std::string OneRun(const std::string& text)
{
    return "<a:p><a:r><a:t>" + text + "</a:t></a:r></a:p>";
}

TEST(TextCheck, ProvesParagraphsThatReadAsTheyShould)
{
    EXPECT_TRUE(Proves(OneRun("one") + OneRun("2"), u"one\r2"));
    EXPECT_TRUE(Proves(OneRun("a &amp; b"), u"a & b"));
    EXPECT_TRUE(Proves("<a:p xmlns:q=\"urn:q\" q:x=\"\"><q:y/></a:p>", u""));
    EXPECT_TRUE(Proves("<a:p><p:x r:id=\"a\"/></a:p>", u""));
}

TEST(TextCheck, LetsNothingPassThatReadsOtherwise)
{
    EXPECT_FALSE(Proves(OneRun("one") + OneRun("two"), u"one\rtwo!"));
    EXPECT_FALSE(Proves(OneRun("one") + "<!-- " + OneRun("two") + " -->", u"one\rtwo"));
    EXPECT_FALSE(Proves("<b:p/>", u""));
    EXPECT_FALSE(Proves("<a:p><a:r q:x=\"\"/></a:p>", u""));
    EXPECT_FALSE(Proves("<a:p r:id=\"\" r:id=\"\"/>", u""));
    EXPECT_FALSE(Proves("<a:p a=\"\" a=\"\"/>", u""));
}

TEST(TextCheck, LetsNothingPassThatEndsElsewhere)
{
    EXPECT_FALSE(Proves("<a:p>", u""));
    EXPECT_FALSE(Proves("<a:p/></a:p>", u""));
    EXPECT_FALSE(Proves("<a:p/></w><w>", u""));
    EXPECT_FALSE(Proves("<a:p/></w>", u""));
    EXPECT_FALSE(Proves("<a:p/><!-- >", u""));
    EXPECT_FALSE(Proves("<a:p/><![CDATA[>", u""));
    EXPECT_FALSE(Proves("<a:p/><a:p x='>", u""));
    EXPECT_FALSE(Proves("<a:p/>text", u""));
    EXPECT_FALSE(Proves("", u""));
}

TEST(TextCheck, ReadsTheParagraphsThatHaveChangedAlone)
{
    std::string before;
    for (const char c : std::string("abcdef"))
        before += OneRun(std::string(1, c));
    const auto replaced = [&](const std::string& paragraph, const std::string& with) {
        return std::string(before).replace(before.find(paragraph), paragraph.size(), with);
    };
    const auto proves = [&](const std::string& edited, StringView text, std::uint32_t elements) {
        Limits few;
        few.elements = elements;
        return Proves(edited, text, SlideWith(before), before, few);
    };
    // The part has 22 elements; all six paragraphs would be 19 more.
    constexpr std::uint32_t forOne = 22 + 4 + 1;
    EXPECT_TRUE(proves(replaced(OneRun("c"), OneRun("C")), u"a\rb\rC\rd\re\rf", forOne));
    EXPECT_TRUE(proves(replaced(OneRun("a"), OneRun("A")), u"A\rb\rc\rd\re\rf", forOne));
    EXPECT_TRUE(proves(replaced(OneRun("f"), OneRun("F")), u"a\rb\rc\rd\re\rF", forOne));
    EXPECT_FALSE(proves(replaced(OneRun("a"), OneRun("A") + OneRun("A")), u"A\rA\rb\rc\rd\re\rf", forOne));
    // A paragraph more, and one less.
    EXPECT_TRUE(proves(before + OneRun("f"), u"a\rb\rc\rd\re\rf\rf", forOne + 3));
    EXPECT_TRUE(proves(replaced(OneRun("c"), ""), u"a\rb\rd\re\rf", forOne));
}

std::string Runs(const std::string& texts)
{
    std::string runs;
    for (const char c : texts)
        runs += "<a:r><a:t>" + std::string(1, c) + "</a:t></a:r>";
    return runs;
}

TEST(TextCheck, ReadsTheRunsOfAParagraphThatHaveChangedAlone)
{
    const std::string before = "<a:p x=\"\">" + Runs("abcdef") + "</a:p>";
    const auto proves = [&](const std::string& runs, StringView text, std::uint32_t elements) {
        Limits few;
        few.elements = elements;
        return Proves("<a:p x=\"\">" + runs + "</a:p>", text, SlideWith(before), before, few);
    };
    // The part has 17 elements.
    constexpr std::uint32_t forOne = 17 + 4 + 1;
    EXPECT_TRUE(proves(Runs("abCdef"), u"abCdef", forOne));
    EXPECT_TRUE(proves(Runs("Abcdef"), u"Abcdef", forOne));
    EXPECT_TRUE(proves(Runs("abcdeF"), u"abcdeF", forOne));
    EXPECT_FALSE(proves(Runs("abCDef"), u"abCDef", forOne));
    EXPECT_FALSE(proves(Runs("abCdef"), u"abcdef", forOne));
    EXPECT_FALSE(proves(Runs("abCdef"), u"bCdef", forOne));
    EXPECT_FALSE(proves(Runs("abCdef"), u"abCdeF", forOne));

    EXPECT_TRUE(proves(Runs("abC") + "</a:p><a:p>" + Runs("def"), u"abC\rdef", forOne + 1));
    EXPECT_TRUE(proves(Runs("abdef"), u"abdef", forOne));
    EXPECT_FALSE(proves(Runs("ab") + "</a:p></w><w><a:p>" + Runs("def"), u"abdef", 100));
    EXPECT_FALSE(proves(Runs("ab") + "<!-- " + Runs("C") + "-- >" + Runs("def"), u"abdef", 100));
    EXPECT_FALSE(proves(Runs("ab") + "<q:r/>" + Runs("def"), u"abdef", 100));
    EXPECT_FALSE(proves(Runs("ab") + "</a:p>" + Runs("def"), u"abdef", 100));
}

TEST(TextCheck, ReadsWholeParagraphsThatDeclareNamespaces)
{
    const auto paragraph = [](const std::string& text) {
        return "<a:p xmlns:q=\"urn:q\"><a:r q:x=\"\"><a:t>" + text + "</a:t></a:r></a:p>";
    };
    EXPECT_TRUE(Proves(paragraph("2"), u"2", SlideWith(paragraph("1")), paragraph("1")));
}

TEST(TextCheck, ComparesParagraphsThatHaveNotChangedToo)
{
    const std::string before = OneRun("a") + OneRun("b") + OneRun("c");
    const std::string edited = OneRun("a") + OneRun("B") + OneRun("c");
    EXPECT_TRUE(Proves(edited, u"a\rB\rc", SlideWith(before), before));
    for (const StringView other : {u"A\rB\rc", u"a\rB\rC", u"a\rB", u"B\rc", u"a\rc", u"a\rb\rc", u"", u"a\rB\rc\rc"})
        EXPECT_FALSE(Proves(edited, other, SlideWith(before), before)) << ToUtf8(other);
}

TEST(TextCheck, LetsNoTextUndoWhatAnotherOneDoes)
{
    const std::string body = "<p:txBody>" + OneRun("1") + "</p:txBody>";
    const std::string slide = "<p:sld" + RootNamespaces() + ">" + body + body + "</p:sld>";
    const XmlDocument document(slide, "a part", Limits::Default());
    const auto proves = [&](const std::string& first, const std::string& second) {
        TextCheck check(document, Limits::Default());
        std::size_t begin = 0;
        const std::string* edited = &first;
        for (const Node node : document.Root().ChildElements()) {
            begin = slide.find(OneRun("1"), begin + 1);
            if (!check.Take(node, {begin, begin + OneRun("1").size(), *edited}, u"2"))
                return false;
            edited = &second;
        }
        return check.AllReadAsTheyShould();
    };
    EXPECT_TRUE(proves(OneRun("2"), OneRun("2")));
    EXPECT_FALSE(proves(OneRun("2"), OneRun("3")));
    EXPECT_FALSE(proves(OneRun("2") + "<!-- >", "<!-- -->" + OneRun("2")));
    EXPECT_FALSE(proves(OneRun("2") + "<w>", "</w>" + OneRun("2")));
    EXPECT_FALSE(proves(OneRun("2") + "</w><w>", OneRun("2")));
    EXPECT_FALSE(proves("<a:p><a:r><a:t>2</a:t></a:r><a:x>", "</a:x></a:p>" + OneRun("2")));
}

TEST(TextCheck, TakesTheEditOfAllParagraphsAlone)
{
    EXPECT_FALSE(Proves(OneRun("1"), u"1\rtwo", SlideWith(oldParagraphs), OneRun("one")));
    EXPECT_FALSE(Proves("<a:bodyPr/>" + OneRun("1"), u"1", SlideWith(oldParagraphs), "<a:bodyPr/>" + oldParagraphs));
}

TEST(TextCheck, LeavesWhatIsUnusualToAReadingOfThePart)
{
    const std::string link = "<a:p><a:r><a:rPr><a:hlinkClick/></a:rPr><a:t>1</a:t></a:r></a:p>";
    EXPECT_FALSE(Proves(link, u"1"));
    EXPECT_FALSE(Proves(OneRun("1"), u"1", SlideWith(link), link));
    EXPECT_FALSE(Proves(OneRun("1"), u"1", SlideWith(oldParagraphs, " xmlns:q=\"urn:q\"")));
    EXPECT_FALSE(Proves(OneRun(std::string(2u << 20, 'x')), String(2u << 20, u'x')));

    Limits few;
    few.elements = 15;
    EXPECT_TRUE(Proves(OneRun("1"), u"1", SlideWith(oldParagraphs), oldParagraphs, few));
    few.elements = 14;
    EXPECT_FALSE(Proves(OneRun("1"), u"1", SlideWith(oldParagraphs), oldParagraphs, few));
}

}  // namespace
}  // namespace tessarine::test
