#include "office/builtin/text/GatheredText.h"

#include <gmock/gmock.h>

#include <random>
#include <set>
#include <string>
#include <vector>

#include "office/builtin/text/FoldedContent.h"
#include "office/builtin/text/TagScan.h"
#include "office/builtin/xml/XmlText.h"
#include "platform/CaseFolding.h"

namespace tessarine::builtin
{
namespace
{

using testing::Optional;

TEST(AppendFoldedContent, GivesWhatDecodingAndFoldingGive)
{
    const std::vector<std::string> pieces{"a",          "Fabrikam ",    "LONGER THAN A BLOCK OF BYTES",
                                          "\u00C4",     "\u212A",       "\uAB70",
                                          "\U00010400", "\U0001F600",   "&amp;",
                                          "&#65;",      "&#x10400;",    "&",
                                          ";",          "&lt;",         "_",
                                          "x00",        "&#95;",        "_x0041_",
                                          "\xC3",       "\xED\xA0\x80", "\xFF",
                                          "\n"};
    std::mt19937 random(1);
    int answers = 0;
    for (int round = 0; round < 20000; ++round) {
        std::string content;
        for (std::size_t i = random() % 8; i > 0; --i)
            content += pieces[random() % pieces.size()];
        SCOPED_TRACE(testing::PrintToString(content));
        String decoded;
        AppendContent(content, decoded);

        String text = u"in front ";
        if (!AppendFoldedContent(content, text))
            continue;

        ++answers;
        ASSERT_EQ(text, u"in front " + FoldCaseWidely(StringView(decoded)));
    }
    EXPECT_GT(answers, 15000);
}

TEST(AppendFoldedContent, DeclinesEscapesAndLineEndsToBeReadAsOthers)
{
    for (const char* const content : {"_x000B_", "a_x000B_b", "&#95;x000B_", "_x0&#48;0B_", "a\rb", "a\r\nb"}) {
        String text;
        EXPECT_FALSE(AppendFoldedContent(content, text)) << content;
    }
}

TEST(ScanTags, CountsAndFindsAsALookAtEachCharacterDoes)
{
    constexpr std::string_view characters = "<</>>:tt!?a          &\n\x80";
    std::mt19937 random(2);
    for (std::size_t size = 0; size < 6000; size = size < 100 ? size + 1 : size * 2) {
        std::string xml;
        for (std::size_t i = 0; i < size; ++i)
            xml += characters[random() % characters.size()];
        std::ptrdiff_t depth = 0;
        std::size_t others = 0;
        std::vector<std::pair<std::size_t, std::ptrdiff_t>> places;
        for (std::size_t i = 0; i + 1 < xml.size(); ++i) {
            const std::string_view two = std::string_view(xml).substr(i, 2);
            const bool isStart = two[0] == '<' && static_cast<signed char>(two[1]) > '@';
            depth += two == "</" || two == "/>" ? -1 : isStart ? 1 : 0;
            others += two[0] == '<' && two[1] != '/' && !isStart;
            if (two == "<t" || two == ":t")
                places.emplace_back(i, depth);
        }

        std::vector<std::pair<std::size_t, std::ptrdiff_t>> candidates;
        std::set<std::size_t> doubtful;
        const TagTotals totals = ScanTags(
            xml, [&](std::size_t at, const auto& depthThere) { candidates.emplace_back(at, depthThere()); },
            [&](std::size_t from, std::size_t to) {
                for (; from < to; ++from)
                    doubtful.insert(from);
            });

        EXPECT_EQ(totals.unclosed, depth) << size;
        EXPECT_EQ(totals.others, others) << size;
        EXPECT_EQ(candidates, places) << size;
        for (std::size_t i = 0; i < xml.size(); ++i)
            EXPECT_TRUE(doubtful.contains(i) || std::string_view("\n\x80").find(xml[i]) == std::string_view::npos);
    }
}

TEST(GatherText, PutsTheRunsOfAPartTogether)
{
    EXPECT_THAT(
        GatherText("<?xml version=\"1.0\"?><p:sp><a:p><a:r><a:t>Fab</a:t></a:r><a:r><a:rPr b=\"1\"/>"
                   "<a:t>RIKAM</a:t></a:r></a:p><a:p><a:r><a:rPr><a:ea/></a:rPr><a:t>&amp;</a:t></a:r></a:p></p:sp>"),
        Optional(String(u"fabrikam&")));
}

TEST(GatherText, TakesAPartWithoutText)
{
    EXPECT_THAT(GatherText("<p:sp><a:tab/><a:r><a:t/></a:r></p:sp>"), Optional(String()));
}

TEST(GatherText, DeclinesMarkupThatIsNotBalanced)
{
    EXPECT_EQ(GatherText("<p:sp><a:r><a:t>a</a:t></a:r>"), std::nullopt);
    EXPECT_EQ(GatherText("<a:r><a:t>a</a:t></a:r></p:sp>"), std::nullopt);
    EXPECT_EQ(GatherText("<a:r><a:t>a"), std::nullopt);
    EXPECT_EQ(GatherText("<a:r><a:t"), std::nullopt);
    EXPECT_EQ(GatherText("<a:t "), std::nullopt);
}

TEST(GatherText, DeclinesCharactersThatXmlCannotHold)
{
    const std::string start = "<s a='" + std::string(3000, 'x') + "'><a:r><a:t>a</a:t></a:r>";
    const std::string end = std::string(3000, 'y') + "</s>";
    for (const char* const good :
         {"", "&#9;&#x10FFFF;&amp;\t\r\n", "\xC3\xA4\xE7\x8C\xAB\xF0\x9F\x98\x80\xEF\xBF\xBD\x7F"})
        EXPECT_THAT(GatherText(start + good + end), Optional(String(u"a"))) << good;
    for (const std::string& bad :
         {std::string(1, '\0'), std::string("\v"), std::string("&"), std::string("&foo;"), std::string("&#0;"),
          std::string("&#xD800;"), std::string("&#11;"), std::string("& amp;"), std::string("\xC3"),
          std::string("\x80"), std::string("\xC0\x80"), std::string("\xE0\x80\x80"), std::string("\xED\xA0\x80"),
          std::string("\xEF\xBF\xBE"), std::string("\xF4\x90\x80\x80"), std::string("\xF0\x80\x80\x80"),
          std::string("\xFF")}) {
        EXPECT_EQ(GatherText(start + bad + end), std::nullopt) << bad;
        EXPECT_EQ(GatherText(start + "<b a='" + bad + "'/>" + end), std::nullopt) << bad;
        EXPECT_EQ(GatherText(start + "</s>" + bad), std::nullopt) << bad;
    }
}

TEST(GatherText, DeclinesWhatOnlyTheStructureTells)
{
    EXPECT_EQ(GatherText("<s><!-- --><a:r><a:t>a</a:t></a:r></s>"), std::nullopt);
    EXPECT_EQ(GatherText("<a:r><a:t><![CDATA[a]]></a:t></a:r>"), std::nullopt);
    EXPECT_EQ(GatherText("<s><a:r><a:t>a</a:t></a:r><x:r><x:t>b</x:t></x:r></s>"), std::nullopt);
    EXPECT_EQ(GatherText("<a:r><a:t>a</a:t><a:t>b</a:t></a:r>"), std::nullopt);
    EXPECT_EQ(GatherText("<a:r><a:t>a<b/></a:t></a:r>"), std::nullopt);
    EXPECT_EQ(GatherText("<a:x><a:t>a</a:t></a:x>"), std::nullopt);
    EXPECT_EQ(GatherText("<a:r><a:rPr x='/>'/><a:t>a</a:t></a:r>"), std::nullopt);
}

TEST(GatherText, TakesTextsWithFewerElementsAroundThemAfterANewParagraph)
{
    const std::string run = "<a:r><a:t>a</a:t></a:r>";

    EXPECT_THAT(GatherText("<s><g><g><a:p>" + run + "</a:p></g></g><a:p><a:r/>" + run + "</a:p></s>"),
                Optional(String(u"aa")));
    EXPECT_EQ(GatherText("<s><a:p><a:r><a:rPr><x>" + run + "</x></a:rPr><a:t>a</a:t></a:r></a:p></s>"), std::nullopt);
    EXPECT_EQ(GatherText("<s><a:p><a:pPr><x>" + run + "</x></a:pPr>" + run + "</a:p></s>"), std::nullopt);
}

}  // namespace
}  // namespace tessarine::builtin
