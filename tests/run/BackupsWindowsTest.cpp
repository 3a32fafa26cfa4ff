#include <gmock/gmock.h>

#include "BackupsTest.h"
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
    RunOverThree();

    {
        const FileDescriptor held = HoldOpen(folder_.PathOf(u"2/a.ppt"));
        ASSERT_TRUE(held.IsOpen());
        project_->RestoreBackupFiles(u"");
    }

    ExpectTheFirstAloneRestored();
    EXPECT_THAT(Log(), ElementsAre(HasSubstr("\"2/a.ppt\" is in use by another program")));
}

TEST_F(RemovingBackups, StopsAtABackupThatAProgramHoldsOpen)
{
    RunOverThree();

    {
        const FileDescriptor held = HoldOpen(folder_.PathOf(u"2/a.bak"));
        ASSERT_TRUE(held.IsOpen());
        project_->RemoveBackupFiles(u"");
    }

    ExpectTheFirstAloneRemoved();
}

}  // namespace tessarine
