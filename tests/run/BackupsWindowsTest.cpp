#include <gmock/gmock.h>

#include "BackupsTest.h"
#include "files/Files.h"
#include "files/WindowsFiles.h"
#include "platform/WindowsHeaders.h"

// A file that a program holds open and does not share stays where it is.

namespace tessarine
{

using testing::ElementsAre;
using testing::HasSubstr;

namespace
{

FileDescriptor HoldOpen(const String& path)
{
    return OpenExisting(NativePath(path), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE);
}

}  // namespace

TEST_F(RestoringBackups, StopsAtAFileThatAProgramHoldsOpen)
{
    RunOver({u"1/a.ppt", u"2/a.ppt", u"3/a.ppt"});

    {
        const FileDescriptor held = HoldOpen(folder_.PathOf(u"2/a.ppt"));
        ASSERT_TRUE(held.IsOpen());
        project_->RestoreBackupFiles(u"");
    }

    EXPECT_EQ(Content(u"1/a.ppt"), "bytes of 1/a.ppt");
    EXPECT_EQ(Content(u"2/a.ppt"), "changed");
    EXPECT_EQ(Content(u"3/a.ppt"), "changed");
    EXPECT_THAT(Log(), ElementsAre(HasSubstr("\"2/a.ppt\" is in use by another program")));
}

TEST_F(RemovingBackups, StopsAtABackupThatAProgramHoldsOpen)
{
    RunOver({u"1/a.ppt", u"2/a.ppt", u"3/a.ppt"});

    {
        const FileDescriptor held = HoldOpen(folder_.PathOf(u"2/a.bak"));
        ASSERT_TRUE(held.IsOpen());
        project_->RemoveBackupFiles(u"");
    }

    EXPECT_FALSE(FileExists(folder_.PathOf(u"1/a.bak")));
    EXPECT_TRUE(FileExists(folder_.PathOf(u"2/a.bak")));
    EXPECT_TRUE(FileExists(folder_.PathOf(u"3/a.bak")));
    EXPECT_THAT(Log(), ElementsAre("Error 70 (Permission denied: could not delete 2/a.bak) in procedure "
                                   "RemoveBackupFiles at Line No. 0 of Class Module Project"));
}

}  // namespace tessarine
