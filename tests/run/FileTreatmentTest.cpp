#include <gmock/gmock.h>

#include "files/Files.h"
#include "RunTest.h"
#include "saving/CopyFile.h"
#include "saving/FileDateTime.h"
#include "support/OrdinaryUser.h"

namespace tessarine
{

using testing::ElementsAre;
using testing::IsEmpty;

class FileTreatment : public RunTest
{
protected:
    /// PowerPoint changes the file on disk, as saving does.
    void WriteOnSave(const String& path)
    {
        powerPoint_.script.On("Presentation.Save", [this, path] {
            modeAtSave_ = ModeOf(path);
            folder_.Write(path.substr(folder_.Path().size() + 1), "saved");
        });
    }

    /// Gives a file times of long ago and tells what the file system has made of them, which need not know nanoseconds.
    static FileTimes SetOldTimes(const String& path)
    {
        SetFileDateTime(path, {{1000000000, 111}, {1100000000, 123456789}, true});
        return GetFileDateTime(path);
    }

    static void ExpectTimes(const String& path, const FileTimes& expected)
    {
        const FileTimes now = GetFileDateTime(path);
        EXPECT_EQ(now.lastWrite.tv_sec, expected.lastWrite.tv_sec);
        EXPECT_EQ(now.lastWrite.tv_nsec, expected.lastWrite.tv_nsec);
        EXPECT_EQ(now.lastAccess.tv_sec, expected.lastAccess.tv_sec);
        EXPECT_EQ(now.lastAccess.tv_nsec, expected.lastAccess.tv_nsec);
    }

    /// Replaces in a file of a mode, which has another one until it is saved.
    void ReplaceInReadOnlyFile(mode_t mode, mode_t meanwhile)
    {
        const String path = AddFile(u"a.ppt");
        SetMode(path, mode);
        WriteOnSave(path);
        project_->options->ProcessReadonlyFiles = true;

        project_->Replacement();

        EXPECT_THAT(events_, ElementsAre("before a.ppt", "after a.ppt 2"));
        EXPECT_EQ(modeAtSave_, meanwhile);
        EXPECT_EQ(ModeOf(path), mode);
        EXPECT_EQ(ContentOf(path), "saved");
    }

