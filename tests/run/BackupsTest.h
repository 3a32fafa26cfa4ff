#pragma once

#include <gmock/gmock.h>

#include "files/Files.h"
#include "RunTest.h"

namespace tessarine
{

/// A folder job whose files have been counted, as the processing window meets it after a run.
class Backups : public RunTest
{
protected:
    Backups()
    {
        project_->options->ComaSepAllowedExtensions = u"*.Ppt*";
        project_->options->FileToProcessFolderPath = folder_.Path();
        project_->options->Include_Subfolders = true;
    }

    /// Counts and runs over what lies in the folder, with backups, then changes every file.
    void RunOver(const std::vector<String>& names)
    {
        for (const String& name : names)
            AddFile(name);
        project_->options->BackupMode = true;
        ASSERT_EQ(project_->GetFileToProcessFileCount(), static_cast<std::int32_t>(names.size()));
        project_->Search();
        for (const String& name : names)
            folder_.Write(name, "changed");
    }

    /// Three changed files with backups, in folders of their own.
    void RunOverThree() { RunOver({u"1/a.ppt", u"2/a.ppt", u"3/a.ppt"}); }

    /// Of those three the second stood in the way.
    void ExpectTheFirstAloneRestored() const
    {
        EXPECT_EQ(Content(u"1/a.ppt"), "bytes of 1/a.ppt");
        EXPECT_EQ(Content(u"2/a.ppt"), "changed");
        EXPECT_EQ(Content(u"3/a.ppt"), "changed");
    }

    /// Of those three the backup of the second stood in the way.
    void ExpectTheFirstAloneRemoved()
    {
        EXPECT_FALSE(FileExists(folder_.PathOf(u"1/a.bak")));
        EXPECT_TRUE(FileExists(folder_.PathOf(u"2/a.bak")));
        EXPECT_TRUE(FileExists(folder_.PathOf(u"3/a.bak")));
        EXPECT_THAT(Log(), testing::ElementsAre("Error 70 (Permission denied: could not delete 2/a.bak) in procedure "
                                                "RemoveBackupFiles at Line No. 0 of Class Module Project"));
    }

    std::string Content(StringView name) const { return ContentOf(folder_.PathOf(name)); }
};

using RestoringBackups = Backups;
using RemovingBackups = Backups;

}  // namespace tessarine
