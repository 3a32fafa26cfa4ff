#include <gmock/gmock.h>

#include <fstream>
#include <vector>

#include "files/Files.h"
#include "log/Treatments.h"
#include "RunTest.h"

namespace tessarine
{

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace
{

const std::string missing = "Error 53 (File not found: could not find ";
const std::string inSearch = ") in procedure Search at Line No. 0 of Class Module Project";
const std::string notSet = "Object variable or With block variable not set";
const std::string noServer = "ActiveX component can't create object";

}  // namespace

/// Set-up and the first file until its open: logged, sorted like an open failure, served once.
using GeneralHandler = RunTest;
/// From the open of a file on, until it is processed.
using CapturedMode = RunTest;
/// After a processed file: a failure leaves the run at once.
using NoHandler = RunTest;
using OpenFailure = RunTest;
using SetUpFailure = RunTest;
using PassedOverFailures = RunTest;
using OpenedHook = RunTest;

TEST_F(OpenFailure, OpensTheFileAgainUntilPowerPointStays)
{
    const String path = AddFile(u"a.ppt");
    powerPoint_.FailOpen(path, 462, u"The remote server machine does not exist or is unavailable");
    powerPoint_.FailOpen(path, FailureNumber::RemoteCallFailed, u"The remote procedure call failed", 20);

    project_->Search();

    EXPECT_EQ(CallsOf("Presentations.Open a.ppt"), 22u);
    EXPECT_EQ(CallsOf("CreateApplication"), 22u);
    EXPECT_THAT(events_, ElementsAre("before a.ppt", "after a.ppt 2"));
    EXPECT_THAT(log_.Lines(), IsEmpty());
    EXPECT_THAT(passedOver_, IsEmpty());
}

TEST_F(OpenFailure, WithAPasswordsNumberIsReportedAsOne)
{
    powerPoint_.FailOpen(AddFile(u"a.ppt"), 1004, u"refused");
    powerPoint_.FailOpen(AddFile(u"b.ppt"), FailureNumber::Unspecified, u"refused");
    AddFile(u"c.ppt");

    project_->Search();

    EXPECT_THAT(events_,
                ElementsAre("before a.ppt", "after a.ppt 0   Wrong Password has been supplied.", "before b.ppt",
                            "after b.ppt 0   Wrong Password has been supplied.", "before c.ppt", "after c.ppt 2"));
    EXPECT_THAT(log_.Lines(), IsEmpty());
    EXPECT_THAT(passedOver_, ElementsAre("a.ppt 1004", "b.ppt -2147467259"));
}

TEST_F(OpenFailure, OfAPasswordGetsAResultOfItsOwn)
{
    AddFile(u"a.ppt");
    powerPoint_.FailOpen(AddFile(u"b.ppt"), 1004, u"refused");

    project_->Search();

    ASSERT_THAT(results_, SizeIs(2));
    EXPECT_NE(results_[0], results_[1]);
    EXPECT_EQ(results_[0]->mError, u"");
}

TEST_F(OpenFailure, OfTheFirstFileGivesNoResult)
{
    powerPoint_.FailOpen(AddFile(u"a.ppt"), FailureNumber::BadFormat, u"not a presentation");

    project_->Search();

    EXPECT_THAT(events_, ElementsAre("before a.ppt", "after nothing"));
    EXPECT_THAT(log_.Lines(), ElementsAre("not a presentation"));
    EXPECT_THAT(passedOver_, ElementsAre("a.ppt -2147024885"));
    EXPECT_EQ(powerPoint_.Running(), 0);
}

TEST_F(OpenFailure, OfALaterFileRepeatsThePreviousResult)
{
    AddFile(u"a.ppt");
    powerPoint_.FailOpen(AddFile(u"b.ppt"), 1234, u"damaged");

    project_->Search();

    EXPECT_THAT(events_, ElementsAre("before a.ppt", "after a.ppt 2", "before b.ppt", "after a.ppt 2"));
    ASSERT_THAT(results_, SizeIs(2));
    EXPECT_EQ(results_[0], results_[1]);
    EXPECT_THAT(passedOver_, ElementsAre("b.ppt 1234"));
}

TEST_F(OpenFailure, RepeatsTheReportOfASkippedFile)
{
    SetMode(AddFile(u"a.ppt"), 0444);
    powerPoint_.FailOpen(AddFile(u"b.ppt"), 1234, u"damaged");

    project_->Search();

    EXPECT_THAT(events_, ElementsAre("before a.ppt", "after a.ppt 0 Read Only File.", "before b.ppt",
                                     "after a.ppt 0 Read Only File."));
}

TEST_F(SetUpFailure, WithoutPowerPointIsReportedOnceAndEndsTheRun)
{
    AddFile(u"a.ppt");
    powerPoint_.script.Fail("CreateApplication", 429, FromUtf8(noServer));

    EXPECT_EQ(SearchFails(), 91) << "there is nothing to quit";

    EXPECT_THAT(log_.Lines(), ElementsAre("Error 429 (" + noServer + inSearch, noServer));
    EXPECT_THAT(events_, ElementsAre("after nothing"));
    EXPECT_THAT(passedOver_, ElementsAre(" 429"));
    EXPECT_THAT(messages_.Pointers(), ElementsAre(MousePointer::Hourglass));
}

TEST_F(SetUpFailure, OfASecondRunMeetsNoPowerPointOfTheFirst)
{
    project_->Search();
    powerPoint_.script.Fail("CreateApplication", 429, FromUtf8(noServer));

    EXPECT_EQ(SearchFails(), 91) << "there is nothing to quit";
    EXPECT_EQ(CallsOf("Application.Quit"), 1u);
}

TEST_F(SetUpFailure, WithoutAProviderEndsTheRun)
{
    const ProjectOwner project;

    EXPECT_EQ(Skip([&] { project->Search(); }), 91);

    EXPECT_THAT(log_.Lines(), ElementsAre("Error 429 (" + noServer + inSearch, noServer));
}

TEST_F(SetUpFailure, OfAReplacementLeavesTheFindFlagOff)
{
    const ProjectOwner project;

    project->Replacement();

    EXPECT_THAT(log_.Lines(), ElementsAre("Error 429 (" + noServer + inSearch, noServer,
                                          "Error 91 (" + notSet +
                                              ") in procedure Replacement at Line No. 0 of Class Module Project"));
    EXPECT_FALSE(project->options->IsFindOnly);
}

TEST_F(SetUpFailure, OfALostPowerPointOpensAnEmptyPath)
{
    AddFile(u"a.ppt");
    powerPoint_.script.FailOnce("Application.DisplayAlerts =", 462, u"gone");

    EXPECT_EQ(SearchFails(), 0);

    EXPECT_THAT(Calls(), ElementsAre("CreateApplication", "Application.DisplayAlerts = 0", "AttachToRunning",
                                     "Application.DisplayAlerts = 0", "Application.Quit", "CreateApplication",
                                     "Application.DisplayAlerts = 0", "Presentations.Open", "Application.Quit",
                                     "AttachToRunning"));
    EXPECT_THAT(log_.Lines(), ElementsAre("Error 462 (gone" + inSearch, "File not found"));
    EXPECT_THAT(events_, ElementsAre("after nothing"));
    EXPECT_THAT(passedOver_, ElementsAre(" -2147024894"));
    EXPECT_EQ(powerPoint_.Running(), 0);
}

TEST_F(SetUpFailure, WithAPasswordsNumberNamesNoFile)
{
    powerPoint_.script.FailOnce("Application.AutomationSecurity =", 1004, u"refused");

    EXPECT_EQ(SearchFails(), 0);

    EXPECT_THAT(events_, ElementsAre("after  0   Wrong Password has been supplied."));
    EXPECT_THAT(log_.Lines(), ElementsAre("Error 1004 (refused" + inSearch));
}

TEST_F(SetUpFailure, AfterTheLoopReportsNothingAndEndsAgain)
{
    powerPoint_.script.FailOnce("Application.Quit", 1234, u"busy");

    EXPECT_EQ(SearchFails(), 0);

    EXPECT_THAT(events_, ElementsAre("after nothing"));
    EXPECT_EQ(CallsOf("Application.Quit"), 2u);
    EXPECT_EQ(messages_.Pointers().back(), MousePointer::Default);
    EXPECT_THAT(passedOver_, IsEmpty()) << "the failure belongs to no file";
}

TEST_F(GeneralHandler, SkipsAFirstFileThatHasVanishedAndGoesOn)
{
    AddMissingFile(u"a.ppt");
    AddFile(u"b.ppt");

    EXPECT_EQ(SearchFails(), 0);

    EXPECT_THAT(Log(), ElementsAre(missing + "a.ppt" + inSearch, "File not found: could not find a.ppt"));
    EXPECT_THAT(events_, ElementsAre("before a.ppt", "after nothing", "before b.ppt", "after b.ppt 2"));
    EXPECT_THAT(passedOver_, ElementsAre("a.ppt 53"));
    EXPECT_EQ(powerPoint_.Running(), 0);
}

TEST_F(GeneralHandler, ServesOnce)
{
    AddMissingFile(u"a.ppt");
    AddMissingFile(u"b.ppt");
    AddFile(u"c.ppt");

    EXPECT_EQ(SearchFails(), 53);

    EXPECT_THAT(events_, ElementsAre("before a.ppt", "after nothing", "before b.ppt"));
    EXPECT_EQ(CallsOf("Application.Quit"), 0u);
    EXPECT_THAT(passedOver_, ElementsAre("a.ppt 53"));
}

TEST_F(GeneralHandler, ServesAfterSkippedReadOnlyFiles)
{
    SetMode(AddFile(u"a.ppt"), 0444);
    AddMissingFile(u"b.ppt");
    AddFile(u"c.ppt");

    EXPECT_EQ(SearchFails(), 0);

    EXPECT_THAT(events_, ElementsAre("before a.ppt", "after a.ppt 0 Read Only File.", "before b.ppt",
                                     "after a.ppt 0 Read Only File.", "before c.ppt", "after c.ppt 2"));
}

TEST_F(GeneralHandler, SkipsAFirstFileThatCannotBeBackedUp)
{
    AddFile(u"a.ppt/a.ppt");
    AddFile(u"b.ppt");
    project_->options->BackupMode = true;

    EXPECT_EQ(SearchFails(), 0);

    EXPECT_THAT(events_, ElementsAre("before a.ppt/a.ppt", "after nothing", "before b.ppt", "after b.ppt 2"));
    EXPECT_THAT(passedOver_, ElementsAre("a.ppt/a.ppt 76"));
    EXPECT_EQ(CallsOf("Presentations.Open a.ppt/a.ppt"), 0u);
}

TEST_F(GeneralHandler, OpensTheFirstFileAfterALossOfPowerPoint)
{
    AddFile(u"a.ppt");
    project_->BeforFileProcess += [](const String&) { throw Failure(462, u"gone"); };

    EXPECT_EQ(SearchFails(), 0);

    EXPECT_THAT(log_.Lines(), ElementsAre("Error 462 (gone" + inSearch));
    EXPECT_THAT(events_, ElementsAre("before a.ppt", "after a.ppt 2"));
    EXPECT_EQ(CallsOf("CreateApplication"), 2u);
}

TEST_F(CapturedMode, GoesOnWithThePreviousResultWhenProcessingFails)
{
    AddFile(u"a.ppt");
    AddFile(u"b.ppt");
    powerPoint_.script.FailOnce("Presentation.Close", 1234, u"busy", 2);

    EXPECT_EQ(SearchFails(), 0);

    EXPECT_THAT(events_, ElementsAre("before a.ppt", "after a.ppt 2", "before b.ppt", "after b.ppt 2"));
    ASSERT_THAT(results_, SizeIs(2));
    EXPECT_EQ(results_[0], results_[1]) << "the same object under the name of the second file";
    EXPECT_THAT(passedOver_, ElementsAre("b.ppt 1234"));
    EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(CapturedMode, EndsTheRunWhenTheFirstFileFails)
{
    AddFile(u"a.ppt");
    AddFile(u"b.ppt");
    powerPoint_.script.FailOnce("Presentation.Close", 1234, u"busy");

    EXPECT_EQ(SearchFails(), 91) << "there is no result to name";

    EXPECT_THAT(events_, ElementsAre("before a.ppt"));
    EXPECT_THAT(passedOver_, ElementsAre("a.ppt 1234"));
    EXPECT_EQ(powerPoint_.Running(), 1);
}

TEST_F(CapturedMode, PassesOverAMissingBackupAfterAnOpenFailure)
{
    powerPoint_.FailOpen(AddFile(u"x.ppt"), 1234, u"damaged");
    AddFile(u"a.ppt/a.ppt");
    project_->options->BackupMode = true;

    EXPECT_EQ(SearchFails(), 0);

    EXPECT_THAT(events_, ElementsAre("before x.ppt", "after nothing", "before a.ppt/a.ppt", "after a.ppt/a.ppt 2"));
    EXPECT_THAT(log_.Lines(), ElementsAre("damaged"));
    EXPECT_THAT(passedOver_, ElementsAre("x.ppt 1234"));
}

TEST_F(CapturedMode, PassesOverAVanishedFileAfterAnOpenFailure)
{
    powerPoint_.FailOpen(AddFile(u"a.ppt"), 1234, u"damaged");
    AddMissingFile(u"b.ppt");
    AddFile(u"c.ppt");

    EXPECT_EQ(SearchFails(), 0);

    EXPECT_THAT(events_, ElementsAre("before a.ppt", "after nothing", "before b.ppt", "after nothing", "before c.ppt",
                                     "after c.ppt 2"));
    EXPECT_THAT(passedOver_, ElementsAre("a.ppt 1234", "b.ppt -2147024894"));
    EXPECT_THAT(log_.Lines(), ElementsAre("damaged", "File not found"));
}

TEST_F(CapturedMode, PassesOverFailingReceiversAfterAnOpenFailure)
{
    powerPoint_.FailOpen(AddFile(u"a.ppt"), 1234, u"damaged");
    AddFile(u"b.ppt");
    project_->AfterFileProcess += [this](const auto&) {
        if (results_.size() == 1)
            throw Failure(5, u"report");
    };
    project_->BeforFileProcess += [](const String& path) {
        if (path.ends_with(u"b.ppt"))
            throw Failure(5, u"announcement");
    };

    EXPECT_EQ(SearchFails(), 0);

    EXPECT_THAT(events_, ElementsAre("before a.ppt", "after nothing", "before b.ppt", "after b.ppt 2"));
}

TEST_F(CapturedMode, PassesOverAFailedQuitAfterALastOpenFailure)
{
    powerPoint_.FailOpen(AddFile(u"a.ppt"), 1234, u"damaged");
    powerPoint_.script.FailOnce("Application.Quit", 462, u"gone");

    EXPECT_EQ(SearchFails(), 0);

    EXPECT_FALSE(project_->IsProcessCancel);
    EXPECT_EQ(messages_.Pointers().back(), MousePointer::Default);
}

TEST_F(CapturedMode, EndsAfterTheNextProcessedFile)
{
    powerPoint_.FailOpen(AddFile(u"a.ppt"), 1234, u"damaged");
    AddFile(u"b.ppt");
    AddMissingFile(u"c.ppt");

    EXPECT_EQ(SearchFails(), 53);
}

TEST_F(NoHandler, EndsTheRunAtAVanishedFile)
{
    AddFile(u"a.ppt");
    AddMissingFile(u"b.ppt");
    AddFile(u"c.ppt");

    EXPECT_EQ(SearchFails(), 53);

    EXPECT_THAT(events_, ElementsAre("before a.ppt", "after a.ppt 2", "before b.ppt"));
    EXPECT_EQ(CallsOf("Application.Quit"), 0u);
    EXPECT_EQ(powerPoint_.Running(), 1);
    EXPECT_THAT(messages_.Pointers(), ElementsAre(MousePointer::Hourglass));
    EXPECT_THAT(log_.Lines(), IsEmpty());
}

TEST_F(NoHandler, OfAReplacementMakesTheNextSearchSave)
{
    AddFile(u"a.ppt");
    AddMissingFile(u"b.ppt");
    AddPair(u"cat", u"dog");

    project_->Replacement();

    EXPECT_FALSE(project_->options->IsFindOnly);
    EXPECT_THAT(Log(), ElementsAre(missing + "b.ppt) in procedure Replacement at Line No. 0 of Class Module Project"));
    ASSERT_TRUE(project_->RunFailure) << "for those who want to tell more than the log";
    EXPECT_EQ(project_->RunFailure->number, FailureNumber::FileNotFound);

    project_->FilesToProcess = {AddFile(u"c.ppt")};
    project_->Search();

    EXPECT_EQ(TextOfFile(u"c.ppt"), u"a dog");
    EXPECT_EQ(CallsOf("Presentation.Save c.ppt"), 1u);
}

TEST_F(NoHandler, EndsTheRunAtABackupThatCannotBeWritten)
{
    AddFile(u"b.ppt");
    AddFile(u"a.ppt/a.ppt");
    project_->options->BackupMode = true;

    EXPECT_EQ(SearchFails(), 76);
}

TEST_F(NoHandler, EndsTheRunWhenTheNextFileIsNoLongerListed)
{
    AddFile(u"a.ppt");
    AddFile(u"b.ppt");
    project_->AfterFileProcess += [this](const auto&) { project_->FilesToProcess.pop_back(); };

    EXPECT_EQ(SearchFails(), 9);

    EXPECT_THAT(events_, ElementsAre("before a.ppt", "after a.ppt 2"));
}

TEST_F(NoHandler, EndsTheRunAtAFailingReceiver)
{
    AddFile(u"a.ppt");
    project_->AfterFileProcess += [](const auto&) { throw Failure(5, u"report"); };

    EXPECT_EQ(SearchFails(), 5);
}

TEST_F(NoHandler, EndsTheRunWhenTheProcessedFileHasVanished)
{
    const String path = AddFile(u"a.ppt");
    powerPoint_.script.On("Presentation.Close", [path] { DeleteFile(path); });

    EXPECT_EQ(SearchFails(), 53);
    EXPECT_THAT(events_, ElementsAre("before a.ppt"));
}

TEST_F(NoHandler, EndsTheRunWhenQuitFails)
{
    AddFile(u"a.ppt");
    powerPoint_.script.FailOnce("Application.Quit", 462, u"gone");

    EXPECT_EQ(SearchFails(), 462);
}

TEST_F(PassedOverFailures, ChangeNothingWhenTheReceiverItselfFails)
{
    powerPoint_.FailOpen(AddFile(u"a.ppt"), 1234, u"damaged");
    AddFile(u"b.ppt");
    project_->FailurePassedOver = [](const String&, const Failure&) { throw Failure(5, u"receiver"); };

    EXPECT_EQ(SearchFails(), 0);

    EXPECT_THAT(events_, ElementsAre("before a.ppt", "after nothing", "before b.ppt", "after b.ppt 2"));
}

TEST_F(PassedOverFailures, MayGoUntold)
{
    powerPoint_.FailOpen(AddFile(u"a.ppt"), 1234, u"damaged");
    project_->FailurePassedOver = {};

    EXPECT_EQ(SearchFails(), 0);

    EXPECT_THAT(events_, ElementsAre("before a.ppt", "after nothing"));
}

TEST_F(OpenedHook, IsCalledForEachFileThatOpensBeforeItChanges)
{
    AddFile(u"a.ppt");
    powerPoint_.FailOpen(AddFile(u"b.ppt"), FailureNumber::BadFormat, u"not a presentation");
    AddFile(u"c.ppt");
    AddPair(u"cat", u"dog");
    std::vector<std::string> opened;
    project_->Opened = [&](const String& path, const auto&) {
        const std::string name = Short(ToUtf8(path));
        opened.push_back(name + ": " + ToUtf8(TextOfFile(FromUtf8(name))));
    };

    project_->Replacement();

    EXPECT_THAT(opened, ElementsAre("a.ppt: a cat", "c.ppt: a cat"));
    EXPECT_EQ(TextOfFile(u"c.ppt"), u"a dog");
}

TEST_F(OpenedHook, ThatFailsLeavesTheFileClosedAndUntouched)
{
    AddFile(u"a.ppt");
    AddFile(u"b.ppt");
    AddPair(u"cat", u"dog");
    project_->Opened = [&](const String& path, const auto&) {
        if (Short(ToUtf8(path)) == "a.ppt")
            throw Failure(FailureNumber::PermissionDenied, u"no copy can be made");
    };

    project_->Replacement();

    EXPECT_EQ(TextOfFile(u"a.ppt"), u"a cat");
    EXPECT_EQ(CallsOf("Presentation.Save a.ppt"), 0u);
    EXPECT_EQ(CallsOf("Presentation.Close a.ppt"), 1u);
    EXPECT_EQ(TextOfFile(u"b.ppt"), u"a dog");
    EXPECT_THAT(events_, ElementsAre("before a.ppt", "after nothing", "before b.ppt", "after b.ppt 1"));
    EXPECT_THAT(passedOver_, ElementsAre("a.ppt 70"));
    EXPECT_THAT(log_.Lines(), ElementsAre("no copy can be made"));
}

TEST_F(OpenedHook, ThatFailsLeavesAReadOnlyFileReadOnly)
{
    const String path = AddFile(u"a.ppt");
    SetMode(path, 0444);
    project_->options->ProcessReadonlyFiles = true;
    mode_t modeInside = 0;
    project_->Opened = [&](const String&, const auto&) {
        modeInside = ModeOf(path);
        throw Failure(FailureNumber::PermissionDenied, u"no copy can be made");
    };

    project_->Search();

    EXPECT_EQ(modeInside, 0644u);
    EXPECT_EQ(ModeOf(path), 0444u);
}

TEST_F(OpenedHook, LearnsThatOthersHaveChangedTheFileSince)
{
    const String path = AddFile(u"a.ppt");
    AddFile(u"b.ppt");
    AddPair(u"cat", u"dog");
    std::vector<int> checks;
    project_->Opened = [&](const String& opened, const auto& check) {
        if (opened == path)
            std::ofstream(ToUtf8(path), std::ios::app) << "!";
        checks.push_back(Skip(check));
        check();
    };

    project_->Replacement();

    EXPECT_THAT(checks, ElementsAre(FailureNumber::SharingViolation, 0));
    EXPECT_EQ(CallsOf("Presentation.Save a.ppt"), 0u);
    EXPECT_EQ(CallsOf("Presentation.Save b.ppt"), 1u);
}

}  // namespace tessarine