    mode_t modeAtSave_ = 0;
};

using ReadOnlyFile = FileTreatment;
using KeptDate = FileTreatment;
using BackupOfARun = FileTreatment;

TEST_F(ReadOnlyFile, IsReportedAndNeverOpenedUnlessAskedFor)
{
    SetMode(AddFile(u"a.ppt"), 0444);

    project_->Replacement();

    EXPECT_THAT(events_, ElementsAre("before a.ppt", "after a.ppt 0 Read Only File."));
    EXPECT_EQ(CallsOf("Presentations.Open a.ppt"), 0u);
    EXPECT_EQ(ModeOf(folder_.PathOf(u"a.ppt")), 0444u);
    EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(ReadOnlyFile, IsBackedUpEvenWhenItIsSkipped)
{
    SetMode(AddFile(u"a.ppt"), 0444);
    project_->options->BackupMode = true;

    project_->Search();

    EXPECT_EQ(ContentOf(folder_.PathOf(u"a.bak")), "bytes of a.ppt");
}

TEST_F(ReadOnlyFile, IsWritableOnlyWhileItIsProcessed)
{
    ReplaceInReadOnlyFile(0444, 0644);
}

TEST_F(FileTreatment, GivesAWritableFileItsAttributesBackToo)
{
    const String path = AddFile(u"a.ppt");
    SetMode(path, 0644);
    powerPoint_.script.On("Presentation.Save", [path] { SetMode(path, 0444); });

    project_->Replacement();

    EXPECT_EQ(ModeOf(path), 0644u);
}

TEST_F(ReadOnlyFile, StaysWritableAfterAnOpenFailure)
{
    const String path = AddFile(u"a.ppt");
    SetMode(path, 0444);
    powerPoint_.FailOpen(path, 1234, u"damaged");
    project_->options->ProcessReadonlyFiles = true;

    project_->Search();

    EXPECT_EQ(ModeOf(path), 0644u);
}

TEST_F(ReadOnlyFile, DoesNotStopTheNextFile)
{
    SetMode(AddFile(u"a.ppt"), 0444);
    AddFile(u"b.ppt");

    project_->Search();

    EXPECT_THAT(events_, ElementsAre("before a.ppt", "after a.ppt 0 Read Only File.", "before b.ppt", "after b.ppt 2"));
}

TEST_F(KeptDate, SurvivesAReplaceRunToTheNanosecond)
{
    const String path = AddFile(u"a.ppt");
    const FileTimes before = SetOldTimes(path);
    WriteOnSave(path);
    project_->options->KeepOriginalFileDate = true;

    project_->Replacement();

    ASSERT_EQ(before.lastWrite.tv_sec, 1100000000);
    ExpectTimes(path, before);
    EXPECT_EQ(ContentOf(path), "saved");
}

TEST_F(KeptDate, IsKeptForAReadOnlyFileToo)
{
    SetMode(folder_.Path(), 0777);
    const OrdinaryUser user;  // A superuser could write the date of a read-only file.
    const String path = AddFile(u"a.ppt");
    const FileTimes before = SetOldTimes(path);
    SetMode(path, 0444);
    WriteOnSave(path);
    project_->options->KeepOriginalFileDate = true;
    project_->options->ProcessReadonlyFiles = true;

    project_->Replacement();

    ExpectTimes(path, before);
    EXPECT_EQ(ModeOf(path), 0444u);
}

TEST_F(KeptDate, IsNotKeptUnasked)
{
    const String path = AddFile(u"a.ppt");
    const FileTimes before = SetOldTimes(path);
    WriteOnSave(path);

    project_->Replacement();

    EXPECT_NE(GetFileDateTime(path).lastWrite.tv_sec, before.lastWrite.tv_sec);
}

TEST_F(KeptDate, StaysWhenTheFileDoesNotOpen)
{
    const String path = AddFile(u"a.ppt");
    const FileTimes before = SetOldTimes(path);
    powerPoint_.FailOpen(path, 1234, u"damaged");
    project_->options->KeepOriginalFileDate = true;

    project_->Replacement();

    ExpectTimes(path, before);
}

TEST_F(BackupOfARun, IsMadeByAFindRunToo)
{
    AddFile(u"a.ppt");
    project_->options->BackupMode = true;

    project_->Search();

    EXPECT_EQ(ContentOf(folder_.PathOf(u"a.bak")), "bytes of a.ppt");
    EXPECT_THAT(events_, ElementsAre("before a.ppt", "after a.ppt 2"));
}

TEST_F(BackupOfARun, HasTwoDotsForAnExtensionOfFourLetters)
{
    AddFile(u"a.pptx");
    project_->options->BackupMode = true;

    project_->Search();

    EXPECT_EQ(ContentOf(folder_.PathOf(u"a..bak")), "bytes of a.pptx");
    EXPECT_FALSE(FileExists(folder_.PathOf(u"a.bak")));
}

TEST_F(BackupOfARun, HoldsTheFileAsItWasBeforeTheReplacement)
{
    const String path = AddFile(u"a.ppt");
    WriteOnSave(path);
    project_->options->BackupMode = true;

    project_->Replacement();

    EXPECT_EQ(ContentOf(path), "saved");
    EXPECT_EQ(ContentOf(folder_.PathOf(u"a.bak")), "bytes of a.ppt");
}

TEST_F(BackupOfARun, IsOverwrittenByTheNextRun)
{
    const String path = AddFile(u"a.ppt");
    SetMode(path, 0444);
    project_->options->ProcessReadonlyFiles = true;
    project_->options->BackupMode = true;
    project_->Search();
    folder_.Write(u"new", "changed since");
    CopyFile(folder_.PathOf(u"new"), path);

    project_->Search();

    EXPECT_EQ(ContentOf(folder_.PathOf(u"a.bak")), "changed since");
}

TEST_F(BackupOfARun, IsNotMadeUnasked)
{
    AddFile(u"a.ppt");

    project_->Search();

    EXPECT_FALSE(FileExists(folder_.PathOf(u"a.bak")));
}

// Links, pipes, modes and other users are different things on Windows.
#ifndef _WIN32

TEST_F(ReadOnlyFile, KeepsItsOtherModeBitsWhileItIsProcessed)
{
    ReplaceInReadOnlyFile(0551, 0751);
}

TEST_F(FileTreatment, GivesTheOldModeBackToAWritableFileToo)
{
    const String path = AddFile(u"a.ppt");
    SetMode(path, 0640);
    powerPoint_.script.On("Presentation.Save", [path] { SetMode(path, 0666); });

    project_->Replacement();

    EXPECT_EQ(ModeOf(path), 0640u);
}

#endif

}  // namespace tessarine
