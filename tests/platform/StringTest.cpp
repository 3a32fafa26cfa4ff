#include "platform/String.h"

#include <gtest/gtest.h>

namespace tessarine
{

TEST(Utf8, GoesToUtf16AndBackForEveryPlane)
{
    const std::string text = "a \xC3\xA9 \xE2\x82\xAC \xF0\x9F\x98\x80";

    EXPECT_EQ(FromUtf8(text), u"a é € 😀");
    EXPECT_EQ(ToUtf8(FromUtf8(text)), text);
}

TEST(Utf8, KeepsBytesThatAreNotValid)
{
    const std::string latin1 = "caf\xE9.pptx";

    EXPECT_EQ(FromUtf8(latin1), String(u"caf") + char16_t{0xDCE9} + u".pptx");
    EXPECT_EQ(ToUtf8(FromUtf8(latin1)), latin1);
}

TEST(Utf8, GivesBackEverySingleByte)
{
    for (int byte = 0; byte < 256; ++byte) {
        const std::string text{'<', static_cast<char>(byte), '>'};

        EXPECT_EQ(ToUtf8(FromUtf8(text)), text) << byte;
    }
}

TEST(Utf8, TreatsInvalidSequencesAsForeignBytes)
{
    for (const std::string text : {"\xC0\x80", "\xE0\x80\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xF0\x9F\x98"}) {
        EXPECT_EQ(FromUtf8(text).size(), text.size());
        EXPECT_EQ(ToUtf8(FromUtf8(text)), text);
    }
}

TEST(Utf8, WritesAnyOtherLoneSurrogateAsTheReplacementCharacter)
{
    EXPECT_EQ(ToUtf8(String(1, char16_t{0xD800})), "\xEF\xBF\xBD");
    EXPECT_EQ(ToUtf8(String(1, char16_t{0xDC00})), "\xEF\xBF\xBD");
}

TEST(Utf8, TreatsNulAsAnOrdinaryCharacter)
{
    const std::string text("a\0b", 3);

    EXPECT_EQ(FromUtf8(text).size(), 3u);
    EXPECT_EQ(ToUtf8(FromUtf8(text)), text);
}

}  // namespace tessarine
