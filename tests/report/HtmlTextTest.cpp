#include "report/HtmlText.h"

#include <gtest/gtest.h>

namespace tessarine
{
namespace
{

TEST(HtmlText, MakesMarkupAPlainText)
{
    EXPECT_EQ(HtmlText(u"</script><b a=\"x\" c='y'>&amp;"),
              "&lt;/script&gt;&lt;b a=&quot;x&quot; c=&#39;y&#39;&gt;&amp;amp;");
}

TEST(HtmlText, LeavesOrdinaryTextInAllScriptsAsItIs)
{
    EXPECT_EQ(HtmlText(u"Zürich 東京 שלום مرحبا 😀"), "Zürich 東京 שלום مرحبا 😀");
}

TEST(HtmlText, ShowsLineEndsOfAllKinds)
{
    EXPECT_EQ(HtmlText(u"a\nb\vc\rd\u0085e\u2028f\u2029g"), "a⏎b⏎c⏎d⏎e⏎f⏎g");
}

TEST(HtmlText, ShowsOtherControlCharactersAsPictures)
{
    EXPECT_EQ(HtmlText(StringView(u"\0\x1B\x1F\x7F\ta", 6)), "␀␛␟␡ a");
}

TEST(HtmlText, ReplacesWhatNoPageMayHold)
{
    EXPECT_EQ(HtmlText(u"\xD800z\xDC00"), "\uFFFDz\uFFFD");
    EXPECT_EQ(HtmlText(u"\xFFFE\xFFFF\xFDD0\x80\x9F"), "\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD");
    // A noncharacter of a further plane.
    EXPECT_EQ(HtmlText(u"\xD83F\xDFFE"), "\uFFFD");
}

TEST(HtmlText, HoldsNoControlCharacterWhateverItIsGiven)
{
    for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
        const std::string html = HtmlText(String(1, static_cast<char16_t>(unit)));
        ASSERT_FALSE(html.empty());
        EXPECT_GE(static_cast<unsigned char>(html.front()), 0x20) << unit;
        EXPECT_EQ(html.find_first_of("<>\"'"), std::string::npos) << unit;
    }
}

TEST(HtmlName, ShowsMarksThatTurnTheOrderOfLetters)
{
    EXPECT_EQ(HtmlName(u"a\u202Etpp.exe<"), "a\\u202Etpp.exe&lt;");
}

}  // namespace
}  // namespace tessarine
