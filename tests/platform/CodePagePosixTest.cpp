#include <gtest/gtest.h>

#include "platform/CodePage.h"
#include "support/ScopedEnvironment.h"

namespace tessarine
{

TEST(SystemCodePage, IsWindows1252OnASystemWithUnicodeOrAscii)
{
    for (const char* locale : {"C.UTF-8", "C", "xx_XX.nowhere"}) {
        const ScopedEnvironment environment("LC_ALL", locale);

        EXPECT_EQ(SystemCodePage(), "windows-1252") << locale;
    }
}

}  // namespace tessarine
