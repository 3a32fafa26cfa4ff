#include "platform/ProgramFolder.h"

#include <gtest/gtest.h>

#include "files/Files.h"

namespace tessarine
{

TEST(ProgramFolder, HoldsTheExecutable)
{
#ifdef _WIN32
    constexpr StringView extension = u".exe";
#else
    constexpr StringView extension = u"";
#endif

    EXPECT_TRUE(FileExists(ProgramFolder() + u"/platform_test" + String(extension)));
}

TEST(ProgramFolder, CanBeSetAndBroughtBack)
{
    const String own = ProgramFolder();

    const String before = SetProgramFolder(u"/elsewhere");
    const String set = ProgramFolder();
    const String replaced = SetProgramFolder(before);

    EXPECT_EQ(before, u"");
    EXPECT_EQ(set, u"/elsewhere");
    EXPECT_EQ(replaced, u"/elsewhere");
    EXPECT_EQ(ProgramFolder(), own);
}

}  // namespace tessarine
