#include "platform/ProgramFolder.h"

#include <gtest/gtest.h>

#include "files/Files.h"
#include "support/TemporaryFolder.h"

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

TEST(DataFolder, IsTheProgramsOwnWhereNothingIsInstalled)
{
    const TemporaryFolder built;
    SetProgramFolder(built.Path());

    const String folder = DataFolder();
    SetProgramFolder({});

    EXPECT_EQ(folder, built.Path());
}

#ifndef _WIN32
TEST(DataFolder, LiesBesideTheProgramsWhereTheyAreInstalled)
{
    const TemporaryFolder prefix;
    const String data = prefix.MakeFolder(u"share/tessarine");
    SetProgramFolder(prefix.MakeFolder(u"bin"));

    const String folder = DataFolder();
    SetProgramFolder({});

    EXPECT_EQ(folder, data);
}
#endif

}  // namespace tessarine
