#include <gmock/gmock.h>

#include "BackupsTest.h"
#include "files/Files.h"
#include "support/OrdinaryUser.h"

// Folders that may not be written into keep their files.

namespace tessarine
{

using testing::ElementsAre;

TEST_F(RestoringBackups, StopsAtAFileThatCannotBeWritten)
{
    RunOver({u"1/a.ppt", u"2/a.ppt", u"3/a.ppt"});
    SetMode(folder_.Path(), 0755);
    for (const char16_t* name : {u"1", u"3"})
        SetMode(folder_.PathOf(name), 0777);
    SetMode(folder_.PathOf(u"2"), 0555);

    {
        const OrdinaryUser user;
        // A file of another owner would not be put back at all.
        for (const char16_t* name : {u"1/a.ppt", u"2/a.ppt", u"3/a.ppt"})
            user.TakeOver(folder_.PathOf(name));
        project_->RestoreBackupFiles(u"");
    }

    EXPECT_EQ(Content(u"1/a.ppt"), "bytes of 1/a.ppt");
    EXPECT_EQ(Content(u"2/a.ppt"), "changed");
    EXPECT_EQ(Content(u"3/a.ppt"), "changed");
    EXPECT_THAT(Log(), ElementsAre("Error 70 (Permission denied: could not write 2/a.ppt) in procedure "
                                   "RestoreBackupFiles at Line No. 0 of Class Module Project"));
}

TEST_F(RemovingBackups, StopsAtABackupThatCannotBeDeleted)
{
    RunOver({u"1/a.ppt", u"2/a.ppt", u"3/a.ppt"});
    SetMode(folder_.Path(), 0755);
    for (const char16_t* name : {u"1", u"3"})
        SetMode(folder_.PathOf(name), 0777);
    SetMode(folder_.PathOf(u"2"), 0555);

    {
        const OrdinaryUser user;
        project_->RemoveBackupFiles(u"");
    }

    EXPECT_FALSE(FileExists(folder_.PathOf(u"1/a.bak")));
    EXPECT_TRUE(FileExists(folder_.PathOf(u"2/a.bak")));
    EXPECT_TRUE(FileExists(folder_.PathOf(u"3/a.bak")));
    EXPECT_THAT(Log(), ElementsAre("Error 70 (Permission denied: could not delete 2/a.bak) in procedure "
                                   "RemoveBackupFiles at Line No. 0 of Class Module Project"));
}

}  // namespace tessarine
