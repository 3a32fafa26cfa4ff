#include "model/BagText.h"

#include <gtest/gtest.h>

namespace tessarine
{
namespace
{

using namespace std::string_literals;

TEST(BagText, OfAnOrdinaryTextIsUtf8)
{
    EXPECT_EQ(BagTextFrom(u"Aé€😀"), "A\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
    EXPECT_EQ(BagTextFrom(u"\0\r\n"s), "\0\r\n"s);
    EXPECT_EQ(BagTextFrom(u"\uFEFF\uFFFE\uFFFF"), "\xEF\xBB\xBF\xEF\xBF\xBE\xEF\xBF\xBF");
}

TEST(BagText, OfALoneSurrogateIsItsNumberInThreeBytes)
{
    EXPECT_EQ(BagTextFrom(u"a\xD800"), "a\xED\xA0\x80");
    EXPECT_EQ(BagTextFrom(u"\xDCFF!"), "\xED\xB3\xBF!");
    EXPECT_EQ(BagTextFrom(u"\xDE00\xD83D"), "\xED\xB8\x80\xED\xA0\xBD");
}

TEST(BagText, OfEveryUnitIsReadBack)
{
    for (std::uint32_t unit = 0; unit <= 0xFFFF; ++unit) {
        const String text{u'a', static_cast<char16_t>(unit), u'z'};
        ASSERT_EQ(TextFromBag(BagTextFrom(text)), text) << unit;
    }
}

TEST(BagText, OfEveryKindOfSurrogateSequenceIsReadBack)
{
    constexpr char16_t units[] = {0xD800, 0xDBFF, 0xDC00, 0xDFFF, u'x'};
    for (const char16_t first : units)
        for (const char16_t second : units)
            for (const char16_t third : units)
                for (const char16_t fourth : units) {
                    const String text{first, second, third, fourth};
                    ASSERT_EQ(TextFromBag(BagTextFrom(text)), text);
                }
}

class RefusedBagText : public testing::TestWithParam<std::string>
{
};

TEST_P(RefusedBagText, IsNoText)
{
    EXPECT_EQ(TextFromBag(GetParam()), std::nullopt);
    EXPECT_EQ(TextFromBag("a" + GetParam() + "b"), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(Forms, RefusedBagText,
                         testing::Values("\x80", "\xFF", "\xC1\x81", "\xC3", "\xC3(", "\xE0\x80\x81", "\xE2\x82",
                                         "\xE2(\xAC", "\xF0\x80\x80\x81", "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80",
                                         "\xF5\x80\x80\x80", "\xF0\x9F\x98", "\xED\xA0\xBD\xED\xB8\x80"));

}  // namespace
}  // namespace tessarine
