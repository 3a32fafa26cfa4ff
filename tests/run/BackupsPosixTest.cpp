#include <gmock/gmock.h>

#include "BackupsTest.h"
#include "support/OrdinaryUser.h"

// Folders that may not be written into keep their files.

namespace tessarine
{

using testing::ElementsAre;

namespace
{

/// For all users but root.
void CloseTheSecondFolder(const TemporaryFolder& folder)
{
    SetMode(folder.Path(), 0755);
    for (const char16_t* name : {u"1", u"3"})
        SetMode(folder.PathOf(name), 0777);
    SetMode(folder.PathOf(u"2"), 0555);
}

}  // namespace

TEST_F(RestoringBackups, StopsAtAFileThatCannotBeWritten)
{
    RunOverThree();
    CloseTheSecondFolder(folder_);

    {
        const OrdinaryUser user;
        // A file of another owner would not be put back at all.
        for (const char16_t* name : {u"1/a.ppt", u"2/a.ppt", u"3/a.ppt"})
            user.TakeOver(folder_.PathOf(name));
        project_->RestoreBackupFiles(u"");
    }

    ExpectTheFirstAloneRestored();
    EXPECT_THAT(Log(), ElementsAre("Error 70 (Permission denied: could not write 2/a.ppt) in procedure "
                                   "RestoreBackupFiles at Line No. 0 of Class Module Project"));
}

TEST_F(RemovingBackups, StopsAtABackupThatCannotBeDeleted)
{
    RunOverThree();
    CloseTheSecondFolder(folder_);

    {
        const OrdinaryUser user;
        project_->RemoveBackupFiles(u"");
    }

    ExpectTheFirstAloneRemoved();
}

}  // namespace tessarine
