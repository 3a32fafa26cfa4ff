#include "batch/ReportedRun.h"

#include <algorithm>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "batch/BatchCall.h"
#include "batch/JobProject.h"
#include "engine/CounterStatuses.h"
#include "files/Files.h"
#include "log/Warnings.h"
#include "model/Project.h"
#include "platform/FolderOf.h"
#include "support/ErrorLogRecorder.h"
#include "support/FakePowerPoint.h"
#include "support/TemporaryFolder.h"

namespace tessarine::batch
{
namespace
{

using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::Not;
using testing::StartsWith;

constexpr std::int32_t unknownError = FailureNumber::FileCorrupt;
constexpr std::int32_t passwordError = FailureNumber::Unspecified;

/// A run of real files in a folder, whose contents the stand-in for PowerPoint supplies. Each file holds "cat" twice
/// unless a test says otherwise; the job is "cat" by "dog" in slides.
class ReportedRunTest : public testing::Test
{
protected:
    ReportedRunTest() : project(powerPoint.Provider())
    {
        call.pairs = {{u"cat", u"dog"}};
        call.setting.InSlides = true;
    }

    FakeDeck Add(const String& name, const String& text = u"cat and cat")
    {
        const FakeDeck deck({.slides = {{.shapes = {Placeholder(text)}}}});
        powerPoint.Put(folder.Write(name), deck);
        files.push_back({folder.PathOf(name), {}});
        return deck;
    }

    void AddThree()
    {
        for (const auto* name : {u"a.ppt", u"b.ppt", u"c.ppt"})
            Add(name);
    }

    String PathOf(const String& name) const { return folder.PathOf(name); }

    std::size_t Run(ReportedRun::Mode mode = ReportedRun::Mode::Replace)
    {
        FillProject(*project, call);
        ReportedRun run(*project, mode, [this](const FileReport& file) {
            reports.push_back(file);
            if (onReport)
                onReport();
        });
        run.HitsToKeep = hitsToKeep;
        run.HitBytesToKeep = hitBytesToKeep;
        run.CancelRequested = cancelRequested;
        run.Started = [this](std::size_t file) {
            started.push_back(NameOf(files[file].path));
            return !startsNone;
        };
        return run.Run(files);
    }

    static std::string NameOf(const String& path) { return ToUtf8(FileNameOf(StringView(path))); }

    /// "a.ppt 1 2" for a counted file with its occurrences, "a.ppt 0 reason" for a failed one.
    std::vector<std::string> Lines() const
    {
        std::vector<std::string> lines;
        for (const FileReport& file : reports) {
            const std::string rest =
                file.status == FileStatus::NotProcessed ? ToUtf8(file.error) : std::to_string(file.Occurrences());
            lines.push_back(NameOf(file.path) + " " + std::to_string(file.status) + " " + rest);
        }
        return lines;
    }

    std::vector<std::string> Saves() const
    {
        std::vector<std::string> saves;
        for (const std::string& done : powerPoint.script.Calls()) {
            if (done.starts_with("Presentation.Save"))
                saves.push_back(NameOf(FromUtf8(done)));
        }
        return saves;
    }

