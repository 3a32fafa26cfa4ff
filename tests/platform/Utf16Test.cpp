#include "platform/Utf16.h"

#include <gtest/gtest.h>

namespace tessarine
{
namespace
{

constexpr StringView smile = u"a\U0001F600b";
constexpr char16_t loneHigh[] = {u'a', 0xD83D, 0};
constexpr char16_t loneLow[] = {0xDE00, u'a', 0};

TEST(Utf16, FindsAPairWhereItBegins)
{
    EXPECT_FALSE(IsPairAt(smile, 0));
    EXPECT_TRUE(IsPairAt(smile, 1));
    EXPECT_FALSE(IsPairAt(smile, 2));
    EXPECT_FALSE(IsPairAt(loneHigh, 1));
    EXPECT_FALSE(IsPairAt(smile, 99));
}

TEST(Utf16, ACutInsideAPairDividesIt)
{
    EXPECT_FALSE(DividesPair(smile, 0));
    EXPECT_FALSE(DividesPair(smile, 1));
    EXPECT_TRUE(DividesPair(smile, 2));
    EXPECT_FALSE(DividesPair(smile, 3));
    EXPECT_FALSE(DividesPair(smile, smile.size()));
}

TEST(Utf16, ReadsCodePointsForwards)
{
    EXPECT_EQ(CodePointAt(smile, 0), U'a');
    EXPECT_EQ(CodePointAt(smile, 1), U'\U0001F600');
    EXPECT_EQ(CodePointAt(loneHigh, 1), 0xD83Du);
}

TEST(Utf16, ReadsCodePointsBackwards)
{
    EXPECT_EQ(CodePointBefore(smile, 1), U'a');
    EXPECT_EQ(CodePointBefore(smile, 3), U'\U0001F600');
    EXPECT_EQ(CodePointBefore(loneLow, 1), 0xDE00u);
}

TEST(Utf16, AppendsOneOrTwoUnits)
{
    String text;
    AppendUtf16(text, U'a');
    AppendUtf16(text, U'\uFFFF');
    AppendUtf16(text, U'\U00010000');
    AppendUtf16(text, U'\U0010FFFF');

    EXPECT_EQ(text, (String{u'a', 0xFFFF, 0xD800, 0xDC00, 0xDBFF, 0xDFFF}));
}

}  // namespace
}  // namespace tessarine
