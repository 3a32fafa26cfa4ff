#include <gmock/gmock.h>

#include "engine/Hit.h"
#include "files/FileLock.h"
#include "files/Files.h"
#include "RunTest.h"
#include "saving/FileDateTime.h"

namespace tessarine
{

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;

class DryRun : public RunTest
{
protected:
    DryRun()
    {
        AddPair(u"cat", u"dog");
        project_->IsDryRun = true;
    }
};

TEST_F(DryRun, CountsAndReportsAsTheRunItself)
{
    AddFile(u"a.pptx", u"cat cat");
    AddFile(u"b.pptx", u"cow");

    project_->Replacement();

    EXPECT_THAT(events_, ElementsAre("before a.pptx", "after a.pptx 1", "before b.pptx", "after b.pptx 2"));
    EXPECT_EQ(results_.at(0)->Item(1)->Slides_Replaced(), 2);
    EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(DryRun, RehearsesTheSaveAndCloses)
{
    AddFile(u"a.pptx");

    project_->Replacement();

    EXPECT_EQ(CallsOf("Presentation.RehearseSave a.pptx"), 1U);
    EXPECT_EQ(CallsOf("Presentation.Close a.pptx"), 1U);
    EXPECT_THAT(Calls(), Not(Contains(StartsWith("Presentation.Save"))));
}

TEST_F(DryRun, MakesNoBackup)
{
    AddFile(u"a.pptx");
    project_->options->BackupMode = true;

    project_->Replacement();

    EXPECT_THAT(FilesOfFolder(folder_.Path()), SizeIs(1));
}

TEST_F(DryRun, LeavesProtectionAndDatesAlone)
{
    const String path = AddFile(u"a.pptx");
    SetFileDateTime(path, {{1000000000, 0}, {1100000000, 0}, true});
    SetMode(path, 0444);
    std::int32_t bits = 0;
    powerPoint_.script.On("Presentation.RehearseSave", [&] { bits = GetAttributes(path).bits; });
    project_->options->ProcessReadonlyFiles = true;
    project_->options->KeepOriginalFileDate = true;

    project_->Replacement();

    EXPECT_THAT(events_, ElementsAre("before a.pptx", "after a.pptx 1"));
    EXPECT_EQ(bits & FileAttribute::ReadOnly, FileAttribute::ReadOnly);
    EXPECT_EQ(GetFileDateTime(path).lastWrite.tv_sec, 1100000000);
}

TEST_F(DryRun, LeavesReadOnlyFilesOutAsTheRunItself)
{
    const String path = AddFile(u"a.pptx");
    SetMode(path, 0444);

    project_->Replacement();

    EXPECT_THAT(events_, ElementsAre("before a.pptx", "after a.pptx 0 Read Only File."));
}

TEST_F(DryRun, MeetsFilesThatAreInUse)
{
    const String path = AddFile(u"a.pptx");
    const FileLock other(path);

    project_->Replacement();

    EXPECT_THAT(passedOver_, ElementsAre(StartsWith("a.pptx ")));
}

TEST_F(DryRun, ReportsAFailureThatTheSaveWouldMeet)
{
    AddFile(u"a.pptx");
    powerPoint_.script.Fail("Presentation.RehearseSave", 1234, u"disk full");

    project_->Replacement();

    EXPECT_THAT(passedOver_, ElementsAre("a.pptx 1234"));
}

TEST_F(DryRun, IsNoMatterInAFind)
{
    AddFile(u"a.pptx");

    project_->Search();

    EXPECT_THAT(Calls(), Not(Contains(StartsWith("Presentation.RehearseSave"))));
    EXPECT_EQ(TextOfFile(u"a.pptx"), u"a cat");
}

TEST_F(DryRun, TellsWhatEachHitWouldBecome)
{
    AddFile(u"a.pptx");
    std::vector<String> became;
    project_->HitFound = [&](const Hit& hit) { became.push_back(hit.before + hit.becomes.value_or(u"?") + hit.after); };

    project_->Replacement();

    EXPECT_THAT(became, ElementsAre(u"a dog"));
}

using HitsOfARun = RunTest;

TEST_F(HitsOfARun, AreToldBetweenTheEventsOfTheirFile)
{
    AddPair(u"cat", u"dog");
    AddFile(u"a.pptx");
    AddFile(u"b.pptx");
    project_->HitContext = 1;
    project_->HitFound = [&](const Hit& hit) { events_.push_back("hit " + ToUtf8(hit.before + hit.text + hit.after)); };

    project_->Search();

    EXPECT_THAT(events_, ElementsAre("before a.pptx", "hit  cat", "after a.pptx 1", "before b.pptx", "hit  cat",
                                     "after b.pptx 1"));
}

}  // namespace tessarine