    ErrorLogRecorder log;
    TemporaryFolder folder;
    FakePowerPoint powerPoint;
    ProjectOwner project;
    BatchCall call;
    std::vector<JobFile> files;
    std::size_t hitsToKeep = 0;
    std::size_t hitBytesToKeep = 1'000'000;
    std::function<bool()> cancelRequested;
    bool startsNone = false;
    std::function<void()> onReport;
    std::vector<FileReport> reports;
    std::vector<std::string> started;
};

TEST_F(ReportedRunTest, GivesOneReportForEachFileInOrder)
{
    Add(u"a.ppt");
    Add(u"b.ppt", u"nothing here");
    Add(u"c.ppt");

    EXPECT_EQ(Run(), 0u);

    EXPECT_THAT(Lines(), ElementsAre("a.ppt 1 2", "b.ppt 2 0", "c.ppt 1 2"));
    EXPECT_THAT(started, ElementsAre("a.ppt", "b.ppt", "c.ppt"));
    EXPECT_THAT(Saves(), ElementsAre("a.ppt", "b.ppt", "c.ppt"));
    EXPECT_EQ(reports[0].pairs[0].find, u"cat");
    EXPECT_EQ(reports[0].pairs[0].replace, u"dog");
}

TEST_F(ReportedRunTest, SavesNothingInAFind)
{
    AddThree();

    Run(ReportedRun::Mode::Find);

    EXPECT_THAT(Lines(), ElementsAre("a.ppt 1 2", "b.ppt 1 2", "c.ppt 1 2"));
    EXPECT_THAT(Saves(), ElementsAre());
}

TEST_F(ReportedRunTest, StartsNothingWithoutFiles)
{
    EXPECT_EQ(Run(), 0u);

    EXPECT_THAT(Lines(), ElementsAre());
    EXPECT_EQ(powerPoint.script.Count("CreateApplication"), 0);
}

TEST_F(ReportedRunTest, SaysWhyAFileCannotBeOpenedWhereverItStands)
{
    for (const auto* bad : {u"a.ppt", u"b.ppt", u"c.ppt"}) {
        files.clear();
        reports.clear();
        AddThree();
        powerPoint.FailOpen(PathOf(bad), unknownError, u"the part is damaged");

        Run();

        std::vector<std::string> expected{"a.ppt 1 2", "b.ppt 1 2", "c.ppt 1 2"};
        std::ranges::replace(expected, ToUtf8(bad) + " 1 2", ToUtf8(bad) + " 0 the part is damaged");
        EXPECT_EQ(Lines(), expected);
        project->FindAndReplaceList->Remove(std::int32_t{1});
    }
}

TEST_F(ReportedRunTest, GivesNeighboursThatFailTheirOwnReasons)
{
    AddThree();
    powerPoint.FailOpen(PathOf(u"a.ppt"), unknownError, u"first reason");
    powerPoint.FailOpen(PathOf(u"b.ppt"), unknownError, u"second reason");

    Run();

    EXPECT_THAT(Lines(), ElementsAre("a.ppt 0 first reason", "b.ppt 0 second reason", "c.ppt 1 2"));
}

TEST_F(ReportedRunTest, GivesTheReasonInPlaceOfTheTextForPasswords)
{
    AddThree();
    powerPoint.FailOpen(PathOf(u"a.ppt"), passwordError, u"cannot open");
    powerPoint.FailOpen(PathOf(u"c.ppt"), 1004, u"cannot open");

    Run();

    EXPECT_THAT(Lines(), ElementsAre("a.ppt 0 cannot open", "b.ppt 1 2", "c.ppt 0 cannot open"));
}

TEST_F(ReportedRunTest, ReportsAReadOnlyFileWithoutOpeningIt)
{
    AddThree();
    SetMode(PathOf(u"a.ppt"), 0444);
    SetMode(PathOf(u"b.ppt"), 0444);

    Run();

    EXPECT_THAT(Lines(), ElementsAre("a.ppt 0 Read Only File.", "b.ppt 0 Read Only File.", "c.ppt 1 2"));
    EXPECT_EQ(powerPoint.script.Count("CreateApplication"), 1);
}

TEST_F(ReportedRunTest, GivesTheInnermostTextOfAFailureInsideAFile)
{
    for (int nth : {1, 2, 3}) {
        files.clear();
        reports.clear();
        AddThree();
        powerPoint.script.FailOnce("Slide.Shapes", 57, u"the part can't be read", nth);

        Run();

        std::vector<std::string> expected{"a.ppt 1 2", "b.ppt 1 2", "c.ppt 1 2"};
        std::string& bad = expected[static_cast<std::size_t>(nth) - 1];
        bad = bad.substr(0, 5) + " 0 the part can't be read";
        EXPECT_EQ(Lines(), expected);
        project->FindAndReplaceList->Remove(std::int32_t{1});
    }
}

TEST_F(ReportedRunTest, ReportsAFailedSaveForItsFile)
{
    AddThree();
    powerPoint.script.FailOnce("Presentation.Save", 61, u"the disk is full", 2);

    Run();

    EXPECT_THAT(Lines(), ElementsAre("a.ppt 1 2", "b.ppt 0 the disk is full", "c.ppt 1 2"));
}

TEST_F(ReportedRunTest, NamesAFileOnceInItsReport)
{
    AddThree();
    powerPoint.script.FailOnce("Presentation.Save", 61, u"Can't save \"" + PathOf(u"a.ppt") + u"\": no space");
    project->BeforFileProcess += [](const String& path) { Warn(path, u"could not read " + path); };

    Run();

    EXPECT_THAT(Lines(), ElementsAre("a.ppt 0 Can't save it: no space", "b.ppt 1 2", "c.ppt 1 2"));
    for (const FileReport& report : reports)
        EXPECT_THAT(report.warnings, ElementsAre(u"could not read it"));
}

TEST_F(ReportedRunTest, NamesARefusedFileOnceInItsReport)
{
    files.push_back({PathOf(u"a.ppt"), u"The file " + PathOf(u"a.ppt") + u" is a folder."});

    Run();

    EXPECT_THAT(Lines(), ElementsAre("a.ppt 0 The file is a folder."));
}

TEST_F(ReportedRunTest, ReportsAMissingFileInEveryModeOfTheRun)
{
    // First in the run, after a processed file, after a file that failed to open, after a skipped one.
    for (const auto* name : {u"a.ppt", u"b.ppt", u"c.ppt", u"d.ppt", u"e.ppt", u"f.ppt", u"g.ppt"})
        Add(name);
    DeleteFile(PathOf(u"a.ppt"));
    DeleteFile(PathOf(u"c.ppt"));
    powerPoint.FailOpen(PathOf(u"d.ppt"), unknownError, u"damaged");
    DeleteFile(PathOf(u"e.ppt"));
    SetMode(PathOf(u"f.ppt"), 0444);
    DeleteFile(PathOf(u"g.ppt"));

    Run();

    const auto lines = Lines();
    ASSERT_EQ(lines.size(), 7u);
    EXPECT_EQ(lines[1], "b.ppt 1 2");
    EXPECT_EQ(lines[3], "d.ppt 0 damaged");
    EXPECT_EQ(lines[5], "f.ppt 0 Read Only File.");
    for (const std::size_t gone : {0u, 2u, 4u, 6u})
        EXPECT_THAT(lines[gone], testing::HasSubstr(" 0 File not found")) << lines[gone];
    EXPECT_THAT(Saves(), ElementsAre("b.ppt"));
}

TEST_F(ReportedRunTest, ChangesNoFileWhoseBackupCannotBeMade)
{
    // In each mode of the run: first, after a processed file, after a failed one.
    call.backup = true;
    for (const auto* name : {u"a.ppt", u"b.ppt", u"c.ppt", u"d.ppt", u"e.ppt"})
        Add(name);
    for (const auto* name : {u"a.bak", u"c.bak", u"e.bak"})
        folder.MakeFolder(name);
    powerPoint.FailOpen(PathOf(u"d.ppt"), unknownError, u"damaged");

    Run();

    ASSERT_EQ(reports.size(), 5u);
    for (const std::size_t at : {0u, 2u, 4u})
        EXPECT_EQ(reports[at].status, FileStatus::NotProcessed) << NameOf(reports[at].path);
    EXPECT_EQ(reports[3].error, u"damaged");
    EXPECT_THAT(Saves(), ElementsAre("b.ppt"));
    EXPECT_TRUE(FileExists(PathOf(u"b.bak")));
}

TEST_F(ReportedRunTest, GivesAPathThatStandsTwiceTwoReports)
{
    Add(u"a.ppt");
    files.push_back(files.front());
    powerPoint.FailOpen(PathOf(u"a.ppt"), unknownError, u"damaged");

    Run();

    EXPECT_THAT(Lines(), ElementsAre("a.ppt 0 damaged", "a.ppt 1 2"));
}

TEST_F(ReportedRunTest, KeepsFailuresApartWhenAPathStandsTwice)
{
    Add(u"a.ppt");
    files.push_back(files.front());
    project->BeforFileProcess += [calls = 0](const String&) mutable {
        if (++calls == 1)
            throw Failure(5, u"a receiver failed");
    };

    Run();

    EXPECT_THAT(Lines(), ElementsAre("a.ppt 0 a receiver failed", "a.ppt 1 2"));
    EXPECT_THAT(Saves(), ElementsAre("a.ppt"));
}

TEST_F(ReportedRunTest, ReportsRefusedFilesInTheirPlacesUntouched)
{
    files.push_back({u"/x/first", u"not this one"});
    Add(u"a.ppt");
    files.push_back({u"/x/middle", u"nor this"});
    files.push_back({u"/x/again", u"nor that"});
    Add(u"b.ppt");
    files.push_back({u"/x/last", u"nor the last"});

    EXPECT_EQ(Run(), 0u);

    EXPECT_THAT(Lines(), ElementsAre("first 0 not this one", "a.ppt 1 2", "middle 0 nor this", "again 0 nor that",
                                     "b.ppt 1 2", "last 0 nor the last"));
    EXPECT_THAT(started, ElementsAre("a.ppt", "b.ppt"));
}

TEST_F(ReportedRunTest, FailsEveryFileForTheSameReasonWithoutPowerPoint)
{
    AddThree();
    files.push_back({u"/x/refused", u"its own reason"});
    powerPoint.script.Fail("CreateApplication", 429, u"ActiveX component can't create object");

    EXPECT_EQ(Run(), 0u);

    EXPECT_THAT(Lines(), ElementsAre("a.ppt 0 ActiveX component can't create object",
                                     "b.ppt 0 ActiveX component can't create object",
                                     "c.ppt 0 ActiveX component can't create object", "refused 0 its own reason"));
    EXPECT_EQ(powerPoint.script.Count("CreateApplication"), 1);
}

TEST_F(ReportedRunTest, FailsTheOtherFilesWhenPowerPointCannotBeStartedAgain)
{
    call.restartAfter = 1;
    AddThree();
    powerPoint.script.On("Presentation.Save",
                         [this] { powerPoint.script.Fail("CreateApplication", 429, u"none to start"); });

    EXPECT_EQ(Run(), 0u);

    EXPECT_THAT(Lines(), ElementsAre("a.ppt 1 2", "b.ppt 0 none to start", "c.ppt 0 none to start"));
}

TEST_F(ReportedRunTest, StartsALostServerAgainForTheSameFile)
{
    AddThree();
    powerPoint.FailOpen(PathOf(u"b.ppt"), 462, u"gone", 2);

    Run();

    EXPECT_THAT(Lines(), ElementsAre("a.ppt 1 2", "b.ppt 1 2", "c.ppt 1 2"));
}

TEST_F(ReportedRunTest, ReportsEveryFileWhenAReceiverRaises)
{
    AddThree();
    project->BeforFileProcess += [](const String& path) {
        if (path.ends_with(u"b.ppt"))
            throw Failure(5, u"a receiver failed");
    };

    Run();

    EXPECT_THAT(Lines(), ElementsAre("a.ppt 1 2", "b.ppt 0 a receiver failed", "c.ppt 1 2"));
    EXPECT_TRUE(project->options->IsFindOnly);
}

TEST_F(ReportedRunTest, ReportsAFileOnceWhenTheReportRaises)
{
    AddThree();
    onReport = [] { throw Failure(5, u"a receiver failed"); };

    Run();

    EXPECT_THAT(Lines(), ElementsAre("a.ppt 1 2", "b.ppt 1 2", "c.ppt 1 2"));
}

TEST_F(ReportedRunTest, KeepsARefusalsReasonWhenTheReportRaises)
{
    Add(u"a.ppt");
    files.push_back({u"/x/refused", u"its own reason"});
    Add(u"b.ppt");
    onReport = [this] {
        if (reports.size() == 1)
            throw Failure(5, u"a receiver failed");
    };

    Run();

    EXPECT_THAT(Lines(), ElementsAre("a.ppt 1 2", "refused 0 its own reason", "b.ppt 1 2"));
    EXPECT_THAT(Saves(), ElementsAre("a.ppt", "b.ppt"));
}

TEST_F(ReportedRunTest, LogsWhatEndsTheRunAndShutsPowerPoint)
{
    AddThree();
    powerPoint.script.FailOnce("Slide.Shapes", 57, u"the part can't be read", 1);

    Run();

    EXPECT_THAT(log.Lines(), Contains(StartsWith("Error 91 ")));
    EXPECT_EQ(project->IsProcessCancel, false);
    EXPECT_TRUE(project->options->IsFindOnly);
}

TEST_F(ReportedRunTest, LeavesTheFilesAfterACancelWithoutAReport)
{
    AddThree();
    files.push_back({u"/x/refused", u"not reached"});
    bool wanted = false;
    cancelRequested = [&] { return wanted; };
    onReport = [&] { wanted = true; };

    EXPECT_EQ(Run(), 3u);

    EXPECT_THAT(Lines(), ElementsAre("a.ppt 1 2"));
    EXPECT_THAT(Saves(), ElementsAre("a.ppt"));
    EXPECT_EQ(powerPoint.Running(), 0);
    EXPECT_FALSE(project->IsProcessCancel);
}

TEST_F(ReportedRunTest, StopsBeforeAFileThatMayNotBeStarted)
{
    AddThree();
    onReport = [&] { startsNone = true; };

    EXPECT_EQ(Run(), 2u);

    EXPECT_THAT(Lines(), ElementsAre("a.ppt 1 2"));
    EXPECT_THAT(Saves(), ElementsAre("a.ppt"));
}

TEST_F(ReportedRunTest, CanBeCancelledAfterAFailedFile)
{
    AddThree();
    powerPoint.FailOpen(PathOf(u"a.ppt"), unknownError, u"damaged");
    bool wanted = false;
    cancelRequested = [&] { return wanted; };
    onReport = [&] { wanted = true; };

    EXPECT_EQ(Run(), 2u);

    EXPECT_THAT(Lines(), ElementsAre("a.ppt 0 damaged"));
}

TEST_F(ReportedRunTest, LeavesNothingWhenCancelledDuringTheLastFile)
{
    Add(u"a.ppt");
    bool wanted = false;
    cancelRequested = [&] { return wanted; };
    onReport = [&] { wanted = true; };

    EXPECT_EQ(Run(), 0u);
}

TEST_F(ReportedRunTest, StopsAtTheProjectsOwnCancelFlag)
{
    AddThree();
    onReport = [&] { project->IsProcessCancel = true; };

    EXPECT_EQ(Run(), 2u);

    EXPECT_THAT(Lines(), ElementsAre("a.ppt 1 2"));
}

TEST_F(ReportedRunTest, KeepsTheHitsOfEachFileUpToItsBound)
{
    AddThree();
    Add(u"d.ppt", u"the cat");
    Add(u"e.ppt", u"cat, cat, cat and cat");
    hitsToKeep = 2;

    Run(ReportedRun::Mode::Find);

    EXPECT_EQ(reports[0].hits.size(), 2u);
    EXPECT_EQ(reports[0].hitsLeftOut, 0);
    ASSERT_EQ(reports[3].hits.size(), 1u);
    EXPECT_EQ(reports[3].hits[0].position, 5);
    EXPECT_EQ(reports[3].hits[0].place->location, Location::Slides);
    ASSERT_EQ(reports[4].hits.size(), 2u);
    EXPECT_EQ(reports[4].hits[1].position, 6);
    EXPECT_EQ(reports[4].hitsLeftOut, 2);
}

TEST_F(ReportedRunTest, KeepsNoMoreHitsThanFitIntoItsBytes)
{
    for (const auto* name : {u"a.ppt", u"b.ppt"})
        Add(name, u"cat cat cat");
    hitsToKeep = 10;
    // Each has the other two around it.
    hitBytesToKeep = sizeof(HitPlace) + 2 * (sizeof(Hit) + 11 * sizeof(char16_t));

    Run(ReportedRun::Mode::Find);

    for (const FileReport& report : reports) {
        EXPECT_EQ(report.hits.size(), 2u);
        EXPECT_EQ(report.hitsLeftOut, 1);
    }
}

TEST_F(ReportedRunTest, AsksForNoHitsUnlessSomeAreToBeKept)
{
    Add(u"a.ppt");
    bool isAsked = true;
    project->BeforFileProcess += [&](const String&) { isAsked = static_cast<bool>(project->HitFound); };

    Run();

    EXPECT_FALSE(isAsked);
    EXPECT_THAT(reports[0].hits, testing::IsEmpty());
}

TEST_F(ReportedRunTest, GivesAFailedFileNoHitsAndItsNeighboursTheirOwn)
{
    AddThree();
    hitsToKeep = 10;
    // After the hits of the second file were told.
    powerPoint.script.FailOnce("Presentation.Save", 61, u"the disk is full", 2);

    Run();

    EXPECT_THAT(Lines(), ElementsAre("a.ppt 1 2", "b.ppt 0 the disk is full", "c.ppt 1 2"));
    EXPECT_EQ(reports[0].hits.size(), 2u);
    EXPECT_THAT(reports[1].hits, testing::IsEmpty());
    EXPECT_EQ(reports[2].hits.size(), 2u);
}

TEST_F(ReportedRunTest, LeavesNoReceiverOfHitsBehind)
{
    Add(u"a.ppt");
    hitsToKeep = 10;

    Run();

    EXPECT_FALSE(project->HitFound);
}

TEST_F(ReportedRunTest, TakesMoreFilesThanOneRunHoldsInTurns)
{
    Add(u"a.ppt");
    const std::size_t many = 33'000;
    files.assign(many, files.front());

    EXPECT_EQ(Run(ReportedRun::Mode::Find), 0u);

    ASSERT_EQ(reports.size(), many);
    EXPECT_EQ(std::ranges::count(reports, FileStatus::Counted, &FileReport::status), static_cast<std::ptrdiff_t>(many));
}

TEST_F(ReportedRunTest, ReportsEachOfManyFailedFiles)
{
    Add(u"a.ppt");
    files.assign(ReportedRun::FilesPerTurn + 3, files.front());
    powerPoint.FailOpenAlways(PathOf(u"a.ppt"), unknownError, u"damaged");

    Run();

    EXPECT_EQ(Lines().size(), ReportedRun::FilesPerTurn + 3);
    EXPECT_THAT(Lines(), Each("a.ppt 0 damaged"));
}

}  // namespace
}  // namespace tessarine::batch
