#include "office/builtin/xml/XmlText.h"

#include <gmock/gmock.h>

#include "office/builtin/xml/XmlScanner.h"
#include "platform/Failure.h"

namespace tessarine::builtin
{
namespace
{

using testing::ElementsAre;

String TextOf(std::string_view content)
{
    String text;
    for (const ContentUnit& unit : ContentUnits(content))
        text += unit.unit;
    return text;
}

TEST(EscapeText, WritesWhatXmlCannotHoldAsTheReplacementCharacter)
{
    const String text = {u'a', 1, 0xD800, 0xFFFE, 0xFFFF, u'b'};

    EXPECT_EQ(EscapeText(text), "a\uFFFD\uFFFD\uFFFD\uFFFDb");
}

TEST(EscapeText, KeepsACarriageReturnByAReference)
{
    EXPECT_EQ(EscapeText(u"a\r\nb\tc"), "a&#13;\nb\tc");
}

TEST(EscapeAttribute, KeepsQuotesAndWhiteSpace)
{
    EXPECT_EQ(EscapeAttribute(u"<\"&'>\t\r\n"), "&lt;&quot;&amp;&apos;&gt;&#9;&#13;&#10;");
}

TEST(EscapeRunText, ReplacesAControlCharacterAfterAnUnderscoresEscape)
{
    EXPECT_EQ(TextOf(EscapeRunText(u"_x005F\x01")), u"_x005F\xFFFD");
    EXPECT_EQ(TextOf(EscapeRunText(u"_x005f\x01_")), u"_x005f\xFFFD_");
}

TEST(EscapeRunText, IsReadBackAsTheTextItWas)
{
    for (const StringView text :
         {StringView(u"plain"), StringView(u"<&>\"'\t"), StringView(u"\v\r\n\u0001\u001F"), StringView(u"_x000B_"),
          StringView(u"_x005F_x000B_"), StringView(u"_x000B_x000C_"), StringView(u"_x005F_x005F_x0001_"),
          StringView(u"_x000C\x01"), StringView(u"\x01x000B_"), StringView(u"__x0001__"), StringView(u"_x0041_"),
          StringView(u"_x000b"), StringView(u"\U0001F600]]>\u00E4")})
        EXPECT_EQ(TextOf(EscapeRunText(text)), text);
}

TEST(EscapePropertyText, WritesLineEndsAsOfficeDoes)
{
    EXPECT_EQ(EscapePropertyText(u"a\r\nb\tc"), "a_x000d__x000a_b\tc");
}

TEST(ContentUnits, TellTheBytesOfEachCharacter)
{
    const auto units = ContentUnits("a&#228;<!-- x -->\xC3\xA4<![CDATA[<]]>_x000B_");

    std::vector<std::pair<std::size_t, std::size_t>> places;
    for (const ContentUnit& unit : units)
        places.emplace_back(unit.begin, unit.end);
    using Place = std::pair<std::size_t, std::size_t>;
    EXPECT_THAT(places, ElementsAre(Place{0, 1}, Place{1, 7}, Place{17, 19}, Place{28, 29}, Place{32, 39}));
    EXPECT_TRUE(units[3].inCData);
    EXPECT_FALSE(units[4].inCData);
}

TEST(ContentUnits, GiveBothHalvesOfAPairTheSameBytes)
{
    const auto units = ContentUnits("\U0001F600&#x1F600;");

    ASSERT_EQ(units.size(), 4u);
    EXPECT_EQ(units[0].begin, units[1].begin);
    EXPECT_EQ(units[2].begin, units[3].begin);
    EXPECT_EQ(units[3].end, 13u);
}

TEST(ContentUnits, ReadWhatIsNoReferenceAsItStands)
{
    EXPECT_EQ(TextOf("a & b &unknown; &#x; &#x110000;"), u"a & b &unknown; &#x; \uFFFD");
}

TEST(ContentUnits, RefuseElementsAndMarkupThatDoesNotEnd)
{
    for (const char* content : {"a<b/>", "a<!-- b", "a<?b"})
        EXPECT_THROW(ContentUnits(content), Failure) << content;
}

TEST(ContentUnits, SkipElementsWhereThatIsAsked)
{
    const auto units = ContentUnits("a<b c='>'>x<b/>y</b>d", InnerElements::Skipped);

    ASSERT_EQ(units.size(), 2u);
    EXPECT_EQ(units[0].end, 1u);
    EXPECT_EQ(units[1].unit, u'd');
    EXPECT_EQ(units[1].begin, 20u);
}

TEST(ContentUnits, JoinEscapesHoweverTheyAreWritten)
{
    const auto units = ContentUnits("&#95;x000B&#x5F;a_x<!-- -->0009<![CDATA[_]]>");

    ASSERT_EQ(units.size(), 3u);
    EXPECT_EQ(units[0].unit, u'\v');
    EXPECT_EQ(units[0].end, 16u);
    EXPECT_EQ(units[2].unit, u'\t');
}

TEST(AppendContent, ReadsWhatTheUnitsAre)
{
    for (const char* content :
         {"plain", "\xC3\xA4\xFF\xF0\x9F\x98\x80", "a&amp;b&#x1F600;&#xD800;&", "a\r\nb\r", "_x000B__x005F_x0009_",
          "<![CDATA[]]]>]]&gt;", "first_name &#95;x0001_ _x0041_", "_x005f_x005F_x0001_"}) {
        String text = u"before";
        AppendContent(content, text);
        EXPECT_EQ(text, u"before" + TextOf(content)) << content;
    }
}

TEST(AppendContent, ReadsCharactersAlikeAtEachPlace)
{
    for (const std::string special : {"&lt;", "\r", "_x0009_", "\xC3\xA4", "<!-- -->"})
        for (std::size_t size = 0; size < 50; ++size)
            for (std::size_t place = 0; place <= size; ++place) {
                const std::string content = std::string(size, 'x').insert(place, special);
                String text;
                AppendContent(content, text);
                ASSERT_EQ(text, TextOf(content)) << content;
            }
}

TEST(ReplaceContent, KeepsTheBytesOfWhatStays)
{
    EXPECT_EQ(ReplaceContent("&#65;b &amp; c&#68;", u"Ab and cD", EscapeText), "&#65;b and c&#68;");
    EXPECT_EQ(ReplaceContent("a", u"a", EscapeText), "a");
    EXPECT_EQ(ReplaceContent("", u"<", EscapeText), "&lt;");
    EXPECT_EQ(ReplaceContent("\U0001F600", u"\U0001F601", EscapeText), "\U0001F601");
}

TEST(ReplaceContent, WritesCharacterDataAnew)
{
    EXPECT_EQ(ReplaceContent("<![CDATA[<a>]]>", u"<b>", EscapeText), "&lt;b&gt;");
}

TEST(ReplaceContent, NeverLetsTheEndMarkOfCharacterDataComeTogether)
{
    EXPECT_EQ(ReplaceContent("]]x>", u"]]>", EscapeText), "]]&gt;");
}

TEST(ScanElement, FindsContentAndEndWhateverStandsInside)
{
    const std::string xml = "<x:a b='>' c=\"/>\"><a/><!-- </x:a> --><![CDATA[</x:a>]]><x:a></x:a><?p </x:a>?></x:a >!";

    const ElementRange range = ScanElement(xml, 0);

    EXPECT_EQ(range.contentBegin, 18u);
    EXPECT_EQ(range.end, xml.size() - 1);
    EXPECT_EQ(xml.substr(range.contentEnd, 5), "</x:a");
    EXPECT_EQ(LocalName(range.name), "a");
    EXPECT_EQ(range.Prefix(), "x:");
}

TEST(ScanElement, KnowsEmptyElements)
{
    EXPECT_TRUE(ScanElement("<a />", 0).IsEmptyTag());
    EXPECT_FALSE(ScanElement("<a></a>", 0).IsEmptyTag());
}

TEST(ScanElement, RefusesWhatDoesNotEnd)
{
    for (const char* xml : {"", "x", "<a", "<a b=\"", "<a>", "<a><b></a>", "<a><!-- </a>"})
        EXPECT_THROW(ScanElement(xml, 0), Failure) << xml;
}

TEST(FindAttribute, TakesTheWholeNameAndBothQuotes)
{
    const std::string xml = "<a xtype='1' type = \"2\" type2=\"3\"/>";

    const AttributeRange range = FindAttribute(xml, 0, "type");

    ASSERT_TRUE(range.found);
    EXPECT_EQ(xml.substr(range.valueBegin, range.valueEnd - range.valueBegin), "2");
    EXPECT_FALSE(FindAttribute(xml, 0, "typ").found);
    EXPECT_FALSE(FindAttribute("<a b=' type=\"1\" '/>", 0, "type").found);
}

}  // namespace
}  // namespace tessarine::builtin
