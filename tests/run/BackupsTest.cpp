#include "BackupsTest.h"

#include <gmock/gmock.h>

#include "files/Files.h"

namespace tessarine
{

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

TEST_F(RestoringBackups, BringsBackAFileAndKeepsItsBackup)
{
    RunOver({u"a.ppt", u"my 😀/שלום.ppt"});

    project_->RestoreBackupFiles(u"ignored");

    EXPECT_EQ(Content(u"a.ppt"), "bytes of a.ppt");
    EXPECT_EQ(Content(u"my 😀/שלום.ppt"), "bytes of my 😀/שלום.ppt");
    EXPECT_EQ(Content(u"a.bak"), "bytes of a.ppt");
    EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(RestoringBackups, MissesBackupsOfFourLetterExtensions)
{
    RunOver({u"a.pptx"});

    project_->RestoreBackupFiles(folder_.Path());

    EXPECT_EQ(Content(u"a.pptx"), "changed");
    EXPECT_EQ(Content(u"a..bak"), "bytes of a.pptx");
}

TEST_F(RestoringBackups, ChangesAndShowsNothingWithoutABackup)
{
    AddFile(u"a.ppt");
    project_->GetFileToProcessFileCount();

    project_->RestoreBackupFiles(u"");

    EXPECT_EQ(Content(u"a.ppt"), "bytes of a.ppt");
    EXPECT_THAT(messages_.Messages(), IsEmpty());
    EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(RestoringBackups, AddsTheFilesToThoseOfTheRun)
{
    RunOver({u"a.ppt", u"b.ppt"});

    project_->RestoreBackupFiles(u"");

    EXPECT_THAT(project_->FilesToProcess, SizeIs(4));
    EXPECT_EQ(project_->FilesToProcess[0], project_->FilesToProcess[2]);
}

TEST_F(RestoringBackups, RestoresFilesThatTheSourceNoLongerNames)
{
    RunOver({u"a.ppt"});
    project_->options->FileToProcessFolderPath = folder_.MakeFolder(u"empty");

    project_->RestoreBackupFiles(u"");

    EXPECT_EQ(Content(u"a.ppt"), "bytes of a.ppt");
}

TEST_F(RestoringBackups, GivesBackTheModeThatTheBackupHas)
{
    SetMode(AddFile(u"a.ppt"), 0444);
    project_->options->BackupMode = true;
    project_->Search();
    project_->GetFileToProcessFileCount();
    SetMode(folder_.PathOf(u"a.ppt"), 0600);

    project_->RestoreBackupFiles(u"");

    EXPECT_EQ(ModeOf(folder_.PathOf(u"a.ppt")), 0444u);
}

TEST_F(RestoringBackups, StopsAtAFileThatIsInUse)
{
    RunOver({u"1.ppt", u"2.ppt", u"3.ppt"});
    folder_.Write(u"~$2.ppt");

    project_->RestoreBackupFiles(u"");

    EXPECT_EQ(Content(u"1.ppt"), "bytes of 1.ppt");
    EXPECT_EQ(Content(u"2.ppt"), "changed");
    EXPECT_EQ(Content(u"3.ppt"), "changed");
    EXPECT_THAT(Log(), ElementsAre(testing::HasSubstr("is in use")));
}

TEST_F(RestoringBackups, StopsAtAReadOnlyFileUnlessAskedFor)
{
    RunOver({u"1.ppt", u"2.ppt"});
    SetMode(folder_.PathOf(u"1.ppt"), 0444);

    project_->RestoreBackupFiles(u"");

    EXPECT_EQ(Content(u"1.ppt"), "changed");
    EXPECT_EQ(Content(u"2.ppt"), "changed");
    EXPECT_THAT(Log(), ElementsAre("Error 70 (Permission denied: could not write 1.ppt (it is read-only)) in procedure "
                                   "RestoreBackupFiles at Line No. 0 of Class Module Project"));

    project_->options->ProcessReadonlyFiles = true;
    project_->RestoreBackupFiles(u"");

    EXPECT_EQ(Content(u"1.ppt"), "bytes of 1.ppt");
    EXPECT_EQ(Content(u"2.ppt"), "bytes of 2.ppt");
}

TEST_F(RemovingBackups, DeletesBackupsOfThreeLetterExtensionsOnly)
{
    RunOver({u"a.ppt", u"b.pptx"});

    project_->RemoveBackupFiles(u"ignored");

    EXPECT_FALSE(FileExists(folder_.PathOf(u"a.bak")));
    EXPECT_EQ(Content(u"b..bak"), "bytes of b.pptx");
    EXPECT_EQ(Content(u"a.ppt"), "changed");
    EXPECT_EQ(Content(u"b.pptx"), "changed");
}

TEST_F(RemovingBackups, BuildsTheFileSetAnew)
{
    RunOver({u"a.ppt"});

    project_->RemoveBackupFiles(u"");
    project_->RemoveBackupFiles(u"");

    EXPECT_THAT(project_->FilesToProcess, SizeIs(1));
    EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(RemovingBackups, LeavesOtherBackupsAlone)
{
    RunOver({u"a.ppt"});
    folder_.Write(u"other.bak");

    project_->RemoveBackupFiles(u"");

    EXPECT_EQ(Content(u"other.bak"), "content");
}

TEST_F(RemovingBackups, UsesThePatternsOfTheLastCount)
{
    RunOver({u"a.ppt"});
    project_->options->ComaSepAllowedExtensions = u"*.txt*";

    project_->RemoveBackupFiles(u"");

    EXPECT_FALSE(FileExists(folder_.PathOf(u"a.bak")));
}

TEST_F(RemovingBackups, FindsNothingBeforeTheFirstCount)
{
    AddFile(u"a.ppt");
    folder_.Write(u"a.bak");

    project_->RemoveBackupFiles(u"");

    EXPECT_EQ(Content(u"a.bak"), "content");
    EXPECT_THAT(project_->FilesToProcess, IsEmpty());
}

TEST_F(RemovingBackups, GoesByAListOfFilesToo)
{
    AddFile(u"a.ppt");
    folder_.Write(u"a.bak");
    folder_.Write(u"b.ppt");
    folder_.Write(u"b.bak");
    project_->options->FileToProcessSourceType = 1;
    project_->options->FileToProcessFilepath = folder_.Write(u"list.txt", ToUtf8(folder_.PathOf(u"a.ppt")));
    project_->GetFileToProcessFileCount();

    project_->RemoveBackupFiles(u"");

    EXPECT_FALSE(FileExists(folder_.PathOf(u"a.bak")));
    EXPECT_TRUE(FileExists(folder_.PathOf(u"b.bak")));
}

TEST_F(RemovingBackups, LogsAListThatHasVanished)
{
    project_->options->FileToProcessSourceType = 1;
    project_->options->FileToProcessFilepath = folder_.PathOf(u"missing.txt");

    project_->RemoveBackupFiles(u"");

    EXPECT_THAT(Log(), ElementsAre("Error 53 (File not found: could not open missing.txt) in procedure RetriveFile at "
                                   "Line No. 0 of Class Module Project"));
}

TEST_F(Backups, LogAMissingOptionsObject)
{
    project_->options.reset();

    project_->RemoveBackupFiles(u"");
    project_->RestoreBackupFiles(u"");

    EXPECT_THAT(log_.Lines(),
                ElementsAre("Error 91 (Object variable or With block variable not set) in procedure RemoveBackupFiles "
                            "at Line No. 0 of Class Module Project",
                            "Error 91 (Object variable or With block variable not set) in procedure "
                            "RestoreBackupFiles at Line No. 0 of Class Module Project"));
}

}  // namespace tessarine
