#include "shell/OpenDoc.h"

#include <gmock/gmock.h>

#include "OpeningTest.h"
#include "support/ErrorLogRecorder.h"
#include "support/OrdinaryUser.h"
#include "support/qt/ShellRecorder.h"

// What is found out before the opener is asked.

namespace tessarine
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

class OpenNamedFileTest : public OpeningTest
{
protected:
    ShellRecorder shell_;
};

TEST_F(OpenNamedFileTest, TellsAMissingFile)
{
    ExpectThatAMissingFileIsTold();

    EXPECT_THAT(shell_.Opened(), IsEmpty());
}

TEST_F(OpenNamedFileTest, TellsAMissingFolder)
{
    EXPECT_EQ(Open(folder_.PathOf(u"gone/gone.txt")), 3);

    EXPECT_EQ(errorText_, u"Path not found");
}

TEST_F(OpenNamedFileTest, TellsAFolderThatIsAFile)
{
    const String path = folder_.Write(u"a.txt");

    EXPECT_EQ(Open(path + u"/b.txt"), 3);
}

TEST_F(OpenNamedFileTest, TellsAFileThatMayNotBeRead)
{
    SetMode(folder_.Path(), 0755);
    const String path = folder_.Write(u"a.txt");
    SetMode(path, 0);
    const OrdinaryUser user;

    EXPECT_EQ(Open(path), 5);

    EXPECT_EQ(errorText_, u"Access denied");
}

TEST_F(OpenNamedFileTest, TellsAFolderThatMayNotBeEntered)
{
    SetMode(folder_.Path(), 0755);
    const String path = folder_.Write(u"closed/a.txt");
    SetMode(folder_.PathOf(u"closed"), 0);
    const OrdinaryUser user;

    EXPECT_EQ(Open(path), 5);
}

TEST_F(OpenNamedFileTest, TellsAFolderThatMayNotBeRead)
{
    SetMode(folder_.Path(), 0755);
    const String path = folder_.MakeFolder(u"closed");
    SetMode(path, 0311);
    const OrdinaryUser user;

    EXPECT_EQ(Open(path), 5);
}

TEST_F(OpenNamedFileTest, TakesAShortNameFromTheRoot)
{
    const ErrorLogRecorder log;

    EXPECT_EQ(Open(folder_.Path().substr(1)), ShellResult::Opened);

    EXPECT_THAT(shell_.Opened(), ElementsAre(folder_.Path()));
    EXPECT_THAT(log.Lines(), IsEmpty());
}

}  // namespace
}  // namespace tessarine
