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
    return TextCheck(document, limits).ReadsAs(body, {begin, begin + paragraphs.size(), edited}, text);
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
