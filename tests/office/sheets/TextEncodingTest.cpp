#include "office/sheets/TextEncoding.h"

#include <gtest/gtest.h>

namespace tessarine::sheets
{

using namespace std::string_view_literals;

TEST(TextEncoding, IsUtf8WithAndWithoutAMark)
{
    EXPECT_EQ(DecodeText("caf\xC3\xA9 \xF0\x9F\x98\x80"), u"café 😀");
    EXPECT_EQ(DecodeText("\xEF\xBB\xBF"
                         "caf\xC3\xA9"),
              u"café");
}

TEST(TextEncoding, IsUtf16ByItsMark)
{
    EXPECT_EQ(DecodeText("\xFF\xFE"
                         "a\0\xE9\0\x3D\xD8\x00\xDE"sv),
              u"aé😀");
    EXPECT_EQ(DecodeText("\xFE\xFF"
                         "\0a\0\xE9\xD8\x3D\xDE\x00"sv),
              u"aé😀");
}

TEST(TextEncoding, ReplacesHalfAUnitOfUtf16)
{
    EXPECT_EQ(DecodeText("\xFF\xFE"
                         "a\0b"sv),
              u"a\xFFFD");
}

TEST(TextEncoding, IsTheSystemsCodePageWhenNotAllIsUtf8)
{
    EXPECT_EQ(DecodeText("caf\xE9 \xC3\xA9"), u"café Ã©");
}

TEST(TextEncoding, StaysUtf8AfterItsMarkWhateverFollows)
{
    EXPECT_EQ(DecodeText("\xEF\xBB\xBF"
                         "\xC3\xA9\xE9"),
              u"é\xDCE9");
}

TEST(TextEncoding, OfNothingIsNothing)
{
    EXPECT_EQ(DecodeText(""), u"");
    EXPECT_EQ(DecodeText("\xEF\xBB\xBF"), u"");
}

}  // namespace tessarine::sheets
