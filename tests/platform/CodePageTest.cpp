#include "platform/CodePage.h"

#include <gtest/gtest.h>

#include "support/ScopedEnvironment.h"

namespace tessarine
{

TEST(CodePage, ReadsSingleAndDoubleByteTexts)
{
    EXPECT_EQ(FromCodePage("caf\xE9 \x80", "windows-1252"), u"café €");
    EXPECT_EQ(FromCodePage("\xCF\xF0\xE8", "windows-1251"), u"При");
    EXPECT_EQ(FromCodePage("\xA4\xA4\xA4\xE5", "windows-950"), u"中文");
}

TEST(CodePage, ReadsATextOfAnyLength)
{
    EXPECT_EQ(FromCodePage(std::string(10000, '\xE9'), "windows-1252"), String(10000, u'é'));
    EXPECT_EQ(FromCodePage("", "windows-1252"), u"");
}

TEST(CodePage, PutsAReplacementForBytesWithoutMeaning)
{
    EXPECT_EQ(FromCodePage("a\xA4", "windows-950"), u"a\xFFFD");
}

TEST(CodePage, TakesAnUnknownNameForWindows1252)
{
    EXPECT_EQ(FromCodePage("\xE9", "no such page"), u"é");
}

TEST(CodePage, OfASystemWithUnicodeOrAsciiIsWindows1252)
{
    for (const char* locale : {"C.UTF-8", "C", "xx_XX.nowhere"}) {
        const ScopedEnvironment environment("LC_ALL", locale);

        EXPECT_EQ(SystemCodePage(), "windows-1252") << locale;
    }
}

}  // namespace tessarine
